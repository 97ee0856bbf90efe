#include <gmock/gmock.h>

#include <QLineEdit>

#include "contracts/Exceptions.h"
#include "platform/widgets/tree/TreeView.h"
#include "widgets/Support.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class TreeInput : public ::testing::Test {
protected:
    TreeInput() {
        Trv.SetAlign(TAlign::Client);
        Trv.SetDragAutomatic(true);
        Trv.OnEdited = [this](TTreeNode&, std::string& text) { Edited.push_back(text); };
        Trv.OnDragDrop = [this](TWinControl*, TPoint point) {
            const TTreeNode* target = Trv.GetNodeAt(point.X, point.Y);
            Dropped.push_back(target ? target->Text() : "nowhere");
        };
        for (const char* name : {"first", "second", "third"})
            Trv.Add(name);
        ShowWindow(Form);
    }

    QLineEdit* Editor() const { return Trv.findChild<QLineEdit*>(QStringLiteral("trvEditor")); }
    void TypeName(const QString& text, Qt::Key end) {
        QLineEdit* editor = Editor();
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, end);
    }

    TScriptedDialogs Dialogs;
    TForm Form{nullptr, "frm"};
    TTreeView& Trv{*new TTreeView(&Form, "trv")};
    TActor User{Form};
    TLog Edited;
    TLog Dropped;
};

TEST_F(TreeInput, TheTypedNameBecomesTheTextOnEnter) {
    Trv.Item(1)->EditText();
    ASSERT_TRUE(Trv.IsEditing());
    TypeName(QStringLiteral("renamed"), Qt::Key_Return);
    EXPECT_FALSE(Trv.IsEditing());
    EXPECT_EQ(Trv.Item(1)->Text(), "renamed");
    EXPECT_THAT(Edited, ElementsAre("renamed"));
}

TEST_F(TreeInput, EscapeLeavesTheTextAndTellsNobody) {
    Trv.Item(1)->EditText();
    TypeName(QStringLiteral("renamed"), Qt::Key_Escape);
    EXPECT_FALSE(Trv.IsEditing());
    EXPECT_EQ(Trv.Item(1)->Text(), "second");
    EXPECT_THAT(Edited, IsEmpty());
}

TEST_F(TreeInput, EditingThatIsRefusedOrFailsDoesNotBegin) {
    Trv.OnEditing = [](TTreeNode&, std::string&, bool& allow) { allow = false; };
    Trv.Item(1)->EditText();
    EXPECT_FALSE(Trv.IsEditing());
    Trv.OnEditing = [](TTreeNode&, std::string&, bool&) { throw Exception("locked by Ben"); };
    Trv.Item(1)->EditText();
    EXPECT_FALSE(Trv.IsEditing());
    EXPECT_THAT(Dialogs.Errors(), ElementsAre("locked by Ben"));
}

TEST_F(TreeInput, ANameThatTheHandlerRejectsLeavesTheOldText) {
    Trv.OnEdited = [](TTreeNode&, std::string&) { throw Exception("empty"); };
    Trv.Item(1)->EditText();
    TypeName(QStringLiteral("x"), Qt::Key_Return);
    EXPECT_EQ(Trv.Item(1)->Text(), "second");
    EXPECT_THAT(Dialogs.Errors(), ElementsAre("empty"));
}

TEST_F(TreeInput, TheNameIsTakenBeforeTheSelectionMoves) {
    TLog log;
    Trv.SetSelected(Trv.Item(1));
    Trv.OnChanging = [&](TTreeNode*, bool&) { log.push_back("changing"); };
    Trv.OnEdited = [&](TTreeNode&, std::string&) { log.push_back("edited"); };
    Trv.Item(1)->EditText();
    const TRect row = Trv.DisplayRect(*Trv.Item(2));
    Click(*Trv.viewport(), QPoint(row.Left + 5, row.Top + 5));
    EXPECT_THAT(log, ElementsAre("edited", "changing"));
}

TEST_F(TreeInput, DeletingTheNodeUnderTheEditorEndsEditing) {
    Trv.Item(1)->EditText();
    Trv.Item(1)->Delete();
    EXPECT_FALSE(Trv.IsEditing());
    EXPECT_THAT(Edited, IsEmpty());
}

TEST_F(TreeInput, ANodeIsDroppedWhereTheHandlerAccepts) {
    Trv.OnDragOver = [this](TWinControl* source, TPoint point, bool& accept) {
        const TTreeNode* target = Trv.GetNodeAt(point.X, point.Y);
        accept = source == &Trv && target != Trv.Selected() && target != Trv.Item(0);
    };
    User.DragNode(Trv, *Trv.Item(1), *Trv.Item(2));
    User.DragNode(Trv, *Trv.Item(1), *Trv.Item(0));
    EXPECT_THAT(Dropped, ElementsAre("third"));
    EXPECT_EQ(Trv.Selected(), Trv.Item(1));
    EXPECT_FALSE(Trv.Dragging());
}

TEST_F(TreeInput, NothingIsAcceptedWithoutAHandler) {
    User.DragNode(Trv, *Trv.Item(1), *Trv.Item(2));
    EXPECT_THAT(Dropped, IsEmpty());
}

TEST_F(TreeInput, EscapeEndsADragWithoutADrop) {
    Trv.OnDragOver = [](TWinControl*, TPoint, bool& accept) { accept = true; };
    QWidget& view = *Trv.viewport();
    Mouse(view, QEvent::MouseButtonPress, QPoint(40, 10), Qt::LeftButton);
    Mouse(view, QEvent::MouseMove, QPoint(60, 45), Qt::LeftButton);
    EXPECT_TRUE(Trv.Dragging());
    QTest::keyClick(&Trv, Qt::Key_Escape);
    Mouse(view, QEvent::MouseButtonRelease, QPoint(60, 45), Qt::NoButton);
    EXPECT_THAT(Dropped, IsEmpty());
}

TEST_F(TreeInput, ASmallTremorOfTheHandIsNoDrag) {
    QWidget& view = *Trv.viewport();
    Mouse(view, QEvent::MouseButtonPress, QPoint(40, 10), Qt::LeftButton);
    Mouse(view, QEvent::MouseMove, QPoint(42, 11), Qt::LeftButton);
    EXPECT_FALSE(Trv.Dragging());
    Mouse(view, QEvent::MouseButtonRelease, QPoint(42, 11), Qt::NoButton);
}

TEST_F(TreeInput, TheKeyHandlerSeesKeysFirstAndCanKeepThem) {
    TLog log;
    Trv.SetSelected(Trv.Item(0));
    Trv.OnKeyDown = [&](TKey key, TShiftState, bool& handled) {
        log.push_back(key == TKey::Delete ? "delete" : key == TKey::Down ? "down" : "other");
        handled = key == TKey::Down;
    };
    QTest::keyClick(&Trv, Qt::Key_Delete);
    QTest::keyClick(&Trv, Qt::Key_Down);
    EXPECT_THAT(log, ElementsAre("delete", "down"));
    EXPECT_EQ(Trv.Selected(), Trv.Item(0));
}

} // namespace
