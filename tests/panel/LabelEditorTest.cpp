// Commands while a name is being typed in the tree: what is kept takes the name along,
// what is dropped drops it too.
#include "panel/PanelTest.h"

#include <QLineEdit>
#include <QTest>

namespace {

class TLabelEditor : public TPanelTest {
protected:
    TLabelEditor() {
        LogOn();
        Select(FilterReadings);
        FNumber = SelectedNumber();
    }
    void TypeInTheTree(const char* text) {
        User->Key("trvRequirements", Qt::Key_F2);
        auto* editor = Tree().findChild<QLineEdit*>();
        ASSERT_NE(editor, nullptr);
        editor->selectAll();
        QTest::keyClick(editor, Qt::Key_Delete);
        QTest::keyClicks(editor, QString::fromLatin1(text));
    }
    bool LockIsFree() {
        try {
            ReadAs("ben", FNumber)->lock();
            return true;
        } catch (const std::exception&) {
            return false;
        }
    }

    std::int32_t FNumber = 0;
};

struct TCommandWhileTyping {
    const char* Name;
    TAction* TfrmQuoraneMain::*Command;
    const char* OnServer;
    const char* Shown; // in the details
    bool LockIsFree;
};

void PrintTo(const TCommandWhileTyping& row, std::ostream* out) {
    *out << row.Name;
}

class TCommandsWhileTyping : public TLabelEditor, public testing::WithParamInterface<TCommandWhileTyping> {};

TEST_P(TCommandsWhileTyping, EndTheEditorAndTakeOrDropTheName) {
    const TCommandWhileTyping& row = GetParam();
    TypeInTheTree("Filter");
    Dialogs.Answer(TMessageResult::No);
    (Panel().*row.Command)->Execute();
    TActor::Settle();
    EXPECT_FALSE(Tree().IsEditing());
    EXPECT_EQ(NameOnServer(FNumber), row.OnServer);
    EXPECT_EQ(NameEdit().Text(), row.Shown);
    EXPECT_EQ(LockIsFree(), row.LockIsFree);
}

INSTANTIATE_TEST_SUITE_P(
    , TCommandsWhileTyping,
    testing::Values(TCommandWhileTyping{"Save", &TfrmQuoraneMain::actSave, "Filter", "Filter", true},
                    TCommandWhileTyping{"Cancel", &TfrmQuoraneMain::actCancelSave,
                                        "Filter the readings of a zone", "Filter the readings of a zone",
                                        true},
                    TCommandWhileTyping{"Refresh", &TfrmQuoraneMain::actRefresh, "Filter", "Filter", true},
                    TCommandWhileTyping{"DeleteAnsweredWithNo", &TfrmQuoraneMain::actDeleteReq,
                                        "Filter the readings of a zone", "Filter the readings of a zone",
                                        false}));

TEST_F(TLabelEditor, AMoveWhileTypingMovesAndKeepsTheNameForTheSave) {
    TTreeNode& node = *Tree().Selected();
    TypeInTheTree("Filter");
    Panel().actMoveReqDown->Execute();
    TActor::Settle();
    EXPECT_EQ(node.Index(), 1);
    EXPECT_FALSE(Tree().IsEditing());
    EXPECT_EQ(NameOnServer(FNumber), FilterReadings.back());
    EXPECT_EQ(NameEdit().Text(), "Filter");
    User->Click("btnSave");
    EXPECT_EQ(NameOnServer(FNumber), "Filter");
    EXPECT_EQ(node.Text(), "Filter");
}

TEST_F(TLabelEditor, ADeletionWhileTypingTakesTheRequirementAway) {
    TypeInTheTree("Filter");
    Dialogs.Answer(TMessageResult::Yes);
    Panel().actDeleteReq->Execute();
    TActor::Settle();
    EXPECT_FALSE(Tree().IsEditing());
    EXPECT_THROW(NameOnServer(FNumber), std::exception);
    EXPECT_NE(SelectedText(), "Filter");
}

TEST_F(TLabelEditor, ALogoffWhileTypingStaysLoggedOff) {
    TypeInTheTree("Filter");
    Panel().actLogoff->Execute();
    TActor::Settle();
    EXPECT_FALSE(QuoraneSession->IsLoggedIn());
    EXPECT_TRUE(Dialogs.TakeMessages().empty());
    EXPECT_EQ(NameOnServer(FNumber), FilterReadings.back());
}

TEST_F(TLabelEditor, NumbersInTheLabelStayOutOfTheName) {
    User->Click("btnHierarchicalNumbers");
    User->Click("btnSerialNumbers");
    const std::string label = SelectedText();
    User->Key("trvRequirements", Qt::Key_F2);
    auto* editor = Tree().findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->text().toStdString(), FilterReadings.back());
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_EQ(NameEdit().Text(), FilterReadings.back());
    EXPECT_EQ(SelectedText(), label);
}

TEST_F(TLabelEditor, ASaveWithAnEmptiedNameIsToldAndKeepsTheOldOne) {
    TypeInTheTree("");
    Panel().actSave->Execute();
    TActor::Settle();
    EXPECT_EQ(OnlyError(), "Requirement name cannot be empty!");
    EXPECT_FALSE(Tree().IsEditing());
    EXPECT_EQ(NameOnServer(FNumber), FilterReadings.back());
    EXPECT_EQ(SelectedText(), FilterReadings.back());
}

} // namespace
