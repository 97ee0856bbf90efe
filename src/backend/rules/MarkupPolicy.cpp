#include "backend/rules/MarkupPolicy.h"

#include <algorithm>
#include <array>
#include <span>

namespace Backend {

namespace {

using Names = std::span<const std::string_view>;

// All tables are sorted.
constexpr std::array<std::string_view, 74> Kept = {
    "a",          "abbr",       "acronym", "address", "article", "aside",  "b",    "bdi",   "bdo",
    "big",        "blockquote", "body",    "br",      "caption", "center", "cite", "code",  "col",
    "colgroup",   "dd",         "del",     "dfn",     "dir",     "div",    "dl",   "dt",    "em",
    "figcaption", "figure",     "font",    "footer",  "h1",      "h2",     "h3",   "h4",    "h5",
    "h6",         "header",     "hr",      "i",       "img",     "ins",    "kbd",  "li",    "main",
    "mark",       "menu",       "nobr",    "ol",      "p",       "pre",    "q",    "s",     "samp",
    "section",    "small",      "span",    "strike",  "strong",  "sub",    "sup",  "table", "tbody",
    "td",         "tfoot",      "th",      "thead",   "time",    "tr",     "tt",   "u",     "ul",
    "var",        "wbr"};

// What shows no text of its own, or none once its frame or film is gone.
constexpr std::array<std::string_view, 25> Dropped = {
    "annotation", "annotation-xml", "area",     "audio",    "base",     "bgsound", "canvas",
    "desc",       "embed",          "frame",    "frameset", "head",     "iframe",  "isindex",
    "link",       "meta",           "metadata", "noembed",  "noframes", "param",   "script",
    "style",      "template",       "title",    "video"};

constexpr std::array<std::string_view, 42> PlainAttributes = {
    "abbr",        "align",       "alt",      "axis",    "bgcolor", "border",  "bordercolor",
    "cellpadding", "cellspacing", "char",     "charoff", "clear",   "color",   "cols",
    "colspan",     "compact",     "datetime", "dir",     "face",    "frame",   "headers",
    "height",      "hspace",      "id",       "lang",    "link",    "noshade", "nowrap",
    "rowspan",     "rules",       "scope",    "size",    "span",    "start",   "summary",
    "text",        "title",       "type",     "valign",  "value",   "vspace",  "width"};

// Office programs have properties of their own that begin with "text-" as well.
constexpr std::array<std::string_view, 25> StylePrefixes = {
    "background-color", "border",         "caption-side",   "clear",           "color",
    "direction",        "display",        "empty-cells",    "float",           "font",
    "height",           "letter-spacing", "line-height",    "list-style-type", "margin",
    "padding",          "table-layout",   "text-align",     "text-decoration", "text-indent",
    "text-shadow",      "text-transform", "vertical-align", "white-space",     "width"};

// Classes that mean something to the style sheet of an office program only.
constexpr std::array<std::string_view, 4> OfficeClasses = {"GramE", "Mso", "SpellE", "WordSection"};

bool Has(Names names, std::string_view name) {
    return std::ranges::binary_search(names, name);
}

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string Lower(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        c = Lower(c);
    return lower;
}

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view space = " \t\n\r\f";
    const std::size_t start = text.find_first_not_of(space);
    if (start == std::string_view::npos) return {};
    return text.substr(start, text.find_last_not_of(space) - start + 1);
}

// Functions reach other files and run; of them only those that make a colour pass.
// Escapes and comments could hide one.
bool IsSafeStyleValue(std::string_view value) {
    constexpr std::array<std::string_view, 4> colors = {"hsl", "hsla", "rgb", "rgba"};
    if (value.find_first_of("\\<>{}@") != std::string_view::npos) return false;
    if (value.find("/*") != std::string_view::npos) return false;
    for (std::size_t at = value.find('('); at != std::string_view::npos; at = value.find('(', at + 1)) {
        std::size_t start = at;
        while (start > 0 && (IsLetter(value[start - 1]) || value[start - 1] == '-'))
            --start;
        if (!Has(colors, Lower(value.substr(start, at - start)))) return false;
    }
    return true;
}

bool IsSafeStyleProperty(std::string_view property) {
    // The source of a border's picture; the rest of these only shape it.
    if (property.starts_with("border-image")) return false;
    return std::ranges::any_of(StylePrefixes,
                               [&](std::string_view prefix) { return property.starts_with(prefix); });
}

} // namespace

ElementRule RuleOfElement(std::string_view name) {
    if (Has(Kept, name)) return ElementRule::Keep;
    return Has(Dropped, name) ? ElementRule::Drop : ElementRule::Unwrap;
}

bool IsPlainAttribute(std::string_view element, std::string_view attribute) {
    // A name on anything but a link's target would hide a part of the page's own
    // interface.
    return Has(PlainAttributes, attribute) || (attribute == "name" && element == "a");
}

bool IsSafeAddress(std::string_view address) {
    constexpr std::array<std::string_view, 4> schemes = {"ftp", "http", "https", "mailto"};
    // Browsers skip these wherever they stand.
    if (std::ranges::any_of(address, [](char c) { return static_cast<unsigned char>(c) < ' '; }))
        return false;
    address = Trimmed(address);
    const std::size_t end = address.find_first_of(":/?#");
    if (end == std::string_view::npos || address[end] != ':') return true;
    return Has(schemes, Lower(address.substr(0, end)));
}

std::string CleanClasses(std::string_view classes) {
    std::string clean;
    for (classes = Trimmed(classes); !classes.empty(); classes = Trimmed(classes)) {
        const std::string_view name = classes.substr(0, classes.find_first_of(" \t\n\r\f"));
        classes.remove_prefix(name.size());
        const auto begins = [name](std::string_view prefix) { return name.starts_with(prefix); };
        if (std::ranges::any_of(OfficeClasses, begins)) continue;
        if (!clean.empty()) clean += ' ';
        clean += name;
    }
    return clean;
}

std::string CleanStyle(std::string_view style) {
    std::string clean;
    while (!style.empty()) {
        const std::size_t end = std::min(style.find(';'), style.size());
        const std::string_view declaration = style.substr(0, end);
        style.remove_prefix(std::min(end + 1, style.size()));
        const std::size_t colon = declaration.find(':');
        if (colon == std::string_view::npos) continue;
        const std::string property = Lower(Trimmed(declaration.substr(0, colon)));
        const std::string_view value = Trimmed(declaration.substr(colon + 1));
        if (value.empty() || !IsSafeStyleProperty(property) || !IsSafeStyleValue(value)) continue;
        if (!clean.empty()) clean += ' ';
        clean += property + ": " + std::string(value) + ';';
    }
    return clean;
}

} // namespace Backend
