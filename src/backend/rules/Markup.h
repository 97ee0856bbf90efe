// The rules on a description's mark-up, and what is read out of it.
#pragma once

#include <string>
#include <string_view>

namespace Backend {

// Refuses (MarkupViolation) mark-up whose elements do not nest, with stray "<" or
// "&", and an image with a "src" that is neither stored ("src_original") nor new
// ("new"). It judges HTML as an editor writes it: elements without content need no
// end, attributes need no quotes, a whole document is as good as a piece of one.
void CheckMarkup(std::string_view html);

// What stands in the body of a whole document, without white space at its ends; a
// piece of mark-up as it is. Two descriptions with the same body are the same.
std::string_view BodyOf(std::string_view html);

} // namespace Backend
