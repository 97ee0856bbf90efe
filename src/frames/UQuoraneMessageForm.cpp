#include "frames/UQuoraneMessageForm.h"

#include "platform/widgets/Actions.h"
#include "platform/widgets/Buttons.h"
#include "platform/widgets/Containers.h"
#include "platform/widgets/Edits.h"
#include "platform/widgets/Menus.h"
#include "platform/widgets/look/ImageList.h"
#include "server/UResourceStrings.h"

namespace {

struct TEditRow {
    const char* Name;
    const char* Caption;
    const char* ShortCut;
    const char* Icon;
    TEditCommand Command;
    // Empty for a command that the tool bar does not show.
    const char* ButtonName;
};

// In the order of the menu.
constexpr TEditRow EditRows[] = {
    {"EditCut1", SEditCut, "Ctrl+X", "cut", TEditCommand::Cut, "btnCut"},
    {"EditCopy1", SEditCopy, "Ctrl+C", "copy", TEditCommand::Copy, "btnCopy"},
    {"EditPaste1", SEditPaste, "Ctrl+V", "paste", TEditCommand::Paste, "btnPaste"},
    {"EditSelectAll1", SEditSelectAll, "Ctrl+A", "", TEditCommand::SelectAll, ""},
    {"EditUndo1", SEditUndo, "Ctrl+Z", "undo", TEditCommand::Undo, "btnUndo"},
    {"EditDelete1", SEditDelete, "Del", "", TEditCommand::Delete, ""},
};

} // namespace

TfrmQuoraneMessage::TfrmQuoraneMessage(TWinControl* owner)
    : TForm(owner, "frmQuoraneMessage")
    , FActions(new TActionList(*this, "MessageActions"))
    , FImages(new TImageList(this, "imlMessage")) {
    SetCaption(SNewMessageCaption);
    SetBounds(0, 0, 560, 420);
    FActions->SetImages(FImages);
    MakeActions();
    MakeBars();
    MakeFields();
    SetTabOrder({edtSubject, mmoBody});
    SetActiveControl(*edtSubject);
}

void TfrmQuoraneMessage::MakeActions() {
    actSend = new TAction(*FActions, "actSend");
    actSend->SetCaption(SPostMessage);
    actSend->SetImageIndex(FImages->Add("send"));
    actSend->OnExecute = [this] { actSendExecute(); };
    actSend->OnUpdate = [this] { actSendUpdate(); };
    for (const TEditRow& row : EditRows) {
        auto* action = new TEditAction(*FActions, row.Name, row.Command);
        action->SetCaption(row.Caption);
        action->SetShortCut(row.ShortCut);
        if (*row.Icon) action->SetImageIndex(FImages->Add(row.Icon));
    }
}

void TfrmQuoraneMessage::MakeBars() {
    MessageActionMainMenuBar = new TMainMenu(this, "MessageActionMainMenuBar");
    MessageActionMainMenuBar->SetAlign(TAlign::Top);
    MessageActionMainMenuBar->Add("FileMenu", SMessageFileMenu).SubMenu().Add("PostMessage1", *actSend);
    TPopupMenu& edit = MessageActionMainMenuBar->Add("EditMenu", SMessageEditMenu).SubMenu();
    for (const TEditRow& row : EditRows)
        edit.Add(std::string(row.Name) + "Item", *FActions->Find(row.Name));

    tlbMessage = new TToolBar(this, "tlbMessage");
    tlbMessage->SetAlign(TAlign::Top);
    tlbMessage->SetImages(FImages);
    tlbMessage->AddButton("btnPostMessage", *actSend);
    tlbMessage->AddSeparator();
    tlbMessage->AddButton("btnUndo", *FActions->Find("EditUndo1"));
    tlbMessage->AddSeparator();
    for (const TEditRow& row : EditRows)
        if (*row.ButtonName && row.Command != TEditCommand::Undo)
            tlbMessage->AddButton(row.ButtonName, *FActions->Find(row.Name));
}

void TfrmQuoraneMessage::MakeFields() {
    pnlSubjet = new TPanel(this, "pnlSubjet");
    pnlSubjet->SetAlign(TAlign::Top);
    TGridLayout& grid = pnlSubjet->UseGridLayout();
    auto* lblRequirement = new TLabel(pnlSubjet, "lblRequirement", SMessageRequirement);
    lblRequirementName = new TLabel(pnlSubjet, "lblRequirementName");
    auto* lblSubject = new TLabel(pnlSubjet, "lblSubject", SMessageSubject);
    edtSubject = new TEdit(pnlSubjet, "edtSubject");
    lblSubject->SetFocusControl(*edtSubject);
    grid.SetMargins(8, 8, 8, 8);
    grid.SetSpacing(8, 6);
    grid.SetColumnStretch(1, 1);
    grid.Place(*lblRequirement, 0, 0);
    grid.Place(*lblRequirementName, 0, 1);
    grid.Place(*lblSubject, 1, 0);
    grid.Place(*edtSubject, 1, 1);

    mmoBody = new TMemo(this, "mmoBody");
    mmoBody->SetAlign(TAlign::Client);
    mmoBody->SetAccessibleName(SMessageBody);
}

void TfrmQuoraneMessage::actSendExecute() {
    SetModalResult(TModalResult::Ok);
}

void TfrmQuoraneMessage::actSendUpdate() {
    actSend->SetEnabled(!mmoBody->Empty());
}
