#include "panel/UQuoraneGUIHelpers.h"

#include <memory>
#include <string>

#include "contracts/Exceptions.h"
#include "description/UDescriptionFrame.h"
#include "panel/QuoraneDockForm.h"
#include "platform/widgets/look/Images.h"
#include "platform/widgets/tree/TreeView.h"
#include "server/UResourceStrings.h"

using namespace Quorane_TLB;

namespace {

std::unique_ptr<TQuoraneGUIHelpers> TheHelpers;

bool MeansLockedByAnother(const std::string& text) {
    return text.find("ObjectLockedException") != std::string::npos ||
           text.find("Object is not locked by current user") != std::string::npos;
}

} // namespace

TQuoraneGUIHelpers& PanelHelpers() {
    if (!TheHelpers) TheHelpers = std::make_unique<TQuoraneGUIHelpers>();
    return *TheHelpers;
}

void FinalizeGUIHelpers() {
    TheHelpers.reset();
}

void TQuoraneGUIHelpers::SetSelectedNodeImage(int image) {
    TTreeNode* node = RequirementsTree ? RequirementsTree->Selected() : nullptr;
    if (!node) return;
    node->SetImageIndex(image);
    node->SetSelectedIndex(image);
}

void TQuoraneGUIHelpers::LockCurrentRequirement() {
    // Its reading has failed, so there is nothing that an edit could go to.
    if (!CurrentRequirement) throw EAbort();
    // Before the server is asked: an edit shows at once, also when the server is slow.
    SetSelectedNodeImage(imRequirementLocked);
    try {
        if (CurrentRequirement->Get_LockedByCurrentUser() != WordFalse) return;
        CurrentRequirement->lock();
    } catch (const std::exception& failure) {
        SetSelectedNodeImage(imRequirement);
        if (MeansLockedByAnother(failure.what())) throw Exception(SObjectLocked);
        frmQuoraneMain->HandleSDKException(failure);
        // The session is a new one, and what the caller would write to belongs to the old.
        throw EAbort();
    }
}

void TQuoraneGUIHelpers::UnlockCurrentRequirement() {
    if (!CurrentRequirement) return;
    CurrentRequirement->unlock();
    SetSelectedNodeImage(imRequirement);
}

void TQuoraneGUIHelpers::UpdateDescription() {
    if (TfrmQuoraneMain* panel = QuoranePanel()) panel->fraDescription->UpdateDescription();
}

void SaveByName(const Handle<IRequirement>& requirement) {
    std::string comment;
    CallByName(requirement, "save", {Variant::TextReference(comment)});
}
