#include "platform/sdk/TreeData.h"

#include "platform/sdk/Connection.h"
#include "platform/sdk/Failures.h"

#include <algorithm>

namespace Sdk {

TTreeData::TTreeData(std::int32_t baselineId)
    : FBaselineId(baselineId) {
    wire::Node root;
    root.set_id(baselineId);
    root.set_kind(wire::NODE_KIND_ROOT);
    Put(std::move(root), None);
}

const std::vector<int>& TTreeData::Children(TConnection& connection, int node) {
    TNode& wanted = FNodes[node];
    if (wanted.LoadedIn == FGeneration) return wanted.Children;
    const bool isLeaf = wanted.SeenIn == FGeneration && wanted.Data.child_count() == 0 && node != Root;
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
        node = Put(std::move(step), node);
        isWithin = isWithin || node == under;
    }
    return isWithin ? node : None;
}

void TTreeData::Forget() {
    FUnsaved.clear();
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
                     Node(parent).name() + "\".");
    children.erase(place);
    children.insert(children.begin() + position, child->second);
    FNodes[parent].Children = std::move(children);

    wire::MoveChildRequest request;
    request.set_baseline_id(FBaselineId);
    request.set_parent_id(Node(parent).id());
    request.set_child_id(childId);
    request.set_position(position);
    FUnsaved.push_back([this, parent, request](TConnection& server) {
        // The numbers of all siblings are others after it.
        Unload(parent);
        server.Tell("MoveChild", &TConnection::TStub::MoveChild, request);
    });
}

void TTreeData::AddChild(TConnection& connection, int parent, int child) {
    if (IsWithin(parent, child))
        RaiseFailure("IllegalArgumentException: \"" + Node(child).name() + "\" cannot go under itself.");
    const int before = Parent(child);
    if (before == None) RaiseFailure("IllegalArgumentException: The root of a tree cannot move.");
    std::vector<int> left = Children(connection, before);
    std::erase(left, child);
    SetChildren(before, std::move(left));
    std::vector<int> joined = Children(connection, parent);
    joined.push_back(child);
    SetChildren(parent, std::move(joined));
    FNodes[child].Parent = parent;

    wire::AddChildRequest request;
    request.set_baseline_id(FBaselineId);
    request.set_parent_id(Node(parent).id());
    request.set_child_id(Node(child).id());
    FUnsaved.push_back([this, before, parent, child, request](TConnection& server) {
        for (const int changed : {before, parent, child})
            Unload(changed);
        server.Tell("AddChild", &TConnection::TStub::AddChild, request);
    });
}

void TTreeData::Save(TConnection& connection) {
    const auto unsaved = std::move(FUnsaved);
    FUnsaved.clear();
    try {
        for (const auto& tell : unsaved)
            tell(connection);
    } catch (...) {
        Forget();
        throw;
    }
}

int TTreeData::Put(wire::Node&& data, int parent) {
    const auto [entry, isNew] = FPlaces.try_emplace(data.id(), static_cast<int>(FNodes.size()));
    if (isNew) FNodes.emplace_back();
    TNode& node = FNodes[entry->second];
    node.Data = std::move(data);
    node.Parent = parent;
    node.SeenIn = FGeneration;
    if (entry->second == Root && !node.Data.name().empty()) FRootIsKnown = true;
    return entry->second;
}

void TTreeData::Load(TConnection& connection, int node) {
    if (node == Root) return LoadRoot(connection);
    wire::GetChildrenRequest request;
    request.set_baseline_id(FBaselineId);
    request.set_node_id(Node(node).id());
    auto batches = connection.AskStream("GetChildren", &TConnection::TStub::GetChildren, request);
    std::vector<int> children;
    for (wire::NodeBatch& batch : batches)
        for (wire::Node& child : *batch.mutable_nodes())
            children.push_back(Put(std::move(child), node));
    SetChildren(node, std::move(children));
}

void TTreeData::LoadRoot(TConnection& connection) {
    wire::GetTreeRequest request;
    request.set_baseline_id(FBaselineId);
    auto reply = connection.Ask("GetTree", &TConnection::TStub::GetTree, request);
    Put(std::move(*reply.mutable_root()), None);
    FRootIsKnown = true;
    std::vector<int> children;
    for (wire::Node& child : *reply.mutable_requirement_types())
        children.push_back(Put(std::move(child), Root));
    SetChildren(Root, std::move(children));
}

void TTreeData::SetChildren(int node, std::vector<int> children) {
    FNodes[node].Data.set_child_count(static_cast<std::int32_t>(children.size()));
    FNodes[node].Children = std::move(children);
    FNodes[node].LoadedIn = FGeneration;
}

bool TTreeData::IsWithin(int node, int ancestor) const {
    for (; node != None; node = Parent(node))
        if (node == ancestor) return true;
    return false;
}

} // namespace Sdk
