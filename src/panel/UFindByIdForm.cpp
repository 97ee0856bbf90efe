#include "panel/UFindByIdForm.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>
#include <string>

#include "panel/UQuoraneGUIHelpers.h"
#include "platform/widgets/Edits.h"
#include "server/UResourceStrings.h"

TfrmFindById* frmFindById = nullptr;

namespace {

constexpr int EdgeGap = 12;
constexpr int Gap = 8;
constexpr int EntryWidth = 180;

// Empty when no digit remains or the number does not fit.
std::optional<std::int32_t> NumberIn(const std::string& text) {
    std::string digits;
    std::ranges::copy_if(text, std::back_inserter(digits), [](char c) { return c >= '0' && c <= '9'; });
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (digits.empty() || error != std::errc()) return std::nullopt;
    return number;
}

} // namespace

TfrmFindById::TfrmFindById()
    : TForm(nullptr, "frmFindById") {
    SetCaption(SFindByIdCaption);
    SetBorderStyle(TBorderStyle::Dialog);
    TGridLayout& grid = UseGridLayout();
    grid.SetMargins(EdgeGap, EdgeGap, EdgeGap, EdgeGap);
    grid.SetSpacing(Gap, Gap);
    edtID = new TEdit(this, "edtID");
    edtID->SetMinimumSize(EntryWidth, 0);
    auto* lblFind = new TLabel(this, "lblFind", SFindWhat);
    lblFind->SetFocusControl(*edtID);
    btnFind = new TButton(this, "btnFind", SFind);
    btnFind->SetDefault(true);
    btnFind->SetModalResult(TModalResult::Ok);
    btnCancel = new TButton(this, "btnCancel", SFindCancel);
    btnCancel->SetCancel(true);
    btnCancel->SetModalResult(TModalResult::Cancel);
    grid.Place(*lblFind, 0, 0);
    grid.Place(*edtID, 0, 1);
    grid.Place(*btnFind, 0, 2);
    grid.Place(*btnCancel, 1, 2);
    SetTabOrder({edtID, btnFind, btnCancel});
    SetActiveControl(*edtID);
    frmFindById = this;
}

TfrmFindById::~TfrmFindById() {
    frmFindById = nullptr;
}

void ExecuteSearchById() {
    TfrmFindById dialog;
    if (dialog.ShowModal() != TModalResult::Ok) return;
    if (const std::optional<std::int32_t> number = NumberIn(dialog.edtID->Text()))
        PanelHelpers().SearchNodeById(*number);
    else
        PanelHelpers().ShowRequirementNotFoundMessage();
}
