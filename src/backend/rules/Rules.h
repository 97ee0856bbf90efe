// The rules on single values: what a name, a text, an attribute's value may be. Each
// check raises RuleViolation with a sentence that names the thing.
#pragma once

#include "backend/rules/Changes.h"
#include "backend/rules/Refusal.h"
#include "backend/store/Model.h"

#include <string>
#include <string_view>

namespace Backend {

// In characters, but the description, which is in bytes.
constexpr std::size_t MaxName = 128;
constexpr std::size_t MaxRequirementName = 255;
constexpr std::size_t MaxTextLength = 100'000;
constexpr std::size_t MaxDescriptionBytes = 1'500'000;
constexpr std::size_t MaxReferences = 1000;

// Valid UTF-8 without NUL, at most so many characters. What: like "The subject".
void CheckText(std::string_view what, std::string_view text, std::size_t maxLength);
// The same, and not empty.
void CheckName(std::string_view what, std::string_view text, std::size_t maxLength = MaxName);
// Gives the mark-up as it is kept.
std::string CleanDescription(std::string_view html);
void CheckIcon(std::string_view what, std::string_view icon);
void CheckReferences(const std::vector<DocumentReference>& references);
// Of the attribute's kind and within its bounds.
void CheckValue(const Attribute& attribute, const Value& value);
// Also that the attribute itself is sound, its default included.
void CheckAttribute(const Attribute& attribute);

// The one way in which a value that can be empty in two ways is kept: an empty text
// for a text attribute, no selection for a list, false for a boolean.
Value Normalized(const Attribute& attribute, Value value);

// Valid UTF-8 of any length, without NUL.
bool IsPlainUtf8(std::string_view text);

} // namespace Backend
