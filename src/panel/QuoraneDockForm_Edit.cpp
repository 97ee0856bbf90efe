// The edit cycle. The server's lock is the mark of a changed requirement: a save
// writes it and gives the lock back, and what was not saved goes with the lock,
// because the next reading comes from the server.
#include "contracts/Exceptions.h"
#include "description/UDescriptionFrame.h"
#include "frames/ScopedFlag.h"
#include "frames/UDetailsFrame.h"
#include "panel/QuoraneDockForm.h"
#include "platform/widgets/Actions.h"
#include "platform/widgets/Edits.h"
#include "platform/widgets/tree/TreeView.h"
#include "server/UResourceStrings.h"

using namespace Quorane_TLB;

void TfrmQuoraneMain::SaveCurrentRequirement() {
    // The widget decides: the requirement itself holds a blank in place of no name.
    if (fraDetails->edtRequirementName->Text().empty()) throw Exception(SRequirementNameEmpty);
    const Handle<IRequirement> requirement = FHelpers.CurrentRequirement;
    const std::u16string html = fraDescription->GetDocumentHTML();
    // A selection that came while the engine was asked has saved it.
    if (FHelpers.CurrentRequirement != requirement) return;
    // A description that is not on show stays as the server has it.
    if (!html.empty() && !fraDescription->isKeyReferenced()) requirement->Get_Description()->Set_Text(html);
    SaveByName(requirement);
    FHelpers.UnlockCurrentRequirement();
    FHelpers.RefreshCurrentRequirement();
    ShowRequirementInfo(*trvRequirements->Selected());
    // Another selection may have come while the description was loading.
    if (FHelpers.CurrentRequirement) RefreshCustomTabs();
}

void TfrmQuoraneMain::SaveCurrentRequirementIfNeeded() {
    const Handle<IRequirement> requirement = FHelpers.CurrentRequirement;
    if (trvRequirements->Selected() && requirement && requirement->Get_LockedByCurrentUser() != WordFalse)
        SaveCurrentRequirement();
}

void TfrmQuoraneMain::actSaveExecute() {
    GuardServerCalls([this] {
        // A name that is still being typed in the tree belongs to what is saved.
        trvRequirements->EndEdit(false);
        SaveCurrentRequirement();
    });
}

void TfrmQuoraneMain::actCancelSaveExecute() {
    GuardServerCalls([this] {
        const TScopedFlag cancelling(FCancellingSave);
        trvRequirements->EndEdit(true);
        FHelpers.UnlockCurrentRequirement();
        FHelpers.RefreshCurrentRequirement();
        ShowRequirementInfo(*trvRequirements->Selected());
    });
}

void TfrmQuoraneMain::actCancelSaveUpdate() {
    // Guarded as commands are: whether the lock is held may have to be asked of a
    // server that has gone.
    GuardServerCalls([this] {
        if (FCancellingSave || FHandlingSDKException) return;
        const Handle<IRequirement> requirement = FHelpers.CurrentRequirement;
        const bool locked = requirement && requirement->Get_LockedByCurrentUser() != WordFalse;
        actSave->SetEnabled(locked);
        actCancelSave->SetEnabled(locked);
        if (requirement && !locked) LockForDescription();
    });
}

void TfrmQuoraneMain::LockForDescription() {
    if (!fraDescription->IsDirty()) return;
    try {
        FHelpers.LockCurrentRequirement();
    } catch (const std::exception&) {
        // Told once; only a further change asks for the lock again.
        fraDescription->ClearDirty();
        throw;
    }
}

void TfrmQuoraneMain::actUnlockExecute() {
    GuardServerCalls([this] {
        FHelpers.UnlockCurrentRequirement();
        // What stays in it unsaved must not take the lock again.
        fraDescription->ClearDirty();
    });
}

void TfrmQuoraneMain::actUnlockUpdate() {
    actUnlock->SetVisible(FHelpers.CurrentRequirement != nullptr);
}
