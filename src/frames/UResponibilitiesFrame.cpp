#include "frames/UResponibilitiesFrame.h"

#include "frames/URequirementPanel.h"
#include "platform/widgets/Edits.h"
#include "platform/widgets/look/ImageList.h"
#include "platform/widgets/look/Images.h"
#include "platform/widgets/tree/TreeView.h"
#include "server/UListClearer.h"
#include "server/UQuoraneStHelpers.h"
#include "server/UResourceStrings.h"

using namespace Quorane_TLB;

namespace {

constexpr int TreeWidth = 250;
constexpr int TreeMinHeight = 100;
constexpr int TreeMaxHeight = 450;
constexpr int TreeIndent = 19;

Handle<IGroupMemberAssignment> AssignmentOf(const TTreeNode& group) {
    return group.DataAs<TGroupMemberAssignmentContainer>()->Assignment;
}

void SetImages(TTreeNode& node, int image) {
    node.SetImageIndex(image);
    node.SetSelectedIndex(image);
}

void Assign(const Handle<IGroupMemberAssignment>& assignment, const TTreeNode& member, bool assigned) {
    const Handle<IUser> user = member.DataAs<TUserContainer>()->User;
    if (assigned)
        assignment->addUser(user);
    else
        assignment->removeUser(user);
}

} // namespace

TfraResponsibilities::TfraResponsibilities(TWinControl* parent, const std::string& name)
    : TfraBaseRequirementFrame(parent, name)
    , imlUserGroup(new TImageList(this, "imlUserGroup"))
    , imlCheck(new TImageList(this, "imlCheck")) {
    FillUserGroupImages(*imlUserGroup);
    FillCheckImages(*imlCheck);
    TGridLayout& grid = UseGridLayout();
    auto* label = new TLabel(this, "lblProjectGroupMembers", SProjectGroupMembers);
    trvResponsibilities = new TTreeView(this, "trvResponsibilities");
    label->SetFocusControl(*trvResponsibilities);
    trvResponsibilities->SetImages(imlUserGroup);
    trvResponsibilities->SetStateImages(imlCheck);
    trvResponsibilities->SetIndent(TreeIndent);
    trvResponsibilities->SetMinimumSize(TreeWidth, TreeMinHeight);
    trvResponsibilities->SetMaximumSize(TreeWidth, TreeMaxHeight);
    grid.SetMargins(FrameMargin, FrameMargin, FrameMargin, FrameMargin);
    grid.SetSpacing(LabelGap, LabelGap);
    grid.Place(*label, 0, 0);
    grid.Place(*trvResponsibilities, 1, 0);
    // The tree takes the height up to its limit; what is left stays below and beside.
    grid.SetRowStretch(1, TreeMaxHeight);
    grid.SetRowStretch(2, 1);
    grid.SetColumnStretch(1, 1);
    trvResponsibilities->OnMouseDown = [this](TMouseButton, TShiftState, TPoint position) {
        trvResponsibilitiesMouseDown(position);
    };
    trvResponsibilities->OnExpanding = [this](TTreeNode& node, bool&) { trvResponsibilitiesExpanding(node); };
}

void TfraResponsibilities::SetRequirement(const Handle<IRequirement>& requirement) {
    TfraBaseRequirementFrame::SetRequirement(requirement);
    ClearTreeView(*trvResponsibilities);
    if (requirement) {
        TTreeNode& project = trvResponsibilities->Add(Utf8(requirement->Get_Project()->Get_Name()));
        SetImages(project, ugProject);
        FAssignments =
            CoCollectionFactory::Create()->CreateByIStCollection(requirement->Get_ResponsibleUsers());
        AddGroups();
        project.Expand(false);
        CheckUncheckTopLevel();
    }
    EnableDisableControls();
}

void TfraResponsibilities::AddGroups() {
    TTreeNode& project = *trvResponsibilities->GetFirstNode();
    const auto assignments = EnumerableStCollection(FAssignments)->GetEnumerator();
    while (assignments->MoveNext()) {
        const auto assignment = Cast<IGroupMemberAssignment>(assignments->GetCurrent());
        TTreeNode& node = trvResponsibilities->AddChild(project, assignment->Get_Group()->Get_Name());
        node.SetData(std::make_unique<TGroupMemberAssignmentContainer>(assignment));
        SetImages(node, ugGroup);
        node.SetStateIndex(ckEmpty);
        node.SetHasChildren(true);
    }
}

void TfraResponsibilities::AddGroupUsers(TTreeNode& group) {
    const Handle<IGroupMemberAssignment> assignment = AssignmentOf(group);
    const auto users = EnumerableStCollection(assignment->Get_Group()->Get_Users())->GetEnumerator();
    while (users->MoveNext()) {
        const auto user = Cast<IUser>(users->GetCurrent());
        TTreeNode& node = trvResponsibilities->AddChild(group, user->Get_Name());
        node.SetData(std::make_unique<TUserContainer>(user));
        SetImages(node, ugGroup);
        SetCheckState(node, false, assignment->isUserAssigned(user->Get_UserID()) != WordFalse);
    }
}

void TfraResponsibilities::trvResponsibilitiesExpanding(TTreeNode& node) {
    GuardServerCalls([&] {
        if (node.Level() != 1) return;
        ClearTreeNodeChildren(node);
        // Clearing took the mark; a group keeps it without members, too, and when they
        // cannot be read.
        node.SetHasChildren(true);
        AddGroupUsers(node);
    });
}

void TfraResponsibilities::trvResponsibilitiesMouseDown(TPoint position) {
    GuardServerCalls([&] {
        if (trvResponsibilities->GetHitTestInfoAt(position.X, position.Y) != TTreeHit::OnStateIcon) return;
        GUIHelpers->LockCurrentRequirement();
        if (TTreeNode* node = trvResponsibilities->GetNodeAt(position.X, position.Y))
            SetCheckState(*node, true, !GetCheckState(*node));
    });
}

void TfraResponsibilities::SetCheckState(TTreeNode& node, bool propagate, bool checked) {
    const int state = checked ? ckChecked : ckEmpty;
    node.SetStateIndex(state);
    if (!propagate) return;
    if (node.DataAs<TUserContainer>()) {
        Assign(AssignmentOf(*node.Parent()), node, checked);
    } else if (node.DataAs<TGroupMemberAssignmentContainer>()) {
        for (TTreeNode* child = node.GetFirstChild(); child; child = child->GetNextSibling()) {
            Assign(AssignmentOf(node), *child, checked);
            child->SetStateIndex(state);
        }
    }
    GUIHelpers->LockCurrentRequirement();
    GetRequirement()->Set_ResponsibleUsers(FAssignments);
    CheckUncheckTopLevel();
}

bool TfraResponsibilities::GetCheckState(const TTreeNode& node) const {
    return node.StateIndex() == ckChecked;
}

void TfraResponsibilities::CheckUncheckTopLevel() {
    TTreeNode* group = trvResponsibilities->GetFirstNode()->GetFirstChild();
    for (; group; group = group->GetNextSibling()) {
        const Handle<IGroupMemberAssignment> assignment = AssignmentOf(*group);
        const std::int32_t assigned = assignment->Get_AssignedUsers()->Get_Count();
        if (assigned == 0)
            group->SetStateIndex(ckEmpty);
        else if (assigned == assignment->Get_Group()->Get_Users()->Get_Count())
            group->SetStateIndex(ckChecked);
        else
            group->SetStateIndex(ckGrey);
    }
}
