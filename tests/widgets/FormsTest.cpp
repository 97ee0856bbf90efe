#include <gmock/gmock.h>

#include <QDragMoveEvent>
#include <QMimeData>

#include "platform/widgets/Containers.h"
#include "platform/widgets/Edits.h"
#include "platform/widgets/Lists.h"
#include "platform/widgets/tree/ListView.h"
#include "support/FakeHost.h"
#include "widgets/Support.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

TEST(DockableForm, ComesUpHiddenAndTellsWhenItShowsAndHides) {
    TFakeHost host;
    TLog log;
    TDockableForm form("frmPanel");
    form.SetCaption("Panel");
    form.OnShow = [&] { log.push_back("show"); };
    form.OnHide = [&] { log.push_back("hide"); };
    form.FormCreate();
    EXPECT_FALSE(form.FormVisible());
    EXPECT_THAT(log, IsEmpty());
    form.ShowForm();
    EXPECT_TRUE(form.FormVisible());
    form.HideForm();
    EXPECT_THAT(log, ElementsAre("show", "hide"));
    form.FormDestroy();
}

TEST(DockableForm, IsAWindowOfItsOwnWithoutAHost) {
    TDockableForm form("frmPanel");
    form.FormCreate();
    form.ForceShow();
    EXPECT_TRUE(form.FormVisible());
    EXPECT_FALSE(form.Floating());
    form.HideForm();
    EXPECT_FALSE(form.FormVisible());
    form.FormDestroy();
}

TEST(Components, AreFoundByNameAndKindAtAnyDepth) {
    TForm form(nullptr, "frm");
    auto& panel = *new TPanel(&form, "pnl");
    auto& edit = *new TEdit(&panel, "edt");
    EXPECT_EQ(form.FindComponent<TEdit>("edt"), &edit);
    EXPECT_EQ(form.FindComponent<TMemo>("edt"), nullptr);
    EXPECT_EQ(form.FindComponent("missing"), nullptr);
}

TEST(Components, AnObjectInTheTagGoesWithItsControlOrItsSuccessor) {
    int alive = 0;
    TForm form(nullptr, "frm");
    auto edit = std::make_unique<TEdit>(&form, "edt");
    edit->SetTagObject(std::make_unique<TCounted>(alive));
    edit->SetTagObject(std::make_unique<TCounted>(alive));
    EXPECT_EQ(alive, 1);
    EXPECT_NE(edit->TagObjectAs<TCounted>(), nullptr);
    edit.reset();
    EXPECT_EQ(alive, 0);
}

TEST(Components, AFramesInputControlsAreThoseThatTakeInput) {
    TForm form(nullptr, "frm");
    TFrame frame(&form, "fra");
    auto& panel = *new TPanel(&frame, "pnl");
    new TLabel(&panel, "lbl", "Name:");
    auto& edit = *new TEdit(&panel, "edt");
    auto& combo = *new TComboBox(&frame, "cbx");
    EXPECT_THAT(frame.InputControls(), testing::UnorderedElementsAre(&edit, &combo));
}

TEST(Components, TheOwnStateOfAControlIsApartFromItsParents) {
    TForm form(nullptr, "frm");
    auto& panel = *new TPanel(&form, "pnl");
    auto& edit = *new TEdit(&panel, "edt");
    ShowWindow(form);
    panel.SetEnabled(false);
    panel.SetVisible(false);
    EXPECT_TRUE(edit.Enabled());
    EXPECT_TRUE(edit.Visible());
    EXPECT_FALSE(edit.Showing());
    EXPECT_FALSE(edit.isEnabled());
}

TEST(Screen, TheHourglassGoesHoweverItsBlockIsLeft) {
    try {
        const THourglass outer;
        const THourglass inner;
        EXPECT_TRUE(Screen().HourglassShown());
        throw std::runtime_error("failed");
    } catch (const std::runtime_error&) {
    }
    EXPECT_FALSE(Screen().HourglassShown());
}

class ListDrag : public ::testing::Test {
protected:
    ListDrag() {
        List.SetAlign(TAlign::Client);
        List.OnDragDrop = [this](TObject*, TPoint) { ++Drops; };
        Mime.setText(QStringLiteral("text"));
        ShowWindow(Form);
    }

    template<class Event> bool Send() {
        Event event(QPoint(5, 5), Qt::CopyAction, &Mime, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(List.viewport(), &event);
        return event.isAccepted();
    }
    bool DragOver() {
        Send<QDragEnterEvent>();
        const bool accepted = Send<QDragMoveEvent>();
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(List.viewport(), &leave);
        return accepted;
    }
    void Drop() {
        Send<QDragEnterEvent>();
        Send<QDropEvent>();
    }

    TScriptedDialogs Dialogs;
    TForm Form{nullptr, "frm"};
    TListView& List{*new TListView(&Form, "lst")};
    QMimeData Mime;
    int Drops = 0;
};

TEST_F(ListDrag, NothingIsAcceptedUntilTheHandlerSaysSo) {
    EXPECT_FALSE(DragOver());
    List.OnDragOver = [](TObject*, TPoint, bool& accept) { accept = true; };
    EXPECT_TRUE(DragOver());
    List.OnDragOver = [](TObject*, TPoint, bool&) { throw std::runtime_error("over"); };
    EXPECT_FALSE(DragOver());
    EXPECT_THAT(Dialogs.Errors(), ElementsAre("over"));
}

TEST_F(ListDrag, ADropReachesTheHandlerOnlyWhereItIsAccepted) {
    bool accepts = false;
    List.OnDragOver = [&](TObject*, TPoint, bool& accept) { accept = accepts; };
    Drop();
    EXPECT_EQ(Drops, 0);
    accepts = true;
    Drop();
    EXPECT_EQ(Drops, 1);
}

} // namespace
