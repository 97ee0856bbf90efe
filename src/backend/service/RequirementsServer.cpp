#include "backend/service/RequirementsServer.h"

#include "backend/service/Wire.h"

namespace Backend {

namespace {

constexpr auto ServerVersion = "7.2.0";
constexpr auto TokenKey = "quorane-token-bin";

grpc::StatusCode CodeOf(Refusal::Reason reason) {
    switch (reason) {
    case Refusal::Reason::NotLoggedOn:
        return grpc::StatusCode::UNAUTHENTICATED;
    case Refusal::Reason::Denied:
        return grpc::StatusCode::PERMISSION_DENIED;
    case Refusal::Reason::NotFound:
        return grpc::StatusCode::NOT_FOUND;
    case Refusal::Reason::Invalid:
        return grpc::StatusCode::INVALID_ARGUMENT;
    case Refusal::Reason::Conflict:
        return grpc::StatusCode::FAILED_PRECONDITION;
    case Refusal::Reason::Busy:
        return grpc::StatusCode::RESOURCE_EXHAUSTED;
    }
    return grpc::StatusCode::UNKNOWN;
}

std::string_view TokenOf(const grpc::ServerContext& context) {
    const auto found = context.client_metadata().find(TokenKey);
    if (found == context.client_metadata().end()) return {};
    return {found->second.data(), found->second.size()};
}

Refusal NoSuch(const std::string& what) {
    return Refusal(Refusal::Reason::NotFound, "ObjectNotFoundException", "There is no " + what + ".");
}

} // namespace

bool Gate::Enter() {
    const std::lock_guard guard(FGuard);
    if (!FClosed) ++FInside;
    return !FClosed;
}

void Gate::Leave() {
    const std::lock_guard guard(FGuard);
    if (--FInside == 0) FLeft.notify_all();
}

void Gate::Close() {
    std::unique_lock lock(FGuard);
    FClosed = true;
    FLeft.wait(lock, [this] { return FInside == 0; });
}

grpc::Status RequirementsServer::Answer(const std::function<void()>& work) {
    if (!FGate.Enter())
        return {grpc::StatusCode::UNAVAILABLE,
                "RemoteServerException: Quorane.SERVER_ERROR: The server is stopped."};
    const std::unique_ptr<Gate, void (*)(Gate*)> leaving(&FGate, [](Gate* gate) { gate->Leave(); });
    try {
        work();
        return grpc::Status::OK;
    } catch (const Refusal& refusal) {
        return {CodeOf(refusal.Why()), refusal.what()};
    } catch (const std::exception& failure) {
        return {grpc::StatusCode::INTERNAL, std::string("RemoteServerException: ") + failure.what()};
    }
}

grpc::Status RequirementsServer::Read(const Context& context, const Work& work) {
    return Answer([&] {
        Caller caller;
        {
            ConnectionPool::Lease connection = FPool.Read();
            caller = FSessions.Authenticate(*connection, TokenOf(context));
            work(*connection, caller);
        }
        FSessions.Extend(caller);
    });
}

grpc::Status RequirementsServer::Write(const Context& context, const Work& work) {
    return Answer([&] {
        ConnectionPool::Lease connection = FPool.Write();
        work(*connection, FSessions.Authenticate(*connection, TokenOf(context)));
        connection.Commit();
    });
}

void RequirementsServer::DemandRole(Connection& connection, const Caller& caller, ObjectId projectId,
                                    Role least) {
    if (caller.Administrator) return;
    const std::optional<Role> role = connection.Projects.RoleOf(projectId, caller.UserId);
    if (!role) throw NoSuch("project " + std::to_string(projectId) + " that you may see");
    if (*role < least)
        throw Refusal(Refusal::Reason::Denied, "AccessDeniedException",
                      "You may not do this in the project.");
}

void RequirementsServer::DemandAnyRole(Connection& connection, const Caller& caller, Role least) {
    if (caller.Administrator) return;
    for (const auto& [projectId, role] : connection.Projects.RolesOf(caller.UserId))
        if (role >= least) return;
    throw Refusal(Refusal::Reason::Denied, "AccessDeniedException", "You may not do this on the server.");
}

Baseline RequirementsServer::VisibleBaseline(Connection& connection, const Caller& caller,
                                             ObjectId baselineId) {
    const std::optional<Baseline> baseline = connection.Projects.FindBaseline(baselineId);
    if (!baseline) throw NoSuch("baseline " + std::to_string(baselineId));
    DemandRole(connection, caller, baseline->ProjectId, Role::Reader);
    return *baseline;
}

TreePlace RequirementsServer::CurrentPlace(Connection& connection, const Caller& caller,
                                           ObjectId requirementId, Role least) {
    const ObjectId projectId = connection.Requirements.ProjectOf(requirementId);
    if (projectId == 0) throw NoSuch("requirement " + std::to_string(requirementId));
    DemandRole(connection, caller, projectId, least);
    const auto place = connection.Trees.Find(connection.Projects.CurrentBaseline(projectId), requirementId);
    if (!place) throw NoSuch("requirement " + std::to_string(requirementId) + " any more");
    return *place;
}

TreePlace RequirementsServer::PlaceIn(Connection& connection, const Caller& caller,
                                      const wire::RequirementIdentity& identity) {
    if (identity.baseline_id() == 0) return CurrentPlace(connection, caller, identity.id(), Role::Reader);
    VisibleBaseline(connection, caller, identity.baseline_id());
    const auto place = connection.Trees.Find(identity.baseline_id(), identity.id());
    if (!place || place->VersionId == 0)
        throw NoSuch("requirement " + std::to_string(identity.id()) + " in the baseline");
    return *place;
}

TreePlace RequirementsServer::NodeIn(Connection& connection, const Caller& caller, ObjectId baselineId,
                                     ObjectId nodeId, Role least) {
    const Baseline baseline = VisibleBaseline(connection, caller, baselineId);
    DemandRole(connection, caller, baseline.ProjectId, least);
    if (least > Role::Reader && baseline.Type != BaselineType::Current)
        throw Refusal(Refusal::Reason::Conflict, "BaselineNotCurrentException",
                      "The baseline " + baseline.Name + " is frozen.");
    const auto place = connection.Trees.Find(baselineId, nodeId);
    if (!place) throw NoSuch("node " + std::to_string(nodeId) + " in the baseline");
    return *place;
}

Revision RequirementsServer::RevisionBy(const Caller& caller, const std::string& comment) const {
    return {caller.UserId, FSessions.Now(), comment};
}

// ---- session

grpc::Status RequirementsServer::Login(Context*, const wire::LoginRequest* request, wire::LoginReply* reply) {
    return Answer([&] {
        const Sessions::Logon logon =
            FSessions.Login(request->user(), request->password(), request->client());
        reply->set_token(logon.Token);
        reply->set_user_id(logon.UserId);
        reply->set_server_version(ServerVersion);
        reply->set_lease_seconds(FSessions.Settings().LeaseSeconds);
        reply->set_session_seconds(FSessions.Settings().SessionSeconds);
    });
}

grpc::Status RequirementsServer::Logout(Context* context, const wire::LogoutRequest*, wire::LogoutReply*) {
    return Answer([&] { FSessions.Logout(TokenOf(*context)); });
}

grpc::Status RequirementsServer::KeepAlive(Context* context, const wire::KeepAliveRequest*,
                                           wire::KeepAliveReply* reply) {
    return Write(*context, [&](Connection& connection, const Caller& caller) {
        const Instant now = FSessions.Now();
        connection.Accounts.ExtendSession(caller.SessionId,
                                          now + Instant{FSessions.Settings().SessionSeconds} * 1'000'000);
        connection.Requirements.ExtendLocksOf(caller.SessionId, now, FSessions.LeaseEnd());
        reply->set_lease_seconds(FSessions.Settings().LeaseSeconds);
        for (ObjectId id : connection.Requirements.LocksOf(caller.SessionId, now))
            reply->add_locked_ids(id);
        reply->set_directory_revision(connection.Accounts.DirectoryRevision());
    });
}

grpc::Status RequirementsServer::ChangePassword(Context*, const wire::ChangePasswordRequest* request,
                                                wire::ChangePasswordReply*) {
    return Answer(
        [&] { FSessions.ChangePassword(request->user(), request->old_password(), request->new_password()); });
}

} // namespace Backend
