// The engine's process dies under a description.
#include "description/DescriptionTest.h"

#include <QImage>

#include <csignal>

#include "platform/widgets/QtText.h"

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
    // Until the page has told of the text by itself.
    void Change(const std::string& text) {
        auto& told = Frame().wbrReqDescription->OnTextChanged;
        const auto came = std::make_shared<bool>(false);
        told = [came, tell = told](const std::u16string& html) {
            tell(html);
            *came = true;
        };
        ClickIntoText();
        TypeIntoPage(text);
        ASSERT_TRUE(WaitForLock());
        ASSERT_TRUE(WaitUntil([&] { return *came; }));
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

TEST_F(TEngineGone, APictureFromTheDiskShowsInTheKeptText) {
    const TTempFolder folder;
    QImage image(23, 5, QImage::Format_RGB32);
    image.fill(Qt::red);
    ASSERT_TRUE(image.save(ToQt(folder.File("new.png"))));
    ClickIntoText();
    Dialogs.AnswerFile(folder.File("new.png"));
    User->Click("btnInsertImage");
    Change("qzx");
    Kill();
    User->Click("btnLoadAgain");
    EXPECT_TRUE(ShowsPictures(QStringLiteral("23,520"))) << Html();
}

TEST_F(TEngineGone, ASaveWritesTheKeptText) {
    Change("qzx");
    Kill();
    User->Click("btnSave");
    EXPECT_THAT(DescriptionOnServer(FNumber), HasSubstr("qzx"));
    EXPECT_FALSE(Frame().pnlEngineGone->Showing());
    EXPECT_THAT(Html(), HasSubstr("qzx"));
}

TEST_F(TEngineGone, TheTextOfAKeyReferenceIsNoChangeOfTheUsers) {
    Select(GuardAgainstFrost);
    // A save that the server refuses begins so.
    EXPECT_NE(Frame().GetDocumentHTML(), u"");
    Kill();
    User->Click("btnLoadAgain");
    EXPECT_EQ(Document<IHTMLDocument2>()->get_designMode(), "Off");
    EXPECT_FALSE(Frame().IsDirty());
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
