#include "markup/HtmlText.h"

#include "markup/HtmlDocument.h"

#include <libxml/HTMLparser.h>
#include <libxml/parserInternals.h>

#include <array>
#include <charconv>
#include <cstdint>
#include <optional>

namespace Markup {

namespace {

constexpr std::string_view NoBreakSpace = "\u00A0";

bool IsSpace(char letter) {
    return letter == ' ' || (letter >= '\t' && letter <= '\r');
}

bool IsInvisible(const xmlNode& node) {
    return IsElement(node, "head") || IsElement(node, "script") || IsElement(node, "style") ||
           IsElement(node, "template") || IsElement(node, "title");
}

// A line break that begins a preformatted text shows nothing.
std::string_view ShownText(const xmlNode& text) {
    std::string_view shown = View(text.content);
    if (text.prev || !IsElement(*text.parent, "pre")) return shown;
    if (shown.starts_with('\r')) shown.remove_prefix(1);
    if (shown.starts_with('\n')) shown.remove_prefix(1);
    return shown;
}

// Gathers the visible text line by line.
class TextWriter {
public:
    void Text(std::string_view text) {
        if (FPreformatted) return Lines(text);
        for (const char letter : text) {
            if (IsSpace(letter)) {
                FPendingBlank = true;
                continue;
            }
            Separate();
            FText += letter;
        }
    }

    void Break() {
        EndBlock();
        FText += "\r\n";
        FPendingBlank = false;
    }

    void Enter(const xmlNode& element) {
        Border(element);
        FPreformatted += IsElement(element, "pre");
    }

    void Leave(const xmlNode& element) {
        Border(element);
        FPreformatted -= IsElement(element, "pre");
    }

    std::string Result() {
        while (FText.ends_with("\r\n"))
            FText.resize(FText.size() - 2);
        std::string plain;
        for (std::size_t i = 0; i < FText.size();) {
            const bool isHard = std::string_view(FText).substr(i).starts_with(NoBreakSpace);
            plain += isHard ? ' ' : FText[i];
            i += isHard ? NoBreakSpace.size() : 1;
        }
        return plain;
    }

private:
    // Where an element begins or ends.
    void Border(const xmlNode& element) {
        if (IsBlock(element))
            FPendingBreak = true;
        else if (IsElement(element, "td") || IsElement(element, "th"))
            FPendingBlank = true;
    }

    // As they stand.
    void Lines(std::string_view text) {
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] == '\r' && text.substr(i + 1).starts_with('\n')) continue;
            Separate();
            if (text[i] == '\n' || text[i] == '\r')
                Break();
            else
                FText += text[i];
        }
    }

    bool AtLineStart() const { return FText.empty() || FText.ends_with("\r\n"); }

    void EndBlock() {
        if (FPendingBreak && !AtLineStart()) FText += "\r\n";
        FPendingBreak = false;
    }

    void Separate() {
        EndBlock();
        if (FPendingBlank && !AtLineStart()) FText += ' ';
        FPendingBlank = false;
    }

    std::string FText;
    bool FPendingBlank = false;
    bool FPendingBreak = false;
    int FPreformatted = 0;
};

using Code = std::optional<std::uint32_t>;

// Of a numeric reference, "#228" or "#xE4".
Code NumericCode(std::string_view reference) {
    if (!reference.starts_with('#')) return std::nullopt;
    reference.remove_prefix(1);
    const bool isHex = reference.starts_with('x') || reference.starts_with('X');
    if (isHex) reference.remove_prefix(1);
    std::uint32_t code = 0;
    const char* const last = reference.data() + reference.size();
    const auto [end, error] = std::from_chars(reference.data(), last, code, isHex ? 16 : 10);
    if (error != std::errc() || end != last || !xmlIsCharQ(code)) return std::nullopt;
    return code;
}

Code NamedCode(std::string_view reference) {
    const std::string name(reference);
    const htmlEntityDesc* const known = htmlEntityLookup(reinterpret_cast<const xmlChar*>(name.c_str()));
    return known ? Code(known->value) : std::nullopt;
}

// A character that means nothing but itself wherever it stands in mark-up.
bool IsPlain(std::uint32_t code) {
    constexpr std::u32string_view marks = U"<>&\"'";
    return code >= ' ' && marks.find(static_cast<char32_t>(code)) == marks.npos;
}

std::string Utf8Of(std::uint32_t code) {
    std::array<xmlChar, 8> text{};
    const int length = xmlCopyCharMultiByte(text.data(), static_cast<int>(code));
    return {text.begin(), text.begin() + length};
}

// With the characters in place of the references that `resolve` knows.
std::string Decoded(std::string_view text, Code (*resolve)(std::string_view reference)) {
    constexpr std::size_t longest = 12;
    std::string decoded;
    for (;;) {
        const std::size_t start = text.find('&');
        decoded += text.substr(0, start);
        if (start == std::string_view::npos) return decoded;
        text.remove_prefix(start);
        const std::size_t end = text.substr(0, longest).find(';');
        const Code code = end == std::string_view::npos ? Code() : resolve(text.substr(1, end - 1));
        decoded += code ? Utf8Of(*code) : "&";
        text.remove_prefix(code ? end + 1 : 1);
    }
}

} // namespace

std::string PlainTextToHtml(std::string_view text) {
    std::string html;
    bool afterBlank = true;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char letter = text[i];
        const bool isBlank = letter == ' ';
        const bool isBreak = letter == '\n' || letter == '\r';
        if (letter == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
        if (isBreak)
            html += "<br/>";
        else if (isBlank && afterBlank)
            html += "&nbsp;";
        else if (letter == '&')
            html += "&amp;";
        else if (letter == '<')
            html += "&lt;";
        else if (letter == '>')
            html += "&gt;";
        else if (letter == '"')
            html += "&quot;";
        else if (letter == '\t')
            html += "&nbsp;&nbsp;&nbsp; ";
        else
            html += letter;
        afterBlank = isBlank || isBreak || letter == '\t';
    }
    return html;
}

std::string HtmlToPlainText(std::string_view html) {
    const HtmlDocument document(html, Nesting::Any);
    TextWriter writer;
    const auto enter = [&](const xmlNode& node) {
        if (node.type == XML_TEXT_NODE) writer.Text(ShownText(node));
        if (node.type != XML_ELEMENT_NODE || IsInvisible(node)) return false;
        if (IsElement(node, "br")) writer.Break();
        writer.Enter(node);
        return true;
    };
    if (const xmlNode* const root = document.Root())
        Walk(*root, enter, [&](const xmlNode& element) { writer.Leave(element); });
    return writer.Result();
}

std::string DecodeReferences(std::string_view text) {
    return Decoded(text, [](std::string_view reference) {
        const Code numeric = NumericCode(reference);
        return numeric ? numeric : NamedCode(reference);
    });
}

std::string DecodeNumericReferences(std::string_view html) {
    return Decoded(html, [](std::string_view reference) {
        const Code code = NumericCode(reference);
        return code && IsPlain(*code) ? code : std::nullopt;
    });
}

} // namespace Markup
