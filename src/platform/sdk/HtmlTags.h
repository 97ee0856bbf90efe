// The tags of an HTML text, found without a document: mark-up of any quality is
// walked through, and what is not looked at stays byte for byte.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Sdk {

struct THtmlTag {
    std::string Name; // in lower case
    bool IsEnd = false;
    std::string_view Rest; // behind the name
    std::string_view Raw;  // all of it
};

// Names in lower case, values with their references decoded, in the tag's order.
using THtmlAttributes = std::vector<std::pair<std::string, std::string>>;

// Calls `onText` and `onTag` for the pieces in their order. Comments and declarations
// come as tags.
void WalkHtml(std::string_view html, const std::function<void(std::string_view)>& onText,
              const std::function<void(const THtmlTag&)>& onTag);

THtmlAttributes AttributesOf(const THtmlTag& tag);
// Empty when there is none of that name.
std::string* FindAttribute(THtmlAttributes& attributes, std::string_view name);

// The values of an attribute of all elements of that name, in order. Elements without
// it are left out; names are in lower case.
std::vector<std::string> AttributesOf(std::string_view html, std::string_view element,
                                      std::string_view attribute);

// The text with the attributes of all elements of that name as `change` leaves them;
// where it gives false, the tag stays as it is. What it raises ends the walk.
std::string ChangeTags(std::string_view html, std::string_view element,
                       const std::function<bool(THtmlAttributes&)>& change);

} // namespace Sdk
