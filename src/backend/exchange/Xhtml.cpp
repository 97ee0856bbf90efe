#include "backend/exchange/Xhtml.h"

#include "backend/exchange/Outline.h"

namespace Exchange {

namespace {

// Line feeds alone; a vertical tab or form feed is how some tables break a line.
std::string WithPlainLineEnds(std::string_view text) {
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
        plain += c == '\r' || c == '\v' || c == '\f' ? '\n' : c;
    }
    return plain;
}

} // namespace

std::string EscapeXhtml(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size() + text.size() / 16);
    for (const char c : text) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

std::string ParagraphsOf(std::string_view text) {
    const std::string plain = WithPlainLineEnds(text);
    std::string html;
    bool open = false;
    for (std::size_t start = 0; start <= plain.size();) {
        const auto end = std::min(plain.find('\n', start), plain.size());
        const std::string line = Trimmed(std::string_view(plain).substr(start, end - start));
        if (!line.empty()) {
            html += open ? "<br />" : "<p>";
            html += EscapeXhtml(line);
        } else if (open)
            html += "</p>";
        open = !line.empty();
        start = end + 1;
    }
    if (open) html += "</p>";
    return html;
}

bool FitsMarkup(std::string_view text) {
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 && c != '\t' && c != '\n' && c != '\r' && c != '\v' && c != '\f') return false;
    }
    return true;
}

} // namespace Exchange
