// Elements put where a browser would put them.
#pragma once

#include "markup/HtmlDocument.h"

namespace Markup {

// Tables as browsers build them: rows get a body and cells a row that nobody wrote; what
// is neither stands before the table; parts of a table outside of one become blocks.
// What is written of the tree is read back as the same tree.
void MendTables(const HtmlDocument& document);

} // namespace Markup
