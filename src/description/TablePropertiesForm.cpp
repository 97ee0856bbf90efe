#include "description/TablePropertiesForm.h"

#include <algorithm>
#include <cctype>
#include <initializer_list>

#include "platform/widgets/Containers.h"
#include "server/UNumberText.h"
#include "server/UResourceStrings.h"

namespace {

constexpr int EdgeGap = 12;
constexpr int Gap = 8;
constexpr int EntryWidth = 72;
constexpr int LabelWidth = 96;
constexpr int UnitChars = 14;
constexpr int PercentIndex = 0;

const char* UnitAt(const TComboBox& units) {
    return units.ItemIndex() == PercentIndex ? "%" : "px";
}

// The values of the attribute are the same in any case.
int IndexOfAlignment(TComboBox& list, const std::string& alignment) {
    const auto lower = [](unsigned char letter) { return std::tolower(letter); };
    for (int index = 0; index < list.Items().Count(); ++index)
        if (std::ranges::equal(list.Items().Text(index), alignment, {}, lower, lower)) return index;
    return -1;
}

TComboBox* MakeList(TWinControl& parent, const char* name, std::initializer_list<const char*> entries) {
    auto* list = new TComboBox(&parent, name);
    for (const char* entry : entries)
        list->Items().Add(entry);
    list->SetItemIndex(0);
    return list;
}

} // namespace

// Lines of a label, an edit, and what stands beside the edit.
class TfrmTableProperties::TRows {
public:
    explicit TRows(TWinControl& area)
        : FArea(area)
        , FGrid(area.UseGridLayout()) {
        FGrid.SetMargins(Gap, Gap, Gap, Gap);
        FGrid.SetSpacing(Gap, Gap);
        FGrid.SetColumnMinimumWidth(0, LabelWidth);
        FGrid.SetColumnStretch(3, 1);
    }

    TEdit* AddEdit(const char* labelName, const char* caption, const char* name, const char* value) {
        auto* edit = new TEdit(&FArea, name);
        edit->SetText(std::string(value));
        edit->SetWidth(EntryWidth);
        AddLabel(labelName, caption, *edit);
        FGrid.Place(*edit, FRow++, 1);
        return edit;
    }
    TUpDown* AddUpDown(const char* name, TEdit& edit) {
        auto* arrows = new TUpDown(&FArea, name, edit);
        FGrid.Place(*arrows, FRow - 1, 2);
        return arrows;
    }
    TComboBox* AddUnits(const char* name, const char* accessibleName) {
        auto* list = MakeList(FArea, name, {SPercentOfWindow, SPixels});
        list->SetAccessibleName(accessibleName);
        list->SetMinimumChars(UnitChars);
        FGrid.Place(*list, FRow - 1, 2, 1, 2);
        return list;
    }
    void AddList(const char* labelName, const char* caption, TComboBox& list) {
        AddLabel(labelName, caption, list);
        FGrid.Place(list, FRow++, 1, 1, 3);
    }

private:
    void AddLabel(const char* name, const char* caption, TWinControl& control) {
        auto* label = new TLabel(&FArea, name, caption);
        label->SetFocusControl(control);
        FGrid.Place(*label, FRow, 0);
    }

    TWinControl& FArea;
    TGridLayout& FGrid;
    int FRow = 0;
};

TfrmTableProperties::TfrmTableProperties()
    : TForm(nullptr, "frmTableProperties") {
    SetCaption(STableProperties);
    SetBorderStyle(TBorderStyle::Dialog);
    TGridLayout& grid = UseGridLayout();
    grid.SetMargins(EdgeGap, EdgeGap, EdgeGap, EdgeGap);
    auto* gbSize = new TGroupBox(this, "gbSize", STableSize);
    BuildSize(*gbSize);
    grid.Place(*gbSize, 0, 0);
    auto* pnlLook = new TPanel(this, "pnlLook");
    BuildLook(*pnlLook);
    grid.Place(*pnlLook, 1, 0);
    auto* pnlButtons = new TPanel(this, "pnlButtons");
    BuildButtons(*pnlButtons);
    grid.Place(*pnlButtons, 2, 0);
    SetTabOrder({edtRows, edtColumns, edtWidth, cbxWidthUnits, edtHeight, cbxHeightUnits, cbxAlignment,
                 edtBorderWidth, edtCellPadding, edtCellSpacing, btnOk, btnCancel});
    SetActiveControl(*edtRows);
}

void TfrmTableProperties::BuildSize(TWinControl& box) {
    TRows rows(box);
    edtRows = rows.AddEdit("lblRows", STableRows, "edtRows", "2");
    upRows = rows.AddUpDown("upRows", *edtRows);
    edtColumns = rows.AddEdit("lblColumns", STableColumns, "edtColumns", "2");
    upColumns = rows.AddUpDown("upColumns", *edtColumns);
    edtWidth = rows.AddEdit("lblWidth", STableWidth, "edtWidth", "100");
    cbxWidthUnits = rows.AddUnits("cbxWidthUnits", STableWidthUnits);
    edtHeight = rows.AddEdit("lblHeight", STableHeight, "edtHeight", "1");
    cbxHeightUnits = rows.AddUnits("cbxHeightUnits", STableHeightUnits);
}

void TfrmTableProperties::BuildLook(TWinControl& area) {
    TRows rows(area);
    cbxAlignment = MakeList(area, "cbxAlignment", {SAlignmentLeft, SAlignmentRight, SAlignmentCenter});
    rows.AddList("lblAlignment", STableAlignment, *cbxAlignment);
    edtBorderWidth = rows.AddEdit("lblBorderWidth", STableBorderWidth, "edtBorderWidth", "1");
    upBorderWidth = rows.AddUpDown("upBorderWidth", *edtBorderWidth);
    edtCellPadding = rows.AddEdit("lblCellPadding", STableCellPadding, "edtCellPadding", "0");
    upCellPadding = rows.AddUpDown("upCellPadding", *edtCellPadding);
    edtCellSpacing = rows.AddEdit("lblCellSpacing", STableCellSpacing, "edtCellSpacing", "0");
    upCellSpacing = rows.AddUpDown("upCellSpacing", *edtCellSpacing);
}

void TfrmTableProperties::BuildButtons(TWinControl& area) {
    TGridLayout& grid = area.UseGridLayout();
    grid.SetMargins(0, Gap, 0, 0);
    grid.SetSpacing(Gap, 0);
    grid.SetColumnStretch(0, 1);
    btnOk = new TButton(&area, "btnOk", STableOk);
    btnOk->SetDefault(true);
    btnOk->SetModalResult(TModalResult::Ok);
    btnCancel = new TButton(&area, "btnCancel", STableCancel);
    btnCancel->SetCancel(true);
    btnCancel->SetModalResult(TModalResult::Cancel);
    grid.Place(*btnOk, 0, 1);
    grid.Place(*btnCancel, 0, 2);
}

bool ExecuteTableProperties(std::int32_t& rows, std::int32_t& columns, std::int32_t& width,
                            std::int32_t& height, std::int32_t& border, std::int32_t& cellPadding,
                            std::int32_t& cellSpacing, std::string& widthUnit, std::string& heightUnit,
                            std::string& alignment) {
    TfrmTableProperties dialog;
    dialog.upRows->SetPosition(rows);
    dialog.upColumns->SetPosition(columns);
    dialog.edtWidth->SetText(std::to_string(width));
    dialog.edtHeight->SetText(std::to_string(height));
    dialog.upCellPadding->SetPosition(cellPadding);
    dialog.upCellSpacing->SetPosition(cellSpacing);
    dialog.upBorderWidth->SetPosition(border);
    dialog.cbxAlignment->SetItemIndex(IndexOfAlignment(*dialog.cbxAlignment, alignment));
    dialog.cbxWidthUnits->SetItemIndex(widthUnit == "%" ? PercentIndex : PercentIndex + 1);
    dialog.cbxHeightUnits->SetItemIndex(heightUnit == "%" ? PercentIndex : PercentIndex + 1);
    if (dialog.ShowModal() != TModalResult::Ok) return false;

    std::int32_t numbers[7];
    const TEdit* const edits[] = {dialog.edtRows,       dialog.edtColumns,     dialog.edtWidth,
                                  dialog.edtHeight,     dialog.edtCellPadding, dialog.edtCellSpacing,
                                  dialog.edtBorderWidth};
    std::ranges::transform(edits, numbers, [](const TEdit* edit) { return UserTextToInteger(edit->Text()); });
    std::int32_t* const values[] = {&rows, &columns, &width, &height, &cellPadding, &cellSpacing, &border};
    std::ranges::for_each(values, [next = numbers](std::int32_t* value) mutable { *value = *next++; });
    alignment = dialog.cbxAlignment->Text();
    widthUnit = UnitAt(*dialog.cbxWidthUnits);
    heightUnit = UnitAt(*dialog.cbxHeightUnits);
    return true;
}
