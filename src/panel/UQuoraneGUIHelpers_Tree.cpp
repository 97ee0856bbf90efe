// The building of the tree: branches, labels, pictures.
#include "contracts/Exceptions.h"
#include "panel/UQuoraneGUIHelpers.h"
#include "platform/widgets/Application.h"
#include "platform/widgets/look/Images.h"
#include "platform/widgets/tree/TreeView.h"
#include "server/UListClearer.h"
#include "server/UQuoraneStHelpers.h"
#include "server/UResourceStrings.h"

using namespace Quorane_TLB;

namespace {

TTreeStateImage StateImageOf(IRequirementTreeNode& node) {
    const bool interested = node.Get_UserIsInterested() != WordFalse;
    const bool unread = node.Get_HasUnreadMessages() != WordFalse;
    if (interested) return unread ? tsInterestedUnread : tsInterested;
    return unread ? tsUnread : tsNone;
}

} // namespace

TRequirementTreeNodeContainer& RequirementContainer(const TTreeNode* node) {
    auto* container = node ? node->DataAs<TRequirementTreeNodeContainer>() : nullptr;
    if (!container) throw Exception(SNotARequirementNode);
    return *container;
}

void TQuoraneGUIHelpers::EnsureFirstLevelRequirements() {
    TTreeNode* project = RequirementsTree->GetFirstNode();
    for (TTreeNode* type = project->GetFirstChild(); type; type = type->GetNextSibling())
        if (type->HasChildren() && type->Count() == 0) PopulateChildren(*type);
}

void TQuoraneGUIHelpers::PopulateChildren(TTreeNode& node) {
    if (SelectingNode) return;
    const THourglass hourglass;
    const Handle<IRequirementTreeNode> serverNode = RequirementContainer(&node).Node;
    // A selection below has to leave while its container is still there: a changed
    // requirement is saved on the way.
    const TTreeNode* selected = RequirementsTree->Selected();
    if (selected && node.IsAncestorOf(*selected)) {
        const TNodeWatch watch(&node);
        node.SetSelected();
        if (!watch.Node()) return;
    }
    ClearTreeNodeChildren(node);
    // The mark goes with the children; should the reading fail, it must be there for
    // the next try.
    node.SetHasChildren(true);
    const auto children = EnumerableStCollection(serverNode->Get_Children())->GetEnumerator();
    while (children->MoveNext())
        AddRequirementNode(node, Cast<IRequirementTreeNode>(children->GetCurrent()));
    node.SetHasChildren(node.Count() > 0);
}

void TQuoraneGUIHelpers::AddRequirementNode(TTreeNode& parent, const Handle<IRequirementTreeNode>& node) {
    auto container = std::make_unique<TRequirementTreeNodeContainer>(node, CurrentBaseline);
    TTreeNode& viewNode = RequirementsTree->AddChild(parent, GetProperNodeText(*node));
    viewNode.SetData(std::move(container));
    viewNode.SetHasChildren(node->Get_ChildCount() > 0);
    viewNode.SetImageIndex(imRequirement);
    viewNode.SetSelectedIndex(imRequirement);
    UpdateStateImage(viewNode, *node);
}

std::u16string TQuoraneGUIHelpers::GetProperNodeText(ITreeNode& node) const {
    return GetProperNodeText(node, node.Get_Name());
}

std::u16string TQuoraneGUIHelpers::GetProperNodeText(ITreeNode& node, const std::u16string& name) const {
    if (!ShowHierarchicalNumbers && !ShowSerialNumbers) return name;
    if (node.Get_IsRequirement() == WordFalse) return name;
    std::u16string text;
    if (ShowHierarchicalNumbers) text = node.Get_HierarchicalNumber() + u" ";
    text += name;
    if (ShowSerialNumbers) text += u" - " + node.Get_SerialNumber();
    return text;
}

void TQuoraneGUIHelpers::UpdateStateImage(TTreeNode& viewNode, IRequirementTreeNode& node) {
    try {
        viewNode.SetStateIndex(StateImageOf(node));
    } catch (const EOleSysError&) {
        // The picture is an extra: a tree that can be read is shown without it.
    }
}

void TQuoraneGUIHelpers::UpdateAllRequirementNodeLabels() {
    const TWinControl::TUpdate held(*RequirementsTree);
    TTreeNode* first = RequirementsTree->GetFirstNode();
    for (TTreeNode* node = first ? first->GetNext() : nullptr; node; node = node->GetNext()) {
        ITreeNode& serverNode = *RequirementContainer(node).Node;
        if (serverNode.Get_IsRequirement() != WordFalse) node->SetText(GetProperNodeText(serverNode));
    }
}

void TQuoraneGUIHelpers::SetShowSerialNumbers(bool show) {
    ShowSerialNumbers = show;
    UpdateAllRequirementNodeLabels();
}

void TQuoraneGUIHelpers::SetShowHierarchicalNumbers(bool show) {
    ShowHierarchicalNumbers = show;
    UpdateAllRequirementNodeLabels();
}

Handle<IRequirementTreeNode> TQuoraneGUIHelpers::ReadSelectedNodeAgain() {
    TRequirementTreeNodeContainer& container = RequirementContainer(RequirementsTree->Selected());
    const Handle<IRequirementTree> tree = CurrentBaseline->Get_RequirementTree();
    tree->Get_Manager()->Get_Cache()->clear();
    const std::int32_t id = container.Node->Get_ID()->Get_IDNumber();
    const Handle<IRequirementTreeNode> fresh =
        CurrentBaseline->Get_RequirementTree()->Get_Root()->findByIDNumber(id);
    if (!fresh) throw Exception(SRequirementGone);
    container.RefreshRequirement(fresh);
    return fresh;
}

void TQuoraneGUIHelpers::RefreshCurrentRequirement() {
    const Handle<IRequirementTreeNode> fresh = ReadSelectedNodeAgain();
    TTreeNode& selected = *RequirementsTree->Selected();
    CurrentRequirement = RequirementContainer(&selected).GetRequirement();
    UpdateStateImage(selected, *fresh);
    selected.SetText(GetProperNodeText(*fresh));
}

void TQuoraneGUIHelpers::UpdateCurrentRequirementStateImage() {
    const Handle<IRequirementTreeNode> fresh = ReadSelectedNodeAgain();
    UpdateStateImage(*RequirementsTree->Selected(), *fresh);
}
