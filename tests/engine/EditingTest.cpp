#include "EngineFixture.h"

#include "contracts/Exceptions.h"

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class EngineEditing : public TEngineFixture {
protected:
    static THtmlValue Text(const char16_t* text) { return std::u16string(text); }
    std::u16string WordAt(int x, int y) {
        const auto range = TextRange();
        range->moveToPoint(x, y);
        range->moveStart("word", -1);
        range->moveEnd("word", 1);
        return QString::fromStdU16String(range->get_text()).trimmed().toStdU16String();
    }
};

TEST_F(EngineEditing, TypingChangesTheDocumentAndMakesItDirty) {
    Edit("<p>old</p>");
    EXPECT_FALSE(Dirty());
    Type("new ");
    ASSERT_TRUE(WaitUntil([this] { return Dirty(); }));
    EXPECT_THAT(Html(), HasSubstr("new"));
}

TEST_F(EngineEditing, ReadOnlyDocumentTakesNoTyping) {
    Load("<p>old</p>");
    FBrowser.SetFocus();
    Type("new");
    EXPECT_EQ(Document<IHTMLDocument2>()->get_designMode(), "Off");
    EXPECT_NE(Document<IOleCommandTarget>()->Exec(hcBulletList, hoDontPromptUser, {}), hsOk);
    EXPECT_THAT(Html(), Not(HasSubstr("new")));
    EXPECT_THROW(TextRange()->pasteHTML(u"x"), EOleSysError);
    EXPECT_FALSE(Dirty());
}

TEST_F(EngineEditing, ModeOrCharsetThatTheEngineHasNotIsRefused) {
    Edit("<p>old</p>");
    const auto document = Document<IHTMLDocument2>();
    EXPECT_THROW(document->put_designMode("on"), EOleSysError);
    EXPECT_EQ(document->get_designMode(), "On");
    EXPECT_THROW(document->put_charset("latin1"), EOleSysError);
    EXPECT_NO_THROW(document->put_charset("utf-8"));
}

TEST_F(EngineEditing, EmptiedDocumentIsClean) {
    Edit("<html lang='de'><body class='x'><p>old</p></body></html>");
    Type("x");
    ASSERT_TRUE(WaitUntil([this] { return Dirty(); }));
    EXPECT_EQ(Document<IPersistStreamInit>()->InitNew(), hsOk);
    EXPECT_FALSE(Dirty());
    EXPECT_EQ(Html(), "<html><head></head><body></body></html>");
}

TEST_F(EngineEditing, DirtyStateIsSetAndClearedByCommand) {
    Edit("<p>old</p>");
    const auto target = Document<IOleCommandTarget>();
    EXPECT_EQ(target->Exec(hcSetDirty, hoDefault, true), hsOk);
    EXPECT_TRUE(Dirty());
    Type("x");
    EXPECT_EQ(target->Exec(hcSetDirty, hoDefault, false), hsOk);
    EXPECT_FALSE(Dirty());
    // What was typed before the clearing must not come late and set it again.
    QCoreApplication::processEvents();
    Html();
    EXPECT_FALSE(Dirty());
    Type("y");
    EXPECT_TRUE(WaitUntil([this] { return Dirty(); }));
}

struct TFormatRow {
    const char* Name;
    THtmlValue Value;
    THtmlValue Shown;
    const char* Html;
};

class EngineFormats : public TEngineFixture, public testing::WithParamInterface<TFormatRow> {};

TEST_P(EngineFormats, AreWrittenAndReadBack) {
    Edit("<p>text</p>");
    SelectAll();
    const TFormatRow& row = GetParam();
    EXPECT_TRUE(TextRange()->execCommand(row.Name, false, row.Value));
    EXPECT_EQ(TextRange()->queryCommandValue(row.Name), row.Shown);
    EXPECT_THAT(Html(), HasSubstr(row.Html));
    EXPECT_TRUE(WaitUntil([this] { return Dirty(); }));
}

INSTANTIATE_TEST_SUITE_P(Rows, EngineFormats,
                         testing::Values(TFormatRow{"Bold", true, true, "<b>text</b>"},
                                         TFormatRow{"Italic", true, true, "<i>text</i>"},
                                         TFormatRow{"Underline", true, true, "<u>text</u>"},
                                         TFormatRow{"FontName", u"Courier New", u"Courier New",
                                                    "face=\"Courier New\""},
                                         TFormatRow{"FontSize", 5, 5, "size=\"5\""},
                                         TFormatRow{"ForeColor", 0x0201FF, 0x0201FF, "color=\"#ff0102\""},
                                         TFormatRow{"JustifyCenter", true, true, "center"},
                                         TFormatRow{"JustifyRight", true, true, "right"}),
                         [](const auto& row) { return row.param.Name; });

TEST_F(EngineEditing, FormatsOfAControlAreWrittenAndReadBack) {
    Edit("<body style='margin:0'><table border=20 width=200 height=100><tr><td>cell</td></tr></table></body>");
    Click(5, 50);
    const auto selection = Document<IHTMLDocument2>()->get_selection();
    ASSERT_TRUE(WaitUntil([&] { return selection->get_type() == "Control"; }));
    const auto range = std::dynamic_pointer_cast<IHTMLControlRange>(selection->createRange());
    for (const char* side : {"Right", "Center", "Left"}) {
        const std::string name = std::string("Justify") + side;
        EXPECT_TRUE(range->execCommand(name, false, true));
        EXPECT_EQ(range->queryCommandValue(name), THtmlValue(true)) << name;
    }
    EXPECT_TRUE(range->execCommand("Bold", false, true));
    EXPECT_THAT(Html(), HasSubstr("<b>cell</b>"));
}

TEST_F(EngineEditing, FirstFontOfAListCounts) {
    Edit("<p style='font-family:\"Courier New\", monospace'>text</p>");
    EXPECT_EQ(TextRange()->queryCommandValue("FontName"), Text(u"Courier New"));
}

TEST_F(EngineEditing, ListsToggleAndTellTheirState) {
    Edit("<p>text</p>");
    SelectAll();
    const auto target = Document<IOleCommandTarget>();
    std::uint32_t flags = 0;
    EXPECT_EQ(target->QueryStatus(hcNumberedList, flags), hsOk);
    EXPECT_EQ(flags, hfEnabled);
    EXPECT_EQ(target->Exec(hcNumberedList, hoDontPromptUser, {}), hsOk);
    EXPECT_EQ(target->QueryStatus(hcNumberedList, flags), hsOk);
    EXPECT_EQ(flags, hfEnabled | hfLatched);
    EXPECT_EQ(target->QueryStatus(hcBulletList, flags), hsOk);
    EXPECT_EQ(flags, hfEnabled);
    EXPECT_EQ(target->Exec(hcNumberedList, hoDontPromptUser, {}), hsOk);
    EXPECT_THAT(Html(), Not(HasSubstr("<ol>")));
    EXPECT_NE(target->QueryStatus(1, flags), hsOk);
    EXPECT_EQ(flags, 0u);
}

TEST_F(EngineEditing, CommandsAtTheCaretHoldForTheNextLetters) {
    Edit("<p>text</p>");
    for (const char* name : {"Bold", "Italic"})
        EXPECT_TRUE(TextRange()->execCommand(name, false, true));
    Html();
    EXPECT_FALSE(Dirty());
    Type("x");
    EXPECT_TRUE(WaitUntil([this] { return Html().find("<b><i>x</i></b>text") != std::string::npos; }))
        << Html();
}

TEST_F(EngineEditing, WholeStateOfTheSelectionCostsOneCall) {
    Edit("<p><b>bold</b> plain</p>");
    const auto all = [this] {
        const auto calls = FBrowser.EngineCalls();
        const auto selection = Document<IHTMLDocument2>()->get_selection();
        EXPECT_EQ(selection->get_type(), "None");
        for (const char* name :
             {"Italic", "Underline", "JustifyRight", "JustifyCenter", "FontName", "FontSize"})
            selection->createRange()->queryCommandValue(name);
        std::uint32_t flags = 0;
        for (const auto list : {hcNumberedList, hcBulletList})
            EXPECT_EQ(Document<IOleCommandTarget>()->QueryStatus(list, flags), hsOk);
        return std::pair(std::get<bool>(selection->createRange()->queryCommandValue("Bold")),
                         FBrowser.EngineCalls() - calls);
    };
    EXPECT_EQ(all(), std::pair(true, std::int64_t{1}));
    EXPECT_EQ(all(), std::pair(true, std::int64_t{0}));
    QTest::keyClick(&KeyTarget(), Qt::Key_End);
    ASSERT_TRUE(WaitUntil([&] { return !all().first; }));
    // A command for the next letter changes neither selection nor document.
    QTest::keyClick(&KeyTarget(), Qt::Key_B, Qt::ControlModifier);
    EXPECT_TRUE(WaitUntil([&] { return all().first; }));
    EXPECT_TRUE(TextRange()->execCommand("Bold", false, false));
    EXPECT_EQ(all(), std::pair(false, std::int64_t{1}));
}

TEST_F(EngineEditing, RangeOfASelectionThatHasChangedItsKindFails) {
    Edit("<body><img width=100 height=50 src='data:image/gif;base64,R0lGODlhAQABAAAAACw='>text</body>");
    const auto text = TextRange();
    Click(50, 25);
    const auto selection = Document<IHTMLDocument2>()->get_selection();
    ASSERT_TRUE(WaitUntil([&] { return selection->get_type() == "Control"; }));
    EXPECT_THROW(text->get_text(), EOleSysError);
}

TEST_F(EngineEditing, PastedHtmlReplacesTheSelectionAndCanBeTakenBack) {
    Edit("<p>old</p>");
    SelectAll();
    TextRange()->pasteHTML(u"a<img src=\"pic.png\" border=\"0\" new=\"true\">b");
    EXPECT_THAT(Html(), HasSubstr("new=\"true\""));
    EXPECT_THAT(Html(), Not(HasSubstr("old")));
    EXPECT_TRUE(WaitUntil([this] { return Dirty(); }));
    static_cast<TBrowserControl&>(FBrowser.Control()).page()->triggerAction(QWebEnginePage::Undo);
    EXPECT_TRUE(WaitUntil([this] { return Html().find("old") != std::string::npos; }));
}

// Readers take a line break behind the tag for none.
TEST_F(EngineEditing, LineBreakAtTheStartOfPreformattedTextComesBack) {
    const char* body = "<body><pre>\n\nx</pre><pre>\n\n\n</pre><pre>y\n</pre></body>";
    Edit(body);
    EXPECT_THAT(Html(), HasSubstr(body));
}

// A document cannot have a file of the user's sent by marking it as a new picture.
TEST_F(EngineEditing, OnlyPicturesOfTheUsersOwnStayMarkedAsNew) {
    const std::string own = FFolder.File("own.gif");
    const auto marked = [](const std::string& file) { return "<img src=\"" + file + "\" new=\"true\">"; };
    const std::string document = "<body><!-->" + marked(FFolder.File("other.gif")) + marked(own) + "</body>";
    Edit(document);
    EXPECT_THAT(Html(), AllOf(HasSubstr("other.gif"), Not(HasSubstr("new="))));
    TextRange()->pasteHTML(QString::fromStdString(marked(own)).toStdU16String());
    EXPECT_THAT(Html(), HasSubstr(marked(own)));
    Edit(document);
    EXPECT_THAT(Html(), AllOf(HasSubstr(marked(own)), Not(HasSubstr(marked(FFolder.File("other.gif"))))));
}

TEST_F(EngineEditing, ClickOnPictureOrTableBorderSelectsTheControl) {
    struct TRow {
        int X, Y;
        const char* Type;
        const char16_t* Tag;
    };
    const char* page =
        "<body style='margin:0'><img style='display:block' width=100 height=50 src='data:image/"
        "gif;base64,R0lGODlhAQABAAAAACw='>"
        "<table border=20 width=200 height=100><tr><td>cell</td></tr></table></body>";
    for (const TRow& row :
         {TRow{50, 25, "Control", u"IMG"}, TRow{5, 90, "Control", u"TABLE"}, TRow{60, 105, "None", u"TD"}}) {
        Edit(page);
        Click(row.X, row.Y);
        const auto selection = Document<IHTMLDocument2>()->get_selection();
        EXPECT_TRUE(WaitUntil([&] { return selection->get_type() == row.Type && KeyTarget().hasFocus(); }))
            << selection->get_type();
        const auto range = selection->createRange();
        const auto control = std::dynamic_pointer_cast<IHTMLControlRange>(range);
        ASSERT_EQ(control != nullptr, std::string(row.Type) == "Control");
        const auto element = control ? control->commonParentElement()
                                     : std::dynamic_pointer_cast<IHTMLTxtRange>(range)->parentElement();
        EXPECT_EQ(element->get_tagName(), row.Tag);
        EXPECT_EQ(std::dynamic_pointer_cast<IHTMLTable>(element) != nullptr,
                  std::u16string_view(row.Tag) == u"TABLE");
    }
}

TEST_F(EngineEditing, WordUnderThePointIsFoundAcrossMarkUp) {
    Edit("<body style='margin:0;font:40px/50px monospace'>alpha be<b>ta</b> gamma<br>de<i>l</i>ta"
         "<div style='margin:0'><i>eps</i>ilon</div>zeta<b></b></body>");
    std::vector<std::u16string> words;
    for (int line = 0; line < 5; ++line)
        for (int x = 1; x < 640; x += 6) {
            const std::u16string word = WordAt(x, 25 + 50 * line);
            if (words.empty() || words.back() != word) words.push_back(word);
        }
    std::erase(words, u"");
    EXPECT_THAT(words, ElementsAre(u"alpha", u"beta", u"gamma", u"delta", u"epsilon", u"zeta"));
    EXPECT_EQ(WordAt(20, 400), u"");
    static_cast<TBrowserControl&>(FBrowser.Control()).page()->setZoomFactor(2);
    EXPECT_TRUE(WaitUntil([this] { return WordAt(40, 250) == u"delta"; }));
}

TEST_F(EngineEditing, TableIsBuiltOutsideTheDocumentWithoutWaiting) {
    Edit("<p>text</p>");
    const auto element = Document<IHTMLDocument2>()->createElement("TABLE");
    const auto calls = FBrowser.EngineCalls();
    element->get_style()->setAttribute(u"BORDER-COLLAPSE", u"collapse", 0);
    const auto table = std::dynamic_pointer_cast<IHTMLTable>(element);
    ASSERT_NE(table, nullptr);
    table->put_borderColor(u"black");
    for (int row = 0; row < 2; ++row)
        table->insertRow(row)->insertCell(0)->put_width(u"50%");
    table->put_border(1);
    const std::string html = QString::fromStdU16String(element->get_outerHTML()).toStdString();
    EXPECT_LE(FBrowser.EngineCalls() - calls, 2);
    for (const char* part : {"border-collapse: collapse", "bordercolor=\"black\"", "border=\"1\"",
                             "<tr><td width=\"50%\"></td></tr><tr><td width=\"50%\"></td></tr>"})
        EXPECT_THAT(html, HasSubstr(part));
    EXPECT_EQ(element->getAttribute(u"border"), THtmlValue(1));
    EXPECT_EQ(element->getAttribute(u"width"), THtmlValue());
    EXPECT_EQ(element->get_children()->get_length(), 1);
    EXPECT_EQ(element->get_children()->item(0)->get_tagName(), u"TBODY");
    EXPECT_EQ(element->get_children()->item(1), nullptr);
    EXPECT_THAT(Html(), Not(HasSubstr("table")));
}

TEST_F(EngineEditing, FailedOperationRaisesWhatTheEngineSays) {
    Edit("<p>text</p>");
    EXPECT_THROW(Document<IHTMLDocument2>()->createElement("<"), EOleSysError);
    const auto table =
        std::dynamic_pointer_cast<IHTMLTable>(Document<IHTMLDocument2>()->createElement("TABLE"));
    // Nobody waits for a row, so the next one who waits is told.
    table->put_border(1);
    table->insertRow(5)->insertCell(0)->put_width(u"50%");
    table->put_align(u"Left");
    EXPECT_THROW(Html(), EOleSysError);
    EXPECT_EQ(std::dynamic_pointer_cast<IHTMLElement>(table)->getAttribute(u"align"), THtmlValue(u"Left"));
    table->insertRow(5);
    EXPECT_TRUE(WaitUntil([this] { return !FDialogs.Errors().empty(); }));
    EXPECT_THAT(FDialogs.TakeErrors(), ElementsAre(HasSubstr("insertRow")));
    EXPECT_THAT(Html(), HasSubstr("text"));
}

} // namespace
