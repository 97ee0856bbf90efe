// Moving requirements: among their siblings, and under another node by dragging.
#include "panel/QuoraneDockForm.h"
#include "platform/widgets/Application.h"
#include "platform/widgets/tree/TreeView.h"
#include "server/UListClearer.h"
#include "server/UQuoraneStHelpers.h"
#include "server/UResourceStrings.h"

using namespace Quorane_TLB;

void TfrmQuoraneMain::MoveRequirementUp(const Handle<IRequirementTreeNode>& node) {
    const Handle<ITreeNode> parent = node->Get_Parent();
    const std::int32_t index = parent->indexOf(node);
    if (index == 0) return;
    parent->moveChild(node, index - 1);
    FHelpers.CurrentBaseline->Get_RequirementTree()->save();
    TTreeNode& selected = *trvRequirements->Selected();
    if (TTreeNode* before = selected.GetPrevSibling()) selected.MoveTo(*before, TNodeAttach::Insert);
}

void TfrmQuoraneMain::MoveRequirementDown(const Handle<IRequirementTreeNode>& node) {
    const Handle<ITreeNode> parent = node->Get_Parent();
    const std::int32_t index = parent->indexOf(node);
    if (index == parent->Get_ChildCount() - 1) return;
    parent->moveChild(parent->getChild(index + 1), index);
    FHelpers.CurrentBaseline->Get_RequirementTree()->save();
    TTreeNode& selected = *trvRequirements->Selected();
    if (TTreeNode* next = selected.GetNextSibling()) next->MoveTo(selected, TNodeAttach::Insert);
}

void TfrmQuoraneMain::actMoveReqUpExecute() {
    GuardServerCalls([this] {
        trvRequirements->EndEdit(false);
        MoveRequirementUp(CurrentRequirementTreeNode());
    });
}

void TfrmQuoraneMain::actMoveReqDownExecute() {
    GuardServerCalls([this] {
        trvRequirements->EndEdit(false);
        MoveRequirementDown(CurrentRequirementTreeNode());
    });
}

bool TfrmQuoraneMain::trvRequirementsDragOver(TWinControl* source, TPoint point) {
    // Only requirements can be moved: the server's tree knows no move of a type.
    if (source != trvRequirements || !IsRequirementSelected()) return false;
    const TTreeNode* selected = trvRequirements->Selected();
    const TTreeNode* target = trvRequirements->GetNodeAt(point.X, point.Y);
    return !target || (target != selected && target != selected->Parent() && target->Level() > 0);
}

void TfrmQuoraneMain::trvRequirementsDragDrop(TPoint point) {
    GuardServerCalls([&] {
        TTreeNode* target = trvRequirements->GetNodeAt(point.X, point.Y);
        TTreeNode* source = trvRequirements->Selected();
        if (target && source) MoveUnder(*source, *target);
    });
}

bool TfrmQuoraneMain::MoveAcceptedByUser(ITreeNode& source, ITreeNode& target) {
    if (source.Get_RequirementTypeID()->Get_IDNumber() == target.Get_RequirementTypeID()->Get_IDNumber())
        return true;
    const std::string question = std::string(SDataLoss1) + SDataLoss2 + SDataLoss3 + SDataLoss4;
    return Application().MessageBox(question, SDataLossWarning, TMessageIcon::Question,
                                    TMessageButtons::YesNo) != TMessageResult::No;
}

void TfrmQuoraneMain::MoveUnder(TTreeNode& source, TTreeNode& target) {
    const Handle<IRequirementTreeNode> sourceNode = RequirementContainer(&source).Node;
    const Handle<IRequirementTreeNode> targetNode = RequirementContainer(&target).Node;
    if (!MoveAcceptedByUser(*sourceNode, *targetNode)) return;
    target.Collapse();
    targetNode->addChild(sourceNode);
    Cast<IRequirementTree>(targetNode->Get_Tree())->save();
    const TNodeWatch watch(&target);
    ClearTreeNodeChildren(source);
    source.Delete();
    if (!watch.Node()) return;
    ClearTreeNodeChildren(target);
    target.SetHasChildren(true);
    target.Expand(false);
    if (TTreeNode* moved = FHelpers.FindRequirementTreeNode(sourceNode)) moved->SetSelected();
}
