#include "platform/sdk/Session.h"

#include "contracts/Exceptions.h"
#include "platform/sdk/Failures.h"

#include <algorithm>

namespace Sdk {

using TStub = TConnection::TStub;

std::shared_ptr<TSession> TSession::LogOn(std::shared_ptr<TConnection> connection, const std::string& user,
                                          const std::string& password) {
    wire::LoginRequest request;
    request.set_user(user);
    request.set_password(password);
    request.set_client("quorane-sdk " QUORANE_SDK_VERSION);
    const wire::LoginReply reply = connection->LogOn(request);
    connection->SetToken(reply.token());
    return std::shared_ptr<TSession>(new TSession(std::move(connection), reply));
}

TSession::TSession(std::shared_ptr<TConnection> connection, const wire::LoginReply& reply)
    : FConnection(std::move(connection))
    , FUserId(reply.user_id())
    , FLeases(std::make_unique<TLeaseKeeper>(FConnection, std::chrono::seconds(reply.lease_seconds()),
                                             std::chrono::seconds(reply.session_seconds()))) {}

void TSession::LogOut() {
    if (FLoggedOut) return;
    FLoggedOut = true;
    FLeases.reset();
    for (const ECache cache :
         {ECache::Requirements, ECache::Discussions, ECache::RequirementTypes, ECache::Glossaries})
        Clear(cache);
    FConnection->Tell("Logout", &TStub::Logout, wire::LogoutRequest());
}

TConnection& TSession::Connection() {
    if (FLoggedOut) RaiseLostConnection("The session has ended.");
    return *FConnection;
}

void TSession::Clear(ECache cache) {
    switch (cache) {
    case ECache::Requirements:
        for (const auto& [id, tree] : FTrees)
            tree->Forget();
        FLatest.clear();
        FFrozen.clear();
        FOtherTraces = {};
        return;
    case ECache::Discussions:
        return FDiscussions.clear();
    case ECache::Projects:
        return FProjects.reset();
    case ECache::RequirementTypes:
        return FTypes.clear();
    case ECache::Glossaries:
        return FGlossaries.clear();
    case ECache::Directory:
        return FDirectory.reset();
    case ECache::None:
        return;
    }
}

std::shared_ptr<const TDirectory> TSession::Directory() {
    if (FDirectory && !(FLeases && FLeases->DirectoryIsNewerThan(KnownDirectory()))) return FDirectory;
    wire::GetDirectoryRequest request;
    request.set_known_revision(KnownDirectory());
    auto reply = Connection().Ask("GetDirectory", &TStub::GetDirectory, request);
    if (reply.has_directory()) TakeDirectory(std::move(*reply.mutable_directory()));
    return FDirectory;
}

std::shared_ptr<const TProjects> TSession::Projects() {
    return FProjects ? FProjects : ReadProjects();
}

std::shared_ptr<const TProjects> TSession::ReadProjects() {
    wire::ListProjectsRequest request;
    request.set_known_directory_revision(KnownDirectory());
    auto reply = Connection().Ask("ListProjects", &TStub::ListProjects, request);
    if (reply.has_directory()) TakeDirectory(std::move(*reply.mutable_directory()));
    FProjects = std::make_shared<TProjects>(std::move(reply));
    return FProjects;
}

std::shared_ptr<const wire::Project> TSession::FindProject(std::int32_t id) {
    const auto projects = Projects();
    return {projects, projects->Find(id)};
}

std::shared_ptr<const wire::Project> TSession::FindProjectOfBaseline(std::int32_t baselineId) {
    const auto projects = Projects();
    return {projects, projects->FindByBaseline(baselineId)};
}

std::shared_ptr<const wire::RequirementType> TSession::RequirementType(std::int32_t id,
                                                                       std::int64_t revision) {
    auto& known = FTypes[id];
    if (known && revision != 0 && known->revision() >= revision) return known;
    wire::GetRequirementTypeRequest request;
    request.set_id(id);
    request.set_known_revision(known ? known->revision() : 0);
    auto reply = Connection().Ask("GetRequirementType", &TStub::GetRequirementType, request);
    if (reply.has_requirement_type())
        known = std::make_shared<wire::RequirementType>(std::move(*reply.mutable_requirement_type()));
    if (!known) RaiseFailure("RemoteServerException: The server gave no requirement type.");
    return known;
}

std::shared_ptr<const wire::GetGlossariesReply> TSession::Glossaries(std::int32_t projectId) {
    if (const auto known = FGlossaries.find(projectId); known != FGlossaries.end()) return known->second;
    wire::GetGlossariesRequest request;
    request.set_project_id(projectId);
    return FGlossaries[projectId] = std::make_shared<wire::GetGlossariesReply>(
               Connection().Ask("GetGlossaries", &TStub::GetGlossaries, request));
}

std::shared_ptr<const wire::ListIntegrationsReply> TSession::Integrations() {
    return FIntegrations ? FIntegrations : ReadIntegrations();
}

std::shared_ptr<const wire::ListIntegrationsReply> TSession::ReadIntegrations() {
    FIntegrations = std::make_shared<wire::ListIntegrationsReply>(
        Connection().Ask("ListIntegrations", &TStub::ListIntegrations, wire::ListIntegrationsRequest()));
    return FIntegrations;
}

std::shared_ptr<TTreeData> TSession::Tree(std::int32_t baselineId) {
    auto& tree = FTrees[baselineId];
    if (!tree) tree = std::make_shared<TTreeData>(baselineId);
    return tree;
}

std::shared_ptr<TRequirementState> TSession::LatestRequirement(std::int32_t id) {
    const auto known = FLatest.find(id);
    const bool isKnown = known != FLatest.end();
    if (isKnown && HoldsLock(id)) return known->second;
    wire::GetRequirementRequest request;
    request.set_latest_id(id);
    return FLatest[id] = ReadRequirement(request, isKnown ? known->second.get() : nullptr);
}

std::shared_ptr<TRequirementState> TSession::RequirementIn(std::int32_t id, std::int32_t baselineId) {
    const auto project = FindProjectOfBaseline(baselineId);
    if (project && project->current_baseline_id() == baselineId) return LatestRequirement(id);
    const auto known = FFrozen.find({id, baselineId});
    wire::GetRequirementRequest request;
    request.mutable_exact()->set_id(id);
    request.mutable_exact()->set_baseline_id(baselineId);
    return FFrozen[{id, baselineId}] =
               ReadRequirement(request, known == FFrozen.end() ? nullptr : known->second.get());
}

std::shared_ptr<TRequirementState>
TSession::CreateRequirement(const wire::CreateRequirementRequest& request) {
    auto reply = Connection().Tell("CreateRequirement", &TStub::CreateRequirement, request);
    auto state = std::make_shared<TRequirementState>();
    state->Snapshot = std::make_shared<wire::Requirement>(std::move(*reply.mutable_requirement()));
    state->Stamp = reply.stamp();
    state->IsNew = true;
    return state;
}

void TSession::Save(TRequirementState& requirement, const std::string& comment) {
    wire::SaveRequirementRequest request = requirement.Changes;
    request.set_id(requirement.Id());
    request.set_stamp(requirement.Stamp);
    request.set_comment(comment);
    requirement.TakeSaved(Connection().Tell("SaveRequirement", &TStub::SaveRequirement, request));
}

void TSession::Lock(std::int32_t id) {
    wire::LockRequest request;
    request.set_id(id);
    Connection().Ask("Lock", &TStub::Lock, request);
    FLeases->Granted(id);
}

void TSession::Lock(const std::shared_ptr<TRequirementState>& requirement) {
    const std::int32_t id = requirement->Id();
    wire::LockRequest request;
    request.set_id(id);
    const wire::LockReply reply = Connection().Ask("Lock", &TStub::Lock, request);
    FLeases->Granted(id);
    if (requirement->Stamp == reply.stamp()) {
        FLatest[id] = requirement;
        return;
    }
    Unlock(id);
    RaiseChangedMeanwhile(id);
}

void TSession::Unlock(std::int32_t id) {
    wire::UnlockRequest request;
    request.set_id(id);
    Connection().Ask("Unlock", &TStub::Unlock, request);
    FLeases->Released(id);
}

bool TSession::HoldsLock(std::int32_t id) {
    if (!FLeases) return false;
    const auto hold = FLeases->Holds(id);
    if (hold != TLeaseKeeper::EHold::Lapsed) return hold == TLeaseKeeper::EHold::Held;
    const auto sent = std::chrono::steady_clock::now();
    try {
        FLeases->Renewed(Connection().Ask("KeepAlive", &TStub::KeepAlive, wire::KeepAliveRequest()), sent);
    } catch (const EOleSysError&) {
        // Told once: the lease is over, and who asks at every idle moment would hear
        // of it without end.
        FLeases->Released(id);
        throw;
    }
    return FLeases->Holds(id) == TLeaseKeeper::EHold::Held;
}

std::shared_ptr<TDiscussionData> TSession::Discussion(std::int32_t requirementId) {
    if (const auto known = FDiscussions.find(requirementId); known != FDiscussions.end())
        return known->second;
    wire::GetDiscussionRequest request;
    request.set_requirement_id(requirementId);
    auto batches = Connection().AskStream("GetDiscussion", &TStub::GetDiscussion, request);
    auto discussion = std::make_shared<TDiscussionData>();
    discussion->RequirementId = requirementId;
    for (wire::DiscussionBatch& batch : batches)
        for (wire::DiscussionMessage& message : *batch.mutable_messages())
            discussion->Messages.push_back(std::move(message));
    return FDiscussions[requirementId] = discussion;
}

std::vector<wire::Trace> TSession::TracesOf(std::int32_t id, std::int32_t baselineId, bool away) {
    const auto kept = std::exchange(FOtherTraces, {});
    if (kept.Id == id && kept.BaselineId == baselineId && kept.Away == away) return kept.Traces;
    wire::ListTracesRequest request;
    request.mutable_requirement()->set_id(id);
    request.mutable_requirement()->set_baseline_id(baselineId);
    const auto reply = Connection().Ask("ListTraces", &TStub::ListTraces, request);
    const auto& asked = away ? reply.traces_to() : reply.traces_from();
    const auto& other = away ? reply.traces_from() : reply.traces_to();
    FOtherTraces = {id, baselineId, !away, {other.begin(), other.end()}};
    return {asked.begin(), asked.end()};
}

void TSession::TakeDirectory(wire::Directory&& directory) {
    FDirectory = std::make_shared<TDirectory>(std::move(directory));
}

std::shared_ptr<TRequirementState> TSession::ReadRequirement(wire::GetRequirementRequest& request,
                                                             const TRequirementState* known) {
    if (known) request.set_known_stamp(known->Stamp);
    request.set_known_directory_revision(KnownDirectory());
    auto reply = Connection().Ask("GetRequirement", &TStub::GetRequirement, request);
    if (reply.has_directory()) TakeDirectory(std::move(*reply.mutable_directory()));
    auto state = std::make_shared<TRequirementState>();
    if (reply.has_requirement())
        state->Snapshot = std::make_shared<wire::Requirement>(std::move(*reply.mutable_requirement()));
    else if (known)
        state->Snapshot = known->Snapshot;
    else
        RaiseFailure("RemoteServerException: The server gave no requirement.");
    state->Stamp = reply.stamp();
    // The answer to a lock may have been lost on the way.
    if (reply.lock().by_this_session()) FLeases->Granted(state->Id());
    return state;
}

void TSession::RaiseChangedMeanwhile(std::int32_t id) {
    const auto newest = LatestRequirement(id);
    const wire::User* user = Directory()->FindUser(newest->Snapshot->changed_by_id());
    RaiseFailure("ConcurrentModificationException: " + (user ? user->name() : std::string("Somebody")) +
                 " has changed the requirement " + newest->Snapshot->serial_number() +
                 " since it was read here. Select it again to go on from the newest version.");
}

} // namespace Sdk
