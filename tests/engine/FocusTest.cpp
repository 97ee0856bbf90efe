#include "EngineFixture.h"

#include <QLineEdit>

#include <csignal>

namespace {

// A field beside the browser control, from which the Tab key leads into it.
class EngineFocus : public TEngineFixture {
protected:
    EngineFocus() {
        FField.setGeometry(0, 400, 100, 30);
        FField.show();
        FForm.activateWindow();
    }

    void StartInTheField() {
        FField.setFocus();
        ASSERT_TRUE(FField.hasFocus());
    }
    void Press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }
    void TypeWhereTheFocusIs(const std::string& text) {
        QTest::keyClicks(QApplication::focusWidget(), QString::fromStdString(text));
    }
    bool Shows(const std::string& text) {
        return WaitUntil([&] { return Html().find(text) != std::string::npos; });
    }

    QLineEdit FField{&FForm};
};

struct TTabRow {
    const char* Name;
    const char* Html;
    const char* Typed;
};

void PrintTo(const TTabRow& row, std::ostream* out) {
    *out << row.Name;
}

class EngineTab : public EngineFocus, public testing::WithParamInterface<TTabRow> {};

TEST_P(EngineTab, GivesThePageTheCaretAndTheLetters) {
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Backtab}) {
        Edit(GetParam().Html);
        StartInTheField();
        Press(key);
        ASSERT_TRUE(KeyTarget().hasFocus());
        TypeWhereTheFocusIs("x");
        EXPECT_TRUE(Shows(GetParam().Typed)) << Html();
        EXPECT_TRUE(WaitUntil([this] { return Dirty(); }));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Engine, EngineTab,
    testing::Values(TTabRow{"Text", "<p>text</p>", "<p>xtext</p>"}, TTabRow{"Nothing", "", "x</body>"},
                    TTabRow{"EmptyParagraph", "<p></p>", "x"},
                    TTabRow{"LinkFirst", "<a href=\"a.html\">link</a> text", "x<a"},
                    TTabRow{"LinkLater", "<p>text</p><a href=\"a.html\">link</a>", "<p>xtext</p>"},
                    TTabRow{"Field", "<p>text</p><input value=\"a\"><p>b</p>", "<p>xtext</p>"}),
    [](const testing::TestParamInfo<TTabRow>& row) { return row.param.Name; });

TEST_F(EngineFocus, TabBackFindsTheCaretWhereItWas) {
    Edit("<p>text</p><p>more</p>");
    TypeWhereTheFocusIs("ab");
    ASSERT_TRUE(Shows("abtext"));
    StartInTheField();
    Press(Qt::Key_Tab);
    TypeWhereTheFocusIs("c");
    EXPECT_TRUE(Shows("abctext")) << Html();
}

TEST_F(EngineFocus, NextDocumentTakesTheLettersOfAFocusThatWasThereBefore) {
    Edit("<p>one</p>");
    for (const bool killed : {false, true}) {
        if (killed) {
            SignalEngine(SIGKILL);
            ASSERT_TRUE(WaitUntil([this] { return !FBrowser.Document(); }));
        }
        Load("<p>two</p>");
        Document<IHTMLDocument2>()->put_designMode("On");
        TypeWhereTheFocusIs("x");
        EXPECT_TRUE(Shows("<p>xtwo</p>")) << killed << Html();
    }
}

} // namespace
