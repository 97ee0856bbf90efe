// The bar's command for tables.
#include <algorithm>

#include "description/TablePropertiesForm.h"
#include "description/UDHTMLHelper.h"
#include "description/UDescriptionToolbarFrame.h"
#include "server/UNumberText.h"
#include "server/UQuoraneStHelpers.h"

using Quorane_TLB::Utf8;
using Quorane_TLB::Wide;

namespace {

struct TTableProperties {
    std::int32_t Rows = 2;
    std::int32_t Columns = 2;
    std::int32_t Width = 100;
    std::int32_t Height = 1;
    std::int32_t Border = 1;
    std::int32_t CellPadding = 0;
    std::int32_t CellSpacing = 0;
    std::string WidthUnit = "%";
    std::string HeightUnit = "%";
    std::string Alignment = "Left";

    bool Ask() {
        return ExecuteTableProperties(Rows, Columns, Width, Height, Border, CellPadding, CellSpacing,
                                      WidthUnit, HeightUnit, Alignment);
    }
    std::u16string WidthText() const { return Wide(std::to_string(Width) + WidthUnit); }
    std::u16string HeightText() const { return Wide(std::to_string(Height) + HeightUnit); }
};

// Empty for an attribute that the element does not have.
std::string AttributeText(IHTMLElement& element, const char16_t* name) {
    const THtmlValue value = element.getAttribute(name);
    if (const auto* number = std::get_if<std::int32_t>(&value)) return std::to_string(*number);
    const auto* text = std::get_if<std::u16string>(&value);
    return text ? Utf8(*text) : std::string();
}

std::int32_t AttributeNumber(IHTMLElement& element, const char16_t* name) {
    const std::string text = AttributeText(element, name);
    return text.empty() ? 0 : UserTextToInteger(text);
}

// A length in percent, in pixels, or without a unit. An attribute that is not there is
// a zero without one.
void ReadLength(IHTMLElement& element, const char16_t* name, std::int32_t& length, std::string& unit) {
    std::string text = AttributeText(element, name);
    unit = text.ends_with('%') ? "%" : text.ends_with('x') ? "px" : "";
    text.resize(text.size() - std::min(text.size(), unit.size()));
    length = text.empty() && unit.empty() ? 0 : UserTextToInteger(text);
}

TTableProperties ReadTable(IHTMLElement& table) {
    TTableProperties properties;
    properties.Rows = THTMLHelper::GetTableRowCount(table);
    properties.Columns = THTMLHelper::GetTableColCount(table);
    ReadLength(table, u"width", properties.Width, properties.WidthUnit);
    ReadLength(table, u"height", properties.Height, properties.HeightUnit);
    properties.Border = AttributeNumber(table, u"border");
    properties.CellPadding = AttributeNumber(table, u"cellpadding");
    properties.CellSpacing = AttributeNumber(table, u"cellspacing");
    properties.Alignment = AttributeText(table, u"align");
    return properties;
}

void FillTable(IHTMLTable& table, const TTableProperties& properties) {
    for (std::int32_t row = 0; row < properties.Rows; ++row) {
        const THtmlHandle<IHTMLTableRow> line = table.insertRow(row);
        for (std::int32_t column = 0; column < properties.Columns; ++column)
            line->insertCell(column)->put_width(Wide(std::to_string(100 / properties.Columns) + "%"));
    }
    table.put_border(properties.Border);
    table.put_cellSpacing(properties.CellSpacing);
    table.put_cellPadding(properties.CellPadding);
    table.put_width(properties.WidthText());
    table.put_height(properties.HeightText());
    table.put_align(Wide(properties.Alignment));
}

} // namespace

void TfraDescriptionToolbar::btnInsertTableExecute() {
    if (std::dynamic_pointer_cast<IHTMLTable>(SelectedElement())) {
        ChangeSelectedTable();
        SetDocDirty();
    } else {
        InsertTable();
    }
}

void TfraDescriptionToolbar::InsertTable() {
    TTableProperties properties;
    if (!properties.Ask()) return;
    const THtmlHandle<IHTMLDocument2> document = DOMInterface();
    if (!document) return;
    const THtmlHandle<IHTMLElement> element = document->createElement("TABLE");
    element->get_style()->setAttribute(u"BORDER-COLLAPSE", u"collapse", 0);
    const auto table = std::dynamic_pointer_cast<IHTMLTable>(element);
    table->put_borderColor(u"black");
    FillTable(*table, properties);
    // The table stays outside: what goes in is its text, which the user can take back.
    if (const auto range = std::dynamic_pointer_cast<IHTMLTxtRange>(SelectedRange()))
        range->pasteHTML(element->get_outerHTML());
}

void TfraDescriptionToolbar::ChangeSelectedTable() {
    const THtmlHandle<IHTMLElement> table = SelectedElement();
    if (!table) return;
    TTableProperties properties = ReadTable(*table);
    if (!properties.Ask()) return;
    table->setAttribute(u"width", properties.WidthText());
    table->setAttribute(u"height", properties.HeightText());
    table->setAttribute(u"border", properties.Border);
    table->setAttribute(u"cellpadding", properties.CellPadding);
    table->setAttribute(u"cellspacing", properties.CellSpacing);
    table->setAttribute(u"align", Wide(properties.Alignment));
}
