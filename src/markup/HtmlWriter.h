// Mark-up written from a tree. All text is escaped, so it reads the same whatever reads it.
#pragma once

#include "markup/HtmlDocument.h"

namespace Markup {

// As well-formed XHTML, a whole document or a piece like what was read. Comments,
// declarations, scripts and style sheets are left out.
std::string Write(const HtmlDocument& document);
// The element with its content; a text by itself.
std::string Write(const xmlNode& node);

// Elements that never have content.
bool IsEmptyElement(std::string_view name);

// Quoted: within an attribute's value. Control characters are left out.
void AppendEscaped(std::string& html, std::string_view text, bool quoted);

} // namespace Markup
