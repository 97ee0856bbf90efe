// Records of a table of separated values, with the lines in which they stand.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Exchange {

struct CsvRecord {
    // Lines from 1; a record with line breaks in its cells spans several.
    int FirstLine = 0, LastLine = 0;
    std::vector<std::string> Cells;
    std::string Fault; // why the record cannot be read, else empty; Cells then mean nothing
};

// The text is UTF-8. Cells may be quoted with '"', doubled inside; blanks around cells
// without quotes are dropped, and so are empty lines. Reading goes on with the next
// line after a record that cannot be read.
std::vector<CsvRecord> ReadCsv(std::string_view text, char separator);

} // namespace Exchange
