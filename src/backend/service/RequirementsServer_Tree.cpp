#include "backend/service/RequirementsServer.h"
#include "backend/service/Wire.h"

namespace Backend {

namespace {

// Small enough that no batch comes near a message's limit.
constexpr int BatchSize = 1000;

void BeginBatch(const TreeNode& first, const std::string& prefix, int position, wire::NodeBatch& batch) {
    batch.set_requirement_type_id(first.TypeId);
    batch.set_serial_prefix(first.TypeTag);
    batch.set_hierarchical_prefix(prefix);
    batch.set_first_position(position);
    batch.mutable_ids()->Reserve(BatchSize);
    batch.mutable_names()->Reserve(BatchSize);
    batch.mutable_child_counts()->Reserve(BatchSize);
    batch.mutable_has_unread_messages()->Reserve(BatchSize);
    batch.mutable_user_is_interested()->Reserve(BatchSize);
}

void AddToBatch(const TreeNode& node, wire::NodeBatch& batch) {
    batch.add_ids(node.Id);
    batch.add_names(node.Name);
    batch.add_child_counts(node.ChildCount);
    batch.add_has_unread_messages(node.Unread);
    batch.add_user_is_interested(node.Interested);
}

} // namespace

grpc::Status RequirementsServer::GetTree(Context* context, const wire::GetTreeRequest* request,
                                         wire::GetTreeReply* reply) {
    return Read(*context, [&](Connection& connection, const Caller& caller) {
        const Baseline baseline = VisibleBaseline(connection, caller, request->baseline_id());
        for (const TreeNode& node : connection.Trees.TypeNodes(baseline.Id))
            ToWire(node, *reply->add_requirement_types());
        wire::Node& root = *reply->mutable_root();
        root.set_id(baseline.Id);
        root.set_kind(wire::NODE_KIND_ROOT);
        root.set_name(baseline.Name);
        root.set_child_count(reply->requirement_types_size());
    });
}

grpc::Status RequirementsServer::GetChildren(Context* context, const wire::GetChildrenRequest* request,
                                             grpc::ServerWriter<wire::NodeBatch>* writer) {
    // The batches are sent after the read has ended, so that a slow client holds no
    // transaction open.
    std::vector<wire::NodeBatch> batches;
    const Status status = Read(*context, [&](Connection& connection, const Caller& caller) {
        const TreePlace place =
            NodeIn(connection, caller, request->baseline_id(), request->node_id(), Role::Reader);
        const std::string prefix = connection.Trees.NumberPrefix(place);
        connection.Trees.VisitChildren(
            place.BaselineId, place.NodeId, caller.UserId, [&](const TreeNode& node) {
                if (batches.empty() || batches.back().ids_size() >= BatchSize) {
                    const int position = static_cast<int>(batches.size()) * BatchSize + 1;
                    BeginBatch(node, prefix, position, batches.emplace_back());
                }
                AddToBatch(node, batches.back());
            });
    });
    for (const wire::NodeBatch& batch : batches)
        if (!writer->Write(batch)) break;
    return status;
}

grpc::Status RequirementsServer::FindNode(Context* context, const wire::FindNodeRequest* request,
                                          wire::FindNodeReply* reply) {
    return Read(*context, [&](Connection& connection, const Caller& caller) {
        const Baseline baseline = VisibleBaseline(connection, caller, request->baseline_id());
        const auto path = connection.Trees.PathTo(baseline.Id, request->id_number(), caller.UserId);
        if (path.empty() && request->id_number() != baseline.Id) return;
        wire::Node& root = *reply->add_path();
        root.set_id(baseline.Id);
        root.set_kind(wire::NODE_KIND_ROOT);
        root.set_name(baseline.Name);
        root.set_child_count(static_cast<int>(connection.Trees.TypeNodes(baseline.Id).size()));
        for (const TreeNode& node : path)
            ToWire(node, *reply->add_path());
    });
}

grpc::Status RequirementsServer::MoveChild(Context* context, const wire::MoveChildRequest* request,
                                           wire::MoveChildReply*) {
    return Write(*context, [&](Connection& connection, const Caller& caller) {
        const TreePlace child =
            NodeIn(connection, caller, request->baseline_id(), request->child_id(), Role::Editor);
        if (child.VersionId == 0) throw RuleViolation("A requirement type cannot be moved.");
        if (child.ParentId != request->parent_id())
            throw Refusal(Refusal::Reason::Conflict, "StaleObjectException",
                          "The requirement " + Label(connection, child.NodeId, child.TypeId) +
                              " was moved elsewhere meanwhile; refresh and try again.");
        if (request->position() < 0)
            throw RuleViolation("There is no position " + std::to_string(request->position()) + ".");
        connection.Trees.Move(child, request->position());
    });
}

grpc::Status RequirementsServer::AddChild(Context* context, const wire::AddChildRequest* request,
                                          wire::AddChildReply*) {
    return Write(*context, [&](Connection& connection, const Caller& caller) {
        const TreePlace child =
            NodeIn(connection, caller, request->baseline_id(), request->child_id(), Role::Editor);
        const TreePlace parent =
            NodeIn(connection, caller, request->baseline_id(), request->parent_id(), Role::Editor);
        // Within its type the requirements themselves do not change.
        if (parent.TypeId != child.TypeId) DemandNoForeignLock(connection, caller, child);
        Editing(connection).Reparent(child, parent, RevisionBy(caller, {}));
    });
}

} // namespace Backend
