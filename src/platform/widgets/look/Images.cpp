#include "platform/widgets/look/Images.h"

#include <initializer_list>
#include <utility>

#include "platform/widgets/look/ImageList.h"

namespace {

void Fill(TImageList& images, std::initializer_list<std::pair<int, const char*>> entries) {
    for (const auto& [index, name] : entries)
        images.Put(index, name);
}

} // namespace

void FillQuoraneImages(TImageList& images) {
    Fill(images, {{imProject, "project"},
                  {imTypeClosed, "book-closed"},
                  {imTypeOpen, "book-open"},
                  {imRequirement, "requirement"},
                  {imCustomTab, "custom-tab"},
                  {imMessage, "message"},
                  {imSave, "save"},
                  {imCancelSave, "cancel-save"},
                  {imCreateRequirement, "create-child"},
                  {imInsertBefore, "insert-before"},
                  {imInsertAfter, "insert-after"},
                  {imMoveUp, "move-up"},
                  {imMoveDown, "move-down"},
                  {imDelete, "delete"},
                  {imRefresh, "refresh"},
                  {imLogoff, "logoff"},
                  {imEstimate, "estimate"},
                  {imRequirementLocked, "requirement-locked"},
                  {imAttribute, "attribute"},
                  {imRename, "rename"},
                  {imUnlock, "unlock"},
                  {imFindById, "find-by-id"},
                  {imCommentFormat, "comment-format"},
                  {imGroup, "group"},
                  {imUser, "user"},
                  {imSerialNumbers, "serial-numbers"},
                  {imHierarchicalNumbers, "hierarchical-numbers"},
                  {imInsertComment, "insert-comment"},
                  {imUpdateComments, "update-comments"},
                  {imTraceTo, "trace-to"},
                  {imTraceFrom, "trace-from"}});
    Fill(images, {{imBold, "bold"},
                  {imItalic, "italic"},
                  {imUnderline, "underline"},
                  {imBullets, "bullets"},
                  {imAlignLeft, "align-left"},
                  {imAlignRight, "align-right"},
                  {imAlignCenter, "align-center"},
                  {imNumberedList, "numbered-list"},
                  {imForeColor, "fore-color"},
                  {imInsertTable, "insert-table"},
                  {imInsertImage, "insert-image"}});
}

void FillTreeStateImages(TImageList& images) {
    Fill(images, {{tsInterested, "note"}, {tsInterestedUnread, "note-unread"}, {tsUnread, "people-talking"}});
}

void FillCheckImages(TImageList& images) {
    Fill(images, {{ckEmpty, "check-empty"}, {ckChecked, "check-checked"}, {ckGrey, "check-grey"}});
}

void FillUserGroupImages(TImageList& images) {
    Fill(images, {{ugProject, "project"}, {ugGroup, "group"}, {ugUser, "user"}});
}

void FillReferenceImages(TImageList& images) {
    Fill(images, {{rfText, "text-reference"}, {rfWeb, "web-reference"}, {rfKey, "key"}});
}

void FillTraceImages(TImageList& images) {
    Fill(images, {{trRequirement, "requirement"}});
}

void FillTabImages(TImageList& images) {
    Fill(images, {{tbCustom, "custom-tab"}});
}
