#include "frames/URequirementPanel.h"

#include "platform/widgets/Edits.h"
#include "platform/widgets/Lists.h"
#include "server/UQuoraneStHelpers.h"

using namespace Quorane_TLB;

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

void TRequirementContext::EnableDisableControl(bool enabled, TWinControl& control) {
    control.SetEnabled(enabled);
    if (!enabled)
        control.SetColor(clInactiveCaptionText);
    else if (dynamic_cast<TCheckBox*>(&control))
        control.SetParentColor(true);
    else
        control.SetColor(clWindow);
}

void TRequirementContext::FillUDAList(TComboBox& list, const Handle<IUDAListValue>& value) {
    TStrings& items = list.Items();
    items.Clear();
    const auto entries = EnumerableStCollection(value->Get_Entries())->GetEnumerator();
    const std::int32_t offered = value->Get_EntryCount();
    for (std::int32_t count = 1; count <= offered && entries->MoveNext(); ++count) {
        const std::string text = VarToStr(Cast<IUDAListEntry>(entries->GetCurrent())->Get_Value());
        if (items.IndexOf(text) < 0) items.Add(text);
    }
    const Variant selected = value->Get_SelectedValue();
    if (!selected.IsNull()) list.SetItemIndex(items.IndexOf(VarToStr(selected)));
}

void TRequirementContext::ResizeEqually(TControl& first, TControl& second, int gap) {
    const int parentHeight = first.Parent()->ClientHeight();
    first.SetHeight(parentHeight / 2 - first.Top() - gap / 2);
    second.SetHeight(first.Height());
    second.SetTop(parentHeight - first.Top() - second.Height());
}
