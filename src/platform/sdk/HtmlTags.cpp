#include "platform/sdk/HtmlTags.h"

#include "markup/HtmlText.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>

namespace Sdk {

namespace {

bool IsSpace(char letter) {
    return letter == ' ' || (letter >= '\t' && letter <= '\r');
}

bool IsTagEnd(char letter) {
    return letter == '>' || letter == '/';
}

std::string Lower(std::string_view text) {
    std::string lower(text);
    for (char& letter : lower)
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    return lower;
}

std::string_view TakeUntil(std::string_view& text, const std::function<bool(char)>& ends) {
    std::size_t length = 0;
    while (length < text.size() && !ends(text[length]))
        ++length;
    const std::string_view taken = text.substr(0, length);
    text.remove_prefix(length);
    return taken;
}

void SkipSpaces(std::string_view& text) {
    TakeUntil(text, [](char letter) { return !IsSpace(letter); });
}

struct TRawAttribute {
    std::string_view Name;
    std::string_view Value;
};

// One attribute from the front of what is behind a tag's name; false at the tag's end. A
// quote means one only where a value begins, and an equals sign where a name begins is a
// letter of it.
bool TakeAttribute(std::string_view& rest, TRawAttribute& attribute) {
    TakeUntil(rest, [](char letter) { return !IsSpace(letter) && letter != '/'; });
    if (rest.empty() || rest.front() == '>') return false;
    std::string_view behind = rest.substr(1);
    TakeUntil(behind, [](char letter) { return IsSpace(letter) || letter == '=' || IsTagEnd(letter); });
    attribute = {rest.substr(0, rest.size() - behind.size()), {}};
    rest = behind;
    SkipSpaces(behind);
    if (!behind.starts_with('=')) return true;
    behind.remove_prefix(1);
    SkipSpaces(behind);
    rest = behind;
    const char quote = rest.empty() ? '\0' : rest.front();
    if (quote != '"' && quote != '\'') {
        attribute.Value = TakeUntil(rest, [](char letter) { return IsSpace(letter) || letter == '>'; });
        return true;
    }
    rest.remove_prefix(1);
    attribute.Value = TakeUntil(rest, [quote](char letter) { return letter == quote; });
    if (!rest.empty()) rest.remove_prefix(1);
    return true;
}

std::size_t LengthTo(std::string_view text, std::string_view end) {
    const std::size_t at = text.find(end);
    return at == std::string_view::npos ? text.size() : at + end.size();
}

std::size_t CommentLength(std::string_view text) {
    // Ended as soon as it has begun.
    if (text.starts_with("<!-->") || text.starts_with("<!--->")) return LengthTo(text, ">");
    for (std::size_t at = text.find("--", 4); at != std::string_view::npos; at = text.find("--", at + 1))
        for (const std::string_view end : {"-->", "--!>"})
            if (text.substr(at).starts_with(end)) return at + end.size();
    return text.size();
}

// The tag, comment or declaration at the start of the text, which is a "<", as a browser
// takes it; empty when it is a plain character.
std::optional<THtmlTag> ParseTag(std::string_view text) {
    THtmlTag tag;
    if (text.size() < 2) return std::nullopt;
    const bool isEnd = text[1] == '/';
    const std::size_t start = isEnd ? 2 : 1;
    if (start < text.size() && std::isalpha(static_cast<unsigned char>(text[start]))) {
        std::string_view rest = text.substr(start);
        tag.IsEnd = isEnd;
        tag.Name = Lower(TakeUntil(rest, [](char letter) { return IsSpace(letter) || IsTagEnd(letter); }));
        tag.Rest = rest;
        TRawAttribute skipped;
        while (TakeAttribute(rest, skipped)) {
        }
        tag.Rest.remove_suffix(rest.size());
        tag.Raw = text.substr(0, text.size() - rest.size() + (rest.empty() ? 0 : 1));
    } else if (isEnd || text[1] == '!' || text[1] == '?') {
        tag.Name = text.substr(1, 1);
        tag.Raw = text.substr(0, text.starts_with("<!--") ? CommentLength(text) : LengthTo(text, ">"));
    } else {
        return std::nullopt;
    }
    return tag;
}

// Up to the end tag, what is in these is text, whatever it looks like.
std::size_t RawTextLength(const THtmlTag& tag, std::string_view behind) {
    static constexpr std::array<std::string_view, 8> names = {"iframe", "noembed",  "noframes", "script",
                                                              "style",  "textarea", "title",    "xmp"};
    if (tag.IsEnd || std::find(names.begin(), names.end(), tag.Name) == names.end()) return 0;
    for (std::size_t at = behind.find("</"); at != std::string_view::npos; at = behind.find("</", at + 2)) {
        const std::string_view name = behind.substr(at + 2, tag.Name.size());
        const std::string_view after = behind.substr(at + 2 + name.size(), 1);
        if (Lower(name) == tag.Name && (after.empty() || IsSpace(after[0]) || IsTagEnd(after[0]))) return at;
    }
    return behind.size();
}

std::string Escaped(std::string_view value) {
    std::string escaped;
    for (const char letter : value) {
        if (letter == '&')
            escaped += "&amp;";
        else if (letter == '"')
            escaped += "&quot;";
        else if (letter == '<')
            escaped += "&lt;";
        else
            escaped += letter;
    }
    return escaped;
}

std::string WrittenTag(const THtmlTag& tag, const THtmlAttributes& attributes) {
    std::string written = "<" + tag.Name;
    for (const auto& [name, value] : attributes)
        written += " " + name + "=\"" + Escaped(value) + "\"";
    return written + (tag.Raw.ends_with("/>") ? " />" : ">");
}

} // namespace

void WalkHtml(std::string_view html, const std::function<void(std::string_view)>& onText,
              const std::function<void(const THtmlTag&)>& onTag) {
    std::size_t textStart = 0;
    std::size_t i = 0;
    while (i < html.size()) {
        const auto tag = html[i] == '<' ? ParseTag(html.substr(i)) : std::nullopt;
        if (!tag) {
            ++i;
            continue;
        }
        if (i > textStart) onText(html.substr(textStart, i - textStart));
        onTag(*tag);
        textStart = i + tag->Raw.size();
        i = textStart + RawTextLength(*tag, html.substr(textStart));
    }
    if (i > textStart) onText(html.substr(textStart));
}

THtmlAttributes AttributesOf(const THtmlTag& tag) {
    THtmlAttributes attributes;
    std::string_view rest = tag.Rest;
    TRawAttribute attribute;
    while (TakeAttribute(rest, attribute))
        attributes.emplace_back(Lower(attribute.Name), Markup::DecodeReferences(attribute.Value));
    return attributes;
}

std::string* FindAttribute(THtmlAttributes& attributes, std::string_view name) {
    const auto found = std::find_if(attributes.begin(), attributes.end(),
                                    [name](const auto& attribute) { return attribute.first == name; });
    return found == attributes.end() ? nullptr : &found->second;
}

std::vector<std::string> AttributesOf(std::string_view html, std::string_view element,
                                      std::string_view attribute) {
    std::vector<std::string> values;
    WalkHtml(
        html, [](std::string_view) {},
        [&](const THtmlTag& tag) {
            if (tag.IsEnd || tag.Name != element) return;
            THtmlAttributes attributes = AttributesOf(tag);
            if (const std::string* value = FindAttribute(attributes, attribute)) values.push_back(*value);
        });
    return values;
}

std::string ChangeTags(std::string_view html, std::string_view element,
                       const std::function<bool(THtmlAttributes&)>& change) {
    std::string changed;
    WalkHtml(
        html, [&](std::string_view text) { changed += text; },
        [&](const THtmlTag& tag) {
            THtmlAttributes attributes;
            if (!tag.IsEnd && tag.Name == element) attributes = AttributesOf(tag);
            if (!attributes.empty() && change(attributes))
                changed += WrittenTag(tag, attributes);
            else
                changed += tag.Raw;
        });
    return changed;
}

} // namespace Sdk
