// The engine's process dies under a description.
#include "description/DescriptionTest.h"

#include <csignal>

using testing::HasSubstr;
using testing::Not;

namespace {

class TEngineGone : public TDescriptionTest {
protected:
    TEngineGone() {
        LogOn();
        Select(ZoneControl);
        FNumber = SelectedNumber();
    }
    void Kill() {
        auto& control = dynamic_cast<TBrowserControl&>(Frame().wbrReqDescription->Control());
        const qint64 process = control.page()->renderProcessPid();
        ASSERT_GT(process, 0);
        ASSERT_EQ(::kill(static_cast<pid_t>(process), SIGKILL), 0);
        ASSERT_TRUE(WaitUntil([this] { return Frame().pnlEngineGone->Showing(); }));
    }
    void Change(const std::string& text) {
        ClickIntoText();
        TypeIntoPage(text);
        ASSERT_TRUE(WaitForHtml(text));
        ASSERT_TRUE(WaitForLock());
        NameEdit().SetFocus();
    }
    std::int32_t FNumber;
};

TEST_F(TEngineGone, ThePanelSaysSoAndLoadsAgain) {
    EXPECT_FALSE(Frame().pnlEngineGone->Showing());
    Kill();
    TActor::Settle();
    EXPECT_FALSE(Locked());
    User->Click("btnLoadAgain");
    EXPECT_FALSE(Frame().pnlEngineGone->Showing());
    EXPECT_THAT(Html(), HasSubstr("heat <b>demand</b>"));
    EXPECT_FALSE(Frame().IsDirty());
    ClickIntoText();
    TypeIntoPage("qzx");
    EXPECT_TRUE(WaitForLock());
}

TEST_F(TEngineGone, WhatWasTakenFromThePageIsKeptAndCanBeSaved) {
    Change("qzx");
    Kill();
    EXPECT_TRUE(Locked());
    User->Click("btnLoadAgain");
    EXPECT_THAT(Html(), HasSubstr("qzx"));
    User->Click("btnSave");
    EXPECT_THAT(DescriptionOnServer(FNumber), HasSubstr("qzx"));
    EXPECT_FALSE(Frame().IsDirty());
}

TEST_F(TEngineGone, ASaveWritesTheKeptText) {
    Change("qzx");
    Kill();
    User->Click("btnSave");
    EXPECT_THAT(DescriptionOnServer(FNumber), HasSubstr("qzx"));
    EXPECT_FALSE(Frame().pnlEngineGone->Showing());
    EXPECT_THAT(Html(), HasSubstr("qzx"));
}

TEST_F(TEngineGone, ACancelDropsTheKeptText) {
    Change("qzx");
    Kill();
    User->Click("btnCancelSave");
    EXPECT_THAT(Html(), Not(HasSubstr("qzx")));
    EXPECT_FALSE(Frame().IsDirty());
}

TEST_F(TEngineGone, TheNextRequirementShowsInANewProcess) {
    Kill();
    Select({FirmwareType, "Schedule"});
    EXPECT_FALSE(Frame().pnlEngineGone->Showing());
    EXPECT_EQ(Document<IHTMLDocument2>()->get_designMode(), "On");
}

TEST_F(TEngineGone, TheBarDoesNothingWithoutADocument) {
    ClickIntoText();
    Kill();
    Bar().UpdateDisplay();
    Bar().SetBold(true);
    Bar().SetNumberedList();
    Bar().SetDocDirty();
    EXPECT_EQ(Bar().SelectedElement(), nullptr);
    EXPECT_FALSE(Bar().btnBold->Down());
    EXPECT_EQ(Bar().cbxFontNames->ItemIndex(), -1);
}

} // namespace
