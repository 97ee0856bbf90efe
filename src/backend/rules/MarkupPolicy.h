// What a description may contain. Names are in lower case.
#pragma once

#include <string>
#include <string_view>

namespace Backend {

enum class ElementRule {
    Keep,
    // Only what is inside.
    Unwrap,
    // Gone with what is inside.
    Drop,
};

ElementRule RuleOfElement(std::string_view name);

// Attributes that need no look at their value.
bool IsPlainAttribute(std::string_view element, std::string_view attribute);

// An address that a link may lead to: of the web, of a mailbox, or relative.
bool IsSafeAddress(std::string_view address);

// The names of a "class" attribute that are not an office program's; empty for none.
std::string CleanClasses(std::string_view classes);

// The declarations of a "style" attribute that only format text; empty for none.
std::string CleanStyle(std::string_view style);

} // namespace Backend
