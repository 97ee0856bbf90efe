// The requirements server of one test: a copy of the sample database in a folder of
// its own, which tests stop, start and look into, and the SDK connected to it.
#pragma once

#include <memory>
#include <string>

#include "backend/service/EmbeddedServer.h"
#include "platform/sdk/SdkCalls.h"
#include "server/Quorane_TLB.h"
#include "server/tlb/ClassObjects.h"
#include "support/TempFolder.h"

// A sample user and the password that the samples document.
inline std::string SamplePassword(const std::string& user) {
    return "hearth-" + user;
}

class TSampleServer {
public:
    // Starts, and becomes the server "local" of the SDK in this process. With an empty
    // path the database is a copy of the sample projects.
    explicit TSampleServer(const std::string& database = {});
    ~TSampleServer();
    TSampleServer(const TSampleServer&) = delete;
    TSampleServer& operator=(const TSampleServer&) = delete;

    // What the server says to all clients while it is stopped is that it is away.
    void Stop() { FServer->Stop(); }
    void Start() { FServer->Start(); }
    const std::string& DatabasePath() const { return FDatabase; }
    // Time passes for leases and sessions.
    void Advance(int seconds) { FOffset += static_cast<Backend::Instant>(seconds) * 1'000'000; }

    // Every SDK call and round trip from here on, for all sessions of this process.
    Sdk::TCallRecorder Calls;

    // The SDK's classes on this server, for who puts something in front of them.
    Quorane_TLB::TClassObjectProvider Classes();

    // A second client: a session of its own, with a cache of its own.
    Quorane_TLB::Handle<Quorane_TLB::ISession> LogOn(const std::string& user);

private:
    TTempFolder FFolder;
    std::string FDatabase;
    Backend::Instant FOffset = 0;
    std::unique_ptr<Backend::EmbeddedServer> FServer;
};
