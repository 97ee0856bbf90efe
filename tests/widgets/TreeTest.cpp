#include <gmock/gmock.h>

#include <QLineEdit>

#include "contracts/Exceptions.h"
#include "platform/widgets/look/ImageList.h"
#include "platform/widgets/look/Images.h"
#include "platform/widgets/tree/TreeView.h"
#include "widgets/Support.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class Tree : public ::testing::Test {
protected:
    Tree() {
        Trv.SetAlign(TAlign::Client);
        Trv.OnChanging = [this](TTreeNode* node, bool&) { Log.push_back("changing " + NameOf(node)); };
        Trv.OnChange = [this](TTreeNode* node) { Log.push_back("change " + NameOf(node)); };
        Trv.OnExpanding = [this](TTreeNode& node, bool&) { Log.push_back("expanding " + node.Text()); };
    }

    static std::string NameOf(TTreeNode* node) { return node ? node->Text() : "none"; }

    QPoint Middle(const TTreeNode& node) const {
        const TRect row = Trv.DisplayRect(node);
        return QPoint(row.Left + 10, row.Top + row.Height / 2);
    }
    QPoint Button(const TTreeNode& node) const {
        const TRect row = Trv.DisplayRect(node);
        return QPoint(row.Left - 9, row.Top + row.Height / 2);
    }

    TScriptedDialogs Dialogs;
    TForm Form{nullptr, "frm"};
    TTreeView& Trv{*new TTreeView(&Form, "trv")};
    TLog Log;
};

TEST_F(Tree, SelectionOfAHiddenNodeOpensTheBranchesAboveItFromTheTop) {
    TTreeNode& type = Trv.AddChild(Trv.Add("project"), std::string("type"));
    TTreeNode& deep = Trv.AddChild(type, std::string("deep"));
    ShowWindow(Form);
    Trv.SetSelected(&deep);
    EXPECT_THAT(Log, ElementsAre("changing deep", "expanding project", "expanding type", "change deep"));
    EXPECT_TRUE(type.Expanded());
    EXPECT_EQ(Trv.Selected(), &deep);
}

TEST_F(Tree, ARefusedSelectionStaysWhereItWas) {
    TTreeNode& first = Trv.Add("first");
    TTreeNode& second = Trv.Add("second");
    ShowWindow(Form);
    Trv.SetSelected(&first);
    Trv.OnChanging = [](TTreeNode*, bool& allow) { allow = false; };
    Click(*Trv.viewport(), Middle(second));
    EXPECT_EQ(Trv.Selected(), &first);
    EXPECT_TRUE(first.Selected());
    EXPECT_TRUE(Trv.selectionModel()->isSelected(Trv.indexAt(Middle(first))));
}

TEST_F(Tree, AFailingChangingHandlerIsShownOnceAndTheSelectionStillMoves) {
    TTreeNode& node = Trv.Add("node");
    ShowWindow(Form);
    Trv.OnChanging = [](TTreeNode*, bool&) { throw Exception("save refused"); };
    Click(*Trv.viewport(), Middle(node));
    EXPECT_THAT(Dialogs.Errors(), ElementsAre("save refused"));
    EXPECT_EQ(Trv.Selected(), &node);
}

TEST_F(Tree, ABranchIsReadWhenItsButtonIsClicked) {
    TTreeNode& branch = Trv.Add("branch");
    branch.SetHasChildren(true);
    Trv.OnExpanding = [this](TTreeNode& node, bool&) {
        node.DeleteChildren();
        Trv.AddChild(node, std::string("child"));
    };
    ShowWindow(Form);
    Click(*Trv.viewport(), Button(branch));
    EXPECT_TRUE(branch.Expanded());
    EXPECT_EQ(branch.Count(), 1);
    EXPECT_TRUE(branch.HasChildren());
    EXPECT_EQ(Trv.Selected(), nullptr);
}

TEST_F(Tree, ABranchWhoseReadingFailsStaysClosedAndCanBeTriedAgain) {
    TTreeNode& branch = Trv.Add("branch");
    branch.SetHasChildren(true);
    Trv.OnExpanding = [](TTreeNode&, bool&) { throw Exception("server away"); };
    ShowWindow(Form);
    branch.Expand(false);
    EXPECT_FALSE(branch.Expanded());
    EXPECT_TRUE(branch.HasChildren());
    EXPECT_THAT(Dialogs.Errors(), ElementsAre("server away"));
}

TEST_F(Tree, ClosingABranchMovesTheSelectionBelowItToTheBranch) {
    TTreeNode& branch = Trv.Add("branch");
    TTreeNode& child = Trv.AddChild(branch, std::string("child"));
    ShowWindow(Form);
    Trv.SetSelected(&child);
    Log.clear();
    branch.Collapse();
    EXPECT_THAT(Log, ElementsAre("changing branch", "change branch"));
    EXPECT_FALSE(branch.Expanded());
}

TEST_F(Tree, DeletingASelectedNodeSelectsNextThenPreviousThenParent) {
    TTreeNode& branch = Trv.Add("branch");
    std::vector<TTreeNode*> children;
    for (const char* name : {"a", "b", "c"})
        children.push_back(&Trv.AddChild(branch, std::string(name)));
    ShowWindow(Form);
    Trv.SetSelected(children[1]);
    Log.clear();
    children[1]->Delete();
    children[2]->Delete();
    children[0]->Delete();
    EXPECT_THAT(Log, ElementsAre("changing c", "change c", "changing a", "change a", "changing branch",
                                 "change branch"));
    EXPECT_FALSE(branch.HasChildren());
    EXPECT_EQ(Trv.Count(), 1);
}

TEST_F(Tree, DeletedNodesFreeTheirContainers) {
    int alive = 0;
    TTreeNode& branch = Trv.Add("branch");
    branch.SetData(std::make_unique<TCounted>(alive));
    for (int i = 0; i < 3; ++i) {
        TTreeNode& child = Trv.AddChild(branch, std::string("child"));
        child.SetData(std::make_unique<TCounted>(alive));
        Trv.AddChild(child, std::string("grandchild")).SetData(std::make_unique<TCounted>(alive));
    }
    ShowWindow(Form);
    branch.DeleteChildren();
    EXPECT_EQ(alive, 1);
    EXPECT_EQ(Trv.Count(), 1);
    Trv.Clear();
    EXPECT_EQ(alive, 0);
}

TEST_F(Tree, AHandlerMayDeleteTheNodeThatIsBeingSelected) {
    Trv.Add("stays");
    TTreeNode& node = Trv.Add("goes");
    ShowWindow(Form);
    Trv.OnChanging = [this](TTreeNode* target, bool&) {
        Trv.OnChanging = nullptr;
        target->Delete();
    };
    Click(*Trv.viewport(), Middle(node));
    EXPECT_EQ(Trv.Count(), 1);
    EXPECT_EQ(Trv.Selected(), nullptr);
}

TEST_F(Tree, AbsoluteIndexesCountClosedBranchesInDisplayOrder) {
    TTreeNode& top = Trv.Add("0");
    TTreeNode& one = Trv.AddChild(top, std::string("1"));
    TTreeNode& three = Trv.AddChild(top, std::string("3"));
    Trv.AddChild(one, std::string("2"));
    Trv.AddChild(three, std::string("4"));
    for (int i = 0; i < Trv.Count(); ++i) {
        EXPECT_EQ(Trv.Item(i)->Text(), std::to_string(i));
        EXPECT_EQ(Trv.Item(i)->AbsoluteIndex(), i);
    }
    EXPECT_EQ(Trv.Item(5), nullptr);
    EXPECT_EQ(Trv.Item(-1), nullptr);
}

TEST_F(Tree, AMovedNodeKeepsItsSelectionAndItsOpenBranch) {
    TTreeNode& first = Trv.Add("first");
    TTreeNode& second = Trv.Add("second");
    Trv.AddChild(second, std::string("child"));
    ShowWindow(Form);
    second.Expand(false);
    Trv.SetSelected(&second);
    Log.clear();
    second.MoveTo(first, TNodeAttach::Insert);
    QCoreApplication::processEvents();
    EXPECT_EQ(second.Index(), 0);
    EXPECT_TRUE(second.Expanded());
    EXPECT_LT(Trv.DisplayRect(second).Top, Trv.DisplayRect(first).Top);
    EXPECT_THAT(Log, IsEmpty());
    EXPECT_TRUE(Trv.selectionModel()->isSelected(Trv.indexAt(Middle(second))));
    EXPECT_THROW(second.MoveTo(*second.GetFirstChild(), TNodeAttach::AddChild), Exception);
}

TEST_F(Tree, SortedChildrenShowInOrderAndKeepTheSelection) {
    TTreeNode& top = Trv.Add("top");
    TTreeNode& zebra = Trv.AddChild(top, std::string("Zebra"));
    TTreeNode& apple = Trv.AddChild(top, std::string("apple"));
    ShowWindow(Form);
    Trv.SetSelected(&zebra);
    top.SortChildren();
    QCoreApplication::processEvents();
    EXPECT_LT(Trv.DisplayRect(apple).Top, Trv.DisplayRect(zebra).Top);
    EXPECT_EQ(zebra.Index(), 1);
    EXPECT_TRUE(Trv.selectionModel()->isSelected(Trv.indexAt(Middle(zebra))));
}

TEST_F(Tree, TheStateImageHasAHitAreaOfItsOwn) {
    TImageList images(nullptr);
    TImageList states(nullptr);
    FillQuoraneImages(images);
    FillTreeStateImages(states);
    Trv.SetImages(&images);
    Trv.SetStateImages(&states);
    TTreeNode& node = Trv.Add("node");
    node.SetImageIndex(imRequirement);
    ShowWindow(Form);
    const TRect row = Trv.DisplayRect(node);
    const int y = row.Top + row.Height / 2;
    EXPECT_EQ(Trv.GetHitTestInfoAt(row.Left + 5, y), TTreeHit::OnIcon);
    node.SetStateIndex(tsInterested);
    EXPECT_EQ(Trv.GetHitTestInfoAt(row.Left + 5, y), TTreeHit::OnStateIcon);
    EXPECT_EQ(Trv.GetHitTestInfoAt(row.Left + 25, y), TTreeHit::OnIcon);
    EXPECT_EQ(Trv.GetHitTestInfoAt(row.Left + 45, y), TTreeHit::OnLabel);
    EXPECT_EQ(Trv.GetHitTestInfoAt(row.Left + row.Width - 1, y), TTreeHit::OnRight);
    EXPECT_EQ(Trv.GetHitTestInfoAt(row.Left + 5, row.Top + 300), TTreeHit::Nowhere);
}

TEST_F(Tree, ChildrenOfAClosedBranchReachTheViewAsOneRun) {
    TTreeNode& branch = Trv.Add("branch");
    ShowWindow(Form);
    int runs = 0;
    QObject::connect(Trv.model(), &QAbstractItemModel::rowsInserted, Trv.model(), [&] { ++runs; });
    for (int i = 0; i < 1000; ++i)
        Trv.AddChild(branch, std::string("child")).SetHasChildren(true);
    branch.Expand(false);
    TActor::Settle();
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(Trv.model()->rowCount(Trv.model()->index(0, 0)), 1000);
}

TEST_F(Tree, ANodeMovedUnderAnotherTakesItsLevelAndTheMarksFollow) {
    TTreeNode& from = Trv.Add("from");
    TTreeNode& to = Trv.Add("to");
    TTreeNode& moved = Trv.AddChild(from, std::string("moved"));
    TTreeNode& below = Trv.AddChild(moved, std::string("below"));
    ShowWindow(Form);
    moved.MoveTo(to, TNodeAttach::AddChild);
    EXPECT_EQ(moved.Parent(), &to);
    EXPECT_FALSE(from.HasChildren());
    EXPECT_TRUE(to.HasChildren());
    below.MoveTo(to, TNodeAttach::Insert);
    EXPECT_EQ(below.Level(), 0);
    EXPECT_EQ(Trv.Item(1), &below);
    Trv.SetSelected(&moved);
    EXPECT_TRUE(to.Expanded());
}

TEST_F(Tree, ExpandingWithAllBelowReadsEachBranchOnce) {
    TTreeNode& top = Trv.Add("top");
    top.SetHasChildren(true);
    Trv.OnExpanding = [this](TTreeNode& node, bool&) {
        Log.push_back(node.Text());
        for (const char* name : {"a", "b"})
            Trv.AddChild(node, node.Text() + name).SetHasChildren(node.Level() == 0);
    };
    ShowWindow(Form);
    top.Expand(true);
    EXPECT_THAT(Log, ElementsAre("top", "topa", "topb"));
    EXPECT_EQ(Trv.Count(), 7);
}

TEST_F(Tree, LabelsChangedUnderAHeldUpdateShowAfterIt) {
    TTreeNode& node = Trv.Add("old");
    ShowWindow(Form);
    int told = 0;
    QObject::connect(Trv.model(), &QAbstractItemModel::dataChanged, Trv.model(), [&] { ++told; });
    {
        const TWinControl::TUpdate update(Trv);
        node.SetText(std::u16string(u"1.1 Größe – SRS7"));
        node.SetImageIndex(3);
    }
    EXPECT_EQ(told, 0);
    EXPECT_EQ(node.Text(), "1.1 Größe – SRS7");
    EXPECT_TRUE(Trv.updatesEnabled());
}

TEST_F(Tree, AChangeHandlerMayEmptyTheTree) {
    Trv.Add("first");
    TTreeNode& second = Trv.Add("second");
    ShowWindow(Form);
    Trv.OnChange = [this](TTreeNode* node) {
        if (node) Trv.Clear();
    };
    Click(*Trv.viewport(), Middle(second));
    TActor::Settle();
    EXPECT_EQ(Trv.Count(), 0);
    EXPECT_EQ(Trv.Selected(), nullptr);
}

TEST_F(Tree, AClickBelowTheRowsKeepsTheSelection) {
    TTreeNode& node = Trv.Add("node");
    ShowWindow(Form);
    Trv.SetSelected(&node);
    Log.clear();
    Click(*Trv.viewport(), QPoint(50, 300));
    EXPECT_THAT(Log, IsEmpty());
    EXPECT_EQ(Trv.Selected(), &node);
    Trv.SetSelected(nullptr);
    EXPECT_THAT(Log, ElementsAre("changing none", "change none"));
}

TEST_F(Tree, ADisabledTreeTakesNoClicks) {
    TTreeNode& node = Trv.Add("node");
    int clicks = 0;
    Trv.OnMouseDown = [&](TMouseButton, TShiftState, TPoint) { ++clicks; };
    ShowWindow(Form);
    Trv.SetEnabled(false);
    Click(*Trv.viewport(), Middle(node));
    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(Trv.Selected(), nullptr);
    Trv.SetEnabled(true);
    Click(*Trv.viewport(), Middle(node));
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(Trv.Selected(), &node);
}

TEST_F(Tree, FocusAloneSelectsNothing) {
    Trv.Add("node");
    ShowWindow(Form);
    Trv.SetFocus();
    TActor::Settle();
    EXPECT_TRUE(Trv.Focused());
    EXPECT_EQ(Trv.Selected(), nullptr);
    EXPECT_THAT(Log, IsEmpty());
}

TEST_F(Tree, KeysWalkOpenAndCloseBranches) {
    TTreeNode& top = Trv.Add("top");
    TTreeNode& child = Trv.AddChild(top, std::string("child"));
    ShowWindow(Form);
    Trv.SetSelected(&top);
    QTest::keyClick(&Trv, Qt::Key_Right);
    EXPECT_TRUE(top.Expanded());
    QTest::keyClick(&Trv, Qt::Key_Down);
    EXPECT_EQ(Trv.Selected(), &child);
    QTest::keyClick(&Trv, Qt::Key_Left);
    EXPECT_EQ(Trv.Selected(), &top);
    QTest::keyClick(&Trv, Qt::Key_Left);
    EXPECT_FALSE(top.Expanded());
}

} // namespace
