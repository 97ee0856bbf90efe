// The part of the session that reads, locks and writes requirements.
#include "contracts/Exceptions.h"
#include "platform/sdk/Connection.h"
#include "platform/sdk/Failures.h"
#include "platform/sdk/LeaseKeeper.h"
#include "platform/sdk/Session.h"

namespace Sdk {

using TStub = TConnection::TStub;

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
    // The places behind it have changed.
    ForgetTrees();
    return state;
}

void TSession::Save(TRequirementState& requirement, const std::string& comment) {
    const std::int32_t id = requirement.Id();
    if (requirement.IsNew && !requirement.IsChanged()) {
        requirement.IsNew = false;
        return;
    }
    if (requirement.Changes.has_description())
        requirement.Changes.set_description(
            FImages.StoreNew(Connection(), requirement.Changes.description()));
    const bool lockedForThis = requirement.IsNew && !HoldsLock(id);
    if (lockedForThis) Lock(id);
    wire::SaveRequirementRequest request = requirement.WrittenChanges();
    request.set_id(id);
    request.set_stamp(requirement.Stamp);
    request.set_comment(comment);
    requirement.TakeSaved(request, SendSave(request));
    requirement.IsNew = false;
    if (lockedForThis) Unlock(id);
}

wire::SaveRequirementReply TSession::SendSave(const wire::SaveRequirementRequest& request) {
    try {
        return Connection().Tell("SaveRequirement", &TStub::SaveRequirement, request);
    } catch (const EOleSysError& failure) {
        if (failure.ErrorCode() != CodeServerUnavailable) throw;
    }
    // The connection broke on the way there or on the way back. As nobody else can
    // save under this session's lock, a new stamp means that the save was done.
    wire::GetRequirementRequest question;
    question.set_latest_id(request.id());
    question.set_known_stamp(request.stamp());
    const auto now = Connection().Ask("GetRequirement", &TStub::GetRequirement, question);
    if (!now.has_requirement() || !now.lock().by_this_session())
        return Connection().Tell("SaveRequirement", &TStub::SaveRequirement, request);
    wire::SaveRequirementReply reply;
    *reply.mutable_version() = now.requirement().version();
    reply.set_stamp(now.stamp());
    reply.set_description(now.requirement().description());
    return reply;
}

void TSession::RemoveRequirement(std::int32_t id) {
    wire::RemoveRequirementRequest request;
    request.set_id(id);
    Connection().Tell("RemoveRequirement", &TStub::RemoveRequirement, request);
    if (FLeases) FLeases->Released(id);
    FLatest.erase(id);
    ForgetTrees();
}

std::vector<wire::HistoryRevision> TSession::History(std::int32_t id, std::int32_t baselineId) {
    wire::GetHistoryRequest request;
    request.mutable_requirement()->set_id(id);
    request.mutable_requirement()->set_baseline_id(baselineId);
    return Connection().AskStream("GetHistory", &TStub::GetHistory, request);
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
    RaiseChangedMeanwhile(*requirement);
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

void TSession::RaiseChangedMeanwhile(TRequirementState& outdated) {
    const auto newest = LatestRequirement(outdated.Id());
    if (newest->Snapshot->baseline_id() != outdated.Snapshot->baseline_id())
        RaiseFailure("ReadOnlyBaselineException: The requirement " + newest->Snapshot->serial_number() +
                     " stands in a frozen baseline and cannot be changed there.");
    const wire::User* user = Directory()->FindUser(newest->Snapshot->changed_by_id());
    RaiseFailure("ConcurrentModificationException: " + (user ? user->name() : std::string("Somebody")) +
                 " has changed the requirement " + newest->Snapshot->serial_number() +
                 " since it was read here. Select it again to go on from the newest version.");
}

} // namespace Sdk
