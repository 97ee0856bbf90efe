// The plain text format of the sample projects: headings whose level is the number
// of '#', each with fields and a body. It is told in samples/README.md.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace Exchange {

// A text that cannot be understood; the message begins with "file:line: ".
class OutlineError : public std::runtime_error {
public:
    OutlineError(const std::string& file, int line, const std::string& sentence);
};

struct OutlineField {
    std::string Key, Text;
    int Line = 0;
};

struct OutlineEntry {
    int Level = 1;
    std::string Title;
    std::vector<OutlineField> Fields;
    std::vector<std::string> Blocks; // of the body: its paragraphs, lists and pieces of HTML
    std::string File;
    int Line = 0;

    // The text of the last field of that key, or the fallback.
    std::string Text(std::string_view key, std::string_view fallback = {}) const;
    // True for "yes". Raises OutlineError when it is neither "yes" nor "no".
    bool Flag(std::string_view key) const;
    // The texts between semicolons, of all fields of that key in order, trimmed.
    std::vector<std::string> List(std::string_view key, char separator = ';') const;
    std::vector<const OutlineField*> All(std::string_view key) const;
    // An error at this entry, to be thrown.
    OutlineError Error(const std::string& sentence) const;
};

// Fields and body of one entry after the other, in the order of the text. Raises
// OutlineError when a text stands before the first heading, when a level is left
// out, or when a field has no key.
std::vector<OutlineEntry> ParseOutline(std::string_view text, const std::string& file);

// The same of a file; raises OutlineError also when it cannot be read.
std::vector<OutlineEntry> ReadOutline(const std::string& path);

std::string Trimmed(std::string_view text);
std::vector<std::string> SplitTrimmed(std::string_view text, char separator);

} // namespace Exchange
