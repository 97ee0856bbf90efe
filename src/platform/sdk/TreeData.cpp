#include "platform/sdk/TreeData.h"

#include "platform/sdk/Connection.h"
#include "platform/sdk/Failures.h"

#include <algorithm>

namespace Sdk {

namespace {

TNodeFacts ToFacts(wire::Node& node) {
    return {.Id = node.id(),
            .Kind = node.kind(),
            .RequirementTypeId = node.requirement_type_id(),
            .ChildCount = node.child_count(),
            .HasUnreadMessages = node.has_unread_messages(),
            .UserIsInterested = node.user_is_interested(),
            .Name = std::move(*node.mutable_name()),
            .HierarchicalNumber = std::move(*node.mutable_hierarchical_number()),
            .SerialNumber = std::move(*node.mutable_serial_number())};
}

// Raises when the columns are not of one length.
void CheckColumns(const wire::NodeBatch& batch) {
    const int count = batch.ids_size();
    if (batch.names_size() != count || batch.child_counts_size() != count ||
        batch.has_unread_messages_size() != count || batch.user_is_interested_size() != count)
        RaiseFailure("RemoteServerException: The server's answer on a branch is damaged.");
}

// The node in one row of a batch, whose name goes with it.
TNodeFacts TakeFacts(wire::NodeBatch& batch, int row) {
    return {.Id = batch.ids(row),
            .RequirementTypeId = batch.requirement_type_id(),
            .ChildCount = batch.child_counts(row),
            .HasUnreadMessages = batch.has_unread_messages(row),
            .UserIsInterested = batch.user_is_interested(row),
            .Name = std::move(*batch.mutable_names(row)),
            .HierarchicalNumber = batch.hierarchical_prefix() + std::to_string(batch.first_position() + row),
            .SerialNumber = batch.serial_prefix() + std::to_string(batch.ids(row))};
}

} // namespace

TTreeData::TTreeData(std::int32_t baselineId)
    : FBaselineId(baselineId) {
    Put({.Id = baselineId, .Kind = wire::NODE_KIND_ROOT}, None);
}

const std::vector<int>& TTreeData::Children(TConnection& connection, int node) {
    TNode& wanted = FNodes[node];
    if (wanted.LoadedIn == FGeneration) return wanted.Children;
    const bool isLeaf = wanted.SeenIn == FGeneration && wanted.Facts.ChildCount == 0 && node != Root;
    if (isLeaf)
        SetChildren(node, {});
    else
        Load(connection, node);
    return wanted.Children;
}

int TTreeData::Find(TConnection& connection, int under, std::int32_t id) {
    wire::FindNodeRequest request;
    request.set_baseline_id(FBaselineId);
    request.set_id_number(id);
    auto reply = connection.Ask("FindNode", &TConnection::TStub::FindNode, request);
    int node = None;
    bool isWithin = false;
    for (wire::Node& step : *reply.mutable_path()) {
        node = Put(ToFacts(step), node);
        isWithin = isWithin || node == under;
    }
    return isWithin ? node : None;
}

void TTreeData::Forget() {
    for (; !FUnsaved.empty(); FUnsaved.pop_back())
        FUnsaved.back().TakeBack();
    ++FGeneration;
}

void TTreeData::MoveChild(TConnection& connection, int parent, std::int32_t childId, int position) {
    std::vector<int> children = Children(connection, parent);
    CheckIndex(position, children.size());
    const auto child = FPlaces.find(childId);
    const auto place =
        child == FPlaces.end() ? children.end() : std::find(children.begin(), children.end(), child->second);
    if (place == children.end())
        RaiseFailure("IllegalArgumentException: The node to move is no child of the node \"" +
                     Node(parent).Name + "\".");
    children.erase(place);
    children.insert(children.begin() + position, child->second);
    FNodes[parent].Children = std::move(children);

    wire::MoveChildRequest request;
    request.set_baseline_id(FBaselineId);
    request.set_parent_id(Node(parent).Id);
    request.set_child_id(childId);
    request.set_position(position);
    const auto tell = [this, parent, request](TConnection& server) {
        // The numbers of all siblings are others after it.
        Unload(parent);
        server.Tell("MoveChild", &TConnection::TStub::MoveChild, request);
    };
    FUnsaved.push_back({tell, [] {}});
}

void TTreeData::AddChild(TConnection& connection, int parent, int child) {
    if (IsWithin(parent, child))
        RaiseFailure("IllegalArgumentException: \"" + Node(child).Name + "\" cannot go under itself.");
    const int before = Parent(child);
    if (before == None) RaiseFailure("IllegalArgumentException: The root of a tree cannot move.");
    std::vector<int> left = Children(connection, before);
    // Read before anything changes, and counted.
    Children(connection, parent);
    const auto takeBack = [this, before, parent, child, leftCount = Node(before).ChildCount,
                           joinedCount = Node(parent).ChildCount] {
        FNodes[child].Parent = before;
        FNodes[before].Facts.ChildCount = leftCount;
        FNodes[parent].Facts.ChildCount = joinedCount;
    };
    std::erase(left, child);
    SetChildren(before, std::move(left));
    std::vector<int> joined = Children(connection, parent);
    joined.push_back(child);
    SetChildren(parent, std::move(joined));
    FNodes[child].Parent = parent;

    wire::AddChildRequest request;
    request.set_baseline_id(FBaselineId);
    request.set_parent_id(Node(parent).Id);
    request.set_child_id(Node(child).Id);
    const auto tell = [this, before, parent, child, request](TConnection& server) {
        for (const int changed : {before, parent, child})
            Unload(changed);
        server.Tell("AddChild", &TConnection::TStub::AddChild, request);
    };
    FUnsaved.push_back({tell, takeBack});
}

void TTreeData::Save(TConnection& connection) {
    try {
        for (; !FUnsaved.empty(); FUnsaved.pop_front())
            FUnsaved.front().Tell(connection);
    } catch (...) {
        Forget();
        throw;
    }
}

int TTreeData::Put(TNodeFacts facts, int parent) {
    const auto [entry, isNew] = FPlaces.try_emplace(facts.Id, static_cast<int>(FNodes.size()));
    if (isNew) FNodes.emplace_back();
    TNode& node = FNodes[entry->second];
    node.Facts = std::move(facts);
    node.Parent = parent;
    node.SeenIn = FGeneration;
    if (entry->second == Root && !node.Facts.Name.empty()) FRootIsKnown = true;
    return entry->second;
}

void TTreeData::Load(TConnection& connection, int node) {
    if (node == Root) return LoadRoot(connection);
    wire::GetChildrenRequest request;
    request.set_baseline_id(FBaselineId);
    request.set_node_id(Node(node).Id);
    auto batches = connection.AskStream("GetChildren", &TConnection::TStub::GetChildren, request);
    std::vector<int> children;
    for (wire::NodeBatch& batch : batches) {
        CheckColumns(batch);
        children.reserve(children.size() + static_cast<std::size_t>(batch.ids_size()));
        for (int row = 0; row < batch.ids_size(); ++row)
            children.push_back(Put(TakeFacts(batch, row), node));
    }
    SetChildren(node, std::move(children));
}

void TTreeData::LoadRoot(TConnection& connection) {
    wire::GetTreeRequest request;
    request.set_baseline_id(FBaselineId);
    auto reply = connection.Ask("GetTree", &TConnection::TStub::GetTree, request);
    Put(ToFacts(*reply.mutable_root()), None);
    FRootIsKnown = true;
    std::vector<int> children;
    for (wire::Node& child : *reply.mutable_requirement_types())
        children.push_back(Put(ToFacts(child), Root));
    SetChildren(Root, std::move(children));
}

void TTreeData::SetChildren(int node, std::vector<int> children) {
    FNodes[node].Facts.ChildCount = static_cast<std::int32_t>(children.size());
    FNodes[node].Children = std::move(children);
    FNodes[node].LoadedIn = FGeneration;
}

bool TTreeData::IsWithin(int node, int ancestor) const {
    for (; node != None; node = Parent(node))
        if (node == ancestor) return true;
    return false;
}

} // namespace Sdk
