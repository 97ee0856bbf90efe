#include "ServiceFixture.h"

#include <gmock/gmock.h>

using namespace testing;

namespace {

class LogonTest : public ServiceFixture {
public:
    // The refusal; empty when it was done.
    std::string LogonOf(const std::string& user, const std::string& password) {
        return RefusalOf([&] { Client(Channel()).Login(user, password); });
    }

    std::string Change(const std::string& user, const std::string& before, const std::string& after) {
        wire::ChangePasswordRequest request;
        request.set_user(user);
        request.set_old_password(before);
        request.set_new_password(after);
        return RefusalOf([&] { Client(Channel()).Call(&Stub::ChangePassword, request); });
    }
};

TEST_F(LogonTest, TellsTheReasonOnlyToWhoKnowsThePassword) {
    const std::string wrong = "InvalidLoginException: The user name or the password is wrong.";
    EXPECT_EQ(LogonOf("ann", "Password1"), "");
    EXPECT_EQ(LogonOf("ann", "password1"), wrong);
    EXPECT_EQ(LogonOf("nobody", "Password1"), wrong);
    EXPECT_EQ(LogonOf("", ""), wrong);
    EXPECT_EQ(LogonOf("dora", "Wrong"), wrong);
    EXPECT_EQ(LogonOf("dora", "Password1"), "AccountDisabledException: The account dora is disabled.");
    EXPECT_EQ(LogonOf("mia", "Password1"),
              "UserMustChangePasswordException: The user mia must change the password.");
}

TEST_F(LogonTest, AChangedPasswordOpensTheAccountAndEndsOldSessions) {
    EXPECT_THAT(Change("mia", "Wrong", "Password2"), StartsWith("InvalidLoginException"));
    EXPECT_THAT(Change("mia", "Password1", "short"), StartsWith("InvalidValueException"));
    EXPECT_THAT(Change("mia", "Password1", "Password1"), StartsWith("InvalidValueException"));
    EXPECT_EQ(Change("mia", "Password1", "Password2"), "");
    EXPECT_EQ(LogonOf("mia", "Password2"), "");
    Client client = LoggedOn("ann");
    EXPECT_EQ(Change("ann", "Password1", "Password2"), "");
    EXPECT_THROW(client.Read(Id("One")), Refused);
}

TEST_F(LogonTest, FailedAttemptsSlowDownTheirOwnNameAlone) {
    for (const char* user : {"ann", "nobody"}) {
        for (int i = 0; i < 3; ++i)
            EXPECT_THAT(LogonOf(user, "Wrong"), HasSubstr("is wrong")) << user;
        EXPECT_THAT(LogonOf(user, "Password1"), HasSubstr("try again in 1 seconds")) << user;
    }
    EXPECT_EQ(LogonOf("ben", "Password1"), "");
    Advance(*this, 1);
    EXPECT_THAT(LogonOf("ann", "Wrong"), HasSubstr("is wrong"));
    EXPECT_THAT(LogonOf("ann", "Password1"), HasSubstr("try again in 2 seconds"));
    Advance(*this, 2);
    EXPECT_EQ(LogonOf("ann", "Password1"), "");
    EXPECT_THAT(LogonOf("ann", "Wrong"), HasSubstr("is wrong"));
    EXPECT_EQ(LogonOf("ann", "Password1"), "");
}

TEST_F(LogonTest, TheWaitNeverGrowsBeyondAMinute) {
    for (int i = 0; i < 20; ++i) {
        LogonOf("ann", "Wrong");
        Advance(*this, 60);
    }
    EXPECT_EQ(LogonOf("ann", "Password1"), "");
}

TEST_F(LogonTest, ASessionEndsByLogoutAndByTime) {
    Client out = LoggedOn("ann");
    out.Call(&Stub::Logout, wire::LogoutRequest());
    EXPECT_THROW(out.Read(Id("One")), Refused);
    Client used = LoggedOn("ann"), idle = LoggedOn("ben");
    for (int hour = 0; hour < 13; ++hour) {
        Advance(*this, 3600);
        EXPECT_NO_THROW(used.Read(Id("One")));
    }
    EXPECT_THROW(idle.Read(Id("One")), Refused);
}

TEST_F(LogonTest, TokensDifferAndAreNotInTheFile) {
    Client one = LoggedOn("ann"), two = LoggedOn("ann");
    EXPECT_NE(one.Token(), two.Token());
    FServer->Stop();
    const std::string file = ReadFile(FFolder.File("quorane.db"));
    EXPECT_THAT(file, Not(HasSubstr(one.Token())));
    EXPECT_THAT(file, Not(HasSubstr("Password1")));
}

// ---- rights

struct RightCase {
    const char* Name;
    std::function<void(ServiceFixture&, Client&)> Call;
    bool ReaderMay;
};

void PrintTo(const RightCase& row, std::ostream* out) {
    *out << row.Name;
}

class Rights : public ServiceFixture, public WithParamInterface<RightCase> {};

TEST_P(Rights, AreCheckedOnEveryCall) {
    const auto reasonFor = [&](const char* user) {
        Client client = LoggedOn(user);
        return RefusalOf([&] { GetParam().Call(*this, client); });
    };
    EXPECT_THAT(reasonFor("zoe"), AnyOf(StartsWith("ObjectNotFoundException"), StartsWith("AccessDenied")));
    if (GetParam().ReaderMay)
        EXPECT_EQ(reasonFor("ron"), "");
    else
        EXPECT_THAT(reasonFor("ron"), StartsWith("AccessDeniedException"));
    EXPECT_EQ(reasonFor("ann"), "");
}

INSTANTIATE_TEST_SUITE_P(
    Calls, Rights,
    Values(RightCase{"Read", [](auto& f, auto& c) { c.Read(f.Id("One")); }, true},
           RightCase{"ReadFrozen", [](auto& f, auto& c) { c.Read(f.Id("One"), f.FFrozen); }, true},
           RightCase{"Branch", [](auto& f, auto& c) { c.Children(f.FCurrent, f.FSrs); }, true},
           RightCase{"Type",
                     [](auto& f, auto& c) {
                         wire::GetRequirementTypeRequest request;
                         request.set_id(f.FSrs);
                         c.Call(&Stub::GetRequirementType, request);
                     },
                     true},
           RightCase{"History", [](auto& f, auto& c) { c.History(f.Id("One")); }, true},
           RightCase{"Traces", [](auto& f, auto& c) { c.Traces(f.Id("One")); }, true},
           RightCase{"Lock", [](auto& f, auto& c) { c.Lock(f.Id("One")); }, false},
           RightCase{"Create", [](auto& f, auto& c) { c.Create(f.FProject, f.FSrs, 0, "New", 0); }, false},
           RightCase{"Remove", [](auto& f, auto& c) { c.Remove(f.Id("Two")); }, false},
           RightCase{"SaveIntegration",
                     [](auto&, auto& c) {
                         wire::SaveIntegrationRequest request;
                         request.mutable_integration()->set_name("New tool");
                         c.Call(&Stub::SaveIntegration, request);
                     },
                     false},
           RightCase{"Post",
                     [](auto& f, auto& c) {
                         wire::PostMessageRequest request;
                         request.set_requirement_id(f.Id("One"));
                         request.set_body("x");
                         c.Call(&Stub::PostMessage, request);
                     },
                     false}),
    [](const auto& row) { return std::string(row.param.Name); });

} // namespace
