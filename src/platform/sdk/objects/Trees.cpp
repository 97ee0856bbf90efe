#include "platform/sdk/objects/Make.h"

namespace Sdk {

namespace {

struct TTreeContext {
    TSessionHandle Session;
    std::shared_ptr<TTreeData> Data;

    TConnection& Connection() const { return Session->Connection(); }
};

using TTreeHandle = std::shared_ptr<const TTreeContext>;

class TTreeNode final : public IRequirementTreeNode {
public:
    TTreeNode(TTreeHandle tree, int node)
        : FTree(std::move(tree))
        , FNode(node) {}

    Handle<ITreeNode> getChild(std::int32_t index) override;
    std::int32_t indexOf(const Handle<ITreeNode>& child) override;
    Handle<IRequirementTreeNode> findByIDNumber(std::int32_t idNumber) override;
    Handle<IQuoraneObjectID> Get_ID() override;
    std::int32_t Get_ChildCount() override;
    Handle<IStCollection> Get_Children() override;
    std::u16string Get_HierarchicalNumber() override;
    std::u16string Get_Name() override;
    Handle<ITreeNode> Get_Parent() override;
    WordBool Get_IsRequirement() override;
    Handle<ITree> Get_Tree() override;
    Handle<IQuoraneObjectID> Get_RequirementTypeID() override;
    std::u16string Get_SerialNumber() override;
    void moveChild(const Handle<ITreeNode>& child, std::int32_t position) override;
    void addChild(const Handle<IRequirementTreeNode>& child) override;
    WordBool Get_HasUnreadMessages() override;
    WordBool Get_UserIsInterested() override;

private:
    const TNodeFacts& Facts() const;
    const std::vector<int>& Children() const { return FTree->Data->Children(FTree->Connection(), FNode); }
    std::shared_ptr<TTreeNode> Other(int node) const { return std::make_shared<TTreeNode>(FTree, node); }

    const TTreeHandle FTree;
    const int FNode;
};

class TRequirementTree final : public TMutableObject<IRequirementTree> {
public:
    explicit TRequirementTree(TTreeHandle tree)
        : TMutableObject(tree->Session, tree->Data->BaselineId(), "requirement tree", ECache::Requirements)
        , FTree(std::move(tree)) {}

    Handle<IRequirementTreeNode> Get_Root() override {
        const TCall call("IRequirementTree.Get_Root");
        return std::make_shared<TTreeNode>(FTree, TTreeData::Root);
    }

protected:
    std::string ReadName() override {
        const auto project = FSession->FindProjectOfBaseline(Number());
        return project ? FindBaseline(*project, Number())->name() : std::string();
    }

    void Save() override { FTree->Data->Save(FTree->Connection()); }

private:
    const TTreeHandle FTree;
};

const TTreeNode& OwnNode(const Handle<ITreeNode>& node) {
    const auto* own = dynamic_cast<const TTreeNode*>(node.get());
    if (!own) RaiseForeignObject();
    return *own;
}

// The root is there before anything is read; what it tells of itself comes with the
// types' nodes.
const TNodeFacts& TTreeNode::Facts() const {
    if (FNode == TTreeData::Root && !FTree->Data->RootIsKnown()) Children();
    return FTree->Data->Node(FNode);
}

Handle<ITreeNode> TTreeNode::getChild(std::int32_t index) {
    const TCall call("ITreeNode.getChild");
    const std::vector<int>& children = Children();
    CheckIndex(index, children.size());
    return Other(children[static_cast<std::size_t>(index)]);
}

std::int32_t TTreeNode::indexOf(const Handle<ITreeNode>& child) {
    const TCall call("ITreeNode.indexOf");
    const std::int32_t id = OwnNode(child).Facts().Id;
    const std::vector<int>& children = Children();
    for (std::size_t i = 0; i < children.size(); ++i)
        if (FTree->Data->Node(children[i]).Id == id) return static_cast<std::int32_t>(i);
    return -1;
}

Handle<IRequirementTreeNode> TTreeNode::findByIDNumber(std::int32_t idNumber) {
    const TCall call("ITreeNode.findByIDNumber");
    const int found = FTree->Data->Find(FTree->Connection(), FNode, idNumber);
    return found == TTreeData::None ? nullptr : Other(found);
}

Handle<IQuoraneObjectID> TTreeNode::Get_ID() {
    const TCall call("ITreeNode.Get_ID");
    const TNodeFacts& facts = FTree->Data->Node(FNode);
    switch (facts.Kind) {
    case wire::NODE_KIND_REQUIREMENT:
        return std::make_shared<TRequirementIdentity>(facts.Id, FTree->Data->BaselineId());
    case wire::NODE_KIND_REQUIREMENT_TYPE:
        return MakeIdentity<IRequirementTypeID>(facts.Id);
    default:
        return MakeIdentity<IBaselineID>(facts.Id);
    }
}

std::int32_t TTreeNode::Get_ChildCount() {
    const TCall call("ITreeNode.Get_ChildCount");
    return Facts().ChildCount;
}

Handle<IStCollection> TTreeNode::Get_Children() {
    const TCall call("ITreeNode.Get_Children");
    const std::vector<int>& children = Children();
    std::vector<Variant> nodes;
    nodes.reserve(children.size());
    for (const int child : children)
        nodes.emplace_back(Other(child));
    return MakeCollection(std::move(nodes));
}

std::u16string TTreeNode::Get_HierarchicalNumber() {
    const TCall call("ITreeNode.Get_HierarchicalNumber");
    return Wide(Facts().HierarchicalNumber);
}

std::u16string TTreeNode::Get_Name() {
    const TCall call("ITreeNode.Get_Name");
    return Wide(Facts().Name);
}

Handle<ITreeNode> TTreeNode::Get_Parent() {
    const TCall call("ITreeNode.Get_Parent");
    const int parent = FTree->Data->Parent(FNode);
    return parent == TTreeData::None ? nullptr : Other(parent);
}

WordBool TTreeNode::Get_IsRequirement() {
    const TCall call("ITreeNode.Get_IsRequirement");
    return ToWordBool(FTree->Data->Node(FNode).Kind == wire::NODE_KIND_REQUIREMENT);
}

Handle<ITree> TTreeNode::Get_Tree() {
    const TCall call("ITreeNode.Get_Tree");
    return std::make_shared<TRequirementTree>(FTree);
}

Handle<IQuoraneObjectID> TTreeNode::Get_RequirementTypeID() {
    const TCall call("ITreeNode.Get_RequirementTypeID");
    return MakeIdentity<IRequirementTypeID>(Facts().RequirementTypeId);
}

std::u16string TTreeNode::Get_SerialNumber() {
    const TCall call("ITreeNode.Get_SerialNumber");
    return Wide(Facts().SerialNumber);
}

void TTreeNode::moveChild(const Handle<ITreeNode>& child, std::int32_t position) {
    const TCall call("ITreeNode.moveChild");
    FTree->Data->MoveChild(FTree->Connection(), FNode, OwnNode(child).Facts().Id, position);
}

void TTreeNode::addChild(const Handle<IRequirementTreeNode>& child) {
    const TCall call("IRequirementTreeNode.addChild");
    const TTreeNode& other = OwnNode(child);
    if (other.FTree->Data != FTree->Data)
        RaiseFailure("IllegalArgumentException: A requirement cannot move into another baseline.");
    FTree->Data->AddChild(FTree->Connection(), FNode, other.FNode);
}

WordBool TTreeNode::Get_HasUnreadMessages() {
    const TCall call("IRequirementTreeNode.Get_HasUnreadMessages");
    return ToWordBool(Facts().HasUnreadMessages);
}

WordBool TTreeNode::Get_UserIsInterested() {
    const TCall call("IRequirementTreeNode.Get_UserIsInterested");
    return ToWordBool(Facts().UserIsInterested);
}

} // namespace

Handle<IRequirementTree> MakeTree(const TSessionHandle& session, std::int32_t baselineId) {
    return std::make_shared<TRequirementTree>(
        std::make_shared<TTreeContext>(TTreeContext{session, session->Tree(baselineId)}));
}

} // namespace Sdk
