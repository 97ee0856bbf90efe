// From a selection to the pages, tabs and frames.
#include "description/UDescriptionFrame.h"
#include "frames/ScopedFlag.h"
#include "frames/UBaseRequirementFrame.h"
#include "panel/QuoraneDockForm.h"
#include "platform/widgets/Containers.h"
#include "platform/widgets/Edits.h"
#include "platform/widgets/look/Images.h"
#include "platform/widgets/tree/ListView.h"
#include "platform/widgets/tree/TreeView.h"
#include "server/UListClearer.h"
#include "server/UQuoraneSession.h"
#include "server/UQuoraneStHelpers.h"

using namespace Quorane_TLB;

void TfrmQuoraneMain::ShowProjectInfo() {
    if (!FProject) return;
    nbkContents->SetPageIndex(ProjectPage);
    mmoProjectInfo->SetText(FProject->Get_Description());
}

void TfrmQuoraneMain::ShowRequirementTypeInfo(TTreeNode& node) {
    nbkContents->SetPageIndex(RequirementTypePage);
    const Handle<IQuoraneObjectID> id = RequirementContainer(&node).Node->Get_ID();
    const Handle<IRequirementType> type = CurrentSession().FindRequirementType(id);
    edtReqTypeName->SetText(type->Get_Name());
    edtReqTypeTag->SetText(type->Get_Tag());
    mmoReqTypeDescription->SetText(type->Get_Description());
    ClearListView(*lstReqTypeCustomTabs);
    const auto tabs = EnumerableStCollection(type->Get_CustomTabs())->GetEnumerator();
    while (tabs->MoveNext()) {
        const auto tab = Cast<ICustomTab>(tabs->GetCurrent());
        TListItem& item = lstReqTypeCustomTabs->AddItem();
        item.SetCaption(Utf8(tab->Get_Name()));
        item.SetData(std::make_unique<TCustomTabContainer>(tab));
        item.SetImageIndex(imCustomTab);
    }
    lstCustomTabAttributes->ClearItems();
    if (TListItem* first = lstReqTypeCustomTabs->Item(0)) {
        lstReqTypeCustomTabs->SetItemFocused(*first);
        ShowCustomTabAttributes(first);
    }
}

void TfrmQuoraneMain::ShowRequirementInfo(TTreeNode& node) {
    const TScopedFlag showing(FHelpers.ShowingRequirementInfo);
    const Handle<IRequirement> requirement = RequirementContainer(&node).GetRequirement();
    FHelpers.CurrentRequirement = requirement;
    if (nbkContents->PageIndex() != RequirementPage) {
        nbkContents->SetPageIndex(RequirementPage);
        pgcRequirement->SetActivePageIndex(rtDetails);
    }
    if (!requirement) return;
    // Whatever fails, no tab must go on showing the last requirement: a change there would
    // be written to that one.
    try {
        fraDescription->UpdateDescription();
    } catch (...) {
        if (FHelpers.CurrentRequirement == requirement) ShowTabs();
        throw;
    }
    // Another selection may have come while it was loading, and has shown itself.
    if (FHelpers.CurrentRequirement == requirement) ShowTabs();
}

void TfrmQuoraneMain::ShowTabs() {
    const auto showActivePage = [this] {
        if (pgcRequirement->ActivePageIndex() < 0)
            pgcRequirement->SetActivePageIndex(pgcRequirement->PageCount() - 1);
        ShowActivePageInfo();
    };
    try {
        RefreshCustomTabs();
    } catch (...) {
        showActivePage();
        throw;
    }
    showActivePage();
}

void TfrmQuoraneMain::ShowActivePageInfo() {
    const int index = pgcRequirement->ActivePageIndex();
    const auto frames = FixedFrames();
    if (index >= 0 && index < static_cast<int>(frames.size()))
        frames[static_cast<std::size_t>(index)]->SetRequirement(FHelpers.CurrentRequirement);
}

void TfrmQuoraneMain::pgcRequirementChange() {
    GuardServerCalls([this] {
        if (!QuoraneSession || !QuoraneSession->IsLoggedIn()) return;
        const TScopedFlag showing(FHelpers.ShowingRequirementInfo);
        ShowActivePageInfo();
    });
}

void TfrmQuoraneMain::lstReqTypeCustomTabsSelectItem(TListItem& item, bool selected) {
    GuardServerCalls([&] {
        if (selected) ShowCustomTabAttributes(&item);
    });
}

void TfrmQuoraneMain::nbkContentsPageChanged() {
    if (nbkContents->PageIndex() == RequirementPage) ResizeDescription();
}
