#include "backend/rules/Markup.h"

#include "backend/rules/MarkupPolicy.h"
#include "backend/rules/Refusal.h"
#include "markup/HtmlImages.h"
#include "markup/HtmlNesting.h"
#include "markup/HtmlWriter.h"

namespace Backend {

namespace {

using Markup::FindAttribute;
using Markup::FindTag;
using Markup::HtmlDocument;
using Markup::ValueOf;
using Markup::View;

constexpr auto NotWellFormed =
    "The content of elements must consist of well-formed character data or markup.";
constexpr auto UnknownImage =
    "The specified HTML contains an image that has a 'src' attribute but does not have a 'src_original' "
    "attribute. If you are inserting an image into an existing requirement description, your img tag must "
    "contain the 'new' attribute to signify a new image.";

bool IsSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && IsSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

// Whether what stands next to it would join it in a line.
bool IsInLine(const xmlNode& node) {
    const bool isBlank = node.type == XML_TEXT_NODE && Markup::IsBlank(node);
    return !isBlank && !Markup::IsBlock(node) && !Markup::IsTablePart(node);
}

bool PartsALine(const xmlNode& element) {
    return IsInLine(element.prev ? *element.prev : *element.parent) &&
           IsInLine(element.next ? *element.next : *element.parent);
}

// A block that goes leaves one, or its text would join what stands around it, and so
// would what an empty one parts.
bool LeavesBlock(const xmlNode& element) {
    bool holdsTableParts = false;
    Markup::EachChild(element, [&](const xmlNode* child) { holdsTableParts |= Markup::IsTablePart(*child); });
    return Markup::IsBlock(element) && !holdsTableParts && !Markup::IsElement(element, "html") &&
           (element.children || PartsALine(element));
}

// Line breaks count in these as they do in a "pre".
bool IsPreformatted(const xmlNode& element) {
    return element.children && (Markup::IsElement(element, "listing") ||
                                Markup::IsElement(element, "textarea") || Markup::IsElement(element, "xmp"));
}

// Takes out what the policy does not keep.
void Prune(const xmlNode& parent) {
    Markup::EachChild(parent, [](xmlNode* child) {
        if (child->type == XML_TEXT_NODE) return;
        const bool isElement = child->type == XML_ELEMENT_NODE;
        const ElementRule rule = isElement ? RuleOfElement(View(child->name)) : ElementRule::Drop;
        if (rule == ElementRule::Drop) return Markup::Remove(child);
        Prune(*child);
        if (rule != ElementRule::Unwrap) return;
        if (IsPreformatted(*child))
            Markup::Rename(*child, "pre");
        else if (LeavesBlock(*child))
            Markup::Rename(*child, "div");
        else
            Markup::Unwrap(child);
    });
}

// Writes what the policy keeps of the elements that are left. All that is written is
// escaped, so it reads the same whatever reads it.
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
    void Write(std::string_view text) { FText += text; }

private:
    void Node(const xmlNode& node) {
        if (node.type == XML_TEXT_NODE)
            Markup::AppendEscaped(FText, View(node.content), false);
        else if (node.type == XML_ELEMENT_NODE)
            Element(node);
    }

    // Whoever reads HTML takes a line break right behind the tag for none. So one that
    // counts stands there twice, and one alone would go with the next edit.
    void Preformatted(const xmlNode& element) {
        const std::size_t start = FText.size();
        Content(element);
        const std::string_view content = std::string_view(FText).substr(start);
        if (content.starts_with('\n') && !content.starts_with("\n\n")) FText.erase(start, 1);
    }

    void Element(const xmlNode& element) {
        const std::string_view name = View(element.name);
        if (name == "body") return Content(element);
        if (name == "img" && !FindAttribute(element, "src") && !FindAttribute(element, "src_original"))
            return Markup::AppendEscaped(FText, ValueOf(element, "alt"), false);
        StartTag(element);
        if (Markup::IsEmptyElement(name)) return Write(" />");
        Write(">");
        if (name == "pre")
            Preformatted(element);
        else
            Content(element);
        Write("</");
        Write(name);
        Write(">");
    }

    void Attributes(const xmlNode& element) {
        for (const xmlAttr* attribute = element.properties; attribute; attribute = attribute->next) {
            const std::string_view name = View(attribute->name);
            const std::string value = ValueOf(*attribute);
            const bool isLink = name == "href" && View(element.name) == "a";
            if (IsPlainAttribute(View(element.name), name) || (isLink && IsSafeAddress(value)))
                Attribute(name, value);
            else if (const std::string clean = CleanList(name, value); !clean.empty())
                Attribute(name, clean);
        }
    }

    // What is left of an attribute with several values, of which some may not pass.
    static std::string CleanList(std::string_view name, std::string_view value) {
        if (name == "style") return CleanStyle(value);
        return name == "class" ? CleanClasses(value) : std::string();
    }

    // A picture is named by what is stored and shows nothing else.
    void ImageAttributes(const xmlNode& image) {
        const auto has = [&](const char* name) { return FindAttribute(image, name) != nullptr; };
        const std::string stored = ValueOf(image, "src_original");
        if (has("src") && stored.empty() && has("new"))
            throw RuleViolation("The description has a new picture that was not sent with it. Insert the "
                                "picture again and save.");
        if (!Markup::IsPictureHash(stored)) throw MarkupViolation(UnknownImage);
        for (const xmlAttr* attribute = image.properties; attribute; attribute = attribute->next) {
            const std::string_view name = View(attribute->name);
            if (name == "src" || name == "src_original") Attribute(name, stored);
        }
        Attributes(image);
    }

    void Attribute(std::string_view name, std::string_view value) {
        FText += ' ';
        FText += name;
        FText += "=\"";
        Markup::AppendEscaped(FText, value, true);
        FText += '"';
    }

    std::string FText;
};

std::string Written(const HtmlDocument& document) {
    const xmlNode* const root = document.Root();
    CleanWriter writer;
    if (!document.IsWhole()) {
        writer.Content(*root);
        return writer.Take();
    }
    writer.Write("<html><head></head>");
    if (const xmlNode* const body = document.Body())
        writer.StartTag(*body);
    else
        writer.Write("<body");
    writer.Write(">");
    writer.Content(*root);
    writer.Write("</body></html>");
    return writer.Take();
}

std::string Cleaned(std::string_view html) {
    const HtmlDocument document(html);
    if (document.Lost()) throw MarkupViolation(NotWellFormed);
    if (!document.Root()) return {};
    Prune(*document.Root());
    Markup::MendNesting(document);
    return Written(document);
}

// Empty for a piece of mark-up, which has none.
std::string_view BodyTagOf(std::string_view html) {
    const std::string_view behind = html.substr(FindTag(html, "<body"));
    return behind.substr(0, behind.find('>'));
}

} // namespace

std::string CleanMarkup(std::string_view html) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (html.starts_with(mark)) html.remove_prefix(mark.size());
    if (Trimmed(html).empty()) return {};
    // The parser parts some elements that browsers nest, now that they stand together.
    constexpr int rounds = 8;
    std::string clean = Cleaned(html);
    for (int round = 1; round < rounds; ++round) {
        std::string again = Cleaned(clean);
        if (again == clean) break;
        clean = std::move(again);
    }
    return Trimmed(clean).empty() ? std::string() : clean;
}

std::string_view BodyOf(std::string_view html) {
    const std::size_t start = FindTag(html, "<body");
    const std::size_t open = html.find('>', start);
    const std::size_t end = FindTag(html, "</body");
    if (start == html.size() || open == std::string_view::npos || end <= open) return Trimmed(html);
    return Trimmed(html.substr(open + 1, end - open - 1));
}

bool SameMarkup(std::string_view cleaned, std::string_view kept) {
    const auto same = [cleaned](std::string_view other) {
        const std::string_view tag = BodyTagOf(cleaned);
        const std::string_view otherTag = BodyTagOf(other);
        const bool sameTag = tag == otherTag || tag.empty() || otherTag.empty();
        return sameTag && BodyOf(cleaned) == BodyOf(other);
    };
    if (same(kept)) return true;
    try {
        return same(CleanMarkup(kept));
    } catch (const Refusal&) {
        return false;
    }
}

} // namespace Backend
