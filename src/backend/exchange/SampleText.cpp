#include "backend/exchange/SampleText.h"

#include "backend/exchange/Files.h"
#include "backend/exchange/Xhtml.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <sstream>

namespace Exchange {

using namespace Backend;

namespace {

constexpr Instant MicrosecondsPerDay = 86'400'000'000;
// From 30 December 1899 to 1 January 1970.
constexpr double DaysBefore1970 = 25569;
constexpr int IconSide = 16;

template<class Number> Number ParseNumber(std::string_view text, int base = 10) {
    Number number{};
    std::from_chars_result result{};
    if constexpr (std::is_floating_point_v<Number>)
        result = std::from_chars(text.data(), text.data() + text.size(), number);
    else
        result = std::from_chars(text.data(), text.data() + text.size(), number, base);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size())
        throw std::invalid_argument("\"" + std::string(text) + "\" is no number");
    return number;
}

AttributeKind KindOf(const OutlineEntry& entry) {
    static const std::map<std::string, AttributeKind> kinds = {
        {"boolean", AttributeKind::Boolean},   {"date", AttributeKind::Date},
        {"float", AttributeKind::Float},       {"integer", AttributeKind::Integer},
        {"duration", AttributeKind::Duration}, {"list", AttributeKind::List},
        {"text", AttributeKind::Text}};
    const auto kind = kinds.find(entry.Text("kind"));
    if (kind == kinds.end()) throw entry.Error("the kind of attribute is unknown");
    return kind->second;
}

void ReadRange(const OutlineEntry& entry, Attribute& attribute) {
    const std::string range = entry.Text("range");
    if (range.empty()) return;
    const auto dots = range.find("..");
    if (dots == std::string::npos) throw entry.Error("a range has the form \"0 .. 10\"");
    const std::string low = Trimmed(range.substr(0, dots)), high = Trimmed(range.substr(dots + 2));
    if (attribute.Kind == AttributeKind::Float) {
        attribute.MinFloat = ParseNumber<float>(low);
        attribute.MaxFloat = ParseNumber<float>(high);
    } else {
        attribute.MinInteger = ParseNumber<std::int32_t>(low);
        attribute.MaxInteger = ParseNumber<std::int32_t>(high);
    }
}

void ReadEntries(const OutlineEntry& entry, const NameMap& users, const NameMap& groups,
                 SampleAttribute& attribute) {
    const std::string of = entry.Text("of", "text");
    auto& entries = attribute.Definition.Entries;
    if (of == "text") {
        attribute.EntryNames = entry.List("entries");
        entries.assign(attribute.EntryNames.begin(), attribute.EntryNames.end());
        return;
    }
    if (of != "user" && of != "group") throw entry.Error("a list is of text, user or group");
    for (const auto& [name, id] : of == "user" ? users : groups) {
        attribute.EntryNames.push_back(name);
        if (of == "user")
            entries.emplace_back(UserEntry{id});
        else
            entries.emplace_back(GroupEntry{id});
    }
}

Selection ParseSelection(const SampleAttribute& attribute, const std::string& text) {
    Selection selection;
    for (const auto& name : SplitTrimmed(text, ';')) {
        const auto found = std::find(attribute.EntryNames.begin(), attribute.EntryNames.end(), name);
        if (found == attribute.EntryNames.end())
            throw std::invalid_argument("\"" + name + "\" is no entry of the list");
        selection.Indices.push_back(static_cast<int>(found - attribute.EntryNames.begin()));
    }
    std::sort(selection.Indices.begin(), selection.Indices.end());
    return selection;
}

bool IsMarkup(std::string_view block) {
    static constexpr std::array<std::string_view, 6> tags = {"<p", "<table", "<ul", "<ol", "<div", "<h"};
    return std::any_of(tags.begin(), tags.end(),
                       [&](std::string_view tag) { return block.starts_with(tag); });
}

std::string ListOf(std::string_view block) {
    std::string html = "<ul>";
    bool open = false;
    std::istringstream lines{std::string(block)};
    for (std::string line; std::getline(lines, line);) {
        const bool item = line.starts_with("- ");
        if (item && open) html += "</li>";
        html += item ? "<li>" + line.substr(2) : ' ' + line;
        open = true;
    }
    return html + "</li></ul>";
}

std::string PictureOf(const OutlineEntry& entry, std::string_view block,
                      const std::function<std::string(const std::string&)>& picture) {
    const auto parts = SplitTrimmed(block.substr(0, block.find("}}")).substr(9), '|');
    if (parts.size() != 2) throw entry.Error("a picture has the form {{picture FILE | TEXT}}");
    const std::string hash = picture(parts[0]);
    return "<p><img src_original=\"" + hash + "\" src=\"" + hash + "\" alt=\"" + EscapeXhtml(parts[1]) +
           "\" /></p>";
}

} // namespace

Instant ParseInstant(const std::string& text) {
    int year = 0, hour = 0, minute = 0;
    unsigned month = 0, day = 0;
    const int read = std::sscanf(text.c_str(), "%d-%u-%u %d:%d", &year, &month, &day, &hour, &minute);
    const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(month),
                                           std::chrono::day(day)};
    if ((read != 3 && read != 5) || !date.ok() || hour > 23 || minute > 59)
        throw std::invalid_argument("\"" + text + "\" is no date of the form 2025-01-31 or 2025-01-31 08:30");
    const auto days = std::chrono::sys_days(date).time_since_epoch().count();
    return days * MicrosecondsPerDay + (hour * 60 + minute) * Instant{60'000'000};
}

Date ToDate(Instant instant) {
    return {DaysBefore1970 + static_cast<double>(instant) / static_cast<double>(MicrosecondsPerDay)};
}

SampleAttribute ReadAttribute(const OutlineEntry& entry, const NameMap& users, const NameMap& groups) {
    SampleAttribute attribute;
    auto& definition = attribute.Definition;
    definition.Name = entry.Title;
    definition.Kind = KindOf(entry);
    definition.UnitName = entry.Text("unit");
    try {
        definition.MaxLength = ParseNumber<int>(entry.Text("length", "255"));
        definition.MaxSelections = ParseNumber<int>(entry.Text("max selections", "1"));
        ReadRange(entry, definition);
        if (definition.Kind == AttributeKind::List) ReadEntries(entry, users, groups, attribute);
        if (const auto text = entry.Text("default"); !text.empty())
            definition.Default = ParseValue(attribute, text);
    } catch (const std::invalid_argument& error) {
        throw entry.Error(error.what());
    }
    return attribute;
}

Value ParseValue(const SampleAttribute& attribute, const std::string& text) {
    switch (attribute.Definition.Kind) {
    case AttributeKind::Boolean:
        if (text != "yes" && text != "no")
            throw std::invalid_argument("\"" + text + "\" is neither yes nor no");
        return text == "yes";
    case AttributeKind::Date:
        return ToDate(ParseInstant(text));
    case AttributeKind::Float:
        return ParseNumber<float>(text);
    case AttributeKind::Integer:
    case AttributeKind::Duration:
        return ParseNumber<std::int32_t>(text);
    case AttributeKind::List:
        return ParseSelection(attribute, text);
    case AttributeKind::Text:
        return text;
    }
    throw std::invalid_argument("the attribute is of no known kind");
}

std::string DescriptionOf(const OutlineEntry& entry,
                          const std::function<std::string(const std::string&)>& picture) {
    std::string html;
    for (const auto& block : entry.Blocks) {
        if (block.starts_with("{{picture "))
            html += PictureOf(entry, block, picture);
        else if (IsMarkup(block))
            html += block;
        else if (block.starts_with("- "))
            html += ListOf(block);
        else
            html += "<p>" + block + "</p>";
        html += '\n';
    }
    return html;
}

std::string ReadIcon(const std::string& path) {
    std::istringstream lines(ReadFile(path));
    std::map<char, std::string> palette;
    std::string line, icon;
    while (std::getline(lines, line) && !line.empty()) {
        const auto colour = ParseNumber<std::uint32_t>(std::string_view(line).substr(2), 16);
        palette[line[0]] = {static_cast<char>(colour >> 16), static_cast<char>(colour >> 8),
                            static_cast<char>(colour)};
    }
    while (std::getline(lines, line))
        for (const char pixel : line)
            icon += palette.at(pixel);
    if (icon.size() != IconSide * IconSide * 3)
        throw FileError("The icon " + path + " is not 16 by 16 pixels.");
    return icon;
}

} // namespace Exchange
