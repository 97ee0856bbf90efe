// The indexes of the product's image lists, and functions that fill the lists.
#pragma once

class TImageList;

// imlQuorane: tree, tool bars, lists.
enum TQuoraneImage {
    imProject = 0,
    imTypeClosed = 1,
    imTypeOpen = 2,
    imRequirement = 3,
    imCustomTab = 5,
    imMessage = 6,
    imSave = 12,
    imCancelSave = 13,
    imCreateRequirement = 14,
    imInsertBefore = 15,
    imInsertAfter = 16,
    imMoveUp = 17,
    imMoveDown = 18,
    imDelete = 19,
    imRefresh = 20,
    imLogoff = 21,
    imEstimate = 22,
    imRequirementLocked = 23,
    imAttribute = 24,
    imRename = 25,
    imUnlock = 26,
    imFindById = 27,
    imCommentFormat = 28,
    imGroup = 39,
    imUser = 40,
    imBold = 44,
    imItalic = 45,
    imUnderline = 46,
    imBullets = 47,
    imAlignLeft = 48,
    imAlignRight = 49,
    imAlignCenter = 50,
    imNumberedList = 51,
    imForeColor = 52,
    imInsertTable = 53,
    imInsertImage = 54,
    imInsertComment = 55,
    imSerialNumbers = 56,
    imHierarchicalNumbers = 57,
    imUpdateComments = 58,
    imTraceTo = 59,
    imTraceFrom = 60
};

// imlTreeState; 0 is not used.
enum TTreeStateImage { tsNone = -1, tsInterested = 1, tsInterestedUnread = 2, tsUnread = 3 };

// imlCheck; 0 is not used.
enum TCheckImage { ckEmpty = 1, ckChecked = 2, ckGrey = 3 };

// imlUserGroup.
enum TUserGroupImage { ugProject = 0, ugGroup = 1, ugUser = 2 };

// imlReferences; icons of files come behind these.
enum TReferenceImage { rfText = 0, rfWeb = 1, rfKey = 2, rfFirstFile = 3 };

// imlTraces; icons of outside objects come behind this.
enum TTraceImage { trRequirement = 0, trFirstExternal = 1 };

// imgTabs: the tabs of pgcRequirement, 0 for custom tabs without a picture.
enum TTabImage { tbCustom = 0, tbFirstCustom = 1 };

void FillQuoraneImages(TImageList& images);
void FillTreeStateImages(TImageList& images);
void FillCheckImages(TImageList& images);
void FillUserGroupImages(TImageList& images);
void FillReferenceImages(TImageList& images);
void FillTraceImages(TImageList& images);
void FillTabImages(TImageList& images);

// The add-in's own picture.
inline constexpr const char* AddInIconName = "OSTRELICONSMALL";
