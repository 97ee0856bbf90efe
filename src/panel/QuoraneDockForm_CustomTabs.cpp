// The tabs that a requirement type defines.
#include "panel/QuoraneDockForm.h"
#include "platform/widgets/look/Images.h"
#include "platform/widgets/tree/ListView.h"
#include "server/UQuoraneStHelpers.h"

using namespace Quorane_TLB;

void TfrmQuoraneMain::ShowCustomTabAttributes(TListItem* item) {
    const auto* container = item ? item->DataAs<TCustomTabContainer>() : nullptr;
    if (!container) return;
    lstCustomTabAttributes->ClearItems();
    const auto attributes = EnumerableStCollection(container->CustomTab->Get_Attributes())->GetEnumerator();
    while (attributes->MoveNext()) {
        TListItem& entry = lstCustomTabAttributes->AddItem();
        entry.SetCaption(Utf8(Cast<IAttribute>(attributes->GetCurrent())->Get_Name()));
        entry.SetImageIndex(imAttribute);
    }
}

void TfrmQuoraneMain::RefreshCustomTabs() {}
