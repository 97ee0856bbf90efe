#include "backend/rules/Rules.h"

#include "backend/rules/Markup.h"

#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace Backend {

namespace {

[[noreturn]] void Refuse(std::string_view what, const std::string& why) {
    throw RuleViolation(std::string(what) + " " + why + ".");
}

// The bytes that follow a lead byte, or -1 for a byte that cannot lead.
int Following(unsigned char lead) {
    if (lead < 0x80) return 0;
    if (lead >= 0xc2 && lead <= 0xdf) return 1;
    if ((lead & 0xf0) == 0xe0) return 2;
    return lead >= 0xf0 && lead <= 0xf4 ? 3 : -1;
}

// The characters of a valid text without NUL, or -1.
long CountCharacters(std::string_view text) {
    long count = 0;
    for (std::size_t i = 0; i < text.size(); ++i, ++count) {
        const auto lead = static_cast<unsigned char>(text[i]);
        const int following = Following(lead);
        if (lead == 0 || following < 0 || i + static_cast<std::size_t>(following) >= text.size()) return -1;
        for (int k = 1; k <= following; ++k) {
            const auto next = static_cast<unsigned char>(text[i + static_cast<std::size_t>(k)]);
            const bool overlong = k == 1 && ((lead == 0xe0 && next < 0xa0) || (lead == 0xf0 && next < 0x90));
            const bool outside = k == 1 && ((lead == 0xed && next > 0x9f) || (lead == 0xf4 && next > 0x8f));
            if ((next & 0xc0) != 0x80 || overlong || outside) return -1;
        }
        i += static_cast<std::size_t>(following);
    }
    return count;
}

std::string Named(const Attribute& attribute) {
    return "The attribute \"" + attribute.Name + "\"";
}

template<typename T> const T& Expect(const Attribute& attribute, const Value& value, const char* kind) {
    if (const T* held = std::get_if<T>(&value)) return *held;
    Refuse(Named(attribute), std::string("takes ") + kind);
}

void CheckSelection(const Attribute& attribute, const Selection& selection) {
    int previous = -1;
    for (int index : selection.Indices) {
        if (index < 0 || index >= static_cast<int>(attribute.Entries.size()))
            Refuse(Named(attribute), "has no entry at position " + std::to_string(index));
        if (index <= previous) Refuse(Named(attribute), "takes each position once, in ascending order");
        previous = index;
    }
    const auto allowed = static_cast<std::size_t>(std::max(attribute.MaxSelections, 1));
    if (selection.Indices.size() > allowed)
        Refuse(Named(attribute), "takes at most " + std::to_string(allowed) + " entries");
}

// The shortest text from which the number can be read again.
template<typename T> std::string NumberText(T value) {
    char text[64];
    return std::string(text, std::to_chars(text, text + sizeof text, value).ptr);
}

// The day as in 2024-02-29.
std::string DayText(double days) {
    using namespace std::chrono;
    constexpr sys_days first = year(1899) / December / 30;
    const year_month_day day(first + std::chrono::days(static_cast<int>(days)));
    char text[32];
    std::snprintf(text, sizeof text, "%d-%02u-%02u", static_cast<int>(day.year()),
                  static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()));
    return text;
}

template<typename T> void CheckRange(const Attribute& attribute, T value, T low, T high) {
    if (!(value >= low && value <= high))
        Refuse(Named(attribute), "takes values from " + NumberText(low) + " to " + NumberText(high));
}

} // namespace

bool IsPlainUtf8(std::string_view text) {
    return CountCharacters(text) >= 0;
}

void CheckText(std::string_view what, std::string_view text, std::size_t maxLength) {
    const long count = CountCharacters(text);
    if (text.find('\0') != text.npos)
        Refuse(what, "holds the character NUL, which no text may hold; take it out");
    if (count < 0) Refuse(what, "is not a valid text");
    if (static_cast<std::size_t>(count) > maxLength)
        Refuse(what, "is longer than " + std::to_string(maxLength) + " characters");
}

void CheckName(std::string_view what, std::string_view text, std::size_t maxLength) {
    if (text.empty()) Refuse(what, "is empty");
    CheckText(what, text, maxLength);
}

std::string CleanDescription(std::string_view html) {
    const auto checkSize = [](std::string_view text) {
        if (text.size() > MaxDescriptionBytes)
            Refuse("The description", "is larger than " + std::to_string(MaxDescriptionBytes) + " bytes");
    };
    checkSize(html);
    CheckText("The description", html, MaxDescriptionBytes);
    std::string clean = CleanMarkup(html);
    checkSize(clean);
    return clean;
}

void CheckIcon(std::string_view what, std::string_view icon) {
    if (!icon.empty() && icon.size() != 768) Refuse(what, "is not a picture of 16 x 16 pixels");
}

void CheckReferences(const std::vector<DocumentReference>& references) {
    if (references.size() > MaxReferences)
        Refuse("A requirement", "takes at most " + std::to_string(MaxReferences) + " references");
    int keys = 0;
    for (const DocumentReference& reference : references) {
        CheckText("The reference", reference.Target, MaxTextLength);
        CheckText("The reference's description", reference.Description, MaxTextLength);
        if (reference.IsKey && ++keys > 1) Refuse("A requirement", "takes at most one key reference");
    }
}

void CheckValue(const Attribute& attribute, const Value& value) {
    if (std::holds_alternative<std::monostate>(value)) return;
    switch (attribute.Kind) {
    case AttributeKind::Boolean:
        Expect<bool>(attribute, value, "true or false");
        break;
    case AttributeKind::Integer:
    case AttributeKind::Duration:
        CheckRange(attribute, Expect<std::int32_t>(attribute, value, "a whole number"), attribute.MinInteger,
                   attribute.MaxInteger);
        break;
    case AttributeKind::Float:
        CheckRange(attribute, Expect<float>(attribute, value, "a number"), attribute.MinFloat,
                   attribute.MaxFloat);
        break;
    case AttributeKind::Date: {
        const double days = Expect<Date>(attribute, value, "a date").Days;
        if (!std::isfinite(days) || days < attribute.MinDate.Days || days > attribute.MaxDate.Days)
            Refuse(Named(attribute), "takes dates from " + DayText(attribute.MinDate.Days) + " to " +
                                         DayText(attribute.MaxDate.Days));
        break;
    }
    case AttributeKind::Text:
        CheckText(Named(attribute), Expect<std::string>(attribute, value, "a text"),
                  static_cast<std::size_t>(attribute.MaxLength));
        break;
    case AttributeKind::List:
        CheckSelection(attribute, Expect<Selection>(attribute, value, "entries of its list"));
        break;
    }
}

void CheckAttribute(const Attribute& attribute) {
    CheckName("The attribute's name", attribute.Name);
    CheckText(Named(attribute), attribute.UnitName, MaxName);
    if (attribute.MaxLength < 0 || static_cast<std::size_t>(attribute.MaxLength) > MaxTextLength)
        Refuse(Named(attribute), "cannot hold texts of such a length");
    if (attribute.MaxSelections < 0) Refuse(Named(attribute), "cannot have fewer than no selections");
    for (const ListEntry& entry : attribute.Entries)
        if (const auto* text = std::get_if<std::string>(&entry))
            CheckText("An entry of the attribute", *text, MaxRequirementName);
    CheckValue(attribute, attribute.Default);
}

Value Normalized(const Attribute& attribute, Value value) {
    if (!std::holds_alternative<std::monostate>(value)) return value;
    switch (attribute.Kind) {
    case AttributeKind::Boolean:
        return false;
    case AttributeKind::Text:
        return std::string();
    case AttributeKind::List:
        return Selection();
    default:
        return value;
    }
}

} // namespace Backend
