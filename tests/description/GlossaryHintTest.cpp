#include "description/UGlossaryHintForm.h"

#include "support/Actor.h"

#include <gmock/gmock.h>

#include <QApplication>

namespace {

class GlossaryHint : public testing::Test {
protected:
    // A text of words that is at least so wide in the label, in pixels.
    std::string TextOfWidth(int pixels) {
        std::string text;
        for (FHint.SetDefinition(text); FHint.lblDefinition->TextWidth() < pixels; FHint.SetDefinition(text))
            text += text.size() % 6 == 5 ? " " : "x";
        return text;
    }

    TfrmGlossaryHint FHint;
};

TEST_F(GlossaryHint, StandsWhereItIsToldAndTakesNoFocus) {
    TForm window(nullptr, "window");
    window.show();
    window.activateWindow();
    ASSERT_TRUE(TActor::WaitFor([&] { return QApplication::activeWindow() == &window; }));
    FHint.ShowHint(33, 44, "Heating", "Makes warm water & more");
    EXPECT_TRUE(FHint.isVisible());
    EXPECT_EQ(FHint.pos(), QPoint(33, 44));
    EXPECT_EQ(FHint.lblGlossaryName->Caption(), "Heating");
    EXPECT_EQ(FHint.lblDefinition->Caption(), "Makes warm water & more");
    EXPECT_TRUE(FHint.windowFlags().testFlag(Qt::FramelessWindowHint));
    TActor::Settle();
    EXPECT_EQ(QApplication::activeWindow(), &window);
    FHint.ShowHint(5, 6, "Pumps", "");
    EXPECT_EQ(FHint.pos(), QPoint(5, 6));
    EXPECT_EQ(FHint.lblDefinition->Caption(), "");
}

TEST_F(GlossaryHint, GrowsWithTheDefinitionInStepsOfALine) {
    struct TRow {
        double Widths;
        int Lines;
    };
    const int width = FHint.lblDefinition->Width();
    ASSERT_EQ(width, 251);
    for (const TRow& row :
         {TRow{0, 1}, TRow{0.3, 2}, TRow{0.9, 2}, TRow{1.3, 3}, TRow{4.5, 6}, TRow{0.5, 2}}) {
        FHint.ShowHint(0, 0, "Heating", TextOfWidth(static_cast<int>(row.Widths * width)));
        EXPECT_EQ(FHint.lblDefinition->Height(), row.Lines * 13) << row.Widths;
        EXPECT_EQ(FHint.height(), FHint.lblGlossaryName->Height() + row.Lines * 13 + 5) << row.Widths;
        EXPECT_EQ(FHint.width(), 254);
        EXPECT_GE(FHint.height(), FHint.lblDefinition->geometry().bottom()) << row.Widths;
    }
}

TEST_F(GlossaryHint, FollowsThePalette) {
    FHint.ShowHint(0, 0, "", "");
    const QPalette before = QApplication::palette();
    const auto shown = [&](const QPalette& palette) {
        QApplication::setPalette(palette);
        TActor::Settle();
        return FHint.grab().toImage().pixelColor(127, 10);
    };
    QPalette other = before;
    other.setColor(QPalette::ToolTipBase, QColor(10, 20, 30));
    EXPECT_EQ(shown(other), QColor(10, 20, 30));
    EXPECT_EQ(FHint.lblGlossaryName->Widget().palette().color(QPalette::WindowText), QColor(Qt::blue));
    EXPECT_EQ(shown(before), before.color(QPalette::ToolTipBase));
}

} // namespace
