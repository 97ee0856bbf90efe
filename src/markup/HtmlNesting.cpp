#include "markup/HtmlNesting.h"

#include <algorithm>
#include <array>
#include <span>

namespace Markup {

namespace {

using Names = std::span<const std::string_view>;

// All are sorted.
constexpr std::array<std::string_view, 5> TableParts = {"caption", "colgroup", "tbody", "tfoot", "thead"};
constexpr std::array<std::string_view, 1> Columns = {"col"};
constexpr std::array<std::string_view, 1> Rows = {"tr"};
constexpr std::array<std::string_view, 2> Cells = {"td", "th"};

bool IsOneOf(Names names, const xmlNode& node) {
    return node.type == XML_ELEMENT_NODE && std::ranges::binary_search(names, View(node.name));
}

bool IsSection(const xmlNode& node) {
    return IsElement(node, "tbody") || IsElement(node, "tfoot") || IsElement(node, "thead");
}

// The elements that an element consists of; none for one that takes any content.
Names PartsOf(const xmlNode& element) {
    if (IsElement(element, "table")) return TableParts;
    if (IsElement(element, "colgroup")) return Columns;
    if (IsElement(element, "tr")) return Cells;
    return IsSection(element) ? Names(Rows) : Names();
}

bool IsTablePart(const xmlNode& node) {
    return IsOneOf(TableParts, node) || IsOneOf(Columns, node) || IsOneOf(Rows, node) || IsOneOf(Cells, node);
}

// Whether the node is a part of the element, or will be with elements that are implied.
bool BelongsIn(const xmlNode& element, const xmlNode& node) {
    if (IsElement(element, "table")) return IsTablePart(node);
    return IsOneOf(PartsOf(element), node) || (IsSection(element) && IsOneOf(Cells, node));
}

void MoveStraysBefore(xmlNode& table, const xmlNode& part) {
    EachChild(part, [&](xmlNode* child) {
        if (BelongsIn(part, *child) && !PartsOf(*child).empty())
            MoveStraysBefore(table, *child);
        else if (!BelongsIn(part, *child) && !IsBlank(*child))
            xmlAddPrevSibling(&table, child);
    });
}

// Puts each run of such parts into an element of its own.
void Gather(const xmlNode& parent, Names parts, const char* name) {
    xmlNode* gathered = nullptr;
    EachChild(parent, [&](xmlNode* child) {
        const bool isPart = IsOneOf(parts, *child);
        if (!isPart && !IsBlank(*child)) gathered = nullptr;
        if (isPart && !gathered) {
            gathered = NewElement(child->doc, name);
            xmlAddPrevSibling(child, gathered);
        }
        if (!gathered) return;
        xmlUnlinkNode(child);
        xmlAddChild(gathered, child);
    });
}

void MendTable(xmlNode& table) {
    MoveStraysBefore(table, table);
    Gather(table, Cells, "tr");
    Gather(table, Rows, "tbody");
    Gather(table, Columns, "colgroup");
    EachChild(table, [](const xmlNode* part) {
        if (IsSection(*part)) Gather(*part, Cells, "tr");
    });
}

void MendTablesIn(const xmlNode& parent) {
    EachChild(parent, [](xmlNode* child) {
        MendTablesIn(*child);
        if (IsElement(*child, "table")) MendTable(*child);
    });
}

void MendPartsWithoutATable(const xmlNode& parent) {
    EachChild(parent, [&](xmlNode* child) {
        MendPartsWithoutATable(*child);
        if (!IsTablePart(*child) || IsOneOf(PartsOf(parent), *child)) return;
        if (IsElement(*child, "col"))
            Remove(child);
        else
            Rename(*child, "div");
    });
}

} // namespace

void MendTables(const HtmlDocument& document) {
    const xmlNode* const root = document.Root();
    if (!root) return;
    MendTablesIn(*root);
    MendPartsWithoutATable(*root);
}

} // namespace Markup
