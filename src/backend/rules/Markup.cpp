#include "backend/rules/Markup.h"

#include "backend/rules/Refusal.h"

#include <algorithm>
#include <array>
#include <vector>

namespace Backend {

namespace {

constexpr auto NotWellFormed =
    "The content of elements must consist of well-formed character data or markup.";
constexpr auto UnknownImage =
    "The specified HTML contains an image that has a 'src' attribute but does not have a 'src_original' "
    "attribute. If you are inserting an image into an existing requirement description, your img tag must "
    "contain the 'new' attribute to signify a new image.";

constexpr std::array<std::string_view, 16> EmptyElements = {
    "area", "base",  "basefont", "br",   "col",   "embed",  "frame", "hr",
    "img",  "input", "link",     "meta", "param", "source", "track", "wbr"};

bool IsSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}
bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}
char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool EqualsIgnoringCase(std::string_view text, std::string_view lower) {
    return std::ranges::equal(text, lower, [](char a, char b) { return Lower(a) == b; });
}

bool SameName(std::string_view one, std::string_view other) {
    return std::ranges::equal(one, other, [](char a, char b) { return Lower(a) == Lower(b); });
}

// Walks once over the text and keeps the open elements on a stack.
class MarkupCheck {
public:
    explicit MarkupCheck(std::string_view html)
        : FText(html) {}

    void Run() {
        while (FAt < FText.size()) {
            if (FText[FAt] == '<')
                Tag();
            else if (FText[FAt] == '&')
                Entity();
            else
                ++FAt;
        }
        Demand(FOpen.empty());
    }

private:
    static void Demand(bool condition) {
        if (!condition) throw MarkupViolation(NotWellFormed);
    }

    char Peek(std::size_t offset = 0) const {
        return FAt + offset < FText.size() ? FText[FAt + offset] : '\0';
    }
    bool Has(std::string_view text) const { return FText.substr(FAt).starts_with(text); }

    void SkipBeyond(std::string_view end) {
        const std::size_t found = FText.find(end, FAt);
        Demand(found != std::string_view::npos);
        FAt = found + end.size();
    }

    void SkipSpace() {
        while (IsSpace(Peek()))
            ++FAt;
    }

    std::string_view Name() {
        const std::size_t start = FAt;
        while (FAt < FText.size() && !IsSpace(Peek()) &&
               std::string_view("/>=<\"'").find(Peek()) == std::string_view::npos)
            ++FAt;
        return FText.substr(start, FAt - start);
    }

    void Entity() {
        const std::size_t end = FText.substr(FAt, 40).find(';');
        Demand(end != std::string_view::npos && end > 1);
        std::string_view name = FText.substr(FAt + 1, end - 1);
        const bool number = name.starts_with('#');
        if (number) name.remove_prefix(1);
        Demand(!name.empty() && std::ranges::all_of(name, [](char c) { return IsLetter(c) || IsDigit(c); }));
        Demand(number || IsLetter(name[0]));
        FAt += end + 1;
    }

    void Tag() {
        if (Has("<!--")) return SkipBeyond("-->");
        if (Has("<![CDATA[")) return SkipBeyond("]]>");
        if (Peek(1) == '!' || Peek(1) == '?') return SkipBeyond(">");
        if (Peek(1) == '/') return EndTag();
        ++FAt;
        Demand(IsLetter(Peek()));
        StartTag(Name());
    }

    void EndTag() {
        FAt += 2;
        const std::string_view name = Name();
        SkipSpace();
        Demand(Peek() == '>');
        ++FAt;
        Demand(!FOpen.empty() && SameName(FOpen.back(), name));
        FOpen.pop_back();
    }

    void StartTag(std::string_view name) {
        bool source = false, known = false;
        for (;;) {
            SkipSpace();
            if (Peek() == '>' || Has("/>")) break;
            const std::string_view attribute = Name();
            Demand(!attribute.empty());
            source = source || EqualsIgnoringCase(attribute, "src");
            known = known || EqualsIgnoringCase(attribute, "src_original") ||
                    EqualsIgnoringCase(attribute, "new");
            AttributeContent();
        }
        if (source && !known && EqualsIgnoringCase(name, "img")) throw MarkupViolation(UnknownImage);
        const bool closed = Peek() == '/';
        FAt += closed ? 2 : 1;
        if (closed ||
            std::ranges::any_of(EmptyElements, [&](auto empty) { return EqualsIgnoringCase(name, empty); }))
            return;
        if (EqualsIgnoringCase(name, "script") || EqualsIgnoringCase(name, "style")) return RawText(name);
        FOpen.push_back(name);
    }

    void AttributeContent() {
        SkipSpace();
        if (Peek() != '=') return;
        ++FAt;
        SkipSpace();
        if (Peek() == '"' || Peek() == '\'') {
            const char quote = FText[FAt++];
            SkipBeyond(std::string_view(&quote, 1));
            return;
        }
        const std::size_t start = FAt;
        while (FAt < FText.size() && !IsSpace(Peek()) && Peek() != '>') {
            Demand(Peek() != '<' && Peek() != '"' && Peek() != '\'');
            ++FAt;
        }
        Demand(FAt > start);
    }

    void RawText(std::string_view name) {
        for (;;) {
            SkipBeyond("</");
            if (SameName(Name(), name)) break;
        }
        SkipSpace();
        Demand(Peek() == '>');
        ++FAt;
    }

    std::string_view FText;
    std::size_t FAt = 0;
    std::vector<std::string_view> FOpen;
};

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && IsSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

} // namespace

void CheckMarkup(std::string_view html) {
    MarkupCheck(html).Run();
}

std::string_view BodyOf(std::string_view html) {
    const auto find = [&](std::string_view what) {
        const auto same = [](char a, char b) { return Lower(a) == b; };
        return static_cast<std::size_t>(std::ranges::search(html, what, same).begin() - html.begin());
    };
    const std::size_t start = find("<body");
    const std::size_t open = html.find('>', start);
    const std::size_t end = find("</body");
    if (start == html.size() || open == std::string_view::npos || end <= open) return Trimmed(html);
    return Trimmed(html.substr(open + 1, end - open - 1));
}

} // namespace Backend
