#include "sdk/SdkTest.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace {

struct TStep {
    const char* Name;
    std::function<void(const Handle<ISession>&, const TSample&)> Run;
};

void PrintTo(const TStep& row, std::ostream* out) {
    *out << row.Name;
}

Handle<IRequirementTreeNode> RootOf(const Handle<ISession>& session) {
    const auto project = Item<IProject>(session->Get_Projects(), 0);
    return project->Get_CurrentBaseline()->Get_RequirementTree()->Get_Root();
}

// One row for each way in which a session asks the server.
const TStep Steps[] = {
    {"projects", [](const auto& session, const auto&) { session->Get_Projects(); }},
    {"users", [](const auto& session, const auto&) { session->Get_Users(); }},
    {"integrations",
     [](const auto& session, const auto&) { session->Get_IntegrationManager()->Get_Integrations(); }},
    {"types", [](const auto& session, const auto&) { RootOf(session)->Get_Children(); }},
    {"node", [](const auto& session, const auto& sample) { RootOf(session)->findByIDNumber(sample.Deep); }},
    {"branch", [](const auto& session,
                  const auto& sample) { RootOf(session)->findByIDNumber(sample.Start)->Get_Children(); }},
    {"requirement",
     [](const auto& session, const auto& sample) { session->getLatestRequirement(sample.Stop); }},
    {"lock",
     [](const auto& session, const auto& sample) { session->getLatestRequirement(sample.Stop)->lock(); }},
    {"save",
     [](const auto& session, const auto& sample) {
         const auto requirement = session->getLatestRequirement(sample.Stop);
         requirement->lock();
         requirement->Set_Name(u"Halt");
         requirement->save();
         requirement->unlock();
     }},
    {"history",
     [](const auto& session, const auto& sample) {
         session->getLatestRequirement(sample.Stop)->Get_History()->Get_Revisions();
     }},
};

class TLostConnection : public TSdkTest, public ::testing::WithParamInterface<TStep> {};

// Stops the server when a request is about to leave, once.
class TServerStopper : public Sdk::TCallObserver {
public:
    TServerStopper(Backend::EmbeddedServer& server, int request)
        : FServer(server)
        , FLeft(request) {
        Sdk::AddCallObserver(*this);
    }
    ~TServerStopper() override { Sdk::RemoveCallObserver(*this); }

    bool HasStopped() const { return FLeft < 0; }

    void RoundTrip(std::string_view) override {
        if (FLeft-- == 0) FServer.Stop();
    }

private:
    Backend::EmbeddedServer& FServer;
    int FLeft;
};

} // namespace

TEST_P(TLostConnection, IsToldAtEveryRequestAndTheSessionGoesOnWhenTheServerIsBack) {
    for (int request = 0; request < 10; ++request) {
        FServer->Start();
        const auto session = LogOn();
        bool hasStopped = false;
        std::string text;
        {
            TServerStopper stopper(*FServer, request);
            text = FailureOf([&] { GetParam().Run(session, FSample); });
            hasStopped = stopper.HasStopped();
        }
        if (!hasStopped) {
            EXPECT_EQ(text, "");
            return;
        }
        EXPECT_THAT(text, HasSubstr("RemoteServerException")) << "request " << request;
        EXPECT_THAT(text, HasSubstr("Quorane.SERVER_ERROR")) << "request " << request;
        FServer->Start();
        EXPECT_EQ(session->getLatestRequirement(FSample.Warm)->Get_Name(), u"Warm") << "request " << request;
        session->logout();
    }
    FAIL() << "the step never ended";
}

INSTANTIATE_TEST_SUITE_P(Rows, TLostConnection, ::testing::ValuesIn(Steps));

class TFailure : public TSdkTest {};

TEST_F(TFailure, AServerThatIsAwayBetweenTwoCallsCostsNeitherLockNorUnsavedValues) {
    const auto session = LogOn();
    const auto requirement = session->getLatestRequirement(FSample.Stop);
    requirement->lock();
    requirement->Set_Name(u"Halt");
    FServer->Stop();
    FServer->Start();
    EXPECT_EQ(requirement->Get_LockedByCurrentUser(), WordTrue);
    requirement->save();
    requirement->unlock();
    EXPECT_EQ(LogOn(u"ben")->getLatestRequirement(FSample.Stop)->Get_Name(), u"Halt");
}

TEST_F(TFailure, ASessionThatTheServerDoesNotKnowIsALostConnection) {
    const auto session = LogOn();
    LogOn()->logout();
    FServer->Stop();
    for (const char* name : {"server.db", "server.db-wal", "server.db-shm"})
        std::filesystem::remove(FFolder.Path() / name);
    Fill();
    FServer->Start();
    const std::string text = FailureOf([&] { session->Get_Projects(); });
    EXPECT_THAT(text, HasSubstr("RemoteServerException"));
    EXPECT_THAT(text, HasSubstr("Quorane.SERVER_ERROR"));
}

TEST_F(TFailure, OperationsAreToldInTheirOrderAndUnderTheirNames) {
    const auto session = LogOn();
    const auto requirement = session->getLatestRequirement(FSample.Stop);
    requirement->lock();
    FCalls.Clear();
    requirement->Set_Name(u"Halt");
    requirement->Get_Description()->Set_Text(u"<p>Halts</p>");
    CallByName(requirement, "save", {Variant(u"")});
    requirement->unlock();
    EXPECT_THAT(FCalls.Operations(), ElementsAre("IQuoraneObject.Set_Name", "IRequirement.Get_Description",
                                                 "IRequirementDescription.Set_Text", "IRequirement.save",
                                                 "ILockableQuoraneObject.unlock"));
    EXPECT_THAT(FCalls.Requests(), ElementsAre("SaveRequirement", "Unlock"));
}

TEST_F(TFailure, AnOperationFailsOnDemandBeforeItDoesAnything) {
    const auto session = LogOn();
    const auto requirement = session->getLatestRequirement(FSample.Stop);
    FCalls.Clear();
    FCalls.FailOperation("ILockableQuoraneObject.lock", "ObjectLockedException: by somebody");
    EXPECT_EQ(FailureOf([&] { requirement->lock(); }), "ObjectLockedException: by somebody");
    EXPECT_EQ(FCalls.RoundTrips(), 0);
    requirement->lock();
    EXPECT_EQ(requirement->Get_LockedByCurrentUser(), WordTrue);
}

TEST_F(TFailure, TheTraceNamesOperationsAndRoundTripsAndNoValues) {
    const auto session = LogOn();
    {
        Sdk::TCallTrace trace(FFolder.File("trace.txt"));
        session->getLatestRequirement(FSample.Stop)->Set_Name(u"Halt");
        FailureOf([&] { session->getLatestRequirement(999'999); });
    }
    const std::string trace = ReadFile(FFolder.Path() / "trace.txt");
    EXPECT_THAT(trace, HasSubstr("ISession.getLatestRequirement\n  -> GetRequirement\ndone "));
    EXPECT_THAT(trace, HasSubstr("failed ISession.getLatestRequirement"));
    EXPECT_THAT(trace, ::testing::Not(HasSubstr("Halt")));
}

namespace {

// A server whose clock stands until the test moves it.
class TLeases : public TSdkTest {
protected:
    ~TLeases() override { FServer->Stop(); } // it asks this clock

    void StartWithLease(int seconds) {
        FOptions.LeaseSeconds = seconds;
        FOptions.Clock = [this] { return Now(); };
        Restart();
    }

    void Advance(int milliseconds) {
        const std::lock_guard guard(FMutex);
        FNow += milliseconds * 1000;
    }

    // Waits until somebody, a renewal, has asked the clock again.
    bool IsAskedAgain() {
        std::unique_lock guard(FMutex);
        const int before = FQuestions;
        return FAsked.wait_for(guard, std::chrono::seconds(20), [&] { return FQuestions > before; });
    }

private:
    Backend::Instant Now() {
        const std::lock_guard guard(FMutex);
        ++FQuestions;
        FAsked.notify_all();
        return FNow;
    }

    std::mutex FMutex;
    std::condition_variable FAsked;
    int FQuestions = 0;
    Backend::Instant FNow = 1'800'000'000'000'000;
};

} // namespace

TEST_F(TLeases, AHeldLockIsRenewedWithoutTheCallersHelp) {
    StartWithLease(2);
    const auto session = LogOn();
    session->getLatestRequirement(FSample.Stop)->lock();
    const auto other = LogOn(u"ben")->getLatestRequirement(FSample.Stop);
    for (int step = 0; step < 6; ++step) {
        Advance(500);
        ASSERT_TRUE(IsAskedAgain());
    }
    EXPECT_THAT(FailureOf([&] { other->lock(); }), HasSubstr("ObjectLockedException"));
}

TEST_F(TLeases, ALockThatTheServerHasLetLapseCanBeTakenByOthers) {
    StartWithLease(60);
    const auto session = LogOn();
    const auto requirement = session->getLatestRequirement(FSample.Stop);
    requirement->lock();
    requirement->Set_Name(u"Halt");
    Advance(61'000);
    LogOn(u"ben")->getLatestRequirement(FSample.Stop)->lock();
    EXPECT_THAT(FailureOf([&] { requirement->save(); }), HasSubstr("Object is not locked by current user"));
    EXPECT_EQ(requirement->Get_Name(), u"Halt");
}

TEST_F(TLeases, ALapsedLockOnALostConnectionIsToldOnceAndIsGone) {
    StartWithLease(0);
    const auto session = LogOn();
    const auto requirement = session->getLatestRequirement(FSample.Stop);
    requirement->lock();
    FServer->Stop();
    EXPECT_THAT(FailureOf([&] { requirement->Get_LockedByCurrentUser(); }),
                HasSubstr("Quorane.SERVER_ERROR"));
    FCalls.Clear();
    EXPECT_EQ(requirement->Get_LockedByCurrentUser(), WordFalse);
    EXPECT_EQ(FCalls.RoundTrips(), 0);
}
