#include "backend/rules/Rules.h"
#include "backend/service/RequirementsServer.h"
#include "backend/service/Wire.h"

namespace Backend {

namespace {

void AppendNumber(std::string& bytes, std::uint64_t number) {
    for (int shift = 0; shift < 64; shift += 8)
        bytes += static_cast<char>(number >> shift & 0xff);
}

} // namespace

std::string RequirementsServer::Label(Connection& connection, ObjectId requirementId, ObjectId typeId) {
    const auto type = connection.Types.Read(typeId);
    return SerialNumber(type ? type->Tag : std::string(), requirementId);
}

std::string RequirementsServer::Stamp(Connection& connection, const TreePlace& place) {
    std::string stamp;
    AppendNumber(stamp, static_cast<std::uint64_t>(place.VersionId));
    AppendNumber(stamp, static_cast<std::uint64_t>(place.BaselineId));
    AppendNumber(stamp, static_cast<std::uint64_t>(connection.Types.RevisionOf(place.TypeId)));
    return stamp;
}

void RequirementsServer::FillRequirement(Connection& connection, const TreePlace& place,
                                         wire::Requirement& message) {
    RequirementTable& table = connection.Requirements;
    const RequirementVersion version = table.ReadVersion(place.VersionId).value();
    const RequirementText text = table.ReadText(version.TextId);
    const RequirementType type = connection.Types.Read(version.TypeId).value();
    message.set_id(place.NodeId);
    message.set_name(version.Name);
    message.set_requirement_type_id(type.Id);
    message.set_requirement_type_revision(type.Revision);
    message.set_project_id(type.ProjectId);
    message.set_baseline_id(place.BaselineId);
    ToWire(version.Number, *message.mutable_version());
    message.set_serial_number(SerialNumber(type.Tag, place.NodeId));
    message.set_owner_id(version.OwnerId);
    message.set_description(text.Description);
    message.set_validation(text.Validation);
    for (const AttributeValue& value : table.ReadValues(place.VersionId, type.Id)) {
        if (value.AttributeId == type.Status.Id)
            ToWire(value, *message.mutable_status());
        else if (value.AttributeId == type.Priority.Id)
            ToWire(value, *message.mutable_priority());
        else
            ToWire(value, *message.add_values());
    }
    int number = 0;
    for (const DocumentReference& reference : table.ReadReferences(place.VersionId)) {
        ToWire(reference, *message.add_references());
        message.mutable_references(number)->set_id(number + 1);
        ++number;
    }
    for (const Assignment& assignment : table.ReadAssignments(place.VersionId, type.ProjectId))
        ToWire(assignment, *message.add_responsible_users());
    message.set_changed(version.Changed);
    message.set_changed_by_id(version.ChangedBy);
}

void RequirementsServer::FillLock(Connection& connection, const Caller& caller, ObjectId requirementId,
                                  wire::LockState& message) const {
    const auto lock = connection.Requirements.FindLock(requirementId, FSessions.Now());
    if (!lock) return;
    message.set_user_id(lock->UserId);
    message.set_user_name(lock->UserName);
    message.set_by_this_session(lock->SessionId == caller.SessionId);
}

grpc::Status RequirementsServer::GetRequirement(Context* context, const wire::GetRequirementRequest* request,
                                                wire::GetRequirementReply* reply) {
    return Read(*context, [&](Connection& connection, const Caller& caller) {
        const TreePlace place = request->which_case() == wire::GetRequirementRequest::kExact
                                    ? PlaceIn(connection, caller, request->exact())
                                    : CurrentPlace(connection, caller, request->latest_id(), Role::Reader);
        reply->set_stamp(Stamp(connection, place));
        if (reply->stamp() != request->known_stamp())
            FillRequirement(connection, place, *reply->mutable_requirement());
        FillLock(connection, caller, place.NodeId, *reply->mutable_lock());
        if (connection.Accounts.DirectoryRevision() != request->known_directory_revision())
            ToWire(connection.Accounts.ReadDirectory(), *reply->mutable_directory());
    });
}

void RequirementsServer::DemandNoForeignLock(Connection& connection, const Caller& caller,
                                             const TreePlace& place) const {
    const auto branch = connection.Trees.Branch(place.BaselineId, place.NodeId);
    const auto foreign = connection.Requirements.ForeignLock(branch, caller.SessionId, FSessions.Now());
    if (!foreign) return;
    const auto at = connection.Trees.Find(place.BaselineId, foreign->first).value();
    throw Refusal(Refusal::Reason::Conflict, "ObjectLockedException",
                  "The requirement " + Label(connection, at.NodeId, at.TypeId) + " is locked by " +
                      foreign->second.UserName + ".");
}

void RequirementsServer::DemandOwnLock(Connection& connection, const Caller& caller,
                                       const TreePlace& place) const {
    const auto lock = connection.Requirements.FindLock(place.NodeId, FSessions.Now());
    if (lock && lock->SessionId == caller.SessionId) return;
    throw Refusal(Refusal::Reason::Conflict, "ObjectNotLockedException",
                  "Object is not locked by current user: the requirement " +
                      Label(connection, place.NodeId, place.TypeId) + ".");
}

grpc::Status RequirementsServer::Lock(Context* context, const wire::LockRequest* request,
                                      wire::LockReply* reply) {
    return Write(*context, [&](Connection& connection, const Caller& caller) {
        const TreePlace place = CurrentPlace(connection, caller, request->id(), Role::Editor);
        const auto lock = connection.Requirements.FindLock(place.NodeId, FSessions.Now());
        // A user who logs on again takes over what his lost session still holds.
        if (lock && lock->UserId != caller.UserId)
            throw Refusal(Refusal::Reason::Conflict, "ObjectLockedException",
                          "The requirement " + Label(connection, place.NodeId, place.TypeId) +
                              " is locked by " + lock->UserName + ".");
        connection.Requirements.SetLock(place.NodeId,
                                        {caller.SessionId, caller.UserId, {}, FSessions.LeaseEnd()});
        reply->set_lease_seconds(FSessions.Settings().LeaseSeconds);
        reply->set_stamp(Stamp(connection, place));
    });
}

grpc::Status RequirementsServer::Unlock(Context* context, const wire::UnlockRequest* request,
                                        wire::UnlockReply*) {
    return Write(*context, [&](Connection& connection, const Caller& caller) {
        const auto lock = connection.Requirements.FindLock(request->id(), FSessions.Now());
        // What nobody holds any more, after a lapsed lease for instance, is unlocked.
        if (!lock) return;
        if (lock->UserId != caller.UserId) {
            const TreePlace place = CurrentPlace(connection, caller, request->id(), Role::Reader);
            throw Refusal(Refusal::Reason::Conflict, "ObjectLockedException",
                          "The requirement " + Label(connection, place.NodeId, place.TypeId) +
                              " is locked by " + lock->UserName + ".");
        }
        connection.Requirements.RemoveLock(request->id());
    });
}

grpc::Status RequirementsServer::SaveRequirement(Context* context,
                                                 const wire::SaveRequirementRequest* request,
                                                 wire::SaveRequirementReply* reply) {
    return Write(*context, [&](Connection& connection, const Caller& caller) {
        const TreePlace place = CurrentPlace(connection, caller, request->id(), Role::Editor);
        DemandOwnLock(connection, caller, place);
        if (!request->stamp().empty() && request->stamp() != Stamp(connection, place))
            throw Refusal(Refusal::Reason::Conflict, "StaleObjectException",
                          "The requirement " + Label(connection, place.NodeId, place.TypeId) +
                              " was changed after it was read; refresh and try again.");
        CheckText("The comment", request->comment(), MaxTextLength);
        Editing(connection).Save(place, FromWire(*request), RevisionBy(caller, request->comment()));
        const TreePlace saved = connection.Trees.Find(place.BaselineId, place.NodeId).value();
        const RequirementVersion version = connection.Requirements.ReadVersion(saved.VersionId).value();
        ToWire(version.Number, *reply->mutable_version());
        reply->set_stamp(Stamp(connection, saved));
        if (!request->has_description()) return;
        const std::string kept = connection.Requirements.ReadText(version.TextId).Description;
        if (kept != request->description()) reply->set_description(kept);
    });
}

grpc::Status RequirementsServer::CreateRequirement(Context* context,
                                                   const wire::CreateRequirementRequest* request,
                                                   wire::CreateRequirementReply* reply) {
    return Write(*context, [&](Connection& connection, const Caller& caller) {
        const bool below = request->parent_case() == wire::CreateRequirementRequest::kParentRequirementId;
        const ObjectId parentId = below ? request->parent_requirement_id() : request->requirement_type_id();
        const ObjectId projectId =
            below ? connection.Requirements.ProjectOf(parentId) : request->project_id();
        DemandRole(connection, caller, projectId, Role::Editor);
        const TreePlace parent = NodeIn(connection, caller, connection.Projects.CurrentBaseline(projectId),
                                        parentId, Role::Editor);
        if (request->position() < 0)
            throw RuleViolation("There is no position " + std::to_string(request->position()) + ".");
        NewRequirement made;
        made.Name = request->name();
        const ObjectId id = connection.Numbers.Next();
        const std::int64_t versionId =
            Editing(connection).MakeRequirement(id, parent.TypeId, made, RevisionBy(caller, {}));
        connection.Trees.Insert({parent.BaselineId, parentId, 0, id, parent.TypeId, versionId, 0},
                                request->position());
        const TreePlace place = connection.Trees.Find(parent.BaselineId, id).value();
        reply->set_id(id);
        ToWire(connection.Trees.PathTo(parent.BaselineId, id, caller.UserId).back(), *reply->mutable_node());
        FillRequirement(connection, place, *reply->mutable_requirement());
        reply->set_stamp(Stamp(connection, place));
    });
}

grpc::Status RequirementsServer::RemoveRequirement(Context* context,
                                                   const wire::RemoveRequirementRequest* request,
                                                   wire::RemoveRequirementReply* reply) {
    return Write(*context, [&](Connection& connection, const Caller& caller) {
        const TreePlace place = CurrentPlace(connection, caller, request->id(), Role::Editor);
        DemandNoForeignLock(connection, caller, place);
        reply->set_removed_count(Editing(connection).Remove(place));
    });
}

grpc::Status RequirementsServer::SetInterest(Context* context, const wire::SetInterestRequest* request,
                                             wire::SetInterestReply*) {
    return Write(*context, [&](Connection& connection, const Caller& caller) {
        const TreePlace place = CurrentPlace(connection, caller, request->id(), Role::Reader);
        connection.Discussions.SetInterest(caller.UserId, place.NodeId, request->interested());
    });
}

grpc::Status RequirementsServer::GetHistory(Context* context, const wire::GetHistoryRequest* request,
                                            grpc::ServerWriter<wire::HistoryRevision>* writer) {
    std::vector<HistoryRevision> revisions;
    const Status status = Read(*context, [&](Connection& connection, const Caller& caller) {
        const TreePlace place = PlaceIn(connection, caller, request->requirement());
        for (std::int64_t versionId : connection.Requirements.VersionsUpTo(place.VersionId))
            revisions.push_back(connection.Requirements.ReadRevision(versionId));
    });
    for (const HistoryRevision& revision : revisions) {
        wire::HistoryRevision message;
        ToWire(revision, message);
        if (!writer->Write(message)) break;
    }
    return status;
}

} // namespace Backend
