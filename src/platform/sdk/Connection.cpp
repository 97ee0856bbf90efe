#include "platform/sdk/Connection.h"

#include "platform/sdk/Failures.h"

#include <cctype>

namespace Sdk {

namespace {

constexpr auto RenewalLimit = std::chrono::seconds(5);

// "ObjectLockedException: The requirement …" as the server's rules put it.
bool IsRefusal(const std::string& message) {
    const std::size_t colon = message.find(": ");
    if (colon == std::string::npos) return false;
    const std::string name = message.substr(0, colon);
    for (const char letter : name)
        if (!std::isalnum(static_cast<unsigned char>(letter)) && letter != '.' && letter != '_') return false;
    return name.ends_with("Exception");
}

bool IsUnavailable(const grpc::Status& status) {
    return status.error_code() == grpc::StatusCode::UNAVAILABLE;
}

// The server itself says that it is going away, so it has not begun with the request.
bool IsTurnedAway(const grpc::Status& status) {
    return IsUnavailable(status) && IsRefusal(status.error_message());
}

[[noreturn]] void RaiseStatus(std::string_view request, const grpc::Status& status) {
    const std::string& message = status.error_message();
    const grpc::StatusCode code = status.error_code();
    if (code == grpc::StatusCode::UNAUTHENTICATED) RaiseLostConnection(message);
    if (IsRefusal(message)) RaiseFailure(message, IsUnavailable(status) ? CodeServerUnavailable : CodeFailed);
    if (code == grpc::StatusCode::UNAVAILABLE || code == grpc::StatusCode::DEADLINE_EXCEEDED ||
        code == grpc::StatusCode::CANCELLED)
        RaiseLostConnection("The request " + std::string(request) + " got no answer: " + message);
    RaiseFailure("RemoteServerException: The request " + std::string(request) + " failed with status " +
                 std::to_string(code) + ": " + message);
}

} // namespace

TProgressWatch::TProgressWatch(grpc::ClientContext& context, std::chrono::milliseconds limit)
    : FThread([this, &context, limit](const std::stop_token& stop) { Watch(stop, context, limit); }) {}

void TProgressWatch::Progress() {
    {
        const std::lock_guard guard(FMutex);
        FProgress = true;
    }
    FChanged.notify_one();
}

void TProgressWatch::Watch(const std::stop_token& stop, grpc::ClientContext& context,
                           std::chrono::milliseconds limit) {
    std::unique_lock lock(FMutex);
    while (FChanged.wait_for(lock, stop, limit, [this] { return FProgress; }))
        FProgress = false;
    if (!stop.stop_requested()) context.TryCancel();
}

TConnection::TConnection(std::string host, TChannelFactory factory, std::chrono::milliseconds callLimit)
    : FHost(std::move(host))
    , FFactory(std::move(factory))
    , FCallLimit(callLimit) {}

void TConnection::SetToken(std::string token) {
    const std::lock_guard guard(FMutex);
    FToken = std::move(token);
}

wire::LoginReply TConnection::LogOn(const wire::LoginRequest& request) {
    if (!Connect())
        RaiseFailure("RemoteServerException: The host \"" + FHost + "\" cannot be reached.",
                     CodeServerUnavailable);
    wire::LoginReply reply;
    const grpc::Status status = RunOnce("Login", FCallLimit, [&](TStub& stub, grpc::ClientContext& context) {
        return stub.Login(&context, request, &reply);
    });
    if (status.ok()) return reply;
    if (IsRefusal(status.error_message())) RaiseFailure(status.error_message());
    RaiseFailure("RemoteServerException: The host \"" + FHost +
                     "\" does not answer: " + status.error_message(),
                 CodeServerUnavailable);
}

std::optional<wire::KeepAliveReply> TConnection::Renew() {
    grpc::ClientContext context;
    Prepare(context, RenewalLimit);
    const std::shared_ptr<TStub> stub = Stub();
    {
        const std::lock_guard guard(FMutex);
        if (!stub || FRenewalStopped) return std::nullopt;
        FRenewal = &context;
    }
    wire::KeepAliveReply reply;
    const grpc::Status status = stub->KeepAlive(&context, wire::KeepAliveRequest(), &reply);
    const std::lock_guard guard(FMutex);
    FRenewal = nullptr;
    if (!status.ok()) return std::nullopt;
    return reply;
}

void TConnection::StopRenewal() {
    const std::lock_guard guard(FMutex);
    FRenewalStopped = true;
    if (FRenewal) FRenewal->TryCancel();
}

void TConnection::Run(std::string_view name, bool repeatable, const TAttempt& attempt) {
    Repeat(name, repeatable, FCallLimit, attempt);
}

void TConnection::RunStream(std::string_view name, const TStreamAttempt& attempt) {
    Repeat(name, true, NoLimit, [&](TStub& stub, grpc::ClientContext& context) {
        TProgressWatch watch(context, FCallLimit);
        return attempt(stub, context, watch);
    });
}

void TConnection::Repeat(std::string_view name, bool repeatable, std::chrono::milliseconds limit,
                         const TAttempt& attempt) {
    if (!Stub() && !Connect()) RaiseLostConnection("The host \"" + FHost + "\" cannot be reached.");
    grpc::Status status = RunOnce(name, limit, attempt);
    const bool mayRepeat = IsTurnedAway(status) || (repeatable && IsUnavailable(status));
    if (mayRepeat && Connect()) status = RunOnce(name, limit, attempt);
    if (!status.ok()) RaiseStatus(name, status);
}

grpc::Status TConnection::RunOnce(std::string_view name, std::chrono::milliseconds limit,
                                  const TAttempt& attempt) {
    TellRoundTrip(name);
    grpc::ClientContext context;
    Prepare(context, limit);
    return attempt(*Stub(), context);
}

bool TConnection::Connect() {
    FChannel = FFactory(FHost);
    std::shared_ptr<TStub> stub;
    if (FChannel) stub = wire::RequirementsService::NewStub(FChannel);
    const std::lock_guard guard(FMutex);
    FStub = std::move(stub);
    return FStub != nullptr;
}

void TConnection::Prepare(grpc::ClientContext& context, std::chrono::milliseconds limit) {
    if (limit != NoLimit) context.set_deadline(std::chrono::system_clock::now() + limit);
    const std::lock_guard guard(FMutex);
    if (!FToken.empty()) context.AddMetadata("quorane-token-bin", FToken);
}

std::shared_ptr<TConnection::TStub> TConnection::Stub() {
    const std::lock_guard guard(FMutex);
    return FStub;
}

} // namespace Sdk
