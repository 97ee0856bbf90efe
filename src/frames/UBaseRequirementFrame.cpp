#include "frames/UBaseRequirementFrame.h"

#include "frames/URequirementPanel.h"

using namespace Quorane_TLB;

TfraBaseRequirementFrame::TfraBaseRequirementFrame(TWinControl* parent, const std::string& name)
    : TFrame(parent, name) {}

Handle<IRequirement> TfraBaseRequirementFrame::GetRequirement() const {
    return FRequirement;
}

void TfraBaseRequirementFrame::SetRequirement(const Handle<IRequirement>& requirement) {
    FRequirement = requirement;
}

void TfraBaseRequirementFrame::EnableDisableControls() {
    const bool enabled = StandsInCurrentBaseline(GetRequirement());
    for (TWinControl* control : InputControls())
        TRequirementContext::EnableDisableControl(enabled, *control);
}

bool StandsInCurrentBaseline(const Handle<IRequirement>& requirement) {
    if (!requirement) return false;
    const Handle<IBaseline> baseline = requirement->Get_Baseline();
    return baseline->Get_Type() == baseline->Get_TYPE_CURRENT();
}

std::u16string RequiredText(const std::string& text) {
    return Wide(text.empty() ? " " : text);
}
