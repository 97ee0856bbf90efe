// The one table of texts that users read. Each section holds the texts of one unit;
// within it they stand in the order in which they are met.
#pragma once

// Logon dialog
inline constexpr char SLogonCaption[] = "Login";
inline constexpr char SLogonServer[] = "&Server:";
inline constexpr char SLogonUser[] = "&User:";
inline constexpr char SLogonPassword[] = "&Password:";
inline constexpr char SLogonOk[] = "Logon";
inline constexpr char SLogonCancel[] = "Cancel";
inline constexpr char SProductName[] = "Quorane Requirements";

// Session
inline constexpr char SSDKVersion[] = "Quorane SDK Version: ";
inline constexpr char SJavaVersion[] = "Java Version: ";
inline constexpr char SUserMustChangePassword[] =
    "User must change password, please use the normal Quorane client to do it";
inline constexpr char SHostNotFound[] = "Could not connect to the Quorane Server: host not found.";
inline constexpr char SInvalidLogin[] = "Invalid Login";
inline constexpr char SAccountDisabled[] = "Account disabled";
inline constexpr char SNotLoggedOn[] = "Not logged on to a Quorane server";
inline constexpr char SCannotWriteFile[] = "Cannot write the file ";

// Add-in
inline constexpr char SSDKNotInstalled[] =
    "Quorane SDK 2005 Release 2 is not installed on your system. Please "
    "install Quorane SDK 2005 Release 2 and try again.";

// Containers
inline constexpr char SNotARequirementNode[] = "Not a requirement node!";

// Details frame
inline constexpr char SRequirementName[] = "Requirement &Name:";
inline constexpr char SRequirementTagID[] = "Requirement &Tag/Id:";
inline constexpr char SRequirementVersion[] = "Requirement &Version:";
inline constexpr char SRequirementStatus[] = "&Status:";
inline constexpr char SRequirementPriority[] = "&Priority";
inline constexpr char SRequirementOwner[] = "&Owner:";
inline constexpr char SNewRequirementMark[] = "-NEW";

// Validation frame
inline constexpr char SValidationProcedure[] = "Validation Procedure:";

// History frame
inline constexpr char SHistoryRevisions[] = "Revisions";
inline constexpr char SHistoryRevision[] = "Rev #";
inline constexpr char SHistoryDate[] = "Date/Time";
inline constexpr char SHistoryChangedBy[] = "Changed by";
inline constexpr char SHistoryComment[] = "Comment";
inline constexpr char SHistoryChanges[] = "Changes of the revision";
inline constexpr char SHistoryAttribute[] = "Attribute";
inline constexpr char SHistoryChangedFrom[] = "Changed from";
inline constexpr char SHistoryChangedTo[] = "Changed to";

// Discussion frame
inline constexpr char SDiscussionPostNew[] = "Post New...";
inline constexpr char SDiscussionPostReply[] = "Reply...";
inline constexpr char SDiscussionRefresh[] = "Refresh";
inline constexpr char SDiscussionMessages[] = "Messages";
inline constexpr char SDiscussionSubject[] = "Subject";
inline constexpr char SDiscussionFrom[] = "From";
inline constexpr char SDiscussionDate[] = "Date";
inline constexpr char SDiscussionText[] = "Text of the message";

// Message dialog
inline constexpr char SNewMessageCaption[] = "New Message";
inline constexpr char SReplyMessageCaption[] = "New Reply Message";
inline constexpr char SReplyPrefix[] = "Re: ";
inline constexpr char SMessageFileMenu[] = "&File";
inline constexpr char SMessageEditMenu[] = "&Edit";
inline constexpr char SPostMessage[] = "&Post Message";
inline constexpr char SMessageRequirement[] = "Requirement:";
inline constexpr char SMessageSubject[] = "Subject:";
inline constexpr char SMessageBody[] = "Message text";
inline constexpr char SEditCut[] = "Cu&t";
inline constexpr char SEditCopy[] = "&Copy";
inline constexpr char SEditPaste[] = "&Paste";
inline constexpr char SEditSelectAll[] = "Select &All";
inline constexpr char SEditUndo[] = "&Undo";
inline constexpr char SEditDelete[] = "&Delete";

// Responsibilities frame
inline constexpr char SProjectGroupMembers[] = "Project Groups and Members:";

// References frame
inline constexpr char SNewTextReference[] = "New &Text";
inline constexpr char SNewWebReference[] = "New &Web";
inline constexpr char SRemoveReference[] = "&Remove";
inline constexpr char SRemoveReferenceHint[] = "Remove Reference";
inline constexpr char SReferences[] = "References";
inline constexpr char SReferenceFile[] = "File";
inline constexpr char SReferenceDescription[] = "Description";
inline constexpr char SReferenceText[] = "Text of the reference";
inline constexpr char SRemoveKeyReferenceQuestion[] =
    "The selected reference is a key reference. Are you sure you want to delete it?";
inline constexpr char SRemoveReferenceQuestion[] = "Are you sure you want to remove selected reference?";
inline constexpr char SMessageCaption[] = "Quorane";
inline constexpr char SMemoForTextAndWebOnly[] =
    "IllegalStateException: Memo should be enabled only for text and web references";

// Description frame
inline constexpr char SDescription[] = "Description";
inline constexpr char SOpenLinkQuestion[] = "Open this address outside?\n";
inline constexpr char SUnknownReferenceKind[] =
    "IllegalStateException: DocumentRefernce can be only of 3 types (Web, File and Text).";

// Numbers as the user writes them
inline constexpr char SNotAFloat[] = "' is not a valid floating point value";
inline constexpr char SNotAnInteger[] = "' is not a valid integer value";

// Attribute controls
inline constexpr char SDateValueNotFound[] = "IllegalState: Date attribute value was not found";
inline constexpr char SAttributeValueMissing[] = "The requirement holds no value for this attribute";
