// The rules on a description's mark-up, and what is read out of it.
#pragma once

#include <string>
#include <string_view>

namespace Backend {

// The mark-up as descriptions are kept: well-formed XHTML with nothing in it but
// formatted text, tables, links and stored pictures. What does not nest, is not ended
// or not quoted is mended; scripts, frames, forms, style sheets, comments and addresses
// that lead anywhere but to the web, a mailbox or within the text are left out, and so is
// what only an office program understands; an image without an address becomes its
// alternative text. A whole document stays one, a piece stays a piece; cleaned mark-up
// comes out unchanged.
//
// Expects valid UTF-8. Refuses (MarkupViolation) what cannot be mended without losing
// text: a tag, an attribute or a comment without an end, elements nested hundreds deep;
// an image with a "src" that is neither stored ("src_original") nor new ("new"); and
// (RuleViolation) a new image, which has to be stored before the description.
std::string CleanMarkup(std::string_view html);

// What stands in the body of a whole document, without white space at its ends; a
// piece of mark-up as it is.
std::string_view BodyOf(std::string_view html);

// Whether cleaned mark-up says the same as what is kept, which may be older than the
// rules. Where one is a piece, the document that an editor wraps around the other does
// not count; of two documents the attributes of the body do.
bool SameMarkup(std::string_view cleaned, std::string_view kept);

} // namespace Backend
