// How a changed description takes part in the edit cycle when something comes between.
#include "description/DescriptionTest.h"

#include <QTimer>

using namespace Quorane_TLB;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

constexpr const char* Refusal = "The object requested is currently locked.";

class TDescriptionLock : public TDescriptionTest {
protected:
    TDescriptionLock() {
        LogOn();
        Select(ZoneControl);
        FNumber = SelectedNumber();
    }
    void Change(const std::string& text) {
        ClickIntoText();
        TypeIntoPage(text);
        ASSERT_TRUE(WaitForHtml(text));
    }
    // Idle moments enough for whatever waits for one.
    static void BeIdle() {
        for (int moment = 0; moment < 5; ++moment)
            TActor::Settle();
    }
    std::int32_t FNumber;
};

TEST_F(TDescriptionLock, ARefusalIsToldOnceAndTheNextChangeTriesAgain) {
    const Handle<ISession> ben = Server->LogOn("ben");
    const TReq held = ben->getLatestRequirement(FNumber);
    held->lock();
    Change("q");
    ASSERT_TRUE(WaitUntil([this] { return !Dialogs.Errors().empty(); }));
    BeIdle();
    EXPECT_THAT(Dialogs.TakeErrors(), ElementsAre(Refusal));
    EXPECT_EQ(SelectedImage(), imRequirement);
    EXPECT_THAT(Html(), HasSubstr("q"));
    held->unlock();
    Change("z");
    EXPECT_TRUE(WaitForLock());
    User->Click("btnSave");
    EXPECT_THAT(DescriptionOnServer(FNumber), HasSubstr("qz"));
}

TEST_F(TDescriptionLock, UnlockingLeavesTheTextAndTakesNoNewLock) {
    Change("qzx");
    ASSERT_TRUE(WaitForLock());
    Panel().actUnlock->Execute();
    BeIdle();
    EXPECT_FALSE(Locked());
    EXPECT_FALSE(Panel().actSave->Enabled());
    EXPECT_THAT(Html(), HasSubstr("qzx"));
    EXPECT_THAT(DescriptionOnServer(FNumber), Not(HasSubstr("qzx")));
}

TEST_F(TDescriptionLock, AHiddenPanelTakesNoNewLock) {
    Change("qzx");
    ASSERT_TRUE(WaitForLock());
    Panel().HideForm();
    BeIdle();
    EXPECT_FALSE(Locked());
    EXPECT_NO_THROW(ReadAs("ben", FNumber)->lock());
    BeIdle();
}

TEST_F(TDescriptionLock, AProjectWithoutBaselinesLeavesNoNewLock) {
    RunInStore("update baseline set type = 3 where project_id = "
               "(select id from project where name = 'Hearth Service Portal')");
    User->Click("btnRefresh");
    Select(ZoneControl);
    Change("qzx");
    ASSERT_TRUE(WaitForLock());
    User->Choose("cbxProjects", "Hearth Service Portal");
    ASSERT_THAT(Entries(*Panel().cbxProjectBaselines), IsEmpty());
    BeIdle();
    EXPECT_FALSE(Locked());
    EXPECT_NO_THROW(ReadAs("ben", FNumber)->lock());
}

TEST_F(TDescriptionLock, AnIdlePanelAsksNeitherEngineNorServer) {
    Change("q");
    ASSERT_TRUE(WaitForLock());
    BeIdle();
    Server->Calls.Clear();
    const std::int64_t before = Frame().wbrReqDescription->EngineCalls();
    BeIdle();
    EXPECT_EQ(Frame().wbrReqDescription->EngineCalls(), before);
    EXPECT_EQ(Server->Calls.RoundTrips(), 0);
}

// Selects another requirement from inside the message loop of one that is being shown:
// while it loads, or once it is there and made editable.
class TInterruptedLoad : public TDescriptionLock, public testing::WithParamInterface<bool> {};

TEST_P(TInterruptedLoad, ShowsWhatWasSelectedLast) {
    TTreeNode& node = User->Node("trvRequirements", {Top().Text(), FirmwareType, "Zone control"});
    TTreeNode& other = User->Node("trvRequirements", {Top().Text(), FirmwareType, "Schedule"});
    bool interrupted = false;
    QTimer turns;
    QObject::connect(&turns, &QTimer::timeout, [&] {
        if (interrupted || Frame().wbrReqDescription->Busy() != GetParam()) return;
        interrupted = true;
        Bar().SetDocDirty();
        Helpers().CurrentRequirement = RequirementContainer(&other).GetRequirement();
        EXPECT_FALSE(Frame().IsDirty());
        EXPECT_EQ(Frame().wbrReqDescription->Busy(), GetParam()) << "a load inside the other";
        other.SetSelected();
    });
    turns.start(0);
    Panel().ShowRequirementInfo(node);
    turns.stop();
    EXPECT_TRUE(interrupted);
    EXPECT_EQ(SelectedName(), "Schedule");
    EXPECT_EQ(NameEdit().Text(), "Schedule");
    EXPECT_THAT(Html(), Not(HasSubstr("heat <b>demand</b>")));
    EXPECT_FALSE(Frame().IsDirty());
    ClickIntoText();
    TypeIntoPage("q");
    EXPECT_TRUE(WaitForLock());
    EXPECT_NO_THROW(ReadAs("ben", FNumber)->lock());
}

INSTANTIATE_TEST_SUITE_P(Turns, TInterruptedLoad, testing::Bool(), [](const auto& turn) {
    return turn.param ? "WhileItLoads" : "WhileItIsMadeEditable";
});

TEST_F(TDescriptionLock, ADescriptionThatCannotBeReadIsNotOverwritten) {
    const std::string before = DescriptionOnServer(FNumber);
    Server->Calls.FailOperation("IRequirementDescription.Get_Text", "ServerException: no.");
    Frame().UpdateDescription();
    EXPECT_EQ(Document<IHTMLDocument2>()->get_designMode(), "Off") << "what is typed would be lost";
    User->Type("edtRequirementName", "Zones");
    User->Click("btnSave");
    EXPECT_EQ(NameOnServer(FNumber), "Zones");
    EXPECT_EQ(DescriptionOnServer(FNumber), before);
}

} // namespace
