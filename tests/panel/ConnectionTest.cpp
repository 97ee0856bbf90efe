// From the menu command to a listed baseline, refresh, logoff and the two places.
#include "backend/service/BulkWriter.h"
#include "panel/PanelTest.h"
#include "server/UQuoraneLogonForm.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class TPanelConnection : public TPanelTest {
protected:
    void AddUserWithoutProjects() {
        Backend::BulkWriter writer(Server->DatabasePath(), Backend::BulkWriter::Hashing::QuickForTests);
        writer.AddUser({.UserName = "zoe", .Name = "", .Password = SamplePassword("zoe")});
        writer.Commit();
    }
    // The real server under another version, from the next logon on.
    void ShowVersion(const std::u16string& version);
};

class TOtherVersion : public Quorane_TLB::IQuoraneServer {
public:
    TOtherVersion(Quorane_TLB::Handle<Quorane_TLB::IQuoraneServer> server, std::u16string version)
        : FServer(std::move(server))
        , FVersion(std::move(version)) {}
    std::u16string Get_ServerVersion() override { return FVersion; }
    Quorane_TLB::Handle<Quorane_TLB::ISession> login(const std::u16string& user,
                                                     const std::u16string& password) override {
        return FServer->login(user, password);
    }

private:
    const Quorane_TLB::Handle<Quorane_TLB::IQuoraneServer> FServer;
    const std::u16string FVersion;
};

class TOtherVersionFactory : public Quorane_TLB::IQuoraneServerFactory {
public:
    TOtherVersionFactory(Quorane_TLB::Handle<Quorane_TLB::IQuoraneServerFactory> factory,
                         std::u16string version)
        : FFactory(std::move(factory))
        , FVersion(std::move(version)) {}
    Quorane_TLB::Handle<Quorane_TLB::IQuoraneServer> Create1(const std::u16string& host) override {
        return std::make_shared<TOtherVersion>(FFactory->Create1(host), FVersion);
    }

private:
    const Quorane_TLB::Handle<Quorane_TLB::IQuoraneServerFactory> FFactory;
    const std::u16string FVersion;
};

void TPanelConnection::ShowVersion(const std::u16string& version) {
    using namespace Quorane_TLB;
    SetClassObjectProvider(
        [classes = Server->Classes(), version](const Guid& id, const std::string& machine) {
            Handle<IDispatch> object = classes(id, machine);
            const auto factory = Query<IQuoraneServerFactory>(object);
            return factory ? std::make_shared<TOtherVersionFactory>(factory, version) : object;
        });
}

} // namespace

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

struct TServerVersion {
    const char16_t* Text;
    bool ToolShows;
};

TEST_F(TPanelConnection, TheServersFirstNumberDecidesWhetherTheEstimatingToolShows) {
    for (const auto& [text, toolShows] : {TServerVersion{u"6.5", false}, TServerVersion{u"7.0.1", true}}) {
        ShowVersion(text);
        ASSERT_TRUE(LogOn());
        EXPECT_EQ(Panel().actTallyworks->Visible(), toolShows);
        User->Click("btnLogOff");
    }
}

TEST_F(TPanelConnection, AVersionWithoutANumberReachesWhoeverShowsThePanel) {
    ShowVersion(u"x.1");
    try {
        LogOn();
        FAIL();
    } catch (const std::exception& failure) {
        EXPECT_STREQ(failure.what(), "The server's version is no number: x.1");
    }
    EXPECT_FALSE(Panel().actTallyworks->Visible());
}

TEST_F(TPanelConnection, ACancelledLogonLeavesSettingsAndPanelAsTheyWere) {
    const auto before = System.UserSettings;
    User->WhenModal([](TForm& form) {
        auto& dialog = dynamic_cast<TfrmQuoraneLogon&>(form);
        dialog.edtHost->SetText(std::string("elsewhere"));
        dialog.edtUser->SetText(std::string("somebody"));
        dialog.btnCancel->Click();
    });
    TfrmQuoraneMain::ShowForm();
    TActor::Settle();
    EXPECT_EQ(System.UserSettings, before);
    EXPECT_EQ(Panel().nbkParent->PageIndex(), LoginPage);
    EXPECT_FALSE(Panel().FormVisible());
    EXPECT_FALSE(Called("IQuoraneServer.login"));
}

TEST_F(TPanelConnection, AUserWithoutProjectsFindsEmptyListsAndCommandsThatDoNoHarm) {
    AddUserWithoutProjects();
    ASSERT_TRUE(LogOn("zoe"));
    EXPECT_THAT(Entries(*Panel().cbxProjects), IsEmpty());
    EXPECT_THAT(Entries(*Panel().cbxProjectBaselines), IsEmpty());
    EXPECT_EQ(Tree().GetFirstNode()->Text(), "<Project Name>");
    Tree().GetFirstNode()->SetSelected();
    for (const char* button : {"btnRefresh", "btnSerialNumbers", "btnHierarchicalNumbers"})
        User->Click(button);
    for (const TAction* action : {Panel().actCreateRequirement, Panel().actSave, Panel().actDeleteReq})
        EXPECT_FALSE(action->Enabled()) << action->Name();
    Dialogs.Answer(TMessageResult::Ok);
    Helpers().SearchNodeById(1);
    EXPECT_EQ(Dialogs.TakeMessages().size(), 1U);
    User->Click("btnLogOff");
    EXPECT_FALSE(Panel().FormVisible());
}

TEST_F(TPanelConnection, HidingThePanelWithoutAServerIsToldOnceAndStillStoresTheWindow) {
    LogOn();
    Select(ZoneControl);
    User->Type("edtRequirementName", "Zones");
    Server->Stop();
    const int stored = Host.Store.Updates;
    Panel().HideForm();
    TActor::Settle();
    EXPECT_THAT(OnlyError(), HasSubstr("Quorane.SERVER_ERROR"));
    EXPECT_FALSE(Panel().FormVisible());
    EXPECT_GT(Host.Store.Updates, stored);
}
