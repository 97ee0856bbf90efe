#include "markup/HtmlDocument.h"

#include <libxml/HTMLparser.h>
#include <libxml/SAX2.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <new>

namespace Markup {

namespace {

// All in lower case and sorted.
constexpr std::array<std::string_view, 47> Blocks = {
    "address", "article", "aside",   "blockquote", "body",     "caption", "center",   "dd",
    "details", "dialog",  "dir",     "div",        "dl",       "dt",      "fieldset", "figcaption",
    "figure",  "footer",  "form",    "h1",         "h2",       "h3",      "h4",       "h5",
    "h6",      "header",  "hgroup",  "hr",         "html",     "legend",  "li",       "listing",
    "main",    "menu",    "nav",     "ol",         "optgroup", "option",  "p",        "plaintext",
    "pre",     "section", "summary", "table",      "tr",       "ul",      "xmp"};

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// The parser leaves references out that name no character. Browsers show a replacement
// for these, and a reference without a number as text.
std::string WithReferencesMended(std::string_view html) {
    std::string mended;
    for (;;) {
        const std::size_t start = html.find("&#");
        mended += html.substr(0, start);
        if (start == std::string_view::npos) return mended;
        html.remove_prefix(start + 2);
        const bool isHex = html.starts_with('x') || html.starts_with('X');
        const char* const last = html.data() + html.size();
        std::uint32_t code = 0;
        const auto [end, error] = std::from_chars(html.data() + isHex, last, code, isHex ? 16 : 10);
        if (error == std::errc::invalid_argument) {
            mended += "&amp;#";
        } else if (error == std::errc() && xmlIsCharQ(code)) {
            mended += "&#";
        } else {
            mended += "\uFFFD";
            html.remove_prefix(static_cast<std::size_t>(end - html.data()));
            if (html.starts_with(';')) html.remove_prefix(1);
        }
    }
}

// How long a tag or comment is that begins the text. A quote counts behind a "=" only.
std::size_t LengthOfTag(std::string_view html) {
    if (html.starts_with("<!--")) return std::min(html.find("-->", 2), html.size() - 3) + 3;
    char quote = 0;
    for (std::size_t i = 1; i < html.size(); ++i) {
        const char c = html[i];
        if (quote)
            quote = c == quote ? '\0' : quote;
        else if (c == '>')
            return i + 1;
        else if ((c == '"' || c == '\'') && html[html.find_last_not_of(" \t\r\n\f", i - 1)] == '=')
            quote = c;
    }
    return html.size();
}

// The faults over which the parser leaves text out or stops.
void Judge(void* lost, xmlErrorPtr fault) {
    constexpr std::array<int, 4> losses = {XML_ERR_ATTRIBUTE_NOT_FINISHED, XML_ERR_COMMENT_NOT_FINISHED,
                                           XML_ERR_GT_REQUIRED, XML_ERR_PI_NOT_FINISHED};
    if (fault->level == XML_ERR_FATAL || std::ranges::find(losses, fault->code) != losses.end())
        *static_cast<bool*>(lost) = true;
}

// The library takes a prefix off a name, which would make a paragraph of "o:p".
void StartElement(void* parser, const xmlChar* name, const xmlChar** attributes) {
    std::string whole(View(name));
    std::ranges::replace(whole, ':', '-');
    xmlSAX2StartElement(parser, reinterpret_cast<const xmlChar*>(whole.c_str()), attributes);
}

xmlDoc* Parse(const std::string& html, Nesting nesting, bool& lost) {
    using Parser = std::unique_ptr<htmlParserCtxt, decltype(&htmlFreeParserCtxt)>;
    static const bool ready = (xmlInitParser(), true);
    const Parser parser(ready ? htmlNewParserCtxt() : nullptr, htmlFreeParserCtxt);
    if (!parser) throw std::bad_alloc();
    parser->sax->startElement = StartElement;
    // The reading below leaves an option alone that it does not know.
    if (nesting == Nesting::Any) parser->options |= XML_PARSE_HUGE;
    // The library keeps the handler for each thread.
    const auto oldHandler = xmlStructuredError;
    void* const oldContext = xmlStructuredErrorContext;
    xmlSetStructuredErrorFunc(&lost, Judge);
    xmlDoc* const document =
        htmlCtxtReadMemory(parser.get(), html.data(), static_cast<int>(html.size()), nullptr, "UTF-8",
                           HTML_PARSE_NODEFDTD | HTML_PARSE_NONET | HTML_PARSE_IGNORE_ENC);
    xmlSetStructuredErrorFunc(oldContext, oldHandler);
    lost |= document == nullptr;
    return document;
}

} // namespace

HtmlDocument::HtmlDocument(std::string_view html, Nesting nesting)
    : FWhole(FindTag(html, "<body") < html.size() || FindTag(html, "<html") < html.size())
    , FDocument(Parse((FWhole ? "" : "<html><body>") + WithReferencesMended(html), nesting, FLost),
                xmlFreeDoc) {}

xmlNode* HtmlDocument::Body() const {
    const xmlNode* const root = Root();
    xmlNode* child = root ? root->children : nullptr;
    while (child && !IsElement(*child, "body"))
        child = child->next;
    return child;
}

std::string_view View(const xmlChar* text) {
    return text ? reinterpret_cast<const char*>(text) : std::string_view();
}

const xmlAttr* FindAttribute(const xmlNode& element, std::string_view name) {
    const xmlAttr* attribute = element.type == XML_ELEMENT_NODE ? element.properties : nullptr;
    while (attribute && View(attribute->name) != name)
        attribute = attribute->next;
    return attribute;
}

std::string ValueOf(const xmlAttr& attribute) {
    const std::unique_ptr<xmlChar, xmlFreeFunc> value(
        xmlNodeListGetString(attribute.doc, attribute.children, 1), xmlFree);
    return std::string(View(value.get()));
}

std::string ValueOf(const xmlNode& element, std::string_view attribute) {
    const xmlAttr* const found = FindAttribute(element, attribute);
    return found ? ValueOf(*found) : std::string();
}

bool IsElement(const xmlNode& node, std::string_view name) {
    return node.type == XML_ELEMENT_NODE && View(node.name) == name;
}

bool IsBlock(const xmlNode& element) {
    return element.type == XML_ELEMENT_NODE && std::ranges::binary_search(Blocks, View(element.name));
}

bool IsBlank(const xmlNode& node) {
    if (node.type == XML_COMMENT_NODE) return true;
    return node.type == XML_TEXT_NODE && xmlIsBlankNode(&node);
}

xmlNode* NewElement(xmlDoc* document, const char* name) {
    return xmlNewDocNode(document, nullptr, reinterpret_cast<const xmlChar*>(name), nullptr);
}

void Rename(xmlNode& element, const char* name) {
    xmlNodeSetName(&element, reinterpret_cast<const xmlChar*>(name));
}

void Remove(xmlNode* node) {
    xmlUnlinkNode(node);
    xmlFreeNode(node);
}

void Unwrap(xmlNode* element) {
    EachChild(*element, [element](xmlNode* child) { xmlAddPrevSibling(element, child); });
    Remove(element);
}

std::size_t FindTag(std::string_view html, std::string_view tag) {
    const auto same = [](char a, char b) { return Lower(a) == b; };
    std::size_t start = html.find('<');
    while (start < html.size()) {
        const std::string_view rest = html.substr(start);
        if (std::ranges::equal(rest.substr(0, tag.size()), tag, same)) return start;
        const char next = rest.size() > 1 ? Lower(rest[1]) : '\0';
        const bool isTag = (next >= 'a' && next <= 'z') || next == '/' || next == '!';
        start = html.find('<', start + (isTag ? LengthOfTag(rest) : 1));
    }
    return html.size();
}

} // namespace Markup
