// Starting, stopping, and the files that a server cannot start on.
#include "ServiceFixture.h"

#include <gmock/gmock.h>

#include <thread>

using namespace Backend;
using namespace testing;

namespace {

class ServerTest : public ServiceFixture {};

TEST_F(ServerTest, StopsAndStartsWhileClientsGoOnCalling) {
    const Client first = LoggedOn("ann");
    std::atomic<bool> enough = false;
    std::atomic<int> answered = 0, refused = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 3; ++i)
        threads.emplace_back([&, i, channel = Channel()] {
            Client client(channel);
            client.UseToken(first.Token());
            while (!enough)
                try {
                    client.Rename(Id(i == 0 ? "One" : "Two"), "Again");
                    client.Children(FCurrent, FSrs);
                    answered += i == 0;
                } catch (const Refused& refusal) {
                    EXPECT_THAT(refusal.what(), AnyOf(HasSubstr("stopped"), HasSubstr("locked")))
                        << refusal.Code;
                    ++refused;
                }
        });
    while (answered < 5)
        std::this_thread::yield();
    FServer->Stop();
    while (refused < 10)
        std::this_thread::yield();
    FServer->Start();
    enough = true;
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(LoggedOn("ben").Read(Id("One")).name(), "Again");
}

TEST_F(ServerTest, StoppedTwiceAndDestroyedUnderAnOpenChannelDoesNoHarm) {
    Client client = LoggedOn("ann");
    FServer->Stop();
    FServer->Stop();
    EXPECT_FALSE(FServer->Running());
    EXPECT_THROW(FServer->Channel(), std::logic_error);
    FServer.reset();
    try {
        client.Read(Id("One"));
        FAIL() << "answered";
    } catch (const Refused& refused) {
        EXPECT_EQ(refused.Code, grpc::StatusCode::UNAVAILABLE);
        EXPECT_THAT(refused.what(),
                    AllOf(HasSubstr("RemoteServerException"), HasSubstr("Quorane.SERVER_ERROR")));
    }
}

TEST_F(ServerTest, TellsAtTheStartThatAFileCannotBeUsedAndCanBeStartedLater) {
    FServer->Stop();
    const std::string path = FFolder.File("quorane.db");
    const std::string good = ReadFile(path);
    WriteFile(path, "no database at all");
    EXPECT_THAT([&] { FServer->Start(); },
                Throws<StoreError>(Property(&StoreError::Reason, StoreError::Kind::NotADatabase)));
    EXPECT_FALSE(FServer->Running());
    EXPECT_EQ(ReadFile(path), "no database at all");
    WriteFile(path, good);
    FServer->Start();
    EXPECT_EQ(LoggedOn("ann").Read(Id("One")).name(), "One");
}

TEST_F(ServerTest, DoesNotMakeADatabaseThatNobodyCouldLogOnTo) {
    ServerOptions options;
    options.DatabasePath = FFolder.File("nowhere/quorane.db");
    EmbeddedServer server(options);
    EXPECT_THAT([&] { server.Start(); }, ThrowsMessage<StoreError>(AllOf(
                                             HasSubstr("There is no requirements database"),
                                             HasSubstr(options.DatabasePath), HasSubstr("quorane-admin"))));
    EXPECT_FALSE(std::filesystem::exists(FFolder.File("nowhere")));
}

TEST_F(ServerTest, TwoServersShareOneFileAndItsLocks) {
    ServerOptions options;
    options.DatabasePath = FFolder.File("quorane.db");
    options.QuickHashesForTests = true;
    options.Clock = [this] { return FNow.load(); };
    EmbeddedServer other(options);
    other.Start();
    Client here = LoggedOn("ann"), there(other.Channel());
    there.Login("ben");
    here.Lock(Id("Two"));
    EXPECT_THROW(there.Lock(Id("Two")), Refused);
    here.Unlock(Id("Two"));
    there.Rename(Id("Two"), "From there");
    EXPECT_EQ(here.Read(Id("Two")).name(), "From there");
}

} // namespace
