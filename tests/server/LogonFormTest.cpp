#include "platform/widgets/Edits.h"
#include "server/ServerFixture.h"
#include "server/UQuoraneLogonForm.h"
#include "support/ScriptedDialogs.h"

using namespace Quorane_TLB;
using testing::_;
using testing::Return;
using testing::Throw;

namespace {

const std::pair<std::string, std::string> UserSetting{"Software\\Vantrel\\Quorane\\connection", "username"};
const std::pair<std::string, std::string> ServerSetting{"Software\\Vantrel\\Quorane\\connection", "server"};

class LogonFormTest : public TServerTest {
protected:
    ~LogonFormTest() override {
        Application().SetModalHook({});
        FinalizeQuoraneSession();
    }

    // Shows the dialog and lets the user do something in it.
    TModalResult ShowAnd(std::function<void(TfrmQuoraneLogon&)> user) {
        TfrmQuoraneLogon form(nullptr);
        Application().SetModalHook([&](TForm&) { user(form); });
        return form.ShowModal();
    }

    static void Enter(TfrmQuoraneLogon& form, const std::string& password) {
        form.edtHost->SetText("dev7");
        form.edtUser->SetText("ben");
        form.edtPassword->SetText(password);
        form.btnOk->Click();
    }

    TScriptedDialogs Dialogs;
};

TEST_F(LogonFormTest, OffersTheLastServerAndUserButNoPassword) {
    System.UserSettings[ServerSetting] = "dev7";
    System.UserSettings[UserSetting] = "ben";
    const TModalResult result = ShowAnd([](TfrmQuoraneLogon& form) {
        EXPECT_EQ(form.edtHost->Text(), "dev7");
        EXPECT_EQ(form.edtUser->Text(), "ben");
        EXPECT_EQ(form.edtPassword->Text(), "");
        EXPECT_EQ(form.focusWidget(), form.edtHost);
        form.btnCancel->Click();
    });
    EXPECT_EQ(result, TModalResult::Cancel);
}

TEST_F(LogonFormTest, LogsOnAndRemembersServerAndUserButNoPassword) {
    EXPECT_CALL(*Server, login(std::u16string(u"ben"), std::u16string(u"secret"))).WillOnce(Return(Session));
    const TModalResult result = ShowAnd([](TfrmQuoraneLogon& form) { Enter(form, "secret"); });
    EXPECT_EQ(result, TModalResult::Ok);
    EXPECT_TRUE(QuoraneSession->IsLoggedIn());
    EXPECT_EQ(System.UserSettings, (std::map<std::pair<std::string, std::string>, std::string>{
                                       {UserSetting, "ben"}, {ServerSetting, "dev7"}}));
}

TEST_F(LogonFormTest, StaysOpenAfterARefusalAndStoresNothing) {
    EXPECT_CALL(*Server, login(_, _))
        .WillOnce(Throw(ServerFailure("InvalidLoginException")))
        .WillOnce(Return(Session));
    const TModalResult result = ShowAnd([&](TfrmQuoraneLogon& form) {
        Enter(form, "wrong");
        EXPECT_EQ(Dialogs.TakeErrors(), std::vector<std::string>{"Invalid Login"});
        EXPECT_EQ(form.ModalResult(), TModalResult::None);
        EXPECT_EQ(form.edtPassword->Text(), "wrong");
        EXPECT_TRUE(System.UserSettings.empty());
        Enter(form, "secret");
    });
    EXPECT_EQ(result, TModalResult::Ok);
}

TEST_F(LogonFormTest, SendsEmptyEntriesToTheServer) {
    EXPECT_CALL(*ServerFactory, Create1(std::u16string())).WillOnce(Return(Server));
    EXPECT_CALL(*Server, login(std::u16string(), std::u16string())).WillOnce(Return(Session));
    ShowAnd([](TfrmQuoraneLogon& form) { form.btnOk->Click(); });
}

TEST_F(LogonFormTest, ReplacesTheSessionOfAnEarlierLogon) {
    ShowAnd([](TfrmQuoraneLogon& form) { Enter(form, "secret"); });
    EXPECT_CALL(*Session, logout()).Times(1);
    ShowAnd([](TfrmQuoraneLogon& form) { form.btnCancel->Click(); });
    EXPECT_FALSE(QuoraneSession->IsLoggedIn());
}

} // namespace
