// A frame on a window, before a requirement of mocks and a gate that the test rules.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "frames/URequirementPanel.h"
#include "platform/widgets/Forms.h"
#include "server/ServerFixture.h"
#include "support/Actor.h"
#include "support/ScriptedDialogs.h"

// What happened, in order: "lock" and what the test's mocks add.
using TLog = std::vector<std::string>;

class TFakeGate : public TRequirementContext {
public:
    explicit TFakeGate(TLog& log)
        : FLog(log) {}

    // Not empty: the lock is refused with this text.
    std::string Refusal;
    // Not empty: showing the description fails with this text.
    std::string UpdateFailure;
    int DescriptionUpdates = 0;
    int StateImageUpdates = 0;

    void LockCurrentRequirement() override {
        FLog.push_back("lock");
        if (!Refusal.empty()) throw Exception(Refusal);
    }
    void UpdateDescription() override {
        ++DescriptionUpdates;
        if (!UpdateFailure.empty()) throw Exception(UpdateFailure);
    }
    void UpdateCurrentRequirementStateImage() override { ++StateImageUpdates; }

private:
    TLog& FLog;
};

class TFakePanel : public TRequirementPanel {
public:
    int ActiveTab = rtDetails;

    [[noreturn]] void HandleSDKException(const std::exception& failure) override {
        throw Exception(failure.what());
    }
    int ActiveRequirementTab() const override { return ActiveTab; }
};

inline constexpr std::int32_t CurrentBaselineType = 7;
inline constexpr std::int32_t FrozenBaselineType = 8;

class TFramesTest : public TServerTest {
protected:
    TFramesTest();
    ~TFramesTest() override;

    // Shows the frame and fills it as the panel does.
    template<class TFrameKind> void Fill(TFrameKind& frame) {
        Host.Show();
        Gate.CurrentRequirement = Requirement;
        Gate.ShowingRequirementInfo = true;
        frame.SetRequirement(Requirement);
        Gate.ShowingRequirementInfo = false;
        TActor::Settle();
    }
    void InFrozenBaseline();
    static Quorane_TLB::Handle<Quorane_TLB::IUser> User(const std::u16string& name);

    TLog Log;
    TFakeGate Gate{Log};
    TFakePanel Panel;
    TScriptedDialogs Dialogs;
    TForm Host{nullptr, "host"};
    TActor Actor{Host};
    std::shared_ptr<testing::NiceMock<Quorane_TLB::TMockRequirement>> Requirement =
        MakeMock<Quorane_TLB::TMockRequirement>();
    std::shared_ptr<testing::NiceMock<Quorane_TLB::TMockBaseline>> Baseline =
        MakeMock<Quorane_TLB::TMockBaseline>();
};
