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
constexpr std::array<std::string_view, 1> Links = {"a"};
constexpr std::array<std::string_view, 1> Unbroken = {"nobr"};
constexpr std::array<std::string_view, 6> Headings = {"h1", "h2", "h3", "h4", "h5", "h6"};
constexpr std::array<std::string_view, 1> ListItems = {"li"};
constexpr std::array<std::string_view, 2> Definitions = {"dd", "dt"};
constexpr std::array<std::string_view, 3> PlainBlocks = {"address", "div", "p"};

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

// Whether the node is a part of the element, or will be with elements that are implied.
bool BelongsIn(const xmlNode& element, const xmlNode& node) {
    if (IsElement(element, "table")) return IsTablePart(node);
    return IsOneOf(PartsOf(element), node) || (IsSection(element) && IsOneOf(Cells, node));
}

// What stands behind goes behind the element. Text is joined to its neighbour, so the
// last goes first.
void EndBefore(xmlNode& element, const xmlNode* child) {
    for (bool moved = false; !moved;) {
        moved = element.last == child;
        xmlAddNextSibling(&element, element.last);
    }
}

// A part ends what is open below the element of its table that takes it. Each step puts
// it and what stands behind it one level up, where it is met again.
void RaiseParts(xmlNode& parent, bool isInTable) {
    for (xmlNode* child = parent.children; child; child = child->next) {
        if (isInTable && IsTablePart(*child) && !BelongsIn(parent, *child)) return EndBefore(parent, child);
        RaiseParts(*child, isInTable || IsElement(*child, "table"));
    }
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
        if (IsTablePart(*child) && !IsOneOf(PartsOf(parent), *child)) {
            if (IsElement(*child, "col")) return Remove(child);
            Rename(*child, "div");
        }
        MendPartsWithoutATable(*child);
    });
}

// A block would end its paragraph, however deep in it. Returns whether there is a block.
bool MendParagraphs(const xmlNode& parent) {
    bool found = false;
    EachChild(parent, [&](xmlNode* child) {
        const bool holdsBlock = MendParagraphs(*child);
        found |= holdsBlock || IsBlock(*child);
        if (holdsBlock && IsElement(*child, "p")) Rename(*child, "div");
    });
    return found;
}

bool Holds(const xmlNode& node, Names names) {
    bool found = IsOneOf(names, node);
    EachChild(node, [&](const xmlNode* child) { found = found || Holds(*child, names); });
    return found;
}

// For elements that the next of their kind ends; whether a child is or holds the next.
template<class IsNext> void EndBeforeTheNext(const xmlNode& parent, Names kind, IsNext isNext) {
    for (xmlNode* child = parent.children; child; child = child->next) {
        const xmlNode* inner = IsOneOf(kind, *child) ? child->children : nullptr;
        while (inner && !isNext(*inner))
            inner = inner->next;
        if (inner) EndBefore(*child, inner);
        EndBeforeTheNext(*child, kind, isNext);
    }
}

// An item ends another of its kind unless it is in a list of its own.
void MendItems(const xmlNode& parent, Names open) {
    EachChild(parent, [&](xmlNode* child) {
        if (IsOneOf(open, *child)) Rename(*child, "div");
        Names within = open;
        if (IsElement(*child, "li"))
            within = ListItems;
        else if (IsOneOf(Definitions, *child))
            within = Definitions;
        else if (IsBlock(*child) && !IsOneOf(PlainBlocks, *child))
            within = {};
        MendItems(*child, within);
    });
}

} // namespace

bool IsTablePart(const xmlNode& node) {
    return IsOneOf(TableParts, node) || IsOneOf(Columns, node) || IsOneOf(Rows, node) || IsOneOf(Cells, node);
}

void MendNesting(const HtmlDocument& document) {
    xmlNode* const root = document.Root();
    if (!root) return;
    RaiseParts(*root, false);
    MendTablesIn(*root);
    MendPartsWithoutATable(*root);
    for (const Names kind : {Names(Links), Names(Unbroken)})
        EndBeforeTheNext(*root, kind, [kind](const xmlNode& node) { return Holds(node, kind); });
    EndBeforeTheNext(*root, Headings, [](const xmlNode& node) { return IsOneOf(Headings, node); });
    MendItems(*root, {});
    MendParagraphs(*root);
}

} // namespace Markup
