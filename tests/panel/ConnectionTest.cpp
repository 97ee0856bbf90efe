// From the menu command to a listed baseline, refresh, logoff and the two places.
#include "panel/PanelTest.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class TPanelConnection : public TPanelTest {};

TEST_F(TPanelConnection, LogonListsProjectsAndTheBaselinesThatAreNotDeleted) {
    ASSERT_TRUE(LogOn());
    EXPECT_THAT(Entries(*Panel().cbxProjects), ElementsAre("Hearth Controller", "Hearth Service Portal"));
    EXPECT_THAT(Entries(*Panel().cbxProjectBaselines), ElementsAre("Current", "Release 1.0"));
    EXPECT_EQ(Top().Text(), "Hearth Controller");
    EXPECT_THAT(Children(Top()), ElementsAre("App Requirement", FirmwareType, "System Requirement"));
    EXPECT_TRUE(Top().Selected());
    EXPECT_THAT(Panel().mmoProjectInfo->Text(), HasSubstr("up to eight zones"));
}

struct TRefusedLogon {
    std::string Host, User, Password, Text;
};

class TRefusedLogons : public TPanelConnection, public testing::WithParamInterface<TRefusedLogon> {};

TEST_P(TRefusedLogons, TellWhyAndStoreNothing) {
    const TRefusedLogon& row = GetParam();
    EXPECT_FALSE(LogOn(row.Host, row.User, row.Password));
    EXPECT_EQ(OnlyError(), row.Text);
    EXPECT_EQ(Panel().nbkParent->PageIndex(), LoginPage);
    EXPECT_FALSE(Panel().FormVisible());
    EXPECT_THAT(System.UserSettings, IsEmpty());
    EXPECT_FALSE(QuoraneSession->IsLoggedIn());
}

INSTANTIATE_TEST_SUITE_P(
    , TRefusedLogons,
    testing::Values(TRefusedLogon{"local", "anna", "wrong", "Invalid Login"},
                    TRefusedLogon{"local", "nobody", "hearth-nobody", "Invalid Login"},
                    TRefusedLogon{"local", "hugo", "hearth-hugo", "Account disabled"},
                    TRefusedLogon{"local", "ida", "hearth-ida",
                                  "User must change password, please use the normal Quorane client to do it"},
                    TRefusedLogon{"elsewhere", "anna", "hearth-anna",
                                  "Could not connect to the Quorane Server: host not found."}));

TEST_F(TPanelConnection, APanelWhoseAddInCannotBeMadeKnownStaysUnconnected) {
    Server->Calls.FailOperation("IIntegrationManager.Get_Integrations", "ServerException: no.");
    EXPECT_FALSE(LogOn());
    EXPECT_EQ(OnlyError(), "ServerException: no.");
    EXPECT_THAT(Entries(*Panel().cbxProjects), IsEmpty());
}

TEST_F(TPanelConnection, ARefreshKeepsTheProjectAndTakesTheFirstBaseline) {
    LogOn();
    User->Choose("cbxProjects", "Hearth Service Portal");
    User->Choose("cbxProjectBaselines", "Pilot");
    User->Click("btnRefresh");
    EXPECT_EQ(Panel().cbxProjects->Text(), "Hearth Service Portal");
    EXPECT_EQ(Panel().cbxProjectBaselines->Text(), "Current");
    EXPECT_EQ(Top().Text(), "Hearth Service Portal");
    EXPECT_THAT(Children(Top()), ElementsAre("Portal Requirement"));
}

TEST_F(TPanelConnection, AnotherUsersLogonKeepsTheProjectByName) {
    LogOn("anna");
    User->Choose("cbxProjects", "Hearth Service Portal");
    User->Click("btnLogOff");
    EXPECT_EQ(Panel().nbkParent->PageIndex(), LoginPage);
    EXPECT_FALSE(Panel().FormVisible());
    EXPECT_EQ(Host.OpenTab(), nullptr);
    ASSERT_TRUE(LogOn("ben"));
    EXPECT_EQ(Panel().cbxProjects->Text(), "Hearth Service Portal");
    EXPECT_NE(Host.OpenTab(), nullptr);
}

TEST_F(TPanelConnection, ALogoffGivesTheLockBack) {
    LogOn();
    Select(ZoneControl);
    const std::int32_t number = SelectedNumber();
    User->Type("edtRequirementName", "Zones");
    User->Click("btnLogOff");
    const TReq requirement = ReadAs("ben", number);
    EXPECT_NO_THROW(requirement->lock());
    EXPECT_EQ(requirement->Get_Name(), u"Zone control");
}

TEST_F(TPanelConnection, ClosingTheTabHidesThePanelWhichComesBackWithoutALogon) {
    LogOn();
    Host.OpenTab()->Close();
    EXPECT_FALSE(Panel().FormVisible());
    TfrmQuoraneMain::ShowForm();
    TActor::Settle();
    EXPECT_TRUE(Panel().FormVisible());
    ASSERT_NE(Host.OpenTab(), nullptr);
    EXPECT_TRUE(Panel().nbkContents->Showing());
    EXPECT_TRUE(Panel().pnlToolBars->Showing());
}

TEST_F(TPanelConnection, HidingThePanelGivesTheLockBackUnsavedAndLeavesTheTab) {
    LogOn();
    Select(ZoneControl);
    const std::int32_t number = SelectedNumber();
    User->Type("edtRequirementName", "Zones");
    Panel().HideForm();
    EXPECT_NE(Host.OpenTab(), nullptr);
    EXPECT_EQ(Helpers().CurrentRequirement->Get_LockedByCurrentUser(), 0);
    EXPECT_EQ(NameOnServer(number), "Zone control");
}

TEST_F(TPanelConnection, AnotherProjectGivesTheLockBackUnsaved) {
    LogOn();
    Select(ZoneControl);
    const std::int32_t number = SelectedNumber();
    User->Type("edtRequirementName", "Zones");
    User->Choose("cbxProjects", "Hearth Service Portal");
    EXPECT_EQ(NameOnServer(number), "Zone control");
    EXPECT_NO_THROW(ReadAs("ben", number)->lock());
}
