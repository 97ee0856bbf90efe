#include "server/ServerFixture.h"

using namespace Quorane_TLB;
using testing::_;
using testing::InSequence;
using testing::Return;
using testing::Throw;

namespace {

class LoginTest : public TServerTest {
protected:
    // The text that reaches the user; empty when the logon succeeds.
    std::string FailureOfLogin() {
        try {
            Object.Login("dev7", "ben", "secret");
            return {};
        } catch (const std::exception& failure) {
            return failure.what();
        }
    }

    TQuoraneSession Object;
};

TEST_F(LoginTest, BindsLogsOnAndReadsTheVersionInThisOrder) {
    const InSequence sequence;
    EXPECT_CALL(*ServerFactory, Create1(std::u16string(u"dev7"))).WillOnce(Return(Server));
    EXPECT_CALL(*Server, login(std::u16string(u"ben"), std::u16string(u"secr\u20ACt")))
        .WillOnce(Return(Session));
    EXPECT_CALL(*Server, Get_ServerVersion()).WillOnce(Return(u"7.1"));
    Object.Login("dev7", "ben", "secr\xE2\x82\xACt");
    EXPECT_TRUE(Object.IsLoggedIn());
    EXPECT_EQ(Object.ServerVersion(), "7.1");
    EXPECT_EQ(Object.GetQuoraneSession(), Session);
    EXPECT_EQ(Object.GetQuoraneServer(), Server);
}

TEST_F(LoginTest, TranslatesWhatTheServerRefusesWith) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"UserMustChangePasswordException: too old",
         "User must change password, please use the normal Quorane client to do it"},
        {"RemoteServerException: no route", "Could not connect to the Quorane Server: host not found."},
        {"com.quorane.InvalidLoginException", "Invalid Login"},
        {"AccountDisabledException: ben", "Account disabled"},
        {"InvalidLoginException after RemoteServerException",
         "Could not connect to the Quorane Server: host not found."},
        {"RemoteServerException, UserMustChangePasswordException",
         "User must change password, please use the normal Quorane client to do it"},
        {"invalidloginexception", "invalidloginexception"},
    };
    for (const auto& [message, text] : rows) {
        EXPECT_CALL(*Server, login(_, _)).WillOnce(Throw(ServerFailure(message)));
        EXPECT_EQ(FailureOfLogin(), text);
        EXPECT_FALSE(Object.IsLoggedIn());
    }
}

TEST_F(LoginTest, TranslatesAFailureToReadTheVersionToo) {
    EXPECT_CALL(*Server, Get_ServerVersion())
        .WillOnce(Throw(ServerFailure("InvalidLoginException")))
        .WillOnce(Return(u"7.1"));
    EXPECT_EQ(FailureOfLogin(), "Invalid Login");
    EXPECT_FALSE(Object.IsLoggedIn());
    const auto second = MakeMock<TMockSession>();
    EXPECT_CALL(*Server, login(_, _)).WillOnce(Return(second));
    EXPECT_EQ(FailureOfLogin(), "");
    EXPECT_TRUE(Object.IsLoggedIn());
    EXPECT_EQ(Object.GetQuoraneSession(), second);
}

TEST_F(LoginTest, TakesNothingButASessionForASession) {
    struct TOddServer : testing::NiceMock<TMockQuoraneServer> {
        Variant Invoke(std::string_view, InvokeKind, std::span<Variant>) override {
            return Variant(Handle<IDispatch>(MakeMock<TMockUser>()));
        }
    };
    EXPECT_CALL(*ServerFactory, Create1(_)).WillOnce(Return(std::make_shared<TOddServer>()));
    EXPECT_THROW(Object.Login("dev7", "ben", "secret"), EConvertError);
    EXPECT_FALSE(Object.IsLoggedIn());
}

TEST_F(LoginTest, LeavesAFailureToBindAsItCame) {
    EXPECT_CALL(*ServerFactory, Create1(_)).WillOnce(Throw(ServerFailure("RemoteServerException: down")));
    EXPECT_THROW(Object.Login("dev7", "ben", "secret"), EOleSysError);
    EXPECT_CALL(*ServerFactory, Create1(_)).WillOnce(Throw(ServerFailure("RemoteServerException: down")));
    EXPECT_EQ(FailureOfLogin(), "RemoteServerException: down");
}

TEST_F(LoginTest, RaisesAnUnknownRefusalUnchanged) {
    EXPECT_CALL(*Server, login(_, _)).WillOnce(Throw(EOleSysError("Odd.", -7)));
    try {
        Object.Login("dev7", "ben", "secret");
        FAIL() << "the refusal was lost";
    } catch (const EOleSysError& error) {
        EXPECT_EQ(error.ErrorCode(), -7);
    }
}

TEST_F(LoginTest, KeepsTheOldLogonDataAfterAFailure) {
    Object.Login("dev7", "ben", "secret");
    const auto other = MakeMock<TMockQuoraneServer>();
    EXPECT_CALL(*ServerFactory, Create1(std::u16string(u"dev8"))).WillOnce(Return(other));
    EXPECT_CALL(*other, login(_, _)).WillOnce(Throw(ServerFailure("InvalidLoginException")));
    EXPECT_THROW(Object.Login("dev8", "ann", "wrong"), Exception);
    EXPECT_TRUE(Object.IsLoggedIn());
    EXPECT_EQ(Object.GetQuoraneServer(), other);
    EXPECT_CALL(*ServerFactory, Create1(std::u16string(u"dev7"))).WillOnce(Return(Server));
    EXPECT_CALL(*Server, login(std::u16string(u"ben"), std::u16string(u"secret"))).WillOnce(Return(Session));
    Object.Relogin();
}

TEST_F(LoginTest, LogsOutLocallyEvenWhenTheServerIsGone) {
    Object.Login("dev7", "ben", "secret");
    EXPECT_CALL(*Session, logout()).WillOnce(Throw(std::runtime_error("gone")));
    Object.Logout();
    EXPECT_FALSE(Object.IsLoggedIn());
    EXPECT_FALSE(Object.GetQuoraneSession());
    EXPECT_EQ(Object.ServerVersion(), "");
    EXPECT_EQ(Object.GetQuoraneServer(), Server);
}

TEST_F(LoginTest, LogsOutOnceAndOnlyAfterALogon) {
    EXPECT_CALL(*Session, logout()).Times(0);
    Object.Logout();
    testing::Mock::VerifyAndClearExpectations(Session.get());
    Object.Login("dev7", "ben", "secret");
    EXPECT_CALL(*Session, logout()).Times(1);
    Object.Logout();
    Object.Logout();
}

TEST_F(LoginTest, RefreshesWithTheStoredDataInAFreshSession) {
    Object.Login("dev7", "ben", "secret");
    const auto fresh = MakeMock<TMockSession>();
    const InSequence sequence;
    EXPECT_CALL(*Session, logout());
    EXPECT_CALL(*ServerFactory, Create1(std::u16string(u"dev7"))).WillOnce(Return(Server));
    EXPECT_CALL(*Server, login(std::u16string(u"ben"), std::u16string(u"secret"))).WillOnce(Return(fresh));
    Object.RefreshSession();
    EXPECT_EQ(Object.GetQuoraneSession(), fresh);
}

TEST_F(LoginTest, StaysLoggedOutWhenARefreshIsRefused) {
    Object.Login("dev7", "ben", "secret");
    EXPECT_CALL(*Server, login(_, _)).WillOnce(Throw(ServerFailure("AccountDisabledException")));
    EXPECT_THROW(Object.RefreshSession(), Exception);
    EXPECT_FALSE(Object.IsLoggedIn());
    EXPECT_CALL(*Server, login(std::u16string(u"ben"), std::u16string(u"secret"))).WillOnce(Return(Session));
    Object.RefreshSession();
    EXPECT_TRUE(Object.IsLoggedIn());
}

TEST_F(LoginTest, LogsOnAgainWhenALoggedInObjectHasNoHandle) {
    EXPECT_CALL(*Server, login(_, _)).WillOnce(Return(Handle<ISession>())).WillOnce(Return(Session));
    Object.Login("dev7", "ben", "secret");
    EXPECT_EQ(Object.GetQuoraneSession(), Session);
}

TEST_F(LoginTest, LogsOutLocallyWhenALostHandleCannotBeReplaced) {
    EXPECT_CALL(*Server, login(_, _))
        .WillOnce(Return(Handle<ISession>()))
        .WillOnce(Throw(ServerFailure("RemoteServerException: gone")));
    Object.Login("dev7", "ben", "secret");
    Object.Logout();
    EXPECT_FALSE(Object.IsLoggedIn());
}

TEST_F(LoginTest, LogsOutAndDeletesItsFileWhenItGoes) {
    auto object = std::make_unique<TQuoraneSession>();
    const std::string file = object->DescriptionFileName();
    EXPECT_NE(file, Object.DescriptionFileName());
    EXPECT_TRUE(file.ends_with(".html"));
    WriteFile(file, "<html/>");
    WriteFile(Object.DescriptionFileName(), "<html/>");
    object->Login("dev7", "ben", "secret");
    EXPECT_CALL(*Session, logout()).WillOnce(Throw(ServerFailure("gone")));
    object.reset();
    EXPECT_FALSE(System.FileExists(file));
    EXPECT_TRUE(System.FileExists(Object.DescriptionFileName()));
}

} // namespace
