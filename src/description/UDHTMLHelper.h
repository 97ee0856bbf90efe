// Counts what stands inside an element of the description, such as a table's rows.
#pragma once

#include <cstdint>
#include <string>

#include "contracts/HtmlEngine.h"

class THTMLHelper {
public:
    // How many elements of that tag, in any case, stand in the element: among its own
    // children alone, or at any depth. What stands inside a match does not count.
    static std::int32_t GetSubElementCount(IHTMLElement& element, const std::string& tagName, bool recursive);

    // Rows of a table in a cell do not count.
    static std::int32_t GetTableRowCount(IHTMLElement& table);
    // The average over the rows, cut to an integer; header cells do not count. 0 for a
    // table without rows.
    static std::int32_t GetTableColCount(IHTMLElement& table);
};
