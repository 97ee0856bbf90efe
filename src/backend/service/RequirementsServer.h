// The requirements service: each call is checked for its session and its rights, runs
// in one transaction, and answers with a message or with a refusal.
#pragma once

#include "backend/rules/Editing.h"
#include "backend/rules/Refusal.h"
#include "backend/service/Sessions.h"

#include "quorane.grpc.pb.h"

#include <condition_variable>

namespace Backend {

namespace wire = quorane::wire;

// Lets calls in until it is closed.
class Gate {
public:
    // False when it is closed; else the call must Leave.
    bool Enter();
    void Leave();
    // Returns when the last call has left.
    void Close();

private:
    std::mutex FGuard;
    std::condition_variable FLeft;
    int FInside = 0;
    bool FClosed = false;
};

class RequirementsServer final : public wire::RequirementsService::Service {
public:
    // When the gate is closed every call answers UNAVAILABLE.
    RequirementsServer(Gate& gate, ConnectionPool& pool, Sessions& sessions)
        : FGate(gate)
        , FPool(pool)
        , FSessions(sessions) {}

    using Context = grpc::ServerContext;
    using Status = grpc::Status;

    Status Login(Context*, const wire::LoginRequest*, wire::LoginReply*) override;
    Status Logout(Context*, const wire::LogoutRequest*, wire::LogoutReply*) override;
    Status KeepAlive(Context*, const wire::KeepAliveRequest*, wire::KeepAliveReply*) override;
    Status ChangePassword(Context*, const wire::ChangePasswordRequest*, wire::ChangePasswordReply*) override;

    Status GetDirectory(Context*, const wire::GetDirectoryRequest*, wire::GetDirectoryReply*) override;
    Status ListProjects(Context*, const wire::ListProjectsRequest*, wire::ListProjectsReply*) override;
    Status GetRequirementType(Context*, const wire::GetRequirementTypeRequest*,
                              wire::GetRequirementTypeReply*) override;
    Status GetGlossaries(Context*, const wire::GetGlossariesRequest*, wire::GetGlossariesReply*) override;
    Status ListIntegrations(Context*, const wire::ListIntegrationsRequest*,
                            wire::ListIntegrationsReply*) override;
    Status SaveIntegration(Context*, const wire::SaveIntegrationRequest*,
                           wire::SaveIntegrationReply*) override;

    Status GetTree(Context*, const wire::GetTreeRequest*, wire::GetTreeReply*) override;
    Status GetChildren(Context*, const wire::GetChildrenRequest*,
                       grpc::ServerWriter<wire::NodeBatch>*) override;
    Status FindNode(Context*, const wire::FindNodeRequest*, wire::FindNodeReply*) override;
    Status MoveChild(Context*, const wire::MoveChildRequest*, wire::MoveChildReply*) override;
    Status AddChild(Context*, const wire::AddChildRequest*, wire::AddChildReply*) override;

    Status GetRequirement(Context*, const wire::GetRequirementRequest*, wire::GetRequirementReply*) override;
    Status Lock(Context*, const wire::LockRequest*, wire::LockReply*) override;
    Status Unlock(Context*, const wire::UnlockRequest*, wire::UnlockReply*) override;
    Status SaveRequirement(Context*, const wire::SaveRequirementRequest*,
                           wire::SaveRequirementReply*) override;
    Status CreateRequirement(Context*, const wire::CreateRequirementRequest*,
                             wire::CreateRequirementReply*) override;
    Status RemoveRequirement(Context*, const wire::RemoveRequirementRequest*,
                             wire::RemoveRequirementReply*) override;
    Status SetInterest(Context*, const wire::SetInterestRequest*, wire::SetInterestReply*) override;
    Status GetHistory(Context*, const wire::GetHistoryRequest*,
                      grpc::ServerWriter<wire::HistoryRevision>*) override;

    Status GetDiscussion(Context*, const wire::GetDiscussionRequest*,
                         grpc::ServerWriter<wire::DiscussionBatch>*) override;
    Status PostMessage(Context*, const wire::PostMessageRequest*, wire::PostMessageReply*) override;
    Status MarkRead(Context*, const wire::MarkReadRequest*, wire::MarkReadReply*) override;

    Status ListTraces(Context*, const wire::ListTracesRequest*, wire::ListTracesReply*) override;
    Status CreateTrace(Context*, const wire::CreateTraceRequest*, wire::CreateTraceReply*) override;
    Status SaveTrace(Context*, const wire::SaveTraceRequest*, wire::SaveTraceReply*) override;
    Status RemoveTrace(Context*, const wire::RemoveTraceRequest*, wire::RemoveTraceReply*) override;

    Status GetImage(Context*, const wire::GetImageRequest*, grpc::ServerWriter<wire::ImageChunk>*) override;
    Status PutImage(Context*, grpc::ServerReader<wire::ImageChunk>*, wire::PutImageReply*) override;

private:
    // Runs work and makes a status of what it raises.
    Status Answer(const std::function<void()>& work);
    using Work = std::function<void(Connection&, const Caller&)>;
    Status Read(const Context& context, const Work& work);
    Status Write(const Context& context, const Work& work);

    // ---- rights; each raises Refusal

    static void DemandRole(Connection&, const Caller&, ObjectId projectId, Role least);
    static void DemandAnyRole(Connection&, const Caller&, Role least);
    static Baseline VisibleBaseline(Connection&, const Caller&, ObjectId baselineId);
    // The place of a requirement in its project's current baseline.
    static TreePlace CurrentPlace(Connection&, const Caller&, ObjectId requirementId, Role least);
    static TreePlace PlaceIn(Connection&, const Caller&, const wire::RequirementIdentity& identity);
    static TreePlace NodeIn(Connection&, const Caller&, ObjectId baselineId, ObjectId nodeId, Role least);

    // ---- requirements

    static std::string Label(Connection&, ObjectId requirementId, ObjectId typeId);
    static std::string Stamp(Connection&, const TreePlace& place);
    static void FillRequirement(Connection&, const TreePlace& place, wire::Requirement& message);
    void FillLock(Connection&, const Caller&, ObjectId requirementId, wire::LockState& message) const;
    void DemandOwnLock(Connection&, const Caller&, const TreePlace& place) const;
    void DemandNoForeignLock(Connection&, const Caller&, const TreePlace& place) const;
    Revision RevisionBy(const Caller&, const std::string& comment) const;
    static void DemandTraceRights(Connection&, const Caller&, const Trace& trace);
    static void FillTrace(Connection&, const Caller&, const Trace& trace, wire::Trace& message);
    static void FillTraceEnd(Connection&, const Caller&, const TraceEnd& end, wire::TraceEnd& message);

    Gate& FGate;
    ConnectionPool& FPool;
    Sessions& FSessions;
};

} // namespace Backend
