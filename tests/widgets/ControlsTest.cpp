#include <gmock/gmock.h>

#include <QCalendarWidget>
#include <QTabBar>

#include "platform/widgets/Containers.h"
#include "platform/widgets/Edits.h"
#include "platform/widgets/Lists.h"
#include "platform/widgets/Menus.h"
#include "platform/widgets/tree/ListView.h"
#include "platform/widgets/tree/TreeView.h"
#include "platform/widgets/tree/VirtualTree.h"
#include "widgets/Support.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class Controls : public ::testing::Test {
protected:
    TScriptedDialogs Dialogs;
    TForm Form{nullptr, "frm"};
    TLog Log;
};

TEST_F(Controls, ASortedComboKeepsObjectsWithTheirTextsAndSelectsNothingByItself) {
    auto& combo = *new TComboBox(&Form, "cbx");
    combo.SetSorted(true);
    combo.OnChange = [this] { Log.push_back("change"); };
    int alive = 0;
    for (const char* text : {"beta", "Alpha", "gamma"})
        combo.Items().AddObject(text, std::make_unique<TCounted>(alive));
    auto special = std::make_unique<TObject>();
    const TObject* kept = special.get();
    EXPECT_EQ(combo.Items().AddObject("Alpine", std::move(special)), 1);
    EXPECT_EQ(combo.Items().Text(0), "Alpha");
    EXPECT_EQ(combo.Items().Object(1), kept);
    EXPECT_EQ(combo.ItemIndex(), -1);
    combo.SetItemIndex(combo.Items().IndexOf("gamma"));
    EXPECT_EQ(combo.Text(), "gamma");
    combo.Items().Add("delta");
    EXPECT_EQ(combo.Text(), "gamma");
    combo.SetItemIndex(combo.Items().IndexOf("missing"));
    EXPECT_EQ(combo.ItemIndex(), -1);
    EXPECT_THAT(Log, IsEmpty());
    combo.Items().Clear();
    EXPECT_EQ(alive, 0);
}

TEST_F(Controls, ListsAndTreesSortTextsAlike) {
    const std::vector<std::string> sorted{"Analysis", "release 1", "Release 10", "Release 2", "test"};
    auto& combo = *new TComboBox(&Form, "cbx");
    combo.SetSorted(true);
    TTreeView tree(&Form, "trv");
    TTreeNode& top = tree.Add("top");
    for (const int position : {3, 1, 4, 0, 2}) {
        combo.Items().Add(sorted[static_cast<std::size_t>(position)]);
        tree.AddChild(top, sorted[static_cast<std::size_t>(position)]);
    }
    top.SortChildren();
    for (int position = 0; position < 5; ++position) {
        EXPECT_EQ(combo.Items().Text(position), sorted[static_cast<std::size_t>(position)]);
        EXPECT_EQ(top.Item(position)->Text(), sorted[static_cast<std::size_t>(position)]);
    }
}

TEST_F(Controls, AComboTellsOfTheUsersChoice) {
    auto& combo = *new TComboBox(&Form, "cbx");
    combo.OnChange = [&] { Log.push_back(combo.Text()); };
    combo.Items().Add("one");
    combo.Items().Add("two");
    ShowWindow(Form);
    TActor(Form).Choose("cbx", "two");
    EXPECT_THAT(Log, ElementsAre("two"));
}

TEST_F(Controls, AMemoTellsTheUsersChangesFromTheProgrammes) {
    auto& memo = *new TMemo(&Form, "mmo");
    memo.OnChange = [&] { Log.push_back(memo.Modified() ? "user" : "program"); };
    memo.SetText(std::string("filled"));
    ShowWindow(Form);
    QTest::keyClicks(&memo, QStringLiteral("x"));
    memo.SetText(std::string("filled again"));
    EXPECT_THAT(Log, ElementsAre("program", "user", "program"));
}

TEST_F(Controls, ABlankDateShowsNothingUntilTheUserPicksOne) {
    auto& picker = *new TDatePicker(&Form, "dtp");
    picker.OnChange = [&] { Log.push_back(picker.Blank() ? "blank" : "date"); };
    picker.SetMinDate(45000);
    picker.SetMaxDate(46000);
    picker.SetDate(45500);
    picker.SetBlank(true);
    EXPECT_EQ(picker.text(), QString());
    EXPECT_EQ(picker.Date(), 45500);
    ShowWindow(Form);
    Q_EMIT picker.calendarWidget()->clicked(picker.date());
    EXPECT_FALSE(picker.text().isEmpty());
    picker.SetDate(99999);
    EXPECT_EQ(picker.Date(), 46000);
    EXPECT_THAT(Log, ElementsAre("date"));
}

TEST_F(Controls, ACheckListTellsWhichEntryTheUserChecked) {
    auto& list = *new TCheckListBox(&Form, "clb");
    for (const char* text : {"a", "b", "c"})
        list.Items().Add(text);
    list.SetChecked(0, true);
    list.OnClickCheck = [&](int index) { Log.push_back(list.Items().Text(index)); };
    ShowWindow(Form);
    list.setCurrentRow(2);
    QTest::keyClick(&list, Qt::Key_Space);
    EXPECT_THAT(Log, ElementsAre("c"));
    EXPECT_TRUE(list.Checked(2));
    EXPECT_FALSE(list.Checked(1));
}

TEST_F(Controls, AListTellsTheRowThatLosesTheSelectionFirst) {
    auto& list = *new TListView(&Form, "lst");
    list.AddColumn("File", 150);
    list.AddItem().SetCaption("a");
    list.AddItem().SetCaption("b");
    list.OnSelectItem = [this](TListItem& item, bool selected) {
        Log.push_back(item.Caption() + (selected ? "+" : "-"));
    };
    list.SetSelected(list.Item(0));
    list.SetSelected(list.Item(1));
    list.ClearItems();
    EXPECT_THAT(Log, ElementsAre("a+", "a-", "b+", "b-"));
}

TEST_F(Controls, EventsOfRowsThatGoSeeTheListsTag) {
    auto& list = *new TListView(&Form, "lst");
    list.AddColumn("File", 150);
    int alive = 0;
    list.AddItem().SetData(std::make_unique<TCounted>(alive));
    list.SetSelected(list.Item(0));
    int tag = -1;
    list.OnChange = [&](TListItem&, TItemChange) { tag = list.Tag(); };
    list.SetTag(1);
    list.ClearItems();
    EXPECT_EQ(tag, 1);
    EXPECT_EQ(alive, 0);
}

TEST_F(Controls, APageControlTellsOfTheUsersChoiceOnly) {
    auto& pages = *new TPageControl(&Form, "pgc");
    for (const char* name : {"one", "two", "three"})
        new TTabSheet(pages, name, name);
    pages.OnChange = [&] { Log.push_back(std::to_string(pages.ActivePageIndex())); };
    ShowWindow(Form);
    pages.SetActivePageIndex(2);
    pages.FreePage(2);
    pages.SetActivePageIndex(2);
    EXPECT_EQ(pages.ActivePageIndex(), -1);
    EXPECT_THAT(Log, IsEmpty());
    QTest::mouseClick(pages.tabBar(), Qt::LeftButton, {}, pages.tabBar()->tabRect(0).center());
    EXPECT_THAT(Log, ElementsAre("0"));
}

TEST_F(Controls, ANotebookTellsOfEachPageThatComesUp) {
    auto& notebook = *new TNotebook(&Form, "nbk");
    notebook.OnPageChanged = [&] { Log.push_back(notebook.ActivePage()); };
    notebook.AddPage("Default");
    notebook.AddPage("Login");
    notebook.SetPageIndex(1);
    notebook.SetPageIndex(1);
    notebook.SetPageIndex(0);
    EXPECT_THAT(Log, ElementsAre("Login", "Default"));
}

TEST_F(Controls, MenuItemsFollowTheirActionButKeepTheirOwnCaption) {
    TActionList& actions = *new TActionList(Form, "actions");
    TAction& action = *new TAction(actions, "act");
    action.SetCaption("Create Requirement");
    action.OnExecute = [this] { Log.push_back("run"); };
    action.OnUpdate = [&] { action.SetEnabled(true); };
    action.SetEnabled(false);
    TPopupMenu& menu = *new TPopupMenu(&Form, "ppm");
    TMenuItem& item = menu.Add("ChildMenuItem", "&Child");
    item.SetAction(action);
    menu.OnPopup = [this] { Log.push_back("popup"); };
    EXPECT_FALSE(item.Enabled());
    menu.Prepare();
    EXPECT_TRUE(item.Enabled());
    EXPECT_EQ(item.Caption(), "&Child");
    item.Click();
    EXPECT_THAT(Log, ElementsAre("popup", "run"));
}

struct TRecord {
    std::string Subject;
};

TEST_F(Controls, HintsShowWhatTheyAreGiven) {
    auto& edit = *new TEdit(&Form, "edt");
    edit.SetHint("R&D");
    EXPECT_EQ(edit.toolTip(), QStringLiteral("R&D"));
    edit.SetHint("<b>");
    EXPECT_EQ(edit.toolTip(), QStringLiteral("<qt>&lt;b&gt;</qt>"));
    EXPECT_EQ(edit.Hint(), "<b>");
}

TEST_F(Controls, AVirtualTreeAsksItsHandlersAndReportsAFailureOnce) {
    auto& tree = *new TVirtualTree(&Form, "vst");
    tree.SetAlign(TAlign::Client);
    tree.AddColumn("Subject", 150);
    tree.AddColumn("From", 150);
    tree.OnGetText = [](TTreeNode& node, int column, std::string& text) {
        text = column == 0 ? TVirtualTree::NodeData<TRecord>(node)->Subject : "someone";
    };
    tree.OnPaintText = [](TTreeNode&, int, bool&) { throw std::runtime_error("gone"); };
    TTreeNode& node = tree.AddNode(nullptr, TRecord{"Question"});
    ShowWindow(Form);
    EXPECT_EQ(tree.model()->index(0, 0).data().toString(), QStringLiteral("Question"));
    EXPECT_EQ(TVirtualTree::NodeData<int>(node), nullptr);
    tree.viewport()->repaint();
    TActor::Settle();
    tree.viewport()->repaint();
    TActor::Settle();
    EXPECT_THAT(Dialogs.Errors(), ElementsAre("gone"));
}

TEST_F(Controls, ALongTreeMeasuresOnlyTheRowsThatShow) {
    auto& tree = *new TVirtualTree(&Form, "vst");
    tree.SetAlign(TAlign::Client);
    tree.AddColumn("Subject", 150);
    int asked = 0;
    tree.OnGetText = [&](TTreeNode&, int, std::string&) { ++asked; };
    for (int i = 0; i < 5000; ++i)
        tree.AddNode(nullptr, TRecord{});
    ShowWindow(Form);
    EXPECT_GT(asked, 0);
    EXPECT_LT(asked, 500);
}

} // namespace
