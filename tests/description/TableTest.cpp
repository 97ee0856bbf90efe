// Tables of the description: put in at the caret, and changed where one is selected.
#include "description/DescriptionTest.h"

#include "description/TablePropertiesForm.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

class TDescriptionTable : public TDescriptionTest {
protected:
    TDescriptionTable() { LogOn(); }

    // Shows a requirement whose description is this.
    void Show(const std::string& html) {
        Select(ZoneControl);
        const std::int32_t number = SelectedNumber();
        Select({FirmwareType});
        DescribeAsBen(number, Quorane_TLB::Wide(html));
        Select(ZoneControl);
        Page().window()->activateWindow();
    }
    // Presses the bar's button and fills the dialog in, which the steps must close.
    void PressTable(const std::function<void(TActor&, TfrmTableProperties&)>& steps) {
        ASSERT_TRUE(WaitUntil([this] { return BarEnabled(); }));
        User->WhenModal([&](TForm& form) {
            TActor user(form.Widget());
            steps(user, dynamic_cast<TfrmTableProperties&>(form));
        });
        User->Click("btnInsertTable");
        // A window manager gives the focus back to the window that had it.
        Page().window()->activateWindow();
    }
    // A table whose border, at the top of the page, is wide enough for a click.
    void ShowTable(const std::string& attributes) {
        Show("<table cellspacing=\"12\" border=\"15\" " + attributes +
             "><tr><td>1</td><td>2</td></tr><tr><td>3</td><td>4</td></tr></table>");
        QTest::mouseClick(&Page(), Qt::LeftButton, {}, QPoint(15, 15));
        const auto selection = Document<IHTMLDocument2>()->get_selection();
        ASSERT_TRUE(WaitUntil([&] { return selection->get_type() == "Control" && BarEnabled(); }));
    }
};

TEST_F(TDescriptionTable, IsInsertedAtTheCaretAsItWasAskedFor) {
    Show("<p>text</p>");
    ClickIntoText();
    PressTable([](TActor& user, TfrmTableProperties& form) {
        EXPECT_EQ(form.edtHeight->Text(), "1");
        user.Type("edtColumns", "3");
        user.Type("edtWidth", "250");
        user.Choose("cbxWidthUnits", "Pixels");
        user.Choose("cbxAlignment", "Center");
        user.Click("btnOk");
    });
    for (const char* part :
         {"border-collapse: collapse", "bordercolor=\"black\"", "border=\"1\"", "cellspacing=\"0\"",
          "cellpadding=\"0\"", "width=\"250px\"", "height=\"1%\"", "align=\"Center\"",
          "<tr><td width=\"33%\"></td><td width=\"33%\"></td><td width=\"33%\"></td></tr>"})
        EXPECT_THAT(Html(), HasSubstr(part));
    Save();
    EXPECT_THAT(DescriptionOnServer(SelectedNumber()), HasSubstr("width=\"33%\""));
}

TEST_F(TDescriptionTable, OfTenThousandCellsIsSavedAndReadBack) {
    Show("<p>text</p>");
    ClickIntoText();
    PressTable([](TActor& user, TfrmTableProperties&) {
        user.Type("edtRows", "100");
        user.Type("edtColumns", "100");
        user.Click("btnOk");
    });
    const auto cells = [](const std::string& html) {
        std::size_t count = 0;
        for (auto at = html.find("<td"); at != std::string::npos; at = html.find("<td", at + 1))
            ++count;
        return count;
    };
    Save();
    EXPECT_EQ(cells(DescriptionOnServer(SelectedNumber())), 10'000U);
    Select({FirmwareType});
    Select(ZoneControl);
    EXPECT_EQ(cells(Html()), 10'000U);
}

TEST_F(TDescriptionTable, OfNothingAndInsideACell) {
    for (const auto& [edit, rows] : {std::pair("edtColumns", "><tbody><tr></tr><tr></tr></tbody></table>"),
                                     std::pair("edtRows", "></table>")}) {
        Show("<p>text</p>");
        ClickIntoText();
        PressTable([edit](TActor& user, TfrmTableProperties&) {
            user.Type(edit, "0");
            user.Click("btnOk");
        });
        EXPECT_THAT(Html(), HasSubstr(rows));
        Save();
        EXPECT_THAT(DescriptionOnServer(SelectedNumber()), HasSubstr("text")) << edit;
    }
    Show("<table><tbody><tr><td>cell</td></tr></tbody></table>");
    QTest::mouseClick(&Page(), Qt::LeftButton, {}, QPoint(14, 20));
    PressTable([](TActor& user, TfrmTableProperties&) { user.Click("btnCancel"); });
    EXPECT_EQ(Html().find("<table", Html().find("<td>")), std::string::npos);
    PressTable([](TActor& user, TfrmTableProperties&) { user.Click("btnOk"); });
    EXPECT_LT(Html().find("<table", Html().find("<td>")), Html().find("</td>"));
}

TEST_F(TDescriptionTable, SelectedOneGetsNewAttributesAndKeepsItsCells) {
    ShowTable("width=\"50%\" height=\"80px\" align=\"left\"");
    PressTable([](TActor& user, TfrmTableProperties& form) {
        const std::vector<std::string> texts{form.edtRows->Text(),        form.edtColumns->Text(),
                                             form.edtWidth->Text(),       form.cbxWidthUnits->Text(),
                                             form.edtHeight->Text(),      form.cbxHeightUnits->Text(),
                                             form.edtBorderWidth->Text(), form.edtCellPadding->Text(),
                                             form.edtCellSpacing->Text(), form.cbxAlignment->Text()};
        EXPECT_THAT(
            texts, ElementsAre("2", "2", "50", "Percent of window", "80", "Pixels", "15", "0", "12", "Left"));
        user.Type("edtRows", "7");
        user.Type("edtBorderWidth", "3");
        user.Choose("cbxAlignment", "Right");
        user.Click("btnOk");
    });
    const std::string html = Html();
    for (const char* part : {"width=\"50%\"", "height=\"80px\"", "border=\"3\"", "cellpadding=\"0\"",
                             "cellspacing=\"12\"", "align=\"Right\"", "<td>3</td><td>4</td>"})
        EXPECT_THAT(html, HasSubstr(part));
    EXPECT_EQ(html.find("<tr", html.find("3</td>")), std::string::npos);
    EXPECT_TRUE(WaitForLock());
}

TEST_F(TDescriptionTable, WithoutWidthShowsNoneInPixels) {
    ShowTable("");
    PressTable([](TActor& user, TfrmTableProperties& form) {
        EXPECT_EQ(form.edtWidth->Text(), "0");
        EXPECT_EQ(form.cbxWidthUnits->Text(), "Pixels");
        EXPECT_EQ(form.cbxAlignment->ItemIndex(), -1);
        user.Click("btnCancel");
    });
    EXPECT_THAT(Html(), Not(HasSubstr("width")));
}

TEST_F(TDescriptionTable, StaysAsItWasWhenANumberIsNone) {
    ShowTable("width=\"10em\"");
    const std::string before = Html();
    User->Click("btnInsertTable");
    EXPECT_EQ(OnlyError(), "'10em' is not a valid integer value");
    ShowTable("width=\"200\"");
    PressTable([](TActor& user, TfrmTableProperties&) {
        user.Type("edtBorderWidth", "4");
        user.Type("edtWidth", "wide");
        user.Click("btnOk");
    });
    EXPECT_EQ(OnlyError(), "'wide' is not a valid integer value");
    EXPECT_THAT(Html(), HasSubstr("border=\"15\""));
    EXPECT_FALSE(Frame().IsDirty());
}

} // namespace
