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

class TreeMenu : public Menus {
protected:
    TreeMenu() {
        Tree.SetAlign(TAlign::Client);
        for (const char* name : {"first", "second", "third"})
            Tree.Add(name);
        Tree.SetPopupMenu(&Menu);
        Menu.Add("item", "Item");
        Menu.OnPopup = [this] {
            const TPoint point = Tree.ScreenToClient(Menu.PopupPoint());
            Asked = Tree.GetNodeAt(point.X, point.Y);
        };
        ShowWindow(Form);
    }
    void AskForMenu(QContextMenuEvent::Reason reason, QPoint point) {
        QContextMenuEvent event(reason, point, Tree.viewport()->mapToGlobal(point));
        QCoreApplication::sendEvent(Tree.viewport(), &event);
        EXPECT_TRUE(Menu.isVisible());
        Menu.hide();
    }

    TTreeView& Tree{*new TTreeView(&Form, "trv")};
    TPopupMenu Menu{&Form, "ppm"};
    TTreeNode* Asked = nullptr;
};

TEST_F(TreeMenu, ARightClickAsksForTheMenuOfTheNodeThere) {
    const TRect row = Tree.DisplayRect(*Tree.Item(1));
    AskForMenu(QContextMenuEvent::Mouse, {row.Left + 5, row.Top + row.Height / 2});
    EXPECT_EQ(Asked, Tree.Item(1));
}

TEST_F(TreeMenu, TheMenuKeyAsksForTheSelectedNodesMenu) {
    Tree.SetSelected(Tree.Item(1));
    AskForMenu(QContextMenuEvent::Keyboard, {200, 390});
    EXPECT_EQ(Asked, Tree.Item(1));
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
