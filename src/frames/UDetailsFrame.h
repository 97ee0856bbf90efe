// The first tab of a requirement: name, tag and id, version, status, priority, owner.
#pragma once

#include <string>

#include "frames/UBaseRequirementFrame.h"

class TComboBox;
class TEdit;
class TImageList;

class TfraDetails : public TfraBaseRequirementFrame {
public:
    explicit TfraDetails(TWinControl* parent, const std::string& name = "fraDetails");

    void SetRequirement(const Quorane_TLB::Handle<Quorane_TLB::IRequirement>& requirement) override;
    // Reads all widgets from the requirement's object.
    void RefreshDetails();
    // Reads the session's users into cbxRequirementOwner and selects none.
    void FillOwnerCombo();

    // Owned by the frame.
    TEdit* edtRequirementName;
    TEdit* edtRequirementTagID;
    TEdit* edtRequirementVersion;
    TComboBox* cbxRequirementStatus;
    TComboBox* cbxRequirementPriority;
    TComboBox* cbxRequirementOwner;

private:
    void PlaceWidgets();
    void BindHandlers();
    void ShowNothing();
    std::string TagAndID() const;
    void RefreshOwner();
    void edtRequirementNameChange();
    void cbxRequirementStatusChange();
    void cbxRequirementPriorityChange();
    void cbxRequirementOwnerChange();

    TImageList* imlQuorane;
};
