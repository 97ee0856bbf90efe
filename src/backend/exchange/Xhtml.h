// Plain text as the well-formed mark-up that descriptions consist of.
#pragma once

#include <string>
#include <string_view>

namespace Exchange {

// The text with the characters that mean something in mark-up written as entities.
std::string EscapeXhtml(std::string_view text);

// One paragraph for each part between empty lines, in which a single line break stays
// one. Line ends of any kind are understood; a text of blanks alone gives "".
std::string ParagraphsOf(std::string_view text);

// False when the text holds a character that mark-up cannot hold at all, such as a
// control character.
bool FitsMarkup(std::string_view text);

} // namespace Exchange
