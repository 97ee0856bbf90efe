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

std::unique_ptr<grpc::Server> Serve(RequirementsServer& service, int* port) {
    grpc::ServerBuilder builder;
    builder.SetMaxReceiveMessageSize(MaxMessageBytes);
    builder.SetMaxSendMessageSize(MaxMessageBytes);
    // Another server must not share the port unseen.
    builder.AddChannelArgument(GRPC_ARG_ALLOW_REUSEPORT, 0);
    builder.RegisterService(&service);
    if (port)
        builder.AddListeningPort("127.0.0.1:" + std::to_string(*port), grpc::InsecureServerCredentials(),
                                 port);
    auto server = builder.BuildAndStart();
    if (!server || (port && *port == 0))
        throw std::runtime_error("The requirements server cannot be started.");
    return server;
}

} // namespace

struct EmbeddedServer::State {
    explicit State(ServerOptions options)
        : Options(std::move(options)) {
        if (!Options.Clock) Options.Clock = SystemNow;
    }

    // Everything that lives from a start to the next stop, in the order in which it
    // leans on each other.
    //
    // A call on an in-process channel whose server was shut down ends the process.
    // So the server behind such channels is never shut down while one of them lives:
    // the gate closes, the channels keep the server, and it answers UNAVAILABLE.
    struct Running {
        explicit Running(const ServerOptions& options)
            : Pool(options.DatabasePath)
            , Users(Pool,
                    options.QuickHashesForTests ? PasswordHashing::QuickForTests : PasswordHashing::Secure,
                    {options.LeaseSeconds, options.SessionSeconds, options.Clock})
            , Service(Calls, Pool, Users)
            , PortService(Calls, Pool, Users) {}

        Gate Calls;
        ConnectionPool Pool;
        Sessions Users;
        RequirementsServer Service;
        RequirementsServer PortService;
        std::unique_ptr<grpc::Server> Server;
        std::unique_ptr<grpc::Server> PortServer;
    };

    struct KeptChannel {
        std::shared_ptr<Running> Server;
        std::shared_ptr<grpc::Channel> Channel;
    };

    ServerOptions Options;
    std::shared_ptr<Running> Current;
    int Port = -1; // -1: no port; 0: any
};

EmbeddedServer::EmbeddedServer(ServerOptions options)
    : FState(std::make_unique<State>(std::move(options))) {}

EmbeddedServer::~EmbeddedServer() {
    Stop();
}

void EmbeddedServer::Start() {
    if (FState->Current) return;
    auto running = std::make_shared<State::Running>(FState->Options);
    // Opened now, so that a file that cannot be used is told here and not at the
    // first call.
    running->Pool.Read();
    running->Server = Serve(running->Service, nullptr);
    if (FState->Port >= 0) running->PortServer = Serve(running->PortService, &FState->Port);
    FState->Current = std::move(running);
}

void EmbeddedServer::Stop() {
    if (!FState->Current) return;
    State::Running& running = *FState->Current;
    running.Calls.Close();
    if (running.PortServer) {
        running.PortServer->Shutdown(std::chrono::system_clock::now());
        running.PortServer.reset();
    }
    running.Pool.Close();
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
    auto kept = std::make_shared<State::KeptChannel>();
    kept->Server = FState->Current;
    kept->Channel = kept->Server->Server->InProcessChannel(arguments);
    return {kept, kept->Channel.get()};
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
