#include "sdk/SdkTest.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

namespace {

struct TRefusal {
    const char* Name;
    std::u16string Host, User, Password;
    std::string Text;
};

void PrintTo(const TRefusal& row, std::ostream* out) {
    *out << row.Name;
}

class TLogonRefusal : public TSdkTest, public ::testing::WithParamInterface<TRefusal> {};

const TRefusal Refusals[] = {
    {"wrong password", u"local", u"ann", u"wrong", "InvalidLoginException"},
    {"unknown user", u"local", u"nobody", u"secret", "InvalidLoginException"},
    {"empty user", u"local", u"", u"", "InvalidLoginException"},
    {"disabled account", u"local", u"dora", u"secret", "AccountDisabledException"},
    {"password to change", u"local", u"mia", u"secret", "UserMustChangePasswordException"},
    {"unknown host", u"elsewhere.example", u"ann", u"secret", "RemoteServerException"},
    {"host with a port", u"elsewhere.example:7070", u"ann", u"secret", "RemoteServerException"},
    {"no host", u"", u"ann", u"secret", "RemoteServerException"},
};

} // namespace

TEST_P(TLogonRefusal, CarriesTheClassOfTheServersException) {
    const TRefusal& row = GetParam();
    const auto server = Server(row.Host);
    const std::string text = FailureOf([&] { server->login(row.User, row.Password); });
    EXPECT_THAT(text, StartsWith(row.Text + ": "));
    EXPECT_THAT(text, Not(HasSubstr("Quorane.SERVER_ERROR"))) << "a refused logon is no lost connection";
}

INSTANTIATE_TEST_SUITE_P(Rows, TLogonRefusal, ::testing::ValuesIn(Refusals));

class TSession : public TSdkTest {};

TEST_F(TSession, BindingToAServerCostsNothingAndTheLogonOneRoundTrip) {
    const auto server = Server();
    EXPECT_EQ(FCalls.RoundTrips(), 0);
    server->login(u"ann", u"secret");
    EXPECT_FALSE(server->Get_ServerVersion().empty());
    EXPECT_EQ(FCalls.RoundTrips(), 1);
}

TEST_F(TSession, VersionIsUnknownBeforeTheLogon) {
    EXPECT_THAT(FailureOf([&] { Server()->Get_ServerVersion(); }), StartsWith("IllegalStateException: "));
}

TEST_F(TSession, FromLogonToTheShownTreeTakesAtMostSixRoundTrips) {
    const auto session = LogOn();
    session->Get_IntegrationManager()->Get_Integrations();
    const auto project = Project(session);
    const auto baselines = project->Get_Baselines();
    EXPECT_THAT(Names(baselines), ElementsAre(u"Current", u"Release 1", u"Dropped"));
    const auto root = Item<IBaseline>(baselines, 0)->Get_RequirementTree()->Get_Root();
    EXPECT_THAT(Names(root->Get_Children()), ElementsAre(u"Software", u"Usage"));
    EXPECT_LE(FCalls.RoundTrips(), 6);
}

TEST_F(TSession, ADeletedBaselineIsListedAndTypedAsDeleted) {
    const auto session = LogOn();
    const auto dropped = Baseline(session, u"Dropped");
    EXPECT_EQ(dropped->Get_Type(), dropped->Get_TYPE_DELETED());
    const auto release = Baseline(session, u"Release 1");
    EXPECT_NE(release->Get_Type(), release->Get_TYPE_DELETED());
    EXPECT_NE(release->Get_Type(), release->Get_TYPE_CURRENT());
    const auto current = Project(session)->Get_CurrentBaseline();
    EXPECT_EQ(current->Get_Type(), current->Get_TYPE_CURRENT());
}

TEST_F(TSession, UsersAndGroupsCostNoRoundTripOnceTheyAreKnown) {
    const auto session = LogOn();
    session->Get_Projects();
    FCalls.Clear();
    EXPECT_THAT(Names(session->Get_Users()), ::testing::IsSupersetOf({u"Ann Lee", u"Ben Ortega"}));
    const auto groups = session->Get_Groups();
    EXPECT_THAT(Names(groups), ElementsAre(u"Engineers"));
    EXPECT_THAT(Names(Item<IGroup>(groups, 0)->Get_Users()), ElementsAre(u"Ann Lee", u"Ben Ortega"));
    EXPECT_EQ(FCalls.RoundTrips(), 0);
}

TEST_F(TSession, AnIdentityLeadsToAnObjectOfItsKind) {
    const auto session = LogOn();
    const auto type = Cast<IRequirementType>(session->get(Node(session, FSample.Software)->Get_ID()));
    EXPECT_EQ(type->Get_Tag(), u"SRS");
    EXPECT_EQ(type->Get_Description(), u"What it does");
    const auto requirement = session->get(Node(session, FSample.Warm)->Get_ID());
    EXPECT_FALSE(Query<IRequirementType>(requirement));
    EXPECT_EQ(Cast<IRequirement>(requirement)->Get_IDNumber(), FSample.Warm);
    const auto user = Item<IUser>(session->Get_Users(), 0);
    EXPECT_EQ(session->get(user->Get_UserID())->Get_Name(), user->Get_Name());
}

TEST_F(TSession, ANumberThatNobodyHasIsRefused) {
    const auto session = LogOn();
    EXPECT_THAT(FailureOf([&] { session->getLatestRequirement(999'999); }), HasSubstr("Exception: "));
    const auto id = CoRequirementTypeIDFactory::Create()->Create1(999'999);
    EXPECT_THAT(FailureOf([&] { session->get(id); }), HasSubstr("Exception: "));
}

TEST_F(TSession, AfterTheLogoutReadingFailsAndWhatWasReadStays) {
    const auto session = LogOn();
    const auto project = Project(session);
    session->logout();
    EXPECT_EQ(project->Get_Name(), u"Heating");
    EXPECT_THAT(FailureOf([&] { session->Get_Projects(); }), HasSubstr("Quorane.SERVER_ERROR"));
    FCalls.Clear();
    session->logout();
    EXPECT_EQ(FCalls.RoundTrips(), 0) << "a second logout has nothing to say";
}

TEST_F(TSession, AClassThatTheSdkLacksIsNotRegistered) {
    EXPECT_THAT(FailureOf([] { CoUserFactory::Create(); }), HasSubstr("Class not registered"));
    EXPECT_THAT(FailureOf([] { CoCollectionFactory::CreateRemote("elsewhere"); }), HasSubstr("elsewhere"));
}

TEST_F(TSession, AnIntegrationIsMadeOnceAndFoundAgain) {
    const auto session = LogOn();
    const auto pixels = CoCollectionFactory::Create()->Create1();
    for (int i = 0; i < 768; ++i)
        pixels->Add(Variant::Byte(static_cast<std::uint8_t>(i)));
    const auto integration = CoIntegrationFactory::Create()->Create1(u"Tool", session);
    integration->Set_Name2(u"Tool");
    integration->Set_Icon(pixels);
    integration->save();

    const auto integrations = LogOn(u"ben")->Get_IntegrationManager()->Get_Integrations();
    ASSERT_EQ(integrations->Get_Count(), 1);
    EXPECT_EQ(Item<IIntegration>(integrations, 0)->Get_Name2(), u"Tool");
}
