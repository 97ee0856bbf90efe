#include "backend/service/EmbeddedServer.h"

#include "backend/service/RequirementsServer.h"

#include <grpcpp/grpcpp.h>

#include <chrono>

namespace Backend {

namespace {

Instant SystemNow() {
    const auto since = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::microseconds>(since).count();
}

} // namespace

struct EmbeddedServer::State {
    explicit State(ServerOptions options)
        : Options(std::move(options)) {
        if (!Options.Clock) Options.Clock = SystemNow;
    }

    // Everything that lives from a start to the next stop, in the order in which it
    // leans on each other.
    struct Running {
        explicit Running(const ServerOptions& options)
            : Pool(options.DatabasePath)
            , Users(Pool,
                    options.QuickHashesForTests ? PasswordHashing::QuickForTests : PasswordHashing::Secure,
                    {options.LeaseSeconds, options.SessionSeconds, options.Clock})
            , Service(Pool, Users) {}

        ConnectionPool Pool;
        Sessions Users;
        RequirementsServer Service;
        std::unique_ptr<grpc::Server> Server;
    };

    ServerOptions Options;
    std::unique_ptr<Running> Current;
    int Port = -1; // -1: no port; 0: any
};

EmbeddedServer::EmbeddedServer(ServerOptions options)
    : FState(std::make_unique<State>(std::move(options))) {}

EmbeddedServer::~EmbeddedServer() {
    Stop();
}

void EmbeddedServer::Start() {
    if (FState->Current) return;
    auto running = std::make_unique<State::Running>(FState->Options);
    // Opened now, so that a file that cannot be used is told here and not at the
    // first call.
    { const auto first = running->Pool.Read(); }
    grpc::ServerBuilder builder;
    builder.SetMaxReceiveMessageSize(MaxMessageBytes);
    builder.SetMaxSendMessageSize(MaxMessageBytes);
    // Another server must not share the port unseen.
    builder.AddChannelArgument(GRPC_ARG_ALLOW_REUSEPORT, 0);
    builder.RegisterService(&running->Service);
    if (FState->Port >= 0)
        builder.AddListeningPort("127.0.0.1:" + std::to_string(FState->Port),
                                 grpc::InsecureServerCredentials(), &FState->Port);
    running->Server = builder.BuildAndStart();
    if (!running->Server) throw std::runtime_error("The requirements server cannot be started.");
    FState->Current = std::move(running);
}

void EmbeddedServer::Stop() {
    if (!FState->Current) return;
    FState->Current->Server->Shutdown(std::chrono::system_clock::now());
    FState->Current->Server->Wait();
    FState->Current.reset();
}

bool EmbeddedServer::Running() const {
    return FState->Current != nullptr;
}

std::shared_ptr<grpc::Channel> EmbeddedServer::Channel() {
    if (!FState->Current) throw std::logic_error("The requirements server does not run.");
    grpc::ChannelArguments arguments;
    arguments.SetMaxReceiveMessageSize(MaxMessageBytes);
    arguments.SetMaxSendMessageSize(MaxMessageBytes);
    return FState->Current->Server->InProcessChannel(arguments);
}

int EmbeddedServer::ListenOnLoopback() {
    if (FState->Port < 0) {
        // The port is found by listening on it once.
        FState->Port = 0;
        const bool running = Running();
        Stop();
        Start();
        if (!running) Stop();
    }
    return FState->Port;
}

} // namespace Backend
