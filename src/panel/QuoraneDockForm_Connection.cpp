// The way from the menu command to a selected baseline, refresh and logoff.
#include <charconv>

#include "contracts/Exceptions.h"
#include "description/UDescriptionFrame.h"
#include "panel/QuoraneDockForm.h"
#include "platform/widgets/Actions.h"
#include "platform/widgets/Containers.h"
#include "platform/widgets/Lists.h"
#include "platform/widgets/tree/TreeView.h"
#include "server/UListClearer.h"
#include "server/UQuoraneLogonForm.h"
#include "server/UQuoraneSession.h"
#include "server/UQuoraneStHelpers.h"
#include "server/UResourceStrings.h"

using namespace Quorane_TLB;

namespace {

constexpr int FirstVersionWithTallyworks = 7;

int MajorVersion(const std::string& version) {
    const std::string major = version.substr(0, version.find('.'));
    int number = 0;
    const char* end = major.data() + major.size();
    const auto [rest, error] = std::from_chars(major.data(), end, number);
    if (error != std::errc() || rest != end) throw EConvertError(std::string(SNoVersionNumber) + version);
    return number;
}

// The object behind the selected entry; raises when the list has no selection.
template<class TContainer> TContainer& SelectedContainer(TComboBox& list) {
    auto* container = list.Items().ObjectAs<TContainer>(list.ItemIndex());
    if (!container) throw Exception(SNothingSelected);
    return *container;
}

} // namespace

void TfrmQuoraneMain::ProceedLogon() {
    if (!DoLogon()) return;
    ShowDockableForm(this);
    actTallyworks->SetVisible(MajorVersion(CurrentSession().ServerVersion()) >= FirstVersionWithTallyworks);
    nbkParent->SetPageIndex(ConnectedPage);
    // The bar was laid out while its page was hidden.
    pnlProjectBaseline->SetAutoSize(false);
    pnlProjectBaseline->SetAutoSize(true);
    FillProjects();
}

bool TfrmQuoraneMain::DoLogon() {
    try {
        TfrmQuoraneLogon logon(this);
        if (logon.ShowModal() != TModalResult::Ok) return false;
        CurrentSession().EnsureIntegrationAdded();
        return true;
    } catch (...) {
        Application().HandleException();
        return false;
    }
}

void TfrmQuoraneMain::FillProjects() {
    // The handle may stem from a session that has ended; its name is still there.
    const bool hadProject = FProject != nullptr;
    const std::string name = hadProject ? Utf8(FProject->Get_Name()) : std::string();
    TStrings& items = cbxProjects->Items();
    ClearStrings(items);
    const auto projects = CurrentSession().GetProjects()->GetEnumerator();
    while (projects->MoveNext()) {
        const auto project = Cast<IProject>(projects->GetCurrent());
        items.AddObject(Utf8(project->Get_Name()), std::make_unique<TProjectContainer>(project));
    }
    if (items.Count() == 0) return;
    const int kept = hadProject ? items.IndexOf(name) : -1;
    cbxProjects->SetItemIndex(kept >= 0 ? kept : 0);
    cbxProjectsChange();
}

void TfrmQuoraneMain::SelectProject(const Handle<IProject>& project) {
    FProject = project;
}

void TfrmQuoraneMain::FillBaseLines() {
    TStrings& items = cbxProjectBaselines->Items();
    ClearStrings(items);
    const auto baselines = EnumerableStCollection(FProject->Get_Baselines())->GetEnumerator();
    while (baselines->MoveNext()) {
        const auto baseline = Cast<IBaseline>(baselines->GetCurrent());
        if (baseline->Get_Type() == baseline->Get_TYPE_DELETED()) continue;
        items.AddObject(Utf8(baseline->Get_Name()), std::make_unique<TBaseLineContainer>(baseline));
    }
    if (items.Count() == 0) return;
    cbxProjectBaselines->SetItemIndex(0);
    cbxProjectBaselinesChange();
}

void TfrmQuoraneMain::cbxProjectsChange() {
    GuardServerCalls([this] {
        const Handle<IRequirement>& requirement = FHelpers.CurrentRequirement;
        if (requirement && requirement->Get_LockedByCurrentUser() != WordFalse) requirement->unlock();
        // Without a baseline the tree stays; what is unsaved in it must take no new lock.
        fraDescription->ClearDirty();
        SelectProject(SelectedContainer<TProjectContainer>(*cbxProjects).Project);
        FillBaseLines();
    });
}

void TfrmQuoraneMain::cbxProjectBaselinesChange() {
    GuardServerCalls(
        [this] { SelectBaseLine(SelectedContainer<TBaseLineContainer>(*cbxProjectBaselines).Baseline); });
}

void TfrmQuoraneMain::RefreshAll() {
    CurrentSession().RefreshSession();
    FillProjects();
}

void TfrmQuoraneMain::actRefreshExecute() {
    GuardServerCalls([this] {
        trvRequirements->EndEdit(false);
        SaveCurrentRequirementIfNeeded();
        RefreshAll();
    });
}

void TfrmQuoraneMain::actLogoffExecute() {
    // A name being typed would ask the session that has ended for a lock.
    trvRequirements->EndEdit(true);
    CurrentSession().Logout();
    HideForm();
    if (const std::shared_ptr<IHostTabFrame> tab = FTabFrame) tab->Close();
    nbkParent->SetPageIndex(LoginPage);
}
