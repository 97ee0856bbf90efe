// Paragraphs made into a list, and the other way.
#pragma once

#include "markup/HtmlDocument.h"

namespace Markup {

enum class ListKind { Ordered, Unordered };

// Makes all of the text one list of that kind: an item of each paragraph, each line
// before a break, each other block, and each item of a list that stands there already.
// Lists within an item stay as they are; a text without anything to show gets no list.
void MakeList(const HtmlDocument& document, ListKind kind);

// Makes paragraphs of the items of all lists, nested ones too, in their order and with
// their attributes.
void RemoveLists(const HtmlDocument& document);

} // namespace Markup
