// What the tree shows, and what its selection and its switches do.
#include "panel/QuoraneDockForm.h"
#include "platform/widgets/Actions.h"
#include "platform/widgets/Application.h"
#include "platform/widgets/Buttons.h"
#include "platform/widgets/look/Images.h"
#include "platform/widgets/tree/TreeView.h"
#include "server/UListClearer.h"
#include "server/UQuoraneSession.h"
#include "server/UQuoraneStHelpers.h"
#include "server/UResourceStrings.h"

using namespace Quorane_TLB;

void TfrmQuoraneMain::SelectBaseLine(const Handle<IBaseline>& wanted) {
    const Handle<IBaseline> baseline = wanted;
    const Handle<ISession> session = CurrentSession().GetQuoraneSession();
    // A changed requirement of the baseline that goes is left as by a click elsewhere,
    // while its node and its baseline still stand.
    trvRequirements->SetSelected(nullptr);
    // Its save may have met a lost connection; then all is filled anew already.
    if (session != CurrentSession().GetQuoraneSession()) return;
    FHelpers.CurrentBaseline = baseline;
    TTreeNode& project = *trvRequirements->GetFirstNode();
    ClearTreeNodeChildren(project);
    project.SetText(FProject->Get_Name());
    PouplateRequirementTypes();
    project.Expand(false);
    project.SetSelected();
    ShowProjectInfo();
}

void TfrmQuoraneMain::PouplateRequirementTypes() {
    TTreeNode& project = *trvRequirements->GetFirstNode();
    const Handle<IBaseline>& baseline = FHelpers.CurrentBaseline;
    const Handle<IRequirementTreeNode> root = baseline->Get_RequirementTree()->Get_Root();
    const auto types = EnumerableStCollection(root->Get_Children())->GetEnumerator();
    while (types->MoveNext()) {
        const auto type = Cast<IRequirementTreeNode>(types->GetCurrent());
        TTreeNode& node = trvRequirements->AddChild(project, type->Get_Name());
        node.SetData(std::make_unique<TRequirementTreeNodeContainer>(type, baseline));
        node.SetImageIndex(imTypeClosed);
        node.SetSelectedIndex(imTypeOpen);
        node.SetHasChildren(type->Get_ChildCount() > 0);
    }
    project.SortChildren();
}

void TfrmQuoraneMain::trvRequirementsExpanding(TTreeNode& node) {
    if (node.Level() < 1) return;
    GuardServerCalls([&] { FHelpers.PopulateChildren(node); });
}

void TfrmQuoraneMain::trvRequirementsChanging() {
    GuardServerCalls([this] { SaveCurrentRequirementIfNeeded(); });
}

void TfrmQuoraneMain::trvRequirementsChange(TTreeNode* node) {
    GuardServerCalls([&] {
        if (!QuoraneSession || !QuoraneSession->IsLoggedIn()) return;
        FHelpers.CurrentRequirement = nullptr;
        if (!node) return;
        switch (node->Level()) {
        case 0:
            ShowProjectInfo();
            break;
        case 1:
            ShowRequirementTypeInfo(*node);
            break;
        default:
            ShowRequirementInfo(*node);
        }
    });
}

void TfrmQuoraneMain::btnHierarchicalNumbersClick() {
    GuardServerCalls([this] { FHelpers.SetShowHierarchicalNumbers(btnHierarchicalNumbers->Down()); });
}

void TfrmQuoraneMain::btnSerialNumbersClick() {
    GuardServerCalls([this] { FHelpers.SetShowSerialNumbers(btnSerialNumbers->Down()); });
}

void TfrmQuoraneMain::actInterestToggleUpdate() {
    const TTreeNode* node = trvRequirements->Selected();
    const auto* container = node ? node->DataAs<TRequirementTreeNodeContainer>() : nullptr;
    actInterestToggle->SetChecked(container && container->Node->Get_UserIsInterested() != WordFalse);
}

void TfrmQuoraneMain::actInterestToggleExecute() {
    Application().MessageBox(SShouldRegisterInterest, SMessageCaption);
}

Handle<IRequirementTreeNode> TfrmQuoraneMain::CurrentRequirementTreeNode() const {
    return RequirementContainer(trvRequirements->Selected()).Node;
}

std::u16string TfrmQuoraneMain::CurrentRequirementName() const {
    return RequirementContainer(trvRequirements->Selected()).GetRequirement()->Get_Name();
}
