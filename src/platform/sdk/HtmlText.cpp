#include "platform/sdk/HtmlText.h"

#include "platform/sdk/HtmlTags.h"

#include <algorithm>
#include <array>

namespace Sdk {

namespace {

constexpr std::string_view NoBreakSpace = "\u00A0";

bool IsSpace(char letter) {
    return letter == ' ' || (letter >= '\t' && letter <= '\r');
}

bool IsBlock(const std::string& name) {
    static constexpr std::array<std::string_view, 22> blocks = {
        "address", "blockquote", "body", "center", "dd", "div", "dl", "dt",  "h1",    "h2", "h3",
        "h4",      "h5",         "h6",   "hr",     "li", "ol",  "p",  "pre", "table", "tr", "ul"};
    return std::find(blocks.begin(), blocks.end(), name) != blocks.end();
}

bool IsInvisible(const std::string& name) {
    return name == "script" || name == "style" || name == "head" || name == "title";
}

// Gathers the visible text line by line.
class TTextWriter {
public:
    void Text(std::string_view raw) {
        if (FInvisible > 0) return;
        for (const char letter : DecodeCharacterReferences(raw)) {
            if (IsSpace(letter)) {
                FPendingBlank = true;
                continue;
            }
            Separate();
            FText += letter;
        }
    }

    void Tag(const THtmlTag& tag) {
        if (IsInvisible(tag.Name)) FInvisible = std::max(0, FInvisible + (tag.IsEnd ? -1 : 1));
        if (tag.Name == "br" && FInvisible == 0) {
            FText += "\r\n";
            FPendingBlank = false;
        } else if (IsBlock(tag.Name)) {
            FPendingBreak = true;
        } else if (tag.Name == "td" || tag.Name == "th") {
            FPendingBlank = true;
        }
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
    void Separate() {
        const bool atLineStart = FText.empty() || FText.ends_with("\r\n");
        if (FPendingBreak && !atLineStart)
            FText += "\r\n";
        else if (FPendingBlank && !atLineStart)
            FText += ' ';
        FPendingBreak = FPendingBlank = false;
    }

    std::string FText;
    int FInvisible = 0;
    bool FPendingBlank = false;
    bool FPendingBreak = false;
};

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
        afterBlank = isBlank || isBreak;
    }
    return html;
}

std::string HtmlToPlainText(std::string_view html) {
    TTextWriter writer;
    WalkHtml(
        html, [&](std::string_view text) { writer.Text(text); },
        [&](const THtmlTag& tag) { writer.Tag(tag); });
    return writer.Result();
}

} // namespace Sdk
