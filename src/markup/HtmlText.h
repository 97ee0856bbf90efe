// Plain text and HTML, each made from the other. Texts are UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace Markup {

// A fragment that a browser shows as the text stands, line breaks and runs of blanks
// included.
std::string PlainTextToHtml(std::string_view text);

// What a reader sees, without pictures: lines end with CR LF where a block ends or a
// break stands, other white space is one blank unless it is preformatted. Never fails,
// whatever the mark-up.
std::string HtmlToPlainText(std::string_view html);

// "&amp;", "&#228;" and their like as the characters that they stand for. What is no
// such reference stays.
std::string DecodeReferences(std::string_view text);

// "&#228;", "&#xE4;" and their like as the characters that they stand for. Named
// references stay, and so do those of characters that would be read as mark-up and of
// what is no character.
std::string DecodeNumericReferences(std::string_view html);

} // namespace Markup
