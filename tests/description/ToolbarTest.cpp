// The formatting bar: what each control does to the document, and what it shows of it.
#include "description/DescriptionTest.h"

#include "platform/widgets/Lists.h"
#include "platform/widgets/QtText.h"

using testing::AnyOf;
using testing::HasSubstr;
using testing::Not;

namespace {

class TFormattingBar : public TDescriptionTest {
protected:
    TFormattingBar() {
        LogOn();
        Select(FilterReadings);
        ClickIntoText();
        SelectAllText();
    }
    // After the page has told of its own events.
    void ShowState() { Bar().UpdateDisplay(); }
};

struct TButtonRow {
    const char* Button;
    const char* Html;
    bool Toggles;
};

class TFormattingButtons : public TFormattingBar, public testing::WithParamInterface<TButtonRow> {};

TEST_P(TFormattingButtons, FormatTheSelectionAndShowIt) {
    const TButtonRow& row = GetParam();
    const std::string before = Html();
    ASSERT_THAT(before, Not(HasSubstr(row.Html)));
    auto& button = User->Get<TToolButton>(row.Button);
    User->Click(row.Button);
    EXPECT_THAT(Html(), HasSubstr(row.Html));
    EXPECT_TRUE(button.Down());
    EXPECT_TRUE(WaitForLock());
    if (!row.Toggles) return;
    User->Click(row.Button);
    EXPECT_THAT(Html(), Not(HasSubstr(row.Html)));
    EXPECT_FALSE(button.Down());
}

INSTANTIATE_TEST_SUITE_P(
    Rows, TFormattingButtons,
    testing::Values(TButtonRow{"btnBold", "<b>", true}, TButtonRow{"btnItalic", "<i>", true},
                    TButtonRow{"btnUnderline", "<u>", true}, TButtonRow{"btnNumberedList", "<ol>", true},
                    TButtonRow{"btnBullets", "<ul>", true}, TButtonRow{"btnCenter", "center", false},
                    TButtonRow{"btnAlignRight", "right", false}),
    [](const auto& row) { return row.param.Button; });

TEST_F(TFormattingBar, OneAlignmentIsDownAtATime) {
    User->Click("btnAlignRight");
    EXPECT_FALSE(Bar().btnAlignLeft->Down());
    User->Click("btnAlignLeft");
    EXPECT_TRUE(Bar().btnAlignLeft->Down());
    EXPECT_FALSE(Bar().btnAlignRight->Down());
    EXPECT_FALSE(Bar().btnCenter->Down());
}

TEST_F(TFormattingBar, FontAndSizeAreChosenInTheirLists) {
    const std::string font = Bar().cbxFontNames->Items().Text(0);
    Bar().cbxFontNames->SetFocus();
    User->Choose("cbxFontNames", font);
    Bar().cbxFontSize->SetFocus();
    User->Choose("cbxFontSize", "5");
    EXPECT_THAT(Html(), HasSubstr("face=\"" + font + "\""));
    EXPECT_THAT(Html(), HasSubstr("size=\"5\""));
    ShowState();
    EXPECT_EQ(Bar().cbxFontNames->Text(), font);
    EXPECT_EQ(Bar().cbxFontSize->Text(), "5");
}

TEST_F(TFormattingBar, AFontIsFoundInAnyCase) {
    const std::string font = Bar().cbxFontNames->Items().Text(0);
    Bar().SetFontName(FromQt(ToQt(font).toUpper()));
    EXPECT_EQ(Bar().cbxFontNames->Text(), font);
    Bar().SetFontName(FromQt(ToQt(font).toLower()));
    EXPECT_EQ(Bar().cbxFontNames->Text(), font);
}

TEST_F(TFormattingBar, SeveralFontsSelectNone) {
    const auto document = Document<IHTMLDocument2>();
    const auto range = std::dynamic_pointer_cast<IHTMLTxtRange>(document->get_selection()->createRange());
    range->pasteHTML(u"<p><font size=\"3\" face=\"DejaVu Sans\">a</font><font size=\"5\" face=\"DejaVu "
                     u"Serif\">b</font></p>");
    SelectAllText();
    ShowState();
    EXPECT_EQ(Bar().cbxFontNames->ItemIndex(), -1);
    EXPECT_EQ(Bar().cbxFontSize->ItemIndex(), -1);
}

TEST_F(TFormattingBar, TheColourDialogColoursTheText) {
    Dialogs.AnswerColor(std::nullopt);
    User->Click("btnForeColor");
    EXPECT_FALSE(Frame().IsDirty());
    Dialogs.AnswerColor(TColor::Rgb(0xFF, 0x80, 0x01));
    User->Click("btnForeColor");
    EXPECT_THAT(Html(), HasSubstr("color=\"#ff8001\""));
}

TEST_F(TFormattingBar, APictureGoesInAsANewOne) {
    KeyIntoPage(Qt::Key_End, Qt::ControlModifier);
    Dialogs.AnswerFile("/tmp/a \"b\" & c.png");
    User->Click("btnInsertImage");
    EXPECT_THAT(Html(),
                HasSubstr("<img src=\"/tmp/a &quot;b&quot; &amp; c.png\" border=\"0\" new=\"true\">"));
    EXPECT_TRUE(WaitForLock());
}

TEST_F(TFormattingBar, ASelectedPictureTakesNoOther) {
    Dialogs.AnswerFile("/tmp/a.png");
    User->Click("btnInsertImage");
    const auto document = Document<IHTMLDocument2>();
    KeyIntoPage(Qt::Key_Left, Qt::ShiftModifier);
    ASSERT_TRUE(WaitUntil([&] { return document->get_selection()->get_type() == "Control"; }));
    const std::string before = Html();
    EXPECT_EQ(Bar().SelectedElement()->get_tagName(), u"IMG");
    Dialogs.AnswerFile("/tmp/b.png");
    User->Click("btnInsertImage");
    User->WhenModal([](TForm& form) { TActor(form.Widget()).Click("btnOk"); });
    User->Click("btnInsertTable");
    EXPECT_EQ(Html(), before);
}

TEST_F(TFormattingBar, TheBarFollowsTheCaretForTwoCallsAtMost) {
    User->Click("btnBold");
    KeyIntoPage(Qt::Key_End, Qt::ControlModifier);
    TypeIntoPage("x");
    ASSERT_TRUE(WaitForHtml("x"));
    TActor::Settle();
    Server->Calls.Clear();
    const std::int64_t before = Frame().wbrReqDescription->EngineCalls();
    bool shown = false;
    KeyIntoPage(Qt::Key_B, Qt::ControlModifier);
    EXPECT_TRUE(WaitUntil([&] { return shown = !Bar().btnBold->Down(); }));
    EXPECT_LE(Frame().wbrReqDescription->EngineCalls() - before, 2);
    EXPECT_EQ(Server->Calls.RoundTrips(), 0);
}

TEST_F(TFormattingBar, TheBarIsEnabledWhileTheFocusIsInDocumentOrBar) {
    EXPECT_TRUE(BarEnabled());
    EXPECT_TRUE(Frame().isHtmlFocused());
    for (TWinControl* control :
         {static_cast<TWinControl*>(Bar().cbxFontNames), static_cast<TWinControl*>(Bar().cbxFontSize),
          static_cast<TWinControl*>(Bar().btnBold)}) {
        control->SetFocus();
        EXPECT_TRUE(control->Focused()) << control->Name();
        EXPECT_TRUE(BarEnabled()) << control->Name();
        EXPECT_FALSE(Frame().isHtmlFocused()) << control->Name();
    }
    NameEdit().SetFocus();
    EXPECT_FALSE(BarEnabled());
    EXPECT_FALSE(Bar().btnBold->Enabled());
    Page().setFocus();
    EXPECT_TRUE(BarEnabled());
    Bar().cbxFontSize->SetFocus();
    NameEdit().SetFocus();
    EXPECT_FALSE(BarEnabled());
}

TEST_F(TFormattingBar, AListKeepsTheBarEnabledBehindAnotherWindow) {
    TForm other(nullptr, "other");
    for (TComboBox* list : {Bar().cbxFontNames, Bar().cbxFontSize}) {
        list->SetFocus();
        other.show();
        other.activateWindow();
        ASSERT_TRUE(WaitUntil([&] { return other.isActiveWindow(); }));
        Bar().EnableDisable(false);
        EXPECT_TRUE(BarEnabled()) << list->Name();
        Page().window()->activateWindow();
        ASSERT_TRUE(WaitUntil([&] { return list->Focused(); }));
    }
}

} // namespace
