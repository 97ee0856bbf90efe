// The dialog of a table's properties, as a user fills it in.
#include "description/TablePropertiesForm.h"

#include "contracts/Exceptions.h"
#include "support/Actor.h"
#include "support/ScriptedDialogs.h"

#include <gmock/gmock.h>

namespace {

struct TValues {
    std::int32_t Rows = 2, Columns = 3, Width = 50, Height = 4, Border = 5, Padding = 6, Spacing = 7;
    std::string WidthUnit = "%", HeightUnit = "px", Alignment = "Right";
    bool operator==(const TValues&) const = default;
};

class TableDialog : public testing::Test {
protected:
    // Runs the dialog on the values; the steps must close it.
    bool Execute(const std::function<void(TActor&, TfrmTableProperties&)>& steps) {
        FActor.WhenModal([&](TForm& form) {
            TActor user(form.Widget());
            steps(user, dynamic_cast<TfrmTableProperties&>(form));
        });
        return ExecuteTableProperties(FValues.Rows, FValues.Columns, FValues.Width, FValues.Height,
                                      FValues.Border, FValues.Padding, FValues.Spacing, FValues.WidthUnit,
                                      FValues.HeightUnit, FValues.Alignment);
    }
    bool PressOk() {
        return Execute([](TActor& user, TfrmTableProperties&) { user.Click("btnOk"); });
    }

    TScriptedDialogs FDialogs;
    TForm FWindow{nullptr, "window"};
    TActor FActor{FWindow};
    TValues FValues;
};

TEST_F(TableDialog, ShowsTheValuesItGets) {
    const bool changed = Execute([](TActor& user, TfrmTableProperties& form) {
        EXPECT_EQ(form.Caption(), "Table Properties");
        const std::vector<std::string> texts{form.edtRows->Text(),        form.edtColumns->Text(),
                                             form.edtWidth->Text(),       form.cbxWidthUnits->Text(),
                                             form.edtHeight->Text(),      form.cbxHeightUnits->Text(),
                                             form.cbxAlignment->Text(),   form.edtBorderWidth->Text(),
                                             form.edtCellPadding->Text(), form.edtCellSpacing->Text()};
        EXPECT_THAT(texts, testing::ElementsAre("2", "3", "50", "Percent of window", "4", "Pixels", "Right",
                                                "5", "6", "7"));
        user.Click("btnCancel");
    });
    EXPECT_FALSE(changed);
    EXPECT_EQ(FValues, TValues());
}

TEST_F(TableDialog, OkGivesEachValueInItsPlace) {
    EXPECT_TRUE(Execute([](TActor& user, TfrmTableProperties&) {
        int value = 10;
        for (const char* edit : {"edtRows", "edtColumns", "edtWidth", "edtHeight", "edtBorderWidth",
                                 "edtCellPadding", "edtCellSpacing"})
            user.Type(edit, std::to_string(++value));
        user.Choose("cbxWidthUnits", "Pixels");
        user.Choose("cbxHeightUnits", "Percent of window");
        user.Choose("cbxAlignment", "Center");
        user.Key("edtRows", Qt::Key_Return);
    }));
    EXPECT_EQ(FValues, (TValues{11, 12, 13, 14, 15, 16, 17, "px", "%", "Center"}));
}

TEST_F(TableDialog, UnitsAndAlignmentsThatItDoesNotKnow) {
    struct TRow {
        std::string Unit, Alignment, WantedUnit, WantedAlignment;
    };
    for (const TRow& row : {TRow{"", "", "px", ""}, TRow{"em", "justify", "px", ""},
                            TRow{"px", "center", "px", "Center"}, TRow{"%", "LEFT", "%", "Left"}}) {
        FValues = {};
        FValues.WidthUnit = row.Unit;
        FValues.Alignment = row.Alignment;
        EXPECT_TRUE(PressOk());
        EXPECT_EQ(FValues.WidthUnit, row.WantedUnit) << row.Unit;
        EXPECT_EQ(FValues.Alignment, row.WantedAlignment) << row.Alignment;
    }
}

TEST_F(TableDialog, ArrowsCountFromWhatIsWrittenAndNotBelowNothing) {
    EXPECT_TRUE(Execute([](TActor& user, TfrmTableProperties& form) {
        user.Click("upRowsUp");
        user.Type("edtColumns", "41");
        user.Click("upColumnsUp");
        user.Key("edtBorderWidth", Qt::Key_Down);
        user.Type("edtCellPadding", "many");
        user.Click("upCellPaddingDown");
        form.upCellSpacing->SetPosition(1);
        user.Click("upCellSpacingDown");
        user.Click("upCellSpacingDown");
        user.Click("btnOk");
    }));
    EXPECT_EQ(FValues.Rows, 3);
    EXPECT_EQ(FValues.Columns, 42);
    EXPECT_EQ(FValues.Border, 4);
    EXPECT_EQ(FValues.Padding, 5);
    EXPECT_EQ(FValues.Spacing, 0);
}

class TableDialogNumbers : public TableDialog, public testing::WithParamInterface<const char*> {};

TEST_P(TableDialogNumbers, TextThatIsNoIntegerChangesNothing) {
    for (const char* text : {"", "two", "1.5", "2147483648", "3 4"}) {
        EXPECT_THROW(Execute([&](TActor& user, TfrmTableProperties&) {
                         user.Type("edtRows", "9");
                         user.Type(GetParam(), text);
                         user.Click("btnOk");
                     }),
                     EConvertError)
            << text;
        EXPECT_EQ(FValues, TValues()) << text;
    }
}

INSTANTIATE_TEST_SUITE_P(Edits, TableDialogNumbers,
                         testing::Values("edtColumns", "edtWidth", "edtHeight", "edtBorderWidth",
                                         "edtCellPadding", "edtCellSpacing"),
                         [](const auto& row) { return std::string(row.param); });

} // namespace
