#include <gmock/gmock.h>

#include "platform/widgets/Buttons.h"
#include "platform/widgets/Containers.h"
#include "platform/widgets/Edits.h"
#include "platform/widgets/tree/TreeView.h"
#include "widgets/Support.h"

namespace {

class Layout : public ::testing::Test {
protected:
    TForm Form{nullptr, "frm"};
};

TRect BoundsOf(const TControl& control) {
    return {control.Left(), control.Top(), control.Width(), control.Height()};
}

TEST_F(Layout, ControlsStandAlongTheirEdgesAndTheClientTakesTheRest) {
    auto& top = *new TPanel(&Form, "top");
    auto& left = *new TTreeView(&Form, "left");
    auto& splitter = *new TSplitter(&Form, "splitter");
    auto& client = *new TPanel(&Form, "client");
    top.SetAlign(TAlign::Top);
    top.SetHeight(30);
    left.SetAlign(TAlign::Left);
    left.SetWidth(120);
    client.SetAlign(TAlign::Client);
    ShowWindow(Form, 400, 300);
    EXPECT_EQ(BoundsOf(top), (TRect{0, 0, 400, 30}));
    EXPECT_EQ(BoundsOf(left), (TRect{0, 30, 120, 270}));
    EXPECT_EQ(BoundsOf(splitter), (TRect{120, 30, 5, 270}));
    EXPECT_EQ(BoundsOf(client), (TRect{125, 30, 275, 270}));
}

TEST_F(Layout, ASplitterSizesTheControlBeforeItAndLeavesTheOtherRoom) {
    auto& upper = *new TMemo(&Form, "upper");
    auto& splitter = *new TSplitter(&Form, "splitter");
    auto& client = *new TMemo(&Form, "client");
    upper.SetAlign(TAlign::Top);
    upper.SetHeight(100);
    splitter.SetAlign(TAlign::Top);
    client.SetAlign(TAlign::Client);
    ShowWindow(Form, 300, 400);
    Mouse(splitter, QEvent::MouseButtonPress, QPoint(10, 2), Qt::LeftButton);
    Mouse(splitter, QEvent::MouseMove, QPoint(10, 52), Qt::LeftButton);
    TActor::Settle();
    EXPECT_EQ(upper.Height(), 150);
    EXPECT_EQ(client.Top(), 155);
    Mouse(splitter, QEvent::MouseMove, QPoint(10, 2000), Qt::LeftButton);
    TActor::Settle();
    EXPECT_GE(client.Height(), client.minimumSizeHint().height());
    EXPECT_EQ(client.Top() + client.Height(), 400);
}

TEST_F(Layout, ABarWrapsWhenItIsNarrowAndTheRestMovesDown) {
    auto& bar = *new TToolBar(&Form, "tlb");
    for (int i = 0; i < 12; ++i)
        bar.AddButton("btn" + std::to_string(i), -1, "hint");
    auto& client = *new TPanel(&Form, "client");
    client.SetAlign(TAlign::Client);
    ShowWindow(Form, 800, 300);
    const int oneRow = bar.Height();
    EXPECT_EQ(client.Top(), oneRow);
    ShowWindow(Form, 150, 300);
    EXPECT_GE(bar.Height(), 2 * oneRow - 4);
    EXPECT_EQ(client.Top(), bar.Height());
}

TEST_F(Layout, AScrollBoxScrollsToControlsWithBoundsOfTheirOwn) {
    auto& box = *new TScrollBox(&Form, "scb");
    box.SetAlign(TAlign::Client);
    int top = 10;
    for (int i = 0; i < 20; ++i) {
        auto& edit = *new TEdit(&box, "edt" + std::to_string(i));
        edit.SetBounds(10, top, 300, -1);
        top += edit.Height() + 5;
    }
    ShowWindow(Form, 400, 200);
    EXPECT_GE(box.widget()->height(), top - 5);
    EXPECT_EQ(box.widget()->width(), box.viewport()->width());
}

TEST_F(Layout, AMovedControlTakesItsAlignmentAlong) {
    auto& from = *new TPanel(&Form, "from");
    auto& to = *new TPanel(&Form, "to");
    from.SetAlign(TAlign::Left);
    from.SetWidth(100);
    to.SetAlign(TAlign::Client);
    auto& bar = *new TPanel(&from, "bar");
    bar.SetAlign(TAlign::Top);
    bar.SetHeight(25);
    ShowWindow(Form, 400, 200);
    bar.SetParent(to);
    TActor::Settle();
    EXPECT_EQ(bar.Parent(), &to);
    EXPECT_EQ(BoundsOf(bar), (TRect{0, 0, 300, 25}));
    EXPECT_TRUE(bar.Showing());
}

TEST_F(Layout, ADialogAsksForTheRoomThatItsGridNeeds) {
    auto& grid = Form.UseGridLayout();
    auto& label = *new TLabel(&Form, "lbl", "A rather long label that must not be cut off:");
    auto& edit = *new TEdit(&Form, "edt");
    grid.Place(label, 0, 0);
    grid.Place(edit, 0, 1);
    Form.SetBorderStyle(TBorderStyle::Dialog);
    Form.show();
    TActor::Settle();
    EXPECT_GE(label.Width(), label.sizeHint().width());
    EXPECT_GT(edit.Left(), label.Left() + label.Width());
}

} // namespace
