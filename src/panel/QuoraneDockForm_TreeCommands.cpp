// The commands that change the tree's shape, and renaming in place.
#include "contracts/Exceptions.h"
#include "frames/UDetailsFrame.h"
#include "panel/QuoraneDockForm.h"
#include "platform/widgets/Actions.h"
#include "platform/widgets/Application.h"
#include "platform/widgets/Edits.h"
#include "platform/widgets/Menus.h"
#include "platform/widgets/tree/TreeView.h"
#include "server/UListClearer.h"
#include "server/UQuoraneSession.h"
#include "server/UQuoraneStHelpers.h"
#include "server/UResourceStrings.h"

using namespace Quorane_TLB;

bool TfrmQuoraneMain::IsRequirementSelected() const {
    const TTreeNode* node = trvRequirements->Selected();
    return node && node->Level() >= 2;
}

void TfrmQuoraneMain::actCreateRequirementUpdate() {
    const TTreeNode* node = trvRequirements->Selected();
    actCreateRequirement->SetEnabled(node && node->Level() >= 1);
}

void TfrmQuoraneMain::actCreateRequirementAboveUpdate() {
    actCreateRequirementAbove->SetEnabled(IsRequirementSelected());
}

void TfrmQuoraneMain::actCreateRequirementBelowUpdate() {
    actCreateRequirementBelow->SetEnabled(IsRequirementSelected());
}

void TfrmQuoraneMain::actMoveReqUpUpdate() {
    for (TAction* action : {actMoveReqUp, actMoveReqDown, actDeleteReq})
        action->SetEnabled(IsRequirementSelected());
}

void TfrmQuoraneMain::actRenameReqUpdate() {
    actRenameReq->SetEnabled(IsRequirementSelected());
}

void TfrmQuoraneMain::ForgetCachedTree() {
    FHelpers.CurrentBaseline->Get_RequirementTree()->Get_Manager()->Get_Cache()->clear();
}

Handle<IRequirementTreeNode> TfrmQuoraneMain::FindReqTreeNode(const Handle<IRequirementTreeNode>& node,
                                                              std::int32_t id) {
    if (node->Get_ID()->Get_IDNumber() == id) return node;
    // A requirement is found in one call, however deep it stands; what is left are the
    // nodes of the types, right below the root.
    if (const Handle<IRequirementTreeNode> found = node->findByIDNumber(id)) return found;
    const auto children = EnumerableStCollection(node->Get_Children())->GetEnumerator();
    while (children->MoveNext()) {
        const auto child = Cast<IRequirementTreeNode>(children->GetCurrent());
        if (child->Get_ID()->Get_IDNumber() == id) return child;
    }
    return nullptr;
}

void TfrmQuoraneMain::SelectNewRequirement(TTreeNode& parent, std::int32_t parentID, std::int32_t createdID) {
    ForgetCachedTree();
    const Handle<IRequirementTreeNode> root = FHelpers.CurrentBaseline->Get_RequirementTree()->Get_Root();
    const Handle<IRequirementTreeNode> node = FindReqTreeNode(root, parentID);
    if (!node) throw Exception(STreeNodeNotFound);
    RequirementContainer(&parent).RefreshRequirement(node);
    const TNodeWatch watch(&parent);
    FHelpers.PopulateChildren(parent);
    if (watch.Node()) parent.Expand(false);
    // A save on the way has met a lost connection, and the tree is another one.
    if (!watch.Node()) throw EAbort();
    // By its number: its place may have moved, since others work on the same tree.
    TTreeNode* created = FHelpers.FindChildNodeWithID(parent, createdID);
    if (!created) throw Exception(SNewNodeNotFound);
    created->SetSelected();
}

// What a frozen baseline shows would come into being in the current one, unseen.
void TfrmQuoraneMain::DemandCurrentBaseline() const {
    const Handle<IBaseline>& baseline = FHelpers.CurrentBaseline;
    if (baseline->Get_Type() != baseline->Get_TYPE_CURRENT()) throw Exception(SNothingCreatedInFrozen);
}

void TfrmQuoraneMain::CreateRequirementAsChild(TTreeNode& selected) {
    DemandCurrentBaseline();
    const TWinControl::TUpdate held(*trvRequirements);
    const Handle<IRequirementTreeNode> node = CurrentRequirementTreeNode();
    const std::int32_t id = node->Get_ID()->Get_IDNumber();
    const Handle<IRequirement> created = CurrentSession().CreateRequirementAsChild(
        node, FProject, FHelpers.CurrentRequirement, SNewRequirement);
    SaveByName(created);
    SelectNewRequirement(selected, id, created->Get_IDNumber());
}

void TfrmQuoraneMain::actCreateRequirementExecute() {
    GuardServerCalls([this] {
        TTreeNode* selected = trvRequirements->Selected();
        if (!FHelpers.FindRequirementTypeNode(selected)) return;
        CreateRequirementAsChild(*selected);
        actRenameReqExecute();
    });
}

void TfrmQuoraneMain::CreateRequirementOnTheSameLevel(bool above) {
    if (!FHelpers.FindRequirementTypeNode(trvRequirements->Selected())) return;
    DemandCurrentBaseline();
    {
        const TWinControl::TUpdate held(*trvRequirements);
        const Handle<IRequirementTreeNode> node = CurrentRequirementTreeNode();
        const auto parent = Cast<IRequirementTreeNode>(node->Get_Parent());
        const std::int32_t parentID = parent->Get_ID()->Get_IDNumber();
        Handle<IRequirement> requirement;
        if (parent->Get_IsRequirement() != WordFalse)
            requirement = CurrentSession().FindLatestRequirement(parentID);
        const std::int32_t position = parent->indexOf(node) + (above ? 0 : 1);
        const Handle<IRequirement> created = CurrentSession().CreateRequirementAboveOrBelow(
            parent, FProject, requirement, SNewRequirement, position);
        SaveByName(created);
        SelectNewRequirement(*trvRequirements->Selected()->Parent(), parentID, created->Get_IDNumber());
    }
    actRenameReqExecute();
}

void TfrmQuoraneMain::actCreateRequirementAboveExecute() {
    GuardServerCalls([this] {
        SaveCurrentRequirementIfNeeded();
        CreateRequirementOnTheSameLevel(true);
    });
}

void TfrmQuoraneMain::actCreateRequirementBelowExecute() {
    GuardServerCalls([this] {
        SaveCurrentRequirementIfNeeded();
        CreateRequirementOnTheSameLevel(false);
    });
}

void TfrmQuoraneMain::actRenameReqExecute() {
    if (IsRequirementSelected()) trvRequirements->Selected()->EditText();
}

void TfrmQuoraneMain::trvRequirementsEditing(TTreeNode& node, std::string& text, bool& allow) {
    GuardServerCalls([&] {
        allow = false;
        if (node.Level() < 2) return;
        FHelpers.LockCurrentRequirement();
        // Empty after a lost connection, whose recovery has rebuilt the tree.
        if (!FHelpers.CurrentRequirement) return;
        // The label may show numbers too.
        text = Utf8(FHelpers.CurrentRequirement->Get_Name());
        allow = true;
    });
}

void TfrmQuoraneMain::trvRequirementsEdited(const TTreeNode& node, std::string& text) {
    GuardServerCalls([&] {
        if (text.empty()) throw Exception(SRequirementNameEmpty);
        // The lock may be gone since the editor opened.
        FHelpers.LockCurrentRequirement();
        fraDetails->edtRequirementName->SetText(text);
        if (const Handle<IRequirement> requirement = FHelpers.CurrentRequirement)
            requirement->Set_Name(Wide(text));
        text = Utf8(FHelpers.GetProperNodeText(*RequirementContainer(&node).Node, Wide(text)));
    });
}

void TfrmQuoraneMain::actDeleteReqExecute() {
    GuardServerCalls([this] {
        trvRequirements->EndEdit(true);
        const std::string name = Utf8(CurrentRequirementName());
        const TMessageResult answer = Application().MessageBox(
            SDeleteQuestionStart + name + SDeleteQuestionMiddle + name + SDeleteQuestionEnd, SConfirmation,
            TMessageIcon::Question, TMessageButtons::YesNo, TMessageResult::No);
        if (answer != TMessageResult::Yes) return;
        Require(FHelpers.CurrentRequirement)->remove();
        // What is gone cannot be saved when the selection leaves it.
        FHelpers.CurrentRequirement = nullptr;
        TTreeNode& selected = *trvRequirements->Selected();
        ClearTreeNodeChildren(selected);
        selected.Delete();
    });
}

void TfrmQuoraneMain::trvRequirementsKeyDown(TKey key, bool& handled) {
    if (key != TKey::Delete && key != TKey::F2) return;
    handled = true;
    (key == TKey::Delete ? actDeleteReq : actRenameReq)->Execute();
}

void TfrmQuoraneMain::ppmRequirementsPopup() {
    const TPoint point = trvRequirements->ScreenToClient(ppmRequirements->PopupPoint());
    if (TTreeNode* node = trvRequirements->GetNodeAt(point.X, point.Y)) node->SetSelected();
}
