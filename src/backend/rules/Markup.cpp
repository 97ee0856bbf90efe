#include "backend/rules/Markup.h"

#include "backend/rules/MarkupPolicy.h"
#include "backend/rules/Refusal.h"

#include <libxml/HTMLparser.h>
#include <libxml/SAX2.h>

#include <algorithm>
#include <array>
#include <memory>

namespace Backend {

namespace {

constexpr auto NotWellFormed =
    "The content of elements must consist of well-formed character data or markup.";
constexpr auto UnknownImage =
    "The specified HTML contains an image that has a 'src' attribute but does not have a 'src_original' "
    "attribute. If you are inserting an image into an existing requirement description, your img tag must "
    "contain the 'new' attribute to signify a new image.";

bool IsSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}
char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && IsSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

std::size_t FindTag(std::string_view html, std::string_view tag) {
    const auto same = [](char a, char b) { return Lower(a) == b; };
    return static_cast<std::size_t>(std::ranges::search(html, tag, same).begin() - html.begin());
}

bool IsWhole(std::string_view html) {
    return FindTag(html, "<body") < html.size() || FindTag(html, "<html") < html.size();
}

std::string_view View(const xmlChar* text) {
    return text ? reinterpret_cast<const char*>(text) : std::string_view();
}

// The faults over which the parser leaves text out or stops.
void Judge(void* lost, xmlErrorPtr fault) {
    constexpr std::array<int, 4> losses = {XML_ERR_ATTRIBUTE_NOT_FINISHED, XML_ERR_COMMENT_NOT_FINISHED,
                                           XML_ERR_GT_REQUIRED, XML_ERR_PI_NOT_FINISHED};
    if (fault->level == XML_ERR_FATAL || std::ranges::find(losses, fault->code) != losses.end())
        *static_cast<bool*>(lost) = true;
}

using Document = std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)>;

// The library takes a prefix off a name, which would make a paragraph of "o:p".
void StartElement(void* parser, const xmlChar* name, const xmlChar** attributes) {
    std::string whole(View(name));
    std::ranges::replace(whole, ':', '-');
    xmlSAX2StartElement(parser, reinterpret_cast<const xmlChar*>(whole.c_str()), attributes);
}

// Of a document with a body; mended, but not judged.
Document Parse(const std::string& html) {
    using Parser = std::unique_ptr<htmlParserCtxt, decltype(&htmlFreeParserCtxt)>;
    static const bool ready = (xmlInitParser(), true);
    const Parser parser(ready ? htmlNewParserCtxt() : nullptr, htmlFreeParserCtxt);
    if (!parser) throw std::bad_alloc();
    parser->sax->startElement = StartElement;
    bool lost = false;
    // The library keeps the handler for each thread.
    const auto oldHandler = xmlStructuredError;
    void* const oldContext = xmlStructuredErrorContext;
    xmlSetStructuredErrorFunc(&lost, Judge);
    Document document(htmlCtxtReadMemory(parser.get(), html.data(), static_cast<int>(html.size()), nullptr,
                                         "UTF-8",
                                         HTML_PARSE_NODEFDTD | HTML_PARSE_NONET | HTML_PARSE_IGNORE_ENC),
                      xmlFreeDoc);
    xmlSetStructuredErrorFunc(oldContext, oldHandler);
    if (!document || lost) throw MarkupViolation(NotWellFormed);
    return document;
}

// Writes what the policy keeps of a document. All that is written is escaped, so it
// reads the same whatever reads it.
class CleanWriter {
public:
    void Content(const xmlNode& parent) {
        for (const xmlNode* node = parent.children; node; node = node->next)
            Node(*node);
    }

    void StartTag(const xmlNode& element) {
        FText += '<';
        FText += View(element.name);
        if (View(element.name) == "img")
            ImageAttributes(element);
        else
            Attributes(element);
    }

    std::string Take() { return std::move(FText); }
    bool Unwrapped() const { return FUnwrapped; }
    void Write(std::string_view text) { FText += text; }

private:
    void Node(const xmlNode& node) {
        if (node.type == XML_TEXT_NODE)
            Escape(View(node.content), false);
        else if (node.type == XML_ELEMENT_NODE)
            Element(node);
    }

    // Browsers put rows into a body that nobody wrote, and an editor sends it back.
    void Table(const xmlNode& table) {
        bool inBody = false;
        for (const xmlNode* node = table.children; node; node = node->next) {
            const bool isRow = node->type == XML_ELEMENT_NODE && View(node->name) == "tr";
            if (isRow && !inBody) Write("<tbody>");
            if (!isRow && inBody && node->type == XML_ELEMENT_NODE) Write("</tbody>");
            if (node->type == XML_ELEMENT_NODE) inBody = isRow;
            Node(*node);
        }
        if (inBody) Write("</tbody>");
    }

    void Element(const xmlNode& element) {
        const std::string_view name = View(element.name);
        const ElementRule rule = RuleOfElement(name);
        if (rule == ElementRule::Drop) return;
        FUnwrapped |= rule == ElementRule::Unwrap;
        if (rule == ElementRule::Unwrap || name == "body") return Content(element);
        StartTag(element);
        if (IsEmptyElement(name)) return Write(" />");
        Write(">");
        if (name == "table")
            Table(element);
        else
            Content(element);
        Write("</");
        Write(name);
        Write(">");
    }

    void Attributes(const xmlNode& element) {
        for (const xmlAttr* attribute = element.properties; attribute; attribute = attribute->next) {
            const std::string_view name = View(attribute->name);
            const std::string value = ValueOf(element, *attribute);
            const bool isLink = name == "href" && View(element.name) == "a";
            if (IsPlainAttribute(View(element.name), name) || (isLink && IsSafeAddress(value)))
                Attribute(name, value);
            else if (const std::string style = name == "style" ? CleanStyle(value) : ""; !style.empty())
                Attribute(name, style);
        }
    }

    // A picture is named by what is stored and shows nothing else.
    void ImageAttributes(const xmlNode& image) {
        const auto has = [&](const char* name) { return Find(image, name) != nullptr; };
        const std::string stored = has("src_original") ? ValueOf(image, *Find(image, "src_original")) : "";
        if (has("src") && stored.empty() && has("new"))
            throw RuleViolation("The description has a new picture that was not sent with it. Insert the "
                                "picture again and save.");
        if ((has("src") || has("src_original")) && !IsPictureName(stored))
            throw MarkupViolation(UnknownImage);
        for (const xmlAttr* attribute = image.properties; attribute; attribute = attribute->next) {
            const std::string_view name = View(attribute->name);
            if (name == "src" || name == "src_original") Attribute(name, stored);
        }
        Attributes(image);
    }

    static const xmlAttr* Find(const xmlNode& element, std::string_view name) {
        const xmlAttr* attribute = element.properties;
        while (attribute && View(attribute->name) != name)
            attribute = attribute->next;
        return attribute;
    }

    static std::string ValueOf(const xmlNode& element, const xmlAttr& attribute) {
        const std::unique_ptr<xmlChar, xmlFreeFunc> value(
            xmlNodeListGetString(element.doc, attribute.children, 1), xmlFree);
        return std::string(View(value.get()));
    }

    void Attribute(std::string_view name, std::string_view value) {
        FText += ' ';
        FText += name;
        FText += "=\"";
        Escape(value, true);
        FText += '"';
    }

    void Escape(std::string_view text, bool quoted) {
        for (const char c : text) {
            if (c == '&')
                FText += "&amp;";
            else if (c == '<')
                FText += "&lt;";
            else if (c == '>')
                FText += "&gt;";
            else if (c == '"' && quoted)
                FText += "&quot;";
            else if (c == '\r')
                FText += '\n';
            else if (static_cast<unsigned char>(c) >= ' ' || c == '\t' || c == '\n')
                FText += c;
        }
    }

    std::string FText;
    bool FUnwrapped = false;
};

const xmlNode* FindBody(const xmlNode& root) {
    const xmlNode* child = root.children;
    while (child && View(child->name) != "body")
        child = child->next;
    return child;
}

CleanWriter Cleaned(std::string_view html) {
    const bool whole = IsWhole(html);
    const Document document = Parse((whole ? "" : "<html><body>") + std::string(html));
    const xmlNode* root = xmlDocGetRootElement(document.get());
    CleanWriter writer;
    if (!root) return writer;
    if (!whole) {
        writer.Content(*root);
        return writer;
    }
    writer.Write("<html><head></head>");
    if (const xmlNode* body = FindBody(*root))
        writer.StartTag(*body);
    else
        writer.Write("<body");
    writer.Write(">");
    writer.Content(*root);
    writer.Write("</body></html>");
    return writer;
}

} // namespace

std::string CleanMarkup(std::string_view html) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (html.starts_with(mark)) html.remove_prefix(mark.size());
    if (Trimmed(html).empty()) return {};
    CleanWriter writer = Cleaned(html);
    // What stood apart in an element that is gone may not nest without it.
    return writer.Unwrapped() ? Cleaned(writer.Take()).Take() : writer.Take();
}

std::string_view BodyOf(std::string_view html) {
    const std::size_t start = FindTag(html, "<body");
    const std::size_t open = html.find('>', start);
    const std::size_t end = FindTag(html, "</body");
    if (start == html.size() || open == std::string_view::npos || end <= open) return Trimmed(html);
    return Trimmed(html.substr(open + 1, end - open - 1));
}

bool SameMarkup(std::string_view cleaned, std::string_view kept) {
    if (BodyOf(cleaned) == BodyOf(kept)) return true;
    try {
        return BodyOf(cleaned) == BodyOf(CleanMarkup(kept));
    } catch (const Refusal&) {
        return false;
    }
}

} // namespace Backend
