#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/widgets/Lists.h"
#include "platform/widgets/tree/ListView.h"
#include "platform/widgets/tree/TreeView.h"
#include "server/UListClearer.h"

namespace {

// Writes its name down when it is freed.
class TMarker : public TObject {
public:
    TMarker(std::vector<std::string>& freed, std::string name)
        : FFreed(freed)
        , FName(std::move(name)) {}
    ~TMarker() override { FFreed.push_back(FName); }

private:
    std::vector<std::string>& FFreed;
    std::string FName;
};

class ListClearerTest : public testing::Test {
protected:
    std::unique_ptr<TObject> Marker(const std::string& name) {
        return std::make_unique<TMarker>(Freed, name);
    }
    TTreeNode& AddNode(TTreeView& tree, TTreeNode& parent, const std::string& name) {
        TTreeNode& node = tree.AddChild(parent, name);
        node.SetData(Marker(name));
        return node;
    }

    std::vector<std::string> Freed;
};

TEST_F(ListClearerTest, FreesTheObjectsOfStringsInOrder) {
    TComboBox combo(nullptr);
    combo.Items().AddObject("b", Marker("b"));
    combo.Items().Add("none");
    combo.Items().AddObject("a", Marker("a"));
    ClearStrings(combo.Items());
    EXPECT_EQ(combo.Items().Count(), 0);
    EXPECT_EQ(Freed, (std::vector<std::string>{"b", "a"}));
}

TEST_F(ListClearerTest, FreesWholeSubtreesAndKeepsTheNodeItself) {
    TTreeView tree(nullptr);
    TTreeNode& top = tree.Add("top");
    top.SetData(Marker("top"));
    TTreeNode& first = AddNode(tree, top, "1");
    AddNode(tree, AddNode(tree, first, "1.1"), "1.1.1");
    AddNode(tree, top, "2");
    ClearTreeNodeChildren(top);
    EXPECT_EQ(Freed, (std::vector<std::string>{"1", "1.1", "1.1.1", "2"}));
    EXPECT_EQ(top.Count(), 0);
    EXPECT_TRUE(top.Data());
}

TEST_F(ListClearerTest, EmptiesATreeWithItsTopNode) {
    TTreeView tree(nullptr);
    ClearTreeView(tree);
    TTreeNode& top = tree.Add("top");
    top.SetData(Marker("top"));
    AddNode(tree, top, "1");
    ClearTreeView(tree);
    EXPECT_EQ(Freed, (std::vector<std::string>{"1", "top"}));
    EXPECT_EQ(tree.Count(), 0);
}

TEST_F(ListClearerTest, MarksTheListWhileItsItemsGoAway) {
    TListView list(nullptr);
    list.AddColumn("Name", 100);
    list.AddItem().SetData(Marker("first"));
    list.AddItem();
    list.Item(0)->SetSelected(true);
    std::vector<int> tags;
    list.OnSelectItem = [&](TListItem&, bool) { tags.push_back(list.Tag()); };
    ClearListView(list);
    EXPECT_EQ(tags, std::vector<int>{1});
    EXPECT_EQ(list.Tag(), 0);
    EXPECT_EQ(list.ItemCount(), 0);
    EXPECT_EQ(Freed, std::vector<std::string>{"first"});
}

TEST_F(ListClearerTest, LeavesAnEmptyListAlone) {
    TListView list(nullptr);
    list.SetTag(7);
    ClearListView(list);
    EXPECT_EQ(list.Tag(), 7);
}

} // namespace
