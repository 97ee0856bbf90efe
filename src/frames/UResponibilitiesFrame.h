// The tab that says who is responsible for a requirement: the project's groups and
// their members with a check box each.
#pragma once

#include <string>

#include "frames/UBaseRequirementFrame.h"

class TImageList;
class TTreeNode;
class TTreeView;
struct TPoint;

class TfraResponsibilities : public TfraBaseRequirementFrame {
public:
    explicit TfraResponsibilities(TWinControl* parent, const std::string& name = "fraResponsibilities");

    void SetRequirement(const Quorane_TLB::Handle<Quorane_TLB::IRequirement>& requirement) override;

    // Adds the groups of the requirement's assignments below the project's node.
    void AddGroups();
    // Adds the members below a group's node, with the check states of its assignment.
    void AddGroupUsers(TTreeNode& group);
    // Sets the box of a node. With propagate the assignments of the requirement follow;
    // a group's box sets those members that have a node.
    void SetCheckState(TTreeNode& node, bool propagate, bool checked);
    // Whether the box is checked; a grey one is not.
    bool GetCheckState(const TTreeNode& node) const;
    // Sets the box of each group from its assignment.
    void CheckUncheckTopLevel();

    TTreeView* trvResponsibilities;

private:
    void trvResponsibilitiesMouseDown(TPoint position);
    void trvResponsibilitiesExpanding(TTreeNode& node);

    TImageList* imlUserGroup;
    TImageList* imlCheck;
    // A copy of the requirement's collection; the assignments in it are what changes.
    Quorane_TLB::Handle<Quorane_TLB::IStCollection> FAssignments;
};
