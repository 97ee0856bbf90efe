#include "server/UListClearer.h"

#include "platform/widgets/Lists.h"
#include "platform/widgets/tree/ListView.h"
#include "platform/widgets/tree/TreeView.h"

namespace {

// Marks the list for its handlers and holds its updates, however the block is left.
class TClearingScope {
public:
    explicit TClearingScope(TListView& listView)
        : FListView(listView) {
        FListView.SetTag(1);
        FListView.BeginUpdate();
    }
    ~TClearingScope() {
        FListView.EndUpdate();
        FListView.SetTag(0);
    }
    TClearingScope(const TClearingScope&) = delete;
    TClearingScope& operator=(const TClearingScope&) = delete;

private:
    TListView& FListView;
};

void FreeDataBelow(TTreeNode& node) {
    for (int index = 0; index < node.Count(); ++index) {
        TTreeNode& child = *node.Item(index);
        child.SetData(nullptr);
        FreeDataBelow(child);
    }
}

} // namespace

void ClearStrings(TStrings& strings) {
    for (int index = 0; index < strings.Count(); ++index)
        strings.SetObject(index, nullptr);
    strings.Clear();
}

void ClearTreeNodeChildren(TTreeNode& node) {
    FreeDataBelow(node);
    node.DeleteChildren();
}

void ClearListView(TListView& listView) {
    if (listView.ItemCount() == 0) return;
    const TClearingScope clearing(listView);
    for (int index = 0; index < listView.ItemCount(); ++index)
        listView.Item(index)->SetData(nullptr);
    listView.ClearItems();
}

void ClearTreeView(TTreeView& treeView) {
    TTreeNode* const first = treeView.GetFirstNode();
    if (!first) return;
    ClearTreeNodeChildren(*first);
    // The selection may have moved while the children went, and a handler with it.
    if (TTreeNode* const top = treeView.GetFirstNode()) top->SetData(nullptr);
    treeView.Clear();
}
