// The custom tabs behind the fixed tabs of a requirement, built from its type whenever
// a requirement is shown.
#include "frames/ScopedFlag.h"
#include "panel/QuoraneDockForm.h"
#include "platform/widgets/Containers.h"
#include "platform/widgets/look/ImageList.h"
#include "platform/widgets/look/Images.h"
#include "platform/widgets/tree/ListView.h"
#include "server/UListClearer.h"
#include "server/UQuoraneStHelpers.h"

using namespace Quorane_TLB;

namespace {

constexpr int TopOfFirstControl = 10;

} // namespace

void TfrmQuoraneMain::RefreshCustomTabs() {
    if (!pgcRequirement) return;
    const TWinControl::TUpdate held(*pgcRequirement);
    const int active = pgcRequirement->ActivePageIndex();
    CreateCustomTabs();
    pgcRequirement->SetActivePageIndex(active);
}

void TfrmQuoraneMain::CreateCustomTabs() {
    const TScopedFlag creating(FHelpers.CreatingCustomTabs);
    for (int index = pgcRequirement->PageCount() - 1; index >= rtFirstCustom; --index)
        pgcRequirement->FreePage(index);
    imgTabs->Truncate(tbFirstCustom);
    const Handle<IRequirementType> type = FHelpers.CurrentRequirement->Get_RequirementType();
    const auto tabs = EnumerableStCollection(type->Get_CustomTabs())->GetEnumerator();
    while (tabs->MoveNext())
        CreateCustomTab(Cast<ICustomTab>(tabs->GetCurrent()));
}

void TfrmQuoraneMain::CreateCustomTab(const Handle<ICustomTab>& tab) {
    auto* sheet = new TTabSheet(*pgcRequirement, std::string(), Utf8(tab->Get_Name()));
    sheet->SetName(FHelpers.UDAControlName(*pgcRequirement));
    sheet->SetImageIndex(AddTabImage(tab));
    auto* box = new TScrollBox(sheet);
    box->SetAlign(TAlign::Client);
    box->SetName(FHelpers.UDAControlName(*sheet));
    int top = TopOfFirstControl;
    const auto attributes = EnumerableStCollection(tab->Get_Attributes())->GetEnumerator();
    while (attributes->MoveNext())
        FHelpers.CreateAttributeControl(top, *box, Cast<IAttribute>(attributes->GetCurrent()));
}

int TfrmQuoraneMain::AddTabImage(const Handle<ICustomTab>& tab) {
    const std::unique_ptr<TBitmap> icon = FHelpers.GenerateTempIcon(tab->Get_Icon());
    return icon ? imgTabs->AddMasked(*icon, icon->Pixel(0, 0)) : tbCustom;
}

void TfrmQuoraneMain::ShowCustomTabAttributes(TListItem* item) {
    if (!item) return;
    ClearListView(*lstCustomTabAttributes);
    const Handle<ICustomTab> tab = item->DataAs<TCustomTabContainer>()->CustomTab;
    const auto attributes = EnumerableStCollection(tab->Get_Attributes())->GetEnumerator();
    while (attributes->MoveNext()) {
        TListItem& row = lstCustomTabAttributes->AddItem();
        row.SetCaption(Utf8(Cast<IAttribute>(attributes->GetCurrent())->Get_Name()));
        row.SetImageIndex(imAttribute);
    }
}
