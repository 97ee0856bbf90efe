// The description without a mouse.
#include "description/DescriptionTest.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QShortcut>

#include "platform/widgets/QtText.h"

using testing::HasSubstr;
using testing::Not;

namespace {

const std::string TenBlanks = "&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;";

class TDescriptionKeys : public TDescriptionTest {
protected:
    TDescriptionKeys() {
        LogOn();
        Select(FilterReadings);
        Page().window()->activateWindow();
    }
    // The keys are watched from the first time on that the document is left.
    void VisitAndLeave() {
        ClickIntoText();
        NameEdit().SetFocus();
    }
    void EnterByTab() {
        QWidget* before = Page().parentWidget()->previousInFocusChain();
        while (!before->isEnabled() || before->focusPolicy() == Qt::NoFocus)
            before = before->previousInFocusChain();
        before->setFocus();
        QTest::keyPress(before, Qt::Key_Tab);
        ASSERT_TRUE(Page().hasFocus());
        QTest::keyRelease(&Page(), Qt::Key_Tab);
    }
};

TEST_F(TDescriptionKeys, ALetterTypedAfterTabbingInArrivesAndTheTabDoesNot) {
    VisitAndLeave();
    EnterByTab();
    TypeIntoPage("qzx");
    EXPECT_TRUE(WaitForHtml("qzx"));
    EXPECT_THAT(Html(), Not(HasSubstr(TenBlanks)));
    EXPECT_TRUE(WaitForLock());
}

TEST_F(TDescriptionKeys, TabPutsTenBlanksInWhenItComesUp) {
    VisitAndLeave();
    ClickIntoText();
    QTest::keyPress(&Page(), Qt::Key_Tab);
    EXPECT_THAT(Html(), Not(HasSubstr(TenBlanks)));
    QTest::keyRelease(&Page(), Qt::Key_Tab);
    EXPECT_TRUE(WaitForHtml(TenBlanks));
    EXPECT_TRUE(Page().hasFocus());
    EXPECT_THAT(Html(), Not(HasSubstr("\t")));
}

TEST_F(TDescriptionKeys, ShiftTabLeadsIntoTheBarAndTabBack) {
    ClickIntoText();
    SelectAllText();
    KeyIntoPage(Qt::Key_Backtab, Qt::ShiftModifier);
    ASSERT_TRUE(Bar().btnInsertImage->Focused());
    EXPECT_TRUE(BarEnabled());
    for (QWidget* focused = QApplication::focusWidget(); !Bar().btnBold->Focused();
         focused = QApplication::focusWidget())
        QTest::keyClick(focused, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(BarEnabled());
    QTest::keyClick(&Bar().btnBold->Widget(), Qt::Key_Space);
    EXPECT_THAT(Html(), HasSubstr("<b>"));
    for (QWidget* focused = QApplication::focusWidget(); !Page().hasFocus();
         focused = QApplication::focusWidget())
        QTest::keyClick(focused, Qt::Key_Tab);
    EXPECT_TRUE(BarEnabled());
}

TEST_F(TDescriptionKeys, ShortcutsOfTheHostLeaveThePageItsCommands) {
    int taken = 0;
    for (const char* keys : {"Ctrl+B", "Ctrl+I", "Ctrl+U", "Ctrl+Z", "F9", "Ctrl+Tab"})
        QObject::connect(new QShortcut(QKeySequence(ToQt(keys)), Page().window()), &QShortcut::activated,
                         [&taken] { ++taken; });
    VisitAndLeave();
    ClickIntoText();
    SelectAllText();
    KeyIntoPage(Qt::Key_B, Qt::ControlModifier);
    EXPECT_TRUE(WaitForHtml("<b>"));
    KeyIntoPage(Qt::Key_I, Qt::ControlModifier);
    EXPECT_TRUE(WaitForHtml("<i>"));
    KeyIntoPage(Qt::Key_U, Qt::ControlModifier);
    EXPECT_TRUE(WaitForHtml("<u>"));
    KeyIntoPage(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(WaitUntil([this] { return Html().find("<u>") == std::string::npos; }));
    EXPECT_EQ(taken, 0);
    KeyIntoPage(Qt::Key_F9);
    KeyIntoPage(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(taken, 2);
}

TEST_F(TDescriptionKeys, UndoAndRedoGoThroughTheChanges) {
    ClickIntoText();
    TypeIntoPage("qzx");
    ASSERT_TRUE(WaitForHtml("qzx"));
    KeyIntoPage(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(WaitUntil([this] { return Html().find("qzx") == std::string::npos; }));
    KeyIntoPage(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(WaitForHtml("qzx"));
}

TEST_F(TDescriptionKeys, PastesWithAndWithoutFormats) {
    auto* copied = new QMimeData;
    copied->setHtml(QStringLiteral("<i>qzx</i>"));
    copied->setText(QStringLiteral("qzx"));
    QApplication::clipboard()->setMimeData(copied);
    ClickIntoText();
    KeyIntoPage(Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(WaitForHtml("qzx"));
    EXPECT_THAT(Html(), Not(HasSubstr("<i>qzx")));
    KeyIntoPage(Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(WaitForHtml("<i>qzx</i>"));
}

TEST_F(TDescriptionKeys, EveryControlOfTheBarHasANameForScreenReaders) {
    for (TControl* control : Bar().tlbDescriptionFormatting->Controls()) {
        if (dynamic_cast<TToolSeparator*>(control)) continue;
        EXPECT_FALSE(control->Widget().accessibleName().isEmpty()) << control->Name();
        EXPECT_NE(control->Widget().focusPolicy(), Qt::NoFocus) << control->Name();
    }
}

} // namespace
