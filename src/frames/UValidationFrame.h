// The tab with the validation procedure of a requirement, one free text.
#pragma once

#include <string>

#include "frames/UBaseRequirementFrame.h"

class TMemo;

class TfraValidation : public TfraBaseRequirementFrame {
public:
    explicit TfraValidation(TWinControl* parent, const std::string& name = "fraValidation");

    void SetRequirement(const Quorane_TLB::Handle<Quorane_TLB::IRequirement>& requirement) override;

    TMemo* mmoValidationProcedure;

private:
    void mmoValidationProcedureChange();
};
