#include "frames/URequirementPanel.h"

TRequirementContext* GUIHelpers = nullptr;
TRequirementPanel* frmQuoraneMain = nullptr;

TRequirementContext::TRequirementContext() {
    GUIHelpers = this;
}

TRequirementContext::~TRequirementContext() {
    if (GUIHelpers == this) GUIHelpers = nullptr;
}

TRequirementPanel::TRequirementPanel() {
    frmQuoraneMain = this;
}

TRequirementPanel::~TRequirementPanel() {
    if (frmQuoraneMain == this) frmQuoraneMain = nullptr;
}
