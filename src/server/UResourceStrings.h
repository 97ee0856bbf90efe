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
inline constexpr char SProductName[] = "Quorane Requirements";
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
inline constexpr char SClickToOpen[] = "\nClick to open";
inline constexpr char SCtrlClickToOpen[] = "\nCtrl+Click to open";
inline constexpr char SPictureLost[] =
    "A picture did not come along, because only a link to it was copied. Copy the picture itself, or save it "
    "as a file and use Insert Image.";
inline constexpr char SPicturesLost[] =
    " pictures did not come along, because only links to them were copied. Copy each picture itself, or save "
    "it as a file and use Insert Image.";
inline constexpr char SEngineGone[] =
    "The view of the description has stopped working. The text as it was at your last pause is kept.";
inline constexpr char SLoadAgain[] = "&Load Again";
inline constexpr char SUnknownReferenceKind[] =
    "IllegalStateException: DocumentRefernce can be only of 3 types (Web, File and Text).";

// Table dialog
inline constexpr char STableProperties[] = "Table Properties";
inline constexpr char STableSize[] = "Size:";
inline constexpr char STableRows[] = "Rows:";
inline constexpr char STableColumns[] = "Columns:";
inline constexpr char STableWidth[] = "Width:";
inline constexpr char STableWidthUnits[] = "Unit of the width";
inline constexpr char STableHeight[] = "Height:";
inline constexpr char STableHeightUnits[] = "Unit of the height";
inline constexpr char SPercentOfWindow[] = "Percent of window";
inline constexpr char SPixels[] = "Pixels";
inline constexpr char STableAlignment[] = "Alignment:";
inline constexpr char SAlignmentLeft[] = "Left";
inline constexpr char SAlignmentRight[] = "Right";
inline constexpr char SAlignmentCenter[] = "Center";
inline constexpr char STableBorderWidth[] = "Border Width:";
inline constexpr char STableCellPadding[] = "Cell Padding:";
inline constexpr char STableCellSpacing[] = "Cell Spacing:";
inline constexpr char STableOk[] = "OK";
inline constexpr char STableCancel[] = "Cancel";

// Formatting bar
inline constexpr char SFormattingBar[] = "Formatting";
inline constexpr char SFontNameHint[] = "Font Name";
inline constexpr char SFontSizeHint[] = "Font Size";
inline constexpr char SLeftJustifyHint[] = "Left Justify";
inline constexpr char SCenterJustifyHint[] = "Center Justify";
inline constexpr char SRightJustifyHint[] = "Right Justify";
inline constexpr char SNumberedListHint[] = "Numbered list";
inline constexpr char SBulletsHint[] = "Bullets";
inline constexpr char SInsertTableHint[] = "Insert Table";
inline constexpr char SInsertImageHint[] = "Insert Image";
inline constexpr char SPictureFilter[] =
    "All (*.gif;*.jpg;*.jpeg)|*.gif;*.jpg;*.jpeg|GIF Image Gile (*.gif)|*.gif|"
    "JPEG Image File (*.jpg)|*.jpg;*.jpeg";

// Numbers as the user writes them
inline constexpr char SNotAFloat[] = "' is not a valid floating point value";
inline constexpr char SNotAnInteger[] = "' is not a valid integer value";

// Attribute controls
inline constexpr char SDateValueNotFound[] = "IllegalState: Date attribute value was not found";
inline constexpr char SAttributeValueMissing[] = "The requirement holds no value for this attribute";

// Panel
inline constexpr char SPanelCaption[] = "Quorane Requirements";
inline constexpr char SProjectLabel[] = "Project:";
inline constexpr char SBaselineLabel[] = "Baseline:";
inline constexpr char SRequirementTree[] = "Requirement tree";
inline constexpr char SProjectNamePlaceholder[] = "<Project Name>";
inline constexpr char SHierarchicalNumbersHint[] = "Hierarchical Numbers";
inline constexpr char SSerialNumbersHint[] = "Serial Numbers";
inline constexpr char SCommentFormatHint[] = "Requirement Commenting Format";
inline constexpr char SFindByIdHint[] = "Find Requirement By ID";
inline constexpr char SCSharpBlockComments[] = "C# Block Comments";
inline constexpr char SCSharpLineComments[] = "C# Line Comments";
inline constexpr char SCBlockComments[] = "C/C++ Block Comments";
inline constexpr char SOstrelLineComments[] = "Ostrel/C++ Line Comments";
inline constexpr char SVisualBasicComments[] = "Visual Basic Comments";
inline constexpr char SVisualBasicCommentsNoRegion[] = "Visual Basic Comments (No Region)";
inline constexpr char SXmlComments[] = "XML/HTML Comments";
inline constexpr char SProjectInfoLabel[] = "Project Info:";
inline constexpr char SRequirementTypeLabel[] = "Requirement Type:";
inline constexpr char STagLabel[] = "Tag:";
inline constexpr char SDescriptionTab[] = "Description";
inline constexpr char SCustomTabsTab[] = "Custom Tabs";
inline constexpr char SCustomTabsLabel[] = "Custom Tabs:";
inline constexpr char SCustomTabAttributesLabel[] = "Attributes assigned to custom tab:";
inline constexpr char SListNameColumn[] = "Name";
inline constexpr char SDetailsTab[] = "Details";
inline constexpr char STraceabilityTab[] = "Traceability";
inline constexpr char SValidationTab[] = "Validation";
inline constexpr char SDiscussionTab[] = "Discussion";
inline constexpr char SReferencesTab[] = "References";
inline constexpr char SHistoryTab[] = "History";
inline constexpr char SResponsibilitiesTab[] = "Responsibilities";
inline constexpr char SNoVersionNumber[] = "The server's version is no number: ";
inline constexpr char SNothingSelected[] = "Nothing is selected in the list.";

// Panel: commands
inline constexpr char SSaveHint[] = "Save";
inline constexpr char SCancelSaveHint[] = "Cancel Save";
inline constexpr char STryToUnlock[] = "Try to Unlock...";
inline constexpr char SLogoffHint[] = "Logoff";
inline constexpr char SRefreshHint[] = "Refresh";
inline constexpr char SCreateRequirement[] = "Create Requirement";
inline constexpr char SInsertAfter[] = "Insert After";
inline constexpr char SInsertBefore[] = "Insert Before";
inline constexpr char SMoveUpHint[] = "Move Requirement Up";
inline constexpr char SMoveDownHint[] = "Move Requirement Down";
inline constexpr char SDelete[] = "Delete";
inline constexpr char SDeleteRequirementHint[] = "Delete Requirement";
inline constexpr char SRename[] = "Rename";
inline constexpr char STallyworksHint[] = "Quorane Tallyworks";
inline constexpr char SPostNew[] = "Post New...";
inline constexpr char SReply[] = "Reply...";
inline constexpr char SRemoveTrace[] = "&Remove";
inline constexpr char SAbout[] = "About...";
inline constexpr char SBoldHint[] = "Bold";
inline constexpr char SItalicHint[] = "Italic";
inline constexpr char SUnderlineHint[] = "Underline";
inline constexpr char SAlignLeftHint[] = "Align Left";
inline constexpr char SAlignCenterHint[] = "Align Center";
inline constexpr char SAlignRightHint[] = "Align Right";
inline constexpr char SBulletHint[] = "Bullet";
inline constexpr char SNumberedHint[] = "Numbered";
inline constexpr char SForegroundColorHint[] = "Foreground Color";
inline constexpr char SNewTableHint[] = "New Table";
inline constexpr char SCreateRequirementMenu[] = "Cr&eate Requirement";
inline constexpr char SChildMenuItem[] = "&Child";
inline constexpr char SAboveMenuItem[] = "&Above";
inline constexpr char SBelowMenuItem[] = "&Below";
inline constexpr char SShouldRegisterInterest[] = "Should register interest";

// Panel: tree
inline constexpr char SNewRequirement[] = "New Requirement";
inline constexpr char STreeNodeNotFound[] = "RequirementTreeNode not found";
inline constexpr char SNewNodeNotFound[] = "NewNode not found";
inline constexpr char SNothingCreatedInFrozen[] =
    "Nothing can be created in a frozen baseline. Select the current baseline first.";
inline constexpr char SRequirementNameEmpty[] = "Requirement name cannot be empty!";
inline constexpr char SRequirementGone[] = "The requirement no longer exists in this baseline.";
inline constexpr char SOnlyRequirementTraces[] = "Only requirement traces are supported.";
inline constexpr char SRequirementNotInProject[] = "Requirement not in Project";
inline constexpr char SRequirementNodeNotFound[] = "Requirement Node not found!!!";
inline constexpr char SRequirementNotInBaseline[] = "Requirement not found in this baseline.";
inline constexpr char SConfirmation[] = "Confirmation";
inline constexpr char SDeleteQuestionStart[] = "Deleting requirement ";
inline constexpr char SDeleteQuestionMiddle[] = " and all child requirements of ";
inline constexpr char SDeleteQuestionEnd[] = ".  Are you sure?";
inline constexpr char SDataLossWarning[] = "Data Loss WARNING!";
inline constexpr char SDataLoss1[] = "You are about to move a requirement into a different\n\r";
inline constexpr char SDataLoss2[] = "requirement type. All data from used defined attributes\n\r";
inline constexpr char SDataLoss3[] = "that do not exist in the target requirement type will be lost.\n\r\n\r";
inline constexpr char SDataLoss4[] = "Do you wish to continute?";

// Panel: failures
inline constexpr char SObjectLocked[] = "The object requested is currently locked.";
inline constexpr char SConnectionLost[] = "Connection to the Quorane server was lost and will be restored.";
inline constexpr char SMarkupNotWellFormed[] =
    "The content of elements must consist of well-formed character data or markup.";
inline constexpr char SImageWithoutOriginal[] =
    "The specified HTML contains an image that has a 'src' attribute but does not have a 'src_original' "
    "attribute. If you are inserting an image into an existing requirement description, your img tag must "
    "contain the 'new' attribute to signify a new image.";

// Find by id and estimating tool
inline constexpr char SFindByIdCaption[] = "Find Requirement By ID";
inline constexpr char SFindWhat[] = "Find what:";
inline constexpr char SFind[] = "&Find";
inline constexpr char SFindCancel[] = "&Cancel";
inline constexpr char STallyworksMissing[] = "You must have Tallyworks installed to use this feature";
