// A table of requirements: its records checked, and nested as their ids or columns say.
// Nothing here knows of a database.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace Exchange {

// How requirements come under others.
enum class Nesting {
    None,      // all on the first level, in the order of the table
    ById,      // A.1 under A: a point and more after the id of another record
    ByColumns, // under headings made of the texts of some columns
    ByParent   // under the record whose id a column names
};

struct ImportColumns {
    std::string Id, Name, Text; // a name from the same column as the text is its beginning
    std::string Rationale;             // empty: none
    std::vector<std::string> Headings; // of ByColumns, the outermost first
    std::string Parent;                // of ByParent
};

struct TableOptions {
    ImportColumns Columns;
    Exchange::Nesting Nesting = Nesting::None;
    char Separator = ',';
    std::string Encoding; // empty: told by a byte-order mark, else UTF-8
};

// What cannot be taken, and the line in which its record begins.
struct Refusal {
    int Line = 0;
    std::string Reason;
};

struct ImportItem {
    int Line = 0; // a heading's: of the first record below it
    bool IsHeading = false;
    int Parent = -1; // position of the item that it goes under; always smaller than its own
    std::string Id;  // a heading's: the names from the outermost on, "Part / Chapter"
    std::string Name, Text, Rationale;
    std::vector<std::string> Extras; // as ImportTable::ExtraColumns
};

struct ImportTable {
    std::string IdColumn;
    std::vector<std::string> ExtraColumns; // columns that no option names
    std::vector<ImportItem> Items;         // parents stand before their children
    std::vector<Refusal> Refusals;         // in the order of the lines
    int Records = 0;                       // without the header
};

// A table of which nothing can be taken: no header, a column that is not there. The
// message is a sentence.
class TableError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Raises TableError or EncodingError. A record is refused when it cannot be read, has
// more or fewer cells than the header, has no id or no name, has an id that came before,
// or goes under a record that is not there.
ImportTable ReadImportTable(std::string_view bytes, const TableOptions& options);

} // namespace Exchange
