// Clients at the end of a line that breaks, and clients that die.
#include "platform/sdk/Connection.h"
#include "sdk/SdkTest.h"

#include <chrono>
#include <cstdio>
#include <thread>

#include <netinet/in.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gmock/gmock.h>

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

class TLine : public TSdkTest {
protected:
    ~TLine() override { FServer->Stop(); } // it asks this clock

    void StartWithLease(int seconds) {
        FOptions.LeaseSeconds = seconds;
        FOptions.Clock = [this] { return SystemNow() + FAhead.load(); };
        Restart();
        FPort = FServer->ListenOnLoopback();
    }
    void Advance(int seconds) { FAhead += Backend::Instant{seconds} * 1'000'000; }

    Handle<ISession> LogOnOverTheLine() { return Server(u"port")->login(u"ann", u"secret"); }

private:
    static Backend::Instant SystemNow() {
        const auto since = std::chrono::system_clock::now().time_since_epoch();
        return std::chrono::duration_cast<std::chrono::microseconds>(since).count();
    }

    std::atomic<Backend::Instant> FAhead = 0;
};

// The client program beside the tests, which locks a requirement and holds it.
class TLockHolder {
public:
    TLockHolder(int port, int requirement) {
        const std::string program =
            std::string(std::getenv("QUORANE_BUILD_DIR")) + "/bin/quorane-test-client";
        std::string arguments[] = {program, std::to_string(port), std::to_string(requirement)};
        char* argv[] = {arguments[0].data(), arguments[1].data(), arguments[2].data(), nullptr};
        int ends[2];
        if (pipe(ends) != 0) throw std::runtime_error("no pipe");
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
        posix_spawn_file_actions_addclose(&actions, ends[0]);
        const int failed = posix_spawn(&FProcess, program.c_str(), &actions, nullptr, argv, environ);
        posix_spawn_file_actions_destroy(&actions);
        close(ends[1]);
        FOutput = fdopen(ends[0], "r");
        if (failed) throw std::runtime_error("cannot start " + program);
    }
    ~TLockHolder() {
        Kill();
        fclose(FOutput);
    }
    TLockHolder(const TLockHolder&) = delete;
    TLockHolder& operator=(const TLockHolder&) = delete;

    std::string Says() {
        char line[500] = {};
        return fgets(line, sizeof line, FOutput) ? line : "nothing";
    }
    void Kill() {
        if (FProcess == 0) return;
        kill(FProcess, SIGKILL);
        waitpid(FProcess, nullptr, 0);
        FProcess = 0;
    }

private:
    pid_t FProcess = 0;
    FILE* FOutput = nullptr;
};

TEST_F(TLine, ABreakShorterThanTheLeaseCostsNeitherSessionNorLockNorUnsavedValues) {
    StartWithLease(60);
    const auto session = LogOnOverTheLine();
    const auto requirement = session->getLatestRequirement(FSample.Stop);
    requirement->lock();
    requirement->Set_Name(u"Halt");
    FCalls.Clear();
    FServer->Stop();
    EXPECT_THAT(FailureOf([&] { requirement->save(); }),
                AllOf(HasSubstr("RemoteServerException"), HasSubstr("Quorane.SERVER_ERROR")));
    EXPECT_EQ(requirement->Get_LockedByCurrentUser(), WordTrue);
    FServer->Start();
    EXPECT_THAT(FailureOf([&] { LogOn(u"ben")->getLatestRequirement(FSample.Stop)->lock(); }),
                HasSubstr("is locked by Ann Lee"));
    FCalls.Clear();
    requirement->save();
    requirement->unlock();
    EXPECT_THAT(FCalls.Requests(), Not(Contains("Login")));
    EXPECT_EQ(LogOn(u"ben")->getLatestRequirement(FSample.Stop)->Get_Name(), u"Halt");
}

TEST_F(TLine, ABreakLongerThanTheLeaseIsALostConnectionAndTheLockIsForOthers) {
    StartWithLease(1);
    const auto session = LogOnOverTheLine();
    const auto requirement = session->getLatestRequirement(FSample.Stop);
    requirement->lock();
    requirement->Set_Name(u"Halt");
    FServer->Stop();
    std::string failure;
    const auto tooLate = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (failure.empty() && std::chrono::steady_clock::now() < tooLate) {
        failure = FailureOf([&] { requirement->Get_LockedByCurrentUser(); });
        std::this_thread::yield();
    }
    EXPECT_THAT(failure, AllOf(HasSubstr("RemoteServerException"), HasSubstr("Quorane.SERVER_ERROR")));
    FServer->Start();
    const auto ben = LogOn(u"ben")->getLatestRequirement(FSample.Stop);
    EXPECT_EQ(FailureOf([&] { ben->lock(); }), "");
    EXPECT_THAT(FailureOf([&] { requirement->save(); }), HasSubstr("Object is not locked by current user"));
    EXPECT_EQ(requirement->Get_Name(), u"Halt");
}

TEST_F(TLine, TheLockOfAClientThatDiedIsFreeWhenItsLeaseIsOver) {
    StartWithLease(60);
    TLockHolder holder(FPort, FSample.Stop);
    ASSERT_EQ(holder.Says(), "locked\n");
    holder.Kill();
    const auto ben = LogOn(u"ben")->getLatestRequirement(FSample.Stop);
    EXPECT_THAT(FailureOf([&] { ben->lock(); }), HasSubstr("is locked by Ann Lee"));
    Advance(61);
    EXPECT_EQ(FailureOf([&] { ben->lock(); }), "");
    EXPECT_EQ(ben->Get_LockedByCurrentUser(), WordTrue);
}

// What takes connections and never says a word.
TEST_F(TLine, AServerThatIsSilentIsALostConnectionAfterTheLimit) {
    const int silent = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    ASSERT_EQ(bind(silent, reinterpret_cast<sockaddr*>(&address), size), 0);
    ASSERT_EQ(listen(silent, 5), 0);
    getsockname(silent, reinterpret_cast<sockaddr*>(&address), &size);
    const std::string target = "127.0.0.1:" + std::to_string(ntohs(address.sin_port));
    Sdk::TConnection line(
        "silent",
        [&](const std::string&) { return grpc::CreateChannel(target, grpc::InsecureChannelCredentials()); },
        std::chrono::milliseconds(100));
    EXPECT_THAT(FailureOf([&] { line.LogOn({}); }), HasSubstr("The host \"silent\" does not answer"));
    EXPECT_THAT(FailureOf([&] {
                    line.Ask("KeepAlive", &Sdk::TConnection::TStub::KeepAlive, Sdk::wire::KeepAliveRequest());
                }),
                AllOf(HasSubstr("RemoteServerException"), HasSubstr("Quorane.SERVER_ERROR")));
    close(silent);
}

// Sends pieces of a picture, each well within the limit, and then no more.
class TSlowServer : public Sdk::wire::RequirementsService::Service {
public:
    static constexpr std::chrono::milliseconds Limit{1000};
    static constexpr int Pieces = 5;

    grpc::Status GetImage(grpc::ServerContext* context, const Sdk::wire::GetImageRequest*,
                          grpc::ServerWriter<Sdk::wire::ImageChunk>* writer) override {
        for (int piece = 0; piece < Pieces; ++piece) {
            std::this_thread::sleep_for(Limit / 4);
            Sent += writer->Write({});
        }
        while (!context->IsCancelled())
            std::this_thread::sleep_for(Limit / 100);
        return grpc::Status::CANCELLED;
    }

    std::atomic<int> Sent = 0;
};

TEST(TLineStream, TakesItsTimeButNotWithoutProgress) {
    TSlowServer service;
    grpc::ServerBuilder builder;
    builder.RegisterService(&service);
    const auto server = builder.BuildAndStart();
    Sdk::TConnection line(
        "slow", [&](const std::string&) { return server->InProcessChannel({}); }, TSlowServer::Limit);
    EXPECT_THAT(FailureOf([&] {
                    line.AskStream("GetImage", &Sdk::TConnection::TStub::GetImage,
                                   Sdk::wire::GetImageRequest());
                }),
                AllOf(HasSubstr("RemoteServerException"), HasSubstr("Quorane.SERVER_ERROR")));
    EXPECT_EQ(service.Sent, TSlowServer::Pieces);
}

} // namespace
