// Empties lists whose entries own containers. A node that an empty slot stands for is
// passed over; none of these asks the server anything.
#pragma once

class TListView;
class TStrings;
class TTreeNode;
class TTreeView;

// Frees the objects of all entries, first to last, then clears the list.
void ClearStrings(TStrings& strings);

// Frees the data of all nodes below the node, depth first, then deletes its children in
// one step. The node keeps its own data.
void ClearTreeNodeChildren(TTreeNode& node);

// Frees the data of all items and clears the list. Its tag is 1 meanwhile, which tells
// handlers that fire while the items go away to do nothing, and 0 afterwards, also
// after a failure. An empty list is left alone, with its tag.
void ClearListView(TListView& listView);

// For a tree with one top node, whose data goes as well.
void ClearTreeView(TTreeView& treeView);
