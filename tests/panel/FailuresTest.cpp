// What becomes of a failed server call.
#include "panel/PanelTest.h"

#include <functional>

using testing::ElementsAre;
using testing::IsEmpty;

class TPanelFailures : public TPanelTest {
protected:
    TPanelFailures() { LogOn(); }
};

struct TKnownFailure {
    std::string Text, Shown;
};

class TFailureTexts : public TPanelFailures, public testing::WithParamInterface<TKnownFailure> {};

const std::string Markup = "The content of elements must consist of well-formed character data or markup.";
const std::string Image =
    "The specified HTML contains an image that has a 'src' attribute but does not have a 'src_original' "
    "attribute. If you are inserting an image into an existing requirement description, your img tag must "
    "contain the 'new' attribute to signify a new image.";

TEST_P(TFailureTexts, AreShortenedWhereTheyAreKnown) {
    try {
        Panel().HandleSDKException(Exception(GetParam().Text));
        FAIL();
    } catch (const Exception& failure) {
        EXPECT_EQ(failure.what(), GetParam().Shown);
    }
    EXPECT_FALSE(Panel().HandlingSDKException());
    EXPECT_TRUE(QuoraneSession->IsLoggedIn());
}

INSTANTIATE_TEST_SUITE_P(
    , TFailureTexts,
    testing::Values(TKnownFailure{"Requirement name cannot be empty!", "Requirement name cannot be empty!"},
                    TKnownFailure{"RemoteServerException: what else", "RemoteServerException: what else"},
                    TKnownFailure{"Quorane.SERVER_ERROR alone", "Quorane.SERVER_ERROR alone"},
                    TKnownFailure{"RemoteServerException: x " + Markup + " at line 4", Markup},
                    TKnownFailure{Markup + " at line 4", Markup + " at line 4"},
                    TKnownFailure{"RemoteServerException: x " + Image + " trace", Image}));

TEST_F(TPanelFailures, ALostConnectionIsRestoredAndShowsTheProject) {
    Select(ZoneControl);
    Server->Calls.FailOperation("ISession.getLatestRequirement", LostConnection);
    Dialogs.Answer(TMessageResult::Ok);
    Select(FilterReadings);
    const auto messages = Dialogs.TakeMessages();
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0].Text, "Connection to the Quorane server was lost and will be restored.");
    EXPECT_EQ(messages[0].Caption, "Quorane");
    EXPECT_TRUE(Top().Selected());
    EXPECT_EQ(Panel().nbkContents->PageIndex(), ProjectPage);
    EXPECT_EQ(Helpers().CurrentRequirement, nullptr);
    EXPECT_FALSE(Panel().HandlingSDKException());
}

TEST_F(TPanelFailures, AServerThatStaysAwayIsToldOnceAndTheNextRefreshWorks) {
    Select(ZoneControl);
    Server->Stop();
    Dialogs.Answer(TMessageResult::Ok);
    User->SelectNode("trvRequirements", {Top().Text(), FirmwareType, "Schedule"});
    EXPECT_EQ(Dialogs.TakeMessages().size(), 1U);
    EXPECT_EQ(OnlyError(), "Could not connect to the Quorane Server: host not found.");
    EXPECT_FALSE(Panel().HandlingSDKException());
    EXPECT_EQ(Panel().nbkParent->PageIndex(), ConnectedPage);
    Server->Start();
    User->Click("btnRefresh");
    EXPECT_TRUE(QuoraneSession->IsLoggedIn());
    Select(FilterReadings);
    EXPECT_EQ(NameEdit().Text(), FilterReadings.back());
}

TEST_F(TPanelFailures, AFailureInsideTheRebuildIsToldOnce) {
    Server->Calls.FailOperation("ISession.getLatestRequirement", LostConnection);
    Server->Calls.FailOperation("IProject.Get_Baselines", LostConnection);
    Dialogs.Answer(TMessageResult::Ok);
    Select(ZoneControl);
    EXPECT_EQ(Dialogs.TakeMessages().size(), 1U);
    EXPECT_EQ(OnlyError(), LostConnection);
    EXPECT_FALSE(Panel().HandlingSDKException());
}

TEST_F(TPanelFailures, AConnectionLostWhileARequirementIsChangedIsRestoredOnce) {
    Select(ZoneControl);
    const std::int32_t number = SelectedNumber();
    User->Type("edtRequirementName", "Zones");
    Server->Calls.FailOperation("IRequirement.save", LostConnection);
    Dialogs.Answer(TMessageResult::Ok);
    User->Click("btnSave");
    EXPECT_EQ(Dialogs.TakeMessages().size(), 1U);
    EXPECT_TRUE(Top().Selected());
    EXPECT_EQ(NameOnServer(number), "Zone control");
    EXPECT_NO_THROW(ReadAs("ben", number)->lock());
}

TEST_F(TPanelFailures, AConnectionLostOnTheWayToAFoundRequirementEndsTheSearch) {
    Select(FilterReadings);
    const auto other = Server->LogOn("admin");
    const auto parent = User->Node("trvRequirements", {Top().Text(), FirmwareType, "Zone control"})
                            .DataAs<TRequirementTreeNodeContainer>()
                            ->Node->Get_ID()
                            ->Get_IDNumber();
    const TReq made = Quorane_TLB::CoRequirementFactory::Create()->Create2(
        u"From elsewhere", other->getLatestRequirement(parent), 0, other);
    SaveByName(made);
    Helpers().RefreshCurrentRequirement();
    User->Type("edtRequirementName", "Filter");
    Server->Calls.FailOperation("IRequirement.save", LostConnection);
    Dialogs.Answer(TMessageResult::Ok);
    EXPECT_THROW(Helpers().SearchNodeById(made->Get_IDNumber()), EAbort);
    EXPECT_EQ(Dialogs.TakeMessages().size(), 1U);
    EXPECT_TRUE(Top().Selected());
}

struct TEditInLostConnection {
    const char* Name;
    const char* Tab;
    std::function<void(TActor&)> Edit;
    const char* Write;
};

void PrintTo(const TEditInLostConnection& row, std::ostream* out) {
    *out << row.Name;
}

class TLostWhileLocking : public TPanelFailures, public testing::WithParamInterface<TEditInLostConnection> {};

TEST_P(TLostWhileLocking, IsToldOnceRestoredOnceAndWritesNothing) {
    const TEditInLostConnection& row = GetParam();
    Select(Implausible);
    User->ChooseTab("pgcRequirement", row.Tab);
    Server->Calls.Clear();
    Server->Calls.FailOperation("ILockableQuoraneObject.lock", LostConnection);
    Dialogs.Answer(TMessageResult::Ok);
    row.Edit(*User);
    EXPECT_EQ(Dialogs.TakeMessages().size(), 1U);
    EXPECT_EQ(Server->Calls.CallsOf("IQuoraneServer.login"), 1);
    EXPECT_FALSE(Called(row.Write));
    EXPECT_FALSE(Tree().IsEditing());
    EXPECT_TRUE(Top().Selected());
    EXPECT_EQ(Panel().nbkContents->PageIndex(), ProjectPage);
    Select(Implausible);
    EXPECT_EQ(SelectedImage(), imRequirement);
}

INSTANTIATE_TEST_SUITE_P(
    , TLostWhileLocking,
    testing::Values(
        TEditInLostConnection{"Status", "Details",
                              [](TActor& user) { user.Choose("cbxRequirementStatus", "Draft"); },
                              "IUDAListValue.Set_SelectedIndex"},
        TEditInLostConnection{"Priority", "Details",
                              [](TActor& user) { user.Choose("cbxRequirementPriority", "Could"); },
                              "IUDAListValue.Set_SelectedIndex"},
        TEditInLostConnection{"Owner", "Details",
                              [](TActor& user) { user.Choose("cbxRequirementOwner", "Anna Lind"); },
                              "IRequirement.Set_Owner"},
        TEditInLostConnection{
            "Attribute", "Safety",
            [](TActor& user) { user.Key("ctl_ctl_ctl_pgcRequirement_9_1_1", Qt::Key_Space); },
            "IUDABooleanValue.Set_Value"},
        TEditInLostConnection{"Reference", "References", [](TActor& user) { user.Click("btnNewText"); },
                              "IRequirement.Set_DocumentReferences"},
        TEditInLostConnection{"Rename", "Details",
                              [](TActor& user) { user.Key("trvRequirements", Qt::Key_F2); },
                              "IQuoraneObject.Set_Name"}));
