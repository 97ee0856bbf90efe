// How the sample texts write dates, values, descriptions and icons.
#pragma once

#include "backend/exchange/Outline.h"
#include "backend/store/Model.h"

#include <functional>
#include <map>
#include <string>

namespace Exchange {

using NameMap = std::map<std::string, Backend::ObjectId, std::less<>>;

// An attribute and the names by which its list entries are written.
struct SampleAttribute {
    Backend::Attribute Definition;
    std::vector<std::string> EntryNames;
};

// "2025-01-13 08:30" or "2025-01-13", in UTC. Raises std::invalid_argument.
Backend::Instant ParseInstant(const std::string& text);

// The instant's day and time in the form of attribute values.
Backend::Date ToDate(Backend::Instant instant);

// An attribute as its entry tells it; lists of users and groups hold all of them.
SampleAttribute ReadAttribute(const OutlineEntry& entry, const NameMap& users, const NameMap& groups);

// Raises std::invalid_argument when the text is no value of the attribute.
Backend::Value ParseValue(const SampleAttribute& attribute, const std::string& text);

// The blocks of a body as mark-up. The function gives the hash of a picture's file.
std::string DescriptionOf(const OutlineEntry& entry,
                          const std::function<std::string(const std::string& file)>& picture);

// 768 bytes: 16 x 16 pixels. The file tells the colour of each character, then the rows.
std::string ReadIcon(const std::string& path);

} // namespace Exchange
