// Elements put where a browser would put them.
#pragma once

#include "markup/HtmlDocument.h"

namespace Markup {

// A browser then reads what is written of the tree as the same tree. Tables: rows get a
// body and cells a row that nobody wrote; a part ends what is open in the one before it;
// what is no part stands before the table; parts of a table outside of one become blocks.
// A paragraph with a block in it becomes one, and so does an item right within another; a
// link ends before another link, and a heading before another heading.
void MendNesting(const HtmlDocument& document);

bool IsTablePart(const xmlNode& node);

} // namespace Markup
