// The table of commands, their pictures, and the popup menu that shows them.
#include "panel/QuoraneDockForm.h"
#include "platform/widgets/Actions.h"
#include "platform/widgets/Buttons.h"
#include "platform/widgets/Menus.h"
#include "platform/widgets/look/ImageList.h"
#include "platform/widgets/look/Images.h"
#include "platform/widgets/tree/TreeView.h"
#include "server/UResourceStrings.h"

namespace {

constexpr int NoImage = -1;

using TPanelHandler = void (TfrmQuoraneMain::*)();

struct TCommand {
    TAction* TfrmQuoraneMain::*Field;
    const char* Name;
    const char* Caption;
    const char* Hint;
    int Image;
    TPanelHandler Execute;
    TPanelHandler Update;
};

// Commands of the list that no widget of the panel shows and that do nothing here:
// other frames have working ones of like name.
struct TListedCommand {
    const char* Name;
    const char* Caption;
    const char* Hint;
    int Image;
};

constexpr TListedCommand ListedCommands[] = {
    {"actPostMessage", SPostNew, "", imMessage},
    {"actPostReply", SReply, "", imMessage},
    {"actRemoveTraceability", SRemoveTrace, "", imDelete},
    {"actAbout", SAbout, "", NoImage},
    {"actBold", "", SBoldHint, imBold},
    {"actItalic", "", SItalicHint, imItalic},
    {"actUnderline", "", SUnderlineHint, imUnderline},
    {"actAlignLeft", "", SAlignLeftHint, imAlignLeft},
    {"actCenter", "", SAlignCenterHint, imAlignCenter},
    {"actAlignRight", "", SAlignRightHint, imAlignRight},
    {"actBullet", "", SBulletHint, imBullets},
    {"actNumList", "", SNumberedHint, imNumberedList},
    {"actColor", "", SForegroundColorHint, imForeColor},
    {"actInsertTable", "", SNewTableHint, imInsertTable},
};

TAction& MakeAction(TActionList& list, const TListedCommand& command) {
    auto* action = new TAction(list, command.Name);
    action->SetCaption(command.Caption);
    action->SetHint(command.Hint);
    action->SetImageIndex(command.Image);
    return *action;
}

} // namespace

void TfrmQuoraneMain::MakeImages() {
    imlQuorane = new TImageList(this, "imlQuorane");
    FillQuoraneImages(*imlQuorane);
    imlTreeState = new TImageList(this, "imlTreeState");
    FillTreeStateImages(*imlTreeState);
    imgTabs = new TImageList(this, "imgTabs");
    FillTabImages(*imgTabs);
}

void TfrmQuoraneMain::MakeActions() {
    using Self = TfrmQuoraneMain;
    const TCommand commands[] = {
        {&Self::actSave, "actSave", "", SSaveHint, imSave, &Self::actSaveExecute, &Self::actCancelSaveUpdate},
        {&Self::actCancelSave, "actCancelSave", "", SCancelSaveHint, imCancelSave,
         &Self::actCancelSaveExecute, &Self::actCancelSaveUpdate},
        {&Self::actUnlock, "actUnlock", STryToUnlock, "", NoImage, &Self::actUnlockExecute,
         &Self::actUnlockUpdate},
        {&Self::actLogoff, "actLogoff", "", SLogoffHint, imLogoff, &Self::actLogoffExecute, nullptr},
        {&Self::actRefresh, "actRefresh", "", SRefreshHint, imRefresh, &Self::actRefreshExecute, nullptr},
        {&Self::actCreateRequirement, "actCreateRequirement", SCreateRequirement, SCreateRequirement,
         imCreateRequirement, &Self::actCreateRequirementExecute, &Self::actCreateRequirementUpdate},
        {&Self::actCreateRequirementBelow, "actCreateRequirementBelow", SInsertAfter, SInsertAfter,
         imInsertAfter, &Self::actCreateRequirementBelowExecute, &Self::actCreateRequirementBelowUpdate},
        {&Self::actCreateRequirementAbove, "actCreateRequirementAbove", SInsertBefore, SInsertBefore,
         imInsertBefore, &Self::actCreateRequirementAboveExecute, &Self::actCreateRequirementAboveUpdate},
        {&Self::actMoveReqUp, "actMoveReqUp", "", SMoveUpHint, imMoveUp, &Self::actMoveReqUpExecute,
         &Self::actMoveReqUpUpdate},
        {&Self::actMoveReqDown, "actMoveReqDown", "", SMoveDownHint, imMoveDown, &Self::actMoveReqDownExecute,
         nullptr},
        {&Self::actDeleteReq, "actDeleteReq", SDelete, SDeleteRequirementHint, imDelete,
         &Self::actDeleteReqExecute, nullptr},
        {&Self::actRenameReq, "actRenameReq", SRename, "", imRename, &Self::actRenameReqExecute,
         &Self::actRenameReqUpdate},
        {&Self::actTallyworks, "actTallyworks", "", STallyworksHint, imEstimate, &Self::actTallyworksExecute,
         nullptr},
        {&Self::actInterestToggle, "actInterestToggle", "", "", NoImage, &Self::actInterestToggleExecute,
         &Self::actInterestToggleUpdate},
    };
    ActionManager = new TActionList(*this, "ActionManager");
    ActionManager->SetImages(imlQuorane);
    for (const TCommand& command : commands) {
        TAction& action =
            MakeAction(*ActionManager, {command.Name, command.Caption, command.Hint, command.Image});
        action.OnExecute = [this, execute = command.Execute] { (this->*execute)(); };
        if (command.Update) action.OnUpdate = [this, update = command.Update] { (this->*update)(); };
        this->*command.Field = &action;
    }
    for (const TListedCommand& command : ListedCommands)
        MakeAction(*ActionManager, command);
    actRefresh->SetShortCut("F5");
    actTallyworks->SetVisible(false);
}

void TfrmQuoraneMain::MakeCommentFormatMenu() {
    struct TFormat {
        const char* Name;
        const char* Caption;
    };
    constexpr TFormat formats[] = {
        {"CBlockComments1", SCSharpBlockComments},
        {"CLineComments1", SCSharpLineComments},
        {"CCBlockComments1", SCBlockComments},
        {"CLineComments2", SOstrelLineComments},
        {"VisualBasicComments1", SVisualBasicComments},
        {"VisualBasicCommentsNoRegion1", SVisualBasicCommentsNoRegion},
        {"XMLHTMLComments1", SXmlComments},
    };
    CommentingFormatPopupMenu = new TPopupMenu(this, "CommentingFormatPopupMenu");
    for (const TFormat& format : formats) {
        TMenuItem& item = CommentingFormatPopupMenu->Add(format.Name, format.Caption);
        item.SetRadioItem(true);
        item.OnClick = [&item] { item.SetChecked(true); };
        if (format.Caption == SOstrelLineComments) item.SetChecked(true);
    }
}

void TfrmQuoraneMain::MakePopup() {
    ppmRequirements = new TPopupMenu(this, "ppmRequirements");
    TMenuItem& create = ppmRequirements->Add("CreateRequirementMenuItem", SCreateRequirementMenu);
    create.SetHint(SCreateRequirement);
    create.SubMenu().Add("ChildMenuItem", *actCreateRequirement).SetCaption(SChildMenuItem);
    create.SubMenu().Add("AboveMenuItem", *actCreateRequirementAbove).SetCaption(SAboveMenuItem);
    create.SubMenu().Add("BelowMenuItem", *actCreateRequirementBelow).SetCaption(SBelowMenuItem);
    ppmRequirements->Add("RenameMenuItem", *actRenameReq);
    ppmRequirements->Add("DeleteMenuItem", *actDeleteReq);
    ppmRequirements->AddSeparator();
    ppmRequirements->Add("Unlock1", *actUnlock);
    ppmRequirements->OnPopup = [this] { ppmRequirementsPopup(); };
    trvRequirements->SetPopupMenu(ppmRequirements);
}
