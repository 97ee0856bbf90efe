#include "ide/QuoraneAddinWizard.h"
#include "panel/QuoraneDockForm.h"
#include "platform/widgets/Menus.h"
#include "platform/widgets/look/ImageList.h"
#include "server/UQuoraneSession.h"
#include "server/UResourceStrings.h"
#include "server/tlb/ClassObjects.h"
#include "support/FakeHost.h"
#include "support/FakeSystemServices.h"
#include "support/ScriptedDialogs.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A host that is still coming up, and that writes down what the add-in does with it.
class TComingUpHost : public TFakeHost,
                      public IHostWizardServices,
                      public IHostNServices,
                      public IHostStartup,
                      public IHostMainForm,
                      public IHostMenu {
public:
    std::vector<std::string> Steps;
    std::shared_ptr<IHostWizard> Wizard;
    std::function<void()> MainFormCreated;
    std::unique_ptr<TMenuItem> Item;
    bool RefusesWizard = false;
    bool HasViewsMenu = true;

    // The main form exists from now on.
    void ComeUp() { Application().Dispatch(nullptr, std::exchange(MainFormCreated, {})); }

    IHostService* Find(std::type_index service) override {
        if (service == typeid(IHostWizardServices)) return static_cast<IHostWizardServices*>(this);
        if (service == typeid(IHostNServices)) return static_cast<IHostNServices*>(this);
        if (service == typeid(IHostStartup)) return static_cast<IHostStartup*>(this);
        if (service == typeid(IHostMainForm)) return static_cast<IHostMainForm*>(this);
        return TFakeHost::Find(service);
    }

    std::int32_t AddWizard(std::shared_ptr<IHostWizard> wizard) override {
        if (RefusesWizard) throw Exception("no more wizards");
        Steps.push_back("add wizard");
        Wizard = std::move(wizard);
        return 7;
    }
    void RemoveWizard(std::int32_t index) override {
        Steps.push_back("remove wizard " + std::to_string(index));
    }
    int AddImages(const TImageList& images) override {
        Steps.push_back("add images");
        EXPECT_GT(images.Count(), 0);
        return 42;
    }
    int AddMainFormCreated(std::function<void()> handler) override {
        Steps.push_back("wait");
        MainFormCreated = std::move(handler);
        return 3;
    }
    void RemoveMainFormCreated(int token) override {
        Steps.push_back("stop waiting " + std::to_string(token));
    }
    IHostMenu* FindMenu(const std::string& name) override {
        return HasViewsMenu && name == "ViewsMenu" ? this : nullptr;
    }
    TMenuItem& Insert(int index, std::unique_ptr<TMenuItem> item) override {
        Steps.push_back("insert at " + std::to_string(index));
        Item = std::move(item);
        return *Item;
    }
    std::unique_ptr<IDockSite> AddDockableForm(TForm& form, IDockEvents& events) override {
        Steps.push_back("add form");
        return TFakeHost::AddDockableForm(form, events);
    }
    void UnregisterFieldAddress(const void* address) override {
        Steps.push_back("remove form");
        TFakeHost::UnregisterFieldAddress(address);
    }
};

class AddIn : public testing::Test {
protected:
    AddIn() { RegisterAddIn(); }
    ~AddIn() override {
        UnregisterAddIn();
        Quorane_TLB::SetClassObjectProvider({});
    }

    // The SDK is there, but everything made by it fails with that exception.
    template<class T> static void BreakSdk(const T& failure) {
        Quorane_TLB::SetClassObjectProvider(
            [failure](const auto&, const auto&) -> Quorane_TLB::Handle<Quorane_TLB::IDispatch> {
                throw failure;
            });
    }

    TScriptedDialogs FDialogs;
    TFakeSystemServices FSystem;
    TComingUpHost FHost;
};

TEST_F(AddIn, WaitsForTheMainForm) {
    EXPECT_THAT(FHost.Steps, ElementsAre("wait"));
    EXPECT_EQ(QuoranePanel(), nullptr);
}

TEST_F(AddIn, RegistersInOrderWhenTheMainFormExists) {
    FHost.ComeUp();
    EXPECT_THAT(FHost.Steps, ElementsAre("wait", "add wizard", "add form", "add images", "insert at 10"));
    ASSERT_NE(QuoranePanel(), nullptr);
    EXPECT_FALSE(QuoranePanel()->FormVisible());
    EXPECT_EQ(FHost.Item->Name(), "ViewQuoraneRequirementsItem");
    EXPECT_EQ(FHost.Item->Caption(), "Quorane Requirements");
    EXPECT_EQ(FHost.Item->ImageIndex(), 42);
}

TEST_F(AddIn, WizardTellsItsIdentityAndIsEnabledOnly) {
    FHost.ComeUp();
    EXPECT_EQ(FHost.Wizard->GetIDString(), "Vantrel.QuoraneOstrel2005Plugin");
    EXPECT_EQ(FHost.Wizard->GetName(), "QuoraneOstrel2005Plugin");
    EXPECT_EQ(FHost.Wizard->GetState(), THostWizardState(1));
}

TEST_F(AddIn, UnloadingTakesTheWizardFirstAndThePanelLast) {
    FHost.ComeUp();
    FHost.Steps.clear();
    UnregisterAddIn();
    EXPECT_THAT(FHost.Steps, ElementsAre("remove wizard 7", "stop waiting 3", "remove form"));
    EXPECT_EQ(QuoranePanel(), nullptr);
    EXPECT_EQ(GUIHelpers, nullptr);
}

TEST_F(AddIn, UnloadingBeforeTheMainFormRemovesNoWizard) {
    FHost.Steps.clear();
    UnregisterAddIn();
    EXPECT_THAT(FHost.Steps, ElementsAre("stop waiting 3"));
}

TEST_F(AddIn, FailedStepEndsTheStartAndReachesTheUser) {
    FHost.RefusesWizard = true;
    FHost.ComeUp();
    EXPECT_THAT(FHost.Steps, ElementsAre("wait"));
    EXPECT_EQ(QuoranePanel(), nullptr);
    EXPECT_THAT(FDialogs.TakeErrors(), ElementsAre("no more wizards"));
    UnregisterAddIn();
    EXPECT_THAT(FHost.Steps, ElementsAre("wait", "stop waiting 3"));
}

TEST_F(AddIn, HostWithoutAViewsMenuIsTold) {
    FHost.HasViewsMenu = false;
    FHost.ComeUp();
    EXPECT_EQ(FHost.Item, nullptr);
    EXPECT_EQ(FDialogs.TakeErrors().size(), 1u);
}

TEST_F(AddIn, EachClickWithoutTheSdkShowsTheMessageAndMakesNoSession) {
    FHost.ComeUp();
    for (int click = 0; click < 2; ++click) {
        FDialogs.Answer(TMessageResult::Ok);
        FHost.Item->Click();
        const auto messages = FDialogs.TakeMessages();
        ASSERT_EQ(messages.size(), 1u);
        EXPECT_EQ(messages[0].Text, SSDKNotInstalled);
        EXPECT_EQ(messages[0].Caption, "Quorane");
        EXPECT_EQ(messages[0].Icon, TMessageIcon::Error);
    }
    EXPECT_EQ(QuoraneSession, nullptr);
    EXPECT_FALSE(QuoranePanel()->FormVisible());
    EXPECT_THAT(FDialogs.Errors(), IsEmpty());
}

TEST_F(AddIn, FailuresOfOtherKindsAreNotTakenForAMissingSdk) {
    FHost.ComeUp();
    BreakSdk(Exception("something else"));
    FHost.Item->Click();
    EXPECT_THAT(FDialogs.Messages(), IsEmpty());
    EXPECT_THAT(FDialogs.TakeErrors(), ElementsAre("something else"));
}

TEST_F(AddIn, SdkThatFailsIsAMissingSdk) {
    FHost.ComeUp();
    BreakSdk(EOleSysError("class not registered", -1));
    FDialogs.Answer(TMessageResult::Ok);
    FHost.Item->Click();
    EXPECT_EQ(FDialogs.TakeMessages().size(), 1u);
    EXPECT_EQ(QuoraneSession, nullptr);
}

} // namespace
