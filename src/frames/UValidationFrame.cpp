#include "frames/UValidationFrame.h"

#include "frames/URequirementPanel.h"
#include "platform/widgets/Edits.h"
#include "server/UResourceStrings.h"

using namespace Quorane_TLB;

TfraValidation::TfraValidation(TWinControl* parent, const std::string& name)
    : TfraBaseRequirementFrame(parent, name) {
    TGridLayout& grid = UseGridLayout();
    auto* label = new TLabel(this, "lblValidationProcedure", SValidationProcedure);
    mmoValidationProcedure = new TMemo(this, "mmoValidationProcedure");
    label->SetFocusControl(*mmoValidationProcedure);
    grid.SetMargins(FrameMargin, FrameMargin, FrameMargin, FrameMargin);
    grid.SetSpacing(LabelGap, LabelGap);
    grid.Place(*label, 0, 0);
    grid.Place(*mmoValidationProcedure, 1, 0);
    grid.SetRowStretch(1, 1);
    mmoValidationProcedure->OnChange = [this] { mmoValidationProcedureChange(); };
}

void TfraValidation::SetRequirement(const Handle<IRequirement>& requirement) {
    TfraBaseRequirementFrame::SetRequirement(requirement);
    mmoValidationProcedure->SetText(requirement ? requirement->Get_Validation() : std::u16string());
    EnableDisableControls();
}

void TfraValidation::mmoValidationProcedureChange() {
    ChangeRequirement(
        [this] { GetRequirement()->Set_Validation(RequiredText(mmoValidationProcedure->Text())); });
}
