// The ways from a server node to a view node, and the selection by the program.
#include <vector>

#include "contracts/Exceptions.h"
#include "frames/ScopedFlag.h"
#include "panel/QuoraneDockForm.h"
#include "panel/UQuoraneGUIHelpers.h"
#include "platform/widgets/Application.h"
#include "platform/widgets/Containers.h"
#include "platform/widgets/tree/TreeView.h"
#include "server/UQuoraneStHelpers.h"
#include "server/UResourceStrings.h"

using namespace Quorane_TLB;

namespace {

std::int32_t IDNumberOf(const TTreeNode& node) {
    return node.DataAs<TRequirementTreeNodeContainer>()->Node->Get_ID()->Get_IDNumber();
}

} // namespace

TTreeNode* TQuoraneGUIHelpers::FindRequirementTypeNode(TTreeNode* node) const {
    while (node && node->Level() > 1)
        node = node->Parent();
    return node && node->Level() == 1 ? node : nullptr;
}

TTreeNode* TQuoraneGUIHelpers::FindChildNodeWithID(const TTreeNode& node, std::int32_t id) const {
    for (TTreeNode* child = node.GetFirstChild(); child; child = child->GetNextSibling())
        if (IDNumberOf(*child) == id) return child;
    return nullptr;
}

TTreeNode* TQuoraneGUIHelpers::FindRequirementTreeNode(const Handle<ITreeNode>& node) const {
    TTreeNode* first = RequirementsTree->GetFirstNode();
    TTreeNode* candidate = first ? first->GetNext() : nullptr;
    if (!candidate) return nullptr;
    const std::int32_t id = node->Get_ID()->Get_IDNumber();
    while (candidate && IDNumberOf(*candidate) != id)
        candidate = candidate->GetNext();
    return candidate;
}

TTreeNode* TQuoraneGUIHelpers::FindParentInTree(const Handle<ITreeNode>& node) const {
    for (Handle<ITreeNode> ancestor = node; ancestor; ancestor = ancestor->Get_Parent())
        if (TTreeNode* found = FindRequirementTreeNode(ancestor)) return found;
    return nullptr;
}

TTreeNode* TQuoraneGUIHelpers::SearchDownwards(TTreeNode& ancestor, const Handle<ITreeNode>& wanted) {
    // Only the branches that hold the node are read: each one costs a server call.
    std::vector<std::int32_t> path;
    const std::int32_t ancestorID = IDNumberOf(ancestor);
    for (Handle<ITreeNode> node = wanted; node; node = node->Get_Parent()) {
        const std::int32_t id = node->Get_ID()->Get_IDNumber();
        if (id == ancestorID) break;
        path.push_back(id);
    }
    TTreeNode* found = &ancestor;
    for (; found && !path.empty(); path.pop_back()) {
        const TNodeWatch watch(found);
        PopulateChildren(*found);
        // A save on the way has met a lost connection, and the tree is another one.
        if (!watch.Node()) throw EAbort();
        found = FindChildNodeWithID(*found, path.back());
    }
    return found;
}

void TQuoraneGUIHelpers::SelectRequirementInTree(const Handle<ITreeNode>& node) {
    EnsureFirstLevelRequirements();
    if (node->Get_IsRequirement() == WordFalse) throw Exception(SOnlyRequirementTraces);
    TTreeNode* viewNode = FindRequirementTreeNode(node);
    if (!viewNode) {
        TTreeNode* ancestor = FindParentInTree(node);
        if (!ancestor) throw Exception(SRequirementNotInProject);
        viewNode = SearchDownwards(*ancestor, node);
        if (!viewNode) throw Exception(SRequirementNodeNotFound);
    }
    const TScopedFlag selecting(SelectingNode);
    TfrmQuoraneMain& panel = *QuoranePanel();
    panel.pgcRequirement->SetActivePageIndex(rtDetails);
    if (viewNode->Selected()) {
        // No selection moves, so nothing else fills the page that has just come up.
        const TScopedFlag showing(ShowingRequirementInfo);
        panel.ShowActivePageInfo();
    }
    viewNode->SetSelected();
}

void TQuoraneGUIHelpers::SearchNodeById(std::int32_t id) {
    // Who sees no project has no baseline on show.
    if (!CurrentBaseline) return ShowRequirementNotFoundMessage();
    const Handle<IRequirementTreeNode> root = CurrentBaseline->Get_RequirementTree()->Get_Root();
    if (const Handle<IRequirementTreeNode> node = root->findByIDNumber(id))
        SelectRequirementInTree(node);
    else
        ShowRequirementNotFoundMessage();
}

void TQuoraneGUIHelpers::ShowRequirementNotFoundMessage() {
    Application().MessageBox(SRequirementNotInBaseline, SMessageCaption, TMessageIcon::Warning);
}
