// Plain text and HTML, each made from the other. Texts are UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace Sdk {

// A fragment that a browser shows as the text stands, line breaks and runs of blanks
// included.
std::string PlainTextToHtml(std::string_view text);

// What a reader sees, without pictures: lines end with CR LF where a block ends or a
// break stands, other white space is one blank. Never fails, whatever the mark-up.
std::string HtmlToPlainText(std::string_view html);

} // namespace Sdk
