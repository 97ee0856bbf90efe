// The requirements server inside a process: it owns the database file, the rules
// and the service, and serves them over in-process channels without any port. For
// tests it can also listen on the loopback interface.
#pragma once

#include "backend/store/Model.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace grpc {
class Channel;
}

namespace Backend {

// The largest message in either direction, in bytes; a client's channel must be
// given the same limit (grpc::ChannelArguments::SetMaxReceiveMessageSize).
constexpr int MaxMessageBytes = 16 * 1024 * 1024;

struct ServerOptions {
    std::string DatabasePath;
    // Seconds for which an edit lock lives without a KeepAlive.
    int LeaseSeconds = 60;
    // Seconds for which a session lives without any call.
    int SessionSeconds = 12 * 60 * 60;
    // Password hashes that cost next to nothing, for tests alone.
    bool QuickHashesForTests = false;
    // Microseconds since 1970 in UTC; empty: the system's clock.
    std::function<Instant()> Clock;
};

class EmbeddedServer {
public:
    // Opens nothing yet.
    explicit EmbeddedServer(ServerOptions options);
    // Stops.
    ~EmbeddedServer();

    // Opens the database and serves. Raises StoreError with a sentence for the user
    // (missing, corrupt, read-only, no database, written by a newer release, locked,
    // disk full); the file is left as it was. A missing one is not made: nobody could
    // log on to it. Does nothing when it runs already.
    void Start();
    // Ends all calls and closes the database; channels then answer UNAVAILABLE.
    // Sessions and locks stay in the database: after the next Start they go on
    // under the same tokens while their leases live.
    void Stop();
    bool Running() const;

    // A new channel into the running server, with the message limit set. It serves
    // until the next Stop; after a Start a new one is needed. Raises
    // std::logic_error when the server does not run.
    std::shared_ptr<grpc::Channel> Channel();

    // Listens on 127.0.0.1 too, without encryption, from the next Start on; gives
    // the port, the same one after each later Start. For tests.
    int ListenOnLoopback();

private:
    struct State;
    std::unique_ptr<State> FState;
};

} // namespace Backend
