#include "platform/widgets/Application.h"
#include "server/ServerFixture.h"
#include "server/UQuoraneLogonForm.h"

using namespace Quorane_TLB;
using testing::_;
using testing::Return;
using testing::Throw;

namespace {

const std::string Key = "Software\\Vantrel\\Quorane\\connection";

// Writes down what the standard error box shows; every other dialog is unexpected.
class TErrorBox : public IDialogs {
public:
    TErrorBox() { Application().SetDialogs(this); }
    ~TErrorBox() override { Application().SetDialogs(nullptr); }

    TMessageResult ShowMessage(const TMessage& message) override {
        ADD_FAILURE() << message.Text;
        return TMessageResult::Cancel;
    }
    void ShowError(const std::string& text) override { Texts.push_back(text); }
    std::optional<std::string> OpenFile(const TFileQuestion&) override { return {}; }
    std::optional<std::string> OpenPicture(const TFileQuestion&) override { return {}; }
    std::optional<std::string> SaveFile(const TFileQuestion&) override { return {}; }
    std::optional<TColor> PickColor(TColor) override { return {}; }

    std::vector<std::string> Texts;
};

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
        form.edtHost.SetText("dev7");
        form.edtUser.SetText("ben");
        form.edtPassword.SetText(password);
        form.btnOk.Click();
    }

    TErrorBox Errors;
};

TEST_F(LogonFormTest, OffersTheLastServerAndUserButNoPassword) {
    System.UserSettings[Key + "|server"] = "dev7";
    System.UserSettings[Key + "|username"] = "ben";
    const TModalResult result = ShowAnd([](TfrmQuoraneLogon& form) {
        EXPECT_EQ(form.edtHost.Text(), "dev7");
        EXPECT_EQ(form.edtUser.Text(), "ben");
        EXPECT_EQ(form.edtPassword.Text(), "");
        EXPECT_TRUE(form.edtHost.Focused());
        form.btnCancel.Click();
    });
    EXPECT_EQ(result, TModalResult::Cancel);
}

TEST_F(LogonFormTest, LogsOnAndRemembersUserThenServer) {
    EXPECT_CALL(*Server, login(std::u16string(u"ben"), std::u16string(u"secret"))).WillOnce(Return(Session));
    const TModalResult result = ShowAnd([](TfrmQuoraneLogon& form) { Enter(form, "secret"); });
    EXPECT_EQ(result, TModalResult::Ok);
    EXPECT_TRUE(QuoraneSession->IsLoggedIn());
    EXPECT_EQ(System.Writes, (std::vector<std::string>{"username=ben", "server=dev7"}));
}

TEST_F(LogonFormTest, StaysOpenAfterARefusalAndStoresNothing) {
    EXPECT_CALL(*Server, login(_, _))
        .WillOnce(Throw(ServerFailure("InvalidLoginException")))
        .WillOnce(Return(Session));
    const TModalResult result = ShowAnd([&](TfrmQuoraneLogon& form) {
        Enter(form, "wrong");
        EXPECT_EQ(Errors.Texts, std::vector<std::string>{"Invalid Login"});
        EXPECT_EQ(form.ModalResult(), TModalResult::None);
        EXPECT_EQ(form.edtPassword.Text(), "wrong");
        EXPECT_TRUE(System.Writes.empty());
        Enter(form, "secret");
    });
    EXPECT_EQ(result, TModalResult::Ok);
    for (const std::string& written : System.Writes)
        EXPECT_EQ(written.find("secret"), std::string::npos);
}

TEST_F(LogonFormTest, SendsEmptyEntriesToTheServer) {
    EXPECT_CALL(*ServerFactory, Create1(std::u16string())).WillOnce(Return(Server));
    EXPECT_CALL(*Server, login(std::u16string(), std::u16string())).WillOnce(Return(Session));
    ShowAnd([](TfrmQuoraneLogon& form) { form.btnOk.Click(); });
}

TEST_F(LogonFormTest, ReplacesTheSessionOfAnEarlierLogon) {
    ShowAnd([](TfrmQuoraneLogon& form) { Enter(form, "secret"); });
    EXPECT_CALL(*Session, logout()).Times(1);
    ShowAnd([](TfrmQuoraneLogon& form) { form.btnCancel.Click(); });
    EXPECT_FALSE(QuoraneSession->IsLoggedIn());
    EXPECT_EQ(System.Writes.size(), 2U);
}

} // namespace
