#include "platform/sdk/Session.h"

#include "contracts/Exceptions.h"
#include "platform/sdk/Connection.h"
#include "platform/sdk/Failures.h"
#include "platform/sdk/LeaseKeeper.h"

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
    , FServerVersion(reply.server_version())
    , FLeases(std::make_unique<TLeaseKeeper>(FConnection, std::chrono::seconds(reply.lease_seconds()),
                                             std::chrono::seconds(reply.session_seconds()))) {}

TSession::~TSession() = default;

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
    auto projects = Projects();
    // Somebody may have made it since.
    if (!projects->FindByBaseline(baselineId)) projects = ReadProjects();
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

TGlossaries& TSession::Glossaries(std::int32_t projectId) {
    if (const auto known = FGlossaries.find(projectId); known != FGlossaries.end()) return known->second;
    wire::GetGlossariesRequest request;
    request.set_project_id(projectId);
    auto reply = std::make_shared<wire::GetGlossariesReply>(
        Connection().Ask("GetGlossaries", &TStub::GetGlossaries, request));
    return FGlossaries[projectId] = {std::move(reply), {}};
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

void TSession::Post(TDiscussionData& discussion, std::int32_t parentId, const std::string& subject,
                    const std::string& body) {
    wire::PostMessageRequest request;
    request.set_requirement_id(discussion.RequirementId);
    request.set_parent_id(parentId);
    request.set_subject(subject);
    request.set_body(body);
    auto reply = Connection().Tell("PostMessage", &TStub::PostMessage, request);
    discussion.Messages.push_back(std::move(*reply.mutable_message()));
}

void TSession::MarkRead(std::int32_t messageId, bool read) {
    wire::MarkReadRequest request;
    request.set_message_id(messageId);
    request.set_read(read);
    Connection().Ask("MarkRead", &TStub::MarkRead, request);
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

wire::Trace TSession::CreateTrace(const wire::CreateTraceRequest& request) {
    auto reply = Connection().Tell("CreateTrace", &TStub::CreateTrace, request);
    return std::move(*reply.mutable_trace());
}

void TSession::SaveTrace(const wire::Trace& trace) {
    wire::SaveTraceRequest request;
    request.set_id(trace.id());
    request.set_suspect(trace.suspect());
    Connection().Ask("SaveTrace", &TStub::SaveTrace, request);
}

void TSession::RemoveTrace(std::int32_t id) {
    wire::RemoveTraceRequest request;
    request.set_id(id);
    Connection().Tell("RemoveTrace", &TStub::RemoveTrace, request);
}

std::int32_t TSession::SaveIntegration(const wire::Integration& integration) {
    wire::SaveIntegrationRequest request;
    *request.mutable_integration() = integration;
    const auto reply = Connection().Tell("SaveIntegration", &TStub::SaveIntegration, request);
    FIntegrations.reset();
    return reply.id();
}

void TSession::TakeDirectory(wire::Directory&& directory) {
    FDirectory = std::make_shared<TDirectory>(std::move(directory));
}

void TSession::ForgetTrees() {
    for (const auto& [id, tree] : FTrees)
        tree->Forget();
}

} // namespace Sdk
