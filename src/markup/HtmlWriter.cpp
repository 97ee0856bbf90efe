#include "markup/HtmlWriter.h"

#include <algorithm>
#include <array>

namespace Markup {

namespace {

constexpr std::array<std::string_view, 16> Empty = {"area",  "base",  "basefont", "br",    "col",     "embed",
                                                    "frame", "hr",    "img",      "input", "isindex", "link",
                                                    "meta",  "param", "source",   "wbr"};

void AppendStartTag(std::string& html, const xmlNode& element) {
    html += '<';
    html += View(element.name);
    for (const xmlAttr* attribute = element.properties; attribute; attribute = attribute->next) {
        html += ' ';
        html += View(attribute->name);
        html += "=\"";
        AppendEscaped(html, ValueOf(*attribute), true);
        html += '"';
    }
    html += IsEmptyElement(View(element.name)) ? " />" : ">";
}

void AppendNode(std::string& html, const xmlNode& node) {
    if (node.type == XML_TEXT_NODE) return AppendEscaped(html, View(node.content), false);
    if (node.type != XML_ELEMENT_NODE || IsElement(node, "script") || IsElement(node, "style")) return;
    AppendStartTag(html, node);
    if (IsEmptyElement(View(node.name))) return;
    for (const xmlNode* child = node.children; child; child = child->next)
        AppendNode(html, *child);
    html += "</";
    html += View(node.name);
    html += '>';
}

} // namespace

std::string Write(const HtmlDocument& document) {
    const xmlNode* const root = document.Root();
    if (!root) return {};
    if (document.IsWhole()) return Write(*root);
    std::string html;
    for (const xmlNode* part = root->children; part; part = part->next) {
        if (!IsElement(*part, "body")) {
            AppendNode(html, *part);
            continue;
        }
        for (const xmlNode* node = part->children; node; node = node->next)
            AppendNode(html, *node);
    }
    return html;
}

std::string Write(const xmlNode& node) {
    std::string html;
    AppendNode(html, node);
    return html;
}

bool IsEmptyElement(std::string_view name) {
    return std::ranges::binary_search(Empty, name);
}

void AppendEscaped(std::string& html, std::string_view text, bool quoted) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (c == '&')
            html += "&amp;";
        else if (c == '<')
            html += "&lt;";
        else if (c == '>')
            html += "&gt;";
        else if (c == '"' && quoted)
            html += "&quot;";
        else if (c == '\r')
            html += text.substr(at + 1).starts_with('\n') ? "" : "\n";
        else if (static_cast<unsigned char>(c) >= ' ' || c == '\t' || c == '\n')
            html += c;
    }
}

} // namespace Markup
