#include <gmock/gmock.h>

#include <QApplication>
#include <QContextMenuEvent>

#include "platform/widgets/Edits.h"
#include "platform/widgets/Menus.h"
#include "platform/widgets/tree/TreeView.h"
#include "widgets/Support.h"

using ::testing::ElementsAre;

namespace {

class Menus : public ::testing::Test {
protected:
    TScriptedDialogs Dialogs;
    TForm Form{nullptr, "frm"};
    TActionList& Actions{*new TActionList(Form, "actions")};
    TLog Log;
};

TLog CaptionsOf(const TPopupMenu& menu) {
    TLog captions;
    for (const TMenuItem* item : menu.Items())
        captions.push_back(item->Caption());
    return captions;
}

TEST_F(Menus, ItemsAreInsertedBeforeTheOneAtTheIndexOrLast) {
    TPopupMenu menu(&Form, "ppm");
    menu.Add("a", "A");
    menu.Add("b", "B");
    menu.Insert(0, std::make_unique<TMenuItem>("first", "First"));
    menu.Insert(10, std::make_unique<TMenuItem>("last", "Last"));
    EXPECT_THAT(CaptionsOf(menu), ElementsAre("First", "A", "B", "Last"));
    menu.Clear();
    EXPECT_TRUE(menu.actions().isEmpty());
}

TEST_F(Menus, RadioItemsOfOneMenuExcludeEachOther) {
    TPopupMenu menu(&Form, "ppm");
    TMenuItem& one = menu.Add("one", "One");
    TMenuItem& two = menu.Add("two", "Two");
    one.SetRadioItem(true);
    two.SetRadioItem(true);
    one.SetChecked(true);
    two.Click();
    EXPECT_FALSE(one.Checked());
    EXPECT_TRUE(two.Checked());
}

TEST_F(Menus, ADisabledItemCannotBeClicked) {
    TPopupMenu menu(&Form, "ppm");
    TMenuItem& item = menu.Add("item", "Item");
    item.OnClick = [this] { Log.push_back("click"); };
    item.SetEnabled(false);
    item.Click();
    item.SetEnabled(true);
    item.Click();
    EXPECT_THAT(Log, ElementsAre("click"));
}

TEST_F(Menus, ASubmenuHoldsItemsOfItsOwn) {
    TPopupMenu menu(&Form, "ppm");
    TMenuItem& parent = menu.Add("create", "Cr&eate Requirement");
    parent.SubMenu().Add("child", "&Child");
    menu.AddSeparator();
    EXPECT_THAT(CaptionsOf(menu), ElementsAre("Cr&eate Requirement"));
    EXPECT_THAT(CaptionsOf(parent.SubMenu()), ElementsAre("&Child"));
}

TEST_F(Menus, ARightClickTellsWhereItWasBeforeTheMenuShows) {
    auto& tree = *new TTreeView(&Form, "trv");
    tree.SetAlign(TAlign::Client);
    tree.Add("first");
    TTreeNode& second = tree.Add("second");
    TPopupMenu menu(&Form, "ppm");
    menu.Add("item", "Item");
    menu.OnPopup = [&] {
        const TPoint point = tree.ScreenToClient(menu.PopupPoint());
        tree.SetSelected(tree.GetNodeAt(point.X, point.Y));
    };
    tree.SetPopupMenu(&menu);
    ShowWindow(Form);
    const TRect row = tree.DisplayRect(second);
    const QPoint point(row.Left + 5, row.Top + row.Height / 2);
    QContextMenuEvent event(QContextMenuEvent::Mouse, point, tree.viewport()->mapToGlobal(point));
    QCoreApplication::sendEvent(tree.viewport(), &event);
    EXPECT_EQ(tree.Selected(), &second);
    EXPECT_TRUE(menu.isVisible());
    menu.hide();
}

TEST_F(Menus, TheMenuKeyAsksForTheSelectedNodesMenu) {
    auto& tree = *new TTreeView(&Form, "trv");
    tree.SetAlign(TAlign::Client);
    for (const char* name : {"first", "second", "third"})
        tree.Add(name);
    TPopupMenu menu(&Form, "ppm");
    TTreeNode* asked = nullptr;
    menu.OnPopup = [&] {
        const TPoint point = tree.ScreenToClient(menu.PopupPoint());
        asked = tree.GetNodeAt(point.X, point.Y);
    };
    tree.SetPopupMenu(&menu);
    ShowWindow(Form);
    tree.SetSelected(tree.Item(1));
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(200, 390),
                            tree.mapToGlobal(QPoint(200, 390)));
    QCoreApplication::sendEvent(tree.viewport(), &event);
    EXPECT_EQ(asked, tree.Item(1));
    menu.hide();
}

TEST_F(Menus, AShortcutRunsItsActionOnceThoughAMenuShowsItToo) {
    TAction& action = *new TAction(Actions, "actRefresh");
    action.SetShortCut("F5");
    action.OnExecute = [this] { Log.push_back("refresh"); };
    auto& bar = *new TMainMenu(&Form, "menu");
    bar.Add("file", "&File").SubMenu().Add("refresh", action);
    auto& edit = *new TEdit(&Form, "edt");
    ShowWindow(Form);
    edit.SetFocus();
    QTest::keyClick(&edit, Qt::Key_F5);
    EXPECT_THAT(Log, ElementsAre("refresh"));
}

TEST_F(Menus, AnItemOutlivesItsActionAndDoesNothingThen) {
    TPopupMenu menu(&Form, "ppm");
    auto action = std::make_unique<TAction>(Actions, "act");
    TMenuItem& item = menu.Add("item", *action);
    action.reset();
    item.Click();
    EXPECT_EQ(item.Action(), nullptr);
    EXPECT_EQ(Actions.Find("act"), nullptr);
}

} // namespace
