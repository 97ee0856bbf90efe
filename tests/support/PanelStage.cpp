#include "support/PanelStage.h"

#include "platform/widgets/Containers.h"
#include "platform/widgets/Edits.h"
#include "platform/widgets/Lists.h"
#include "server/UQuoraneLogonForm.h"
#include "server/UQuoraneSession.h"

TPanelStage::TPanelStage(const std::string& database)
    : Server(std::make_unique<TSampleServer>(database)) {
    TfrmQuoraneMain::CreateForm();
    Panel().SetBounds(0, 0, 420, 700);
    User = std::make_unique<TActor>(Panel().Widget());
}

TPanelStage::~TPanelStage() {
    TfrmQuoraneMain::RemoveForm();
    FinalizeGUIHelpers();
    FinalizeQuoraneSession();
}

TfrmQuoraneMain& TPanelStage::Panel() {
    return dynamic_cast<TfrmQuoraneMain&>(*frmQuoraneMain);
}

TQuoraneGUIHelpers& TPanelStage::Helpers() {
    return dynamic_cast<TQuoraneGUIHelpers&>(*GUIHelpers);
}

bool TPanelStage::LogOn(const std::string& user) {
    return LogOn("local", user, SamplePassword(user));
}

bool TPanelStage::LogOn(const std::string& host, const std::string& user, const std::string& password) {
    User->WhenModal([&](TForm& form) {
        auto& dialog = dynamic_cast<TfrmQuoraneLogon&>(form);
        dialog.edtHost->SetText(host);
        dialog.edtUser->SetText(user);
        dialog.edtPassword->SetText(password);
        dialog.btnOk->Click();
        if (dialog.ModalResult() == TModalResult::None) dialog.btnCancel->Click();
    });
    TfrmQuoraneMain::ShowForm();
    TActor::Settle();
    return Panel().nbkParent->PageIndex() == ConnectedPage;
}

std::vector<std::string> TPanelStage::Entries(TComboBox& list) {
    std::vector<std::string> texts;
    for (int index = 0; index < list.Items().Count(); ++index)
        texts.push_back(list.Items().Text(index));
    return texts;
}

std::vector<std::string> TPanelStage::Children(TTreeNode& node) {
    std::vector<std::string> texts;
    for (TTreeNode* child = node.GetFirstChild(); child; child = child->GetNextSibling())
        texts.push_back(child->Text());
    return texts;
}

TTreeNode& TPanelStage::Select(const std::vector<std::string>& path) {
    std::vector<std::string> whole{Panel().trvRequirements->GetFirstNode()->Text()};
    whole.insert(whole.end(), path.begin(), path.end());
    return User->SelectNode("trvRequirements", whole);
}
