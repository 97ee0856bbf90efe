#include "platform/sdk/HtmlTags.h"

#include "markup/HtmlText.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace Sdk {

namespace {

bool IsSpace(char letter) {
    return letter == ' ' || (letter >= '\t' && letter <= '\r');
}

std::string Lower(std::string_view text) {
    std::string lower(text);
    for (char& letter : lower)
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    return lower;
}

// The length of the tag, comment or declaration at the start of the text, which is a
// "<"; 0 when it is a plain character.
std::size_t TagLength(std::string_view text) {
    if (text.starts_with("<!--")) {
        const std::size_t end = text.find("-->", 4);
        return end == std::string_view::npos ? text.size() : end + 3;
    }
    if (text.size() < 2) return 0;
    const char first = text[1];
    if (first != '/' && first != '!' && first != '?' && !std::isalpha(static_cast<unsigned char>(first)))
        return 0;
    char quote = 0;
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (quote != 0) {
            if (text[i] == quote) quote = 0;
        } else if (text[i] == '"' || text[i] == '\'') {
            quote = text[i];
        } else if (text[i] == '>') {
            return i + 1;
        }
    }
    return text.size();
}

THtmlTag ParseTag(std::string_view tag) {
    THtmlTag parsed;
    std::size_t start = 1;
    if (tag.size() > 1 && tag[1] == '/') {
        parsed.IsEnd = true;
        start = 2;
    }
    std::size_t end = start;
    while (end < tag.size() && !IsSpace(tag[end]) && tag[end] != '>' && tag[end] != '/')
        ++end;
    parsed.Name = Lower(tag.substr(start, end - start));
    parsed.Raw = tag;
    parsed.Rest = tag.substr(end);
    if (parsed.Rest.ends_with('>')) parsed.Rest.remove_suffix(1);
    return parsed;
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

// One attribute from the front of what is behind a tag's name; false at the end.
bool TakeAttribute(std::string_view& rest, std::string& name, std::string& value) {
    TakeUntil(rest, [](char letter) { return !IsSpace(letter) && letter != '/'; });
    if (rest.empty()) return false;
    name =
        Lower(TakeUntil(rest, [](char letter) { return IsSpace(letter) || letter == '=' || letter == '/'; }));
    value.clear();
    SkipSpaces(rest);
    if (!rest.starts_with('=')) return true;
    rest.remove_prefix(1);
    SkipSpaces(rest);
    const char quote = rest.empty() ? 0 : rest.front();
    if (quote != '"' && quote != '\'') {
        value = Markup::DecodeReferences(TakeUntil(rest, IsSpace));
        return true;
    }
    rest.remove_prefix(1);
    value = Markup::DecodeReferences(TakeUntil(rest, [quote](char letter) { return letter == quote; }));
    if (!rest.empty()) rest.remove_prefix(1);
    return true;
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
        const std::size_t length = html[i] == '<' ? TagLength(html.substr(i)) : 0;
        if (length == 0) {
            ++i;
            continue;
        }
        if (i > textStart) onText(html.substr(textStart, i - textStart));
        onTag(ParseTag(html.substr(i, length)));
        i += length;
        textStart = i;
    }
    if (i > textStart) onText(html.substr(textStart));
}

THtmlAttributes AttributesOf(const THtmlTag& tag) {
    THtmlAttributes attributes;
    std::string_view rest = tag.Rest;
    std::string name;
    std::string value;
    while (TakeAttribute(rest, name, value))
        attributes.emplace_back(name, value);
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
