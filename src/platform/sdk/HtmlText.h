// Plain text and HTML, each made from the other. Texts are UTF-8.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace Sdk {

// A fragment that a browser shows as the text stands, line breaks and runs of blanks
// included.
std::string PlainTextToHtml(std::string_view text);

// What a reader sees, without pictures: lines end with CR LF where a block ends or a
// break stands, other white space is one blank. Never fails, whatever the mark-up.
std::string HtmlToPlainText(std::string_view html);

// "&amp;", "&#228;" and their like as the characters that they stand for. What is no
// such reference stays.
std::string DecodeCharacterReferences(std::string_view text);

// The values of an attribute of all elements of that name, in order, references
// decoded. Elements without it are left out; names are in lower case.
std::vector<std::string> AttributesOf(std::string_view html, std::string_view element,
                                      std::string_view attribute);

} // namespace Sdk
