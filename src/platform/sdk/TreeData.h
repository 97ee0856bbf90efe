// The client's copy of one baseline's requirement tree, as far as it has been read:
// a branch at a time, in the order of the server. A node stands for the same object
// as long as the tree lives, so what is read anew shows in every handle on it.
#pragma once

#include "quorane.pb.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

namespace Sdk {

namespace wire = ::quorane::wire;

class TConnection;

// What the server tells of a node.
struct TNodeFacts {
    std::int32_t Id = 0;
    wire::NodeKind Kind = wire::NODE_KIND_REQUIREMENT;
    std::int32_t RequirementTypeId = 0;
    std::int32_t ChildCount = 0;
    bool HasUnreadMessages = false;
    bool UserIsInterested = false;
    std::string Name = {};
    std::string HierarchicalNumber = {};
    std::string SerialNumber = {};
};

class TTreeData {
public:
    static constexpr int None = -1;
    static constexpr int Root = 0;

    explicit TTreeData(std::int32_t baselineId);

    std::int32_t BaselineId() const { return FBaselineId; }

    // Node numbers are places in this tree, given by the operations here.
    const TNodeFacts& Node(int node) const { return FNodes[node].Facts; }
    int Parent(int node) const { return FNodes[node].Parent; }
    // What the root is called and how many children it has comes with them.
    bool RootIsKnown() const { return FRootIsKnown; }

    // Each reads from the server what is not here yet: one round trip, or none. A node
    // that was read as one without children has none until Forget.
    const std::vector<int>& Children(TConnection& connection, int node);
    // Asks the server; None when the subtree of `under` has no such object.
    int Find(TConnection& connection, int under, std::int32_t id);

    // The next look at any children goes to the server. Moves that were not saved
    // are dropped.
    void Forget();

    // Both change this copy alone; Save tells the server. They raise when the child
    // does not stand where it must.
    void MoveChild(TConnection& connection, int parent, std::int32_t childId, int position);
    void AddChild(TConnection& connection, int parent, int child);
    // Moves that the server refuses are dropped with those behind them, and the
    // branches are read anew at the next look.
    void Save(TConnection& connection);

private:
    struct TMove {
        std::function<void(TConnection&)> Tell;
        std::function<void()> TakeBack; // what reading the branches anew does not put right
    };

    struct TNode {
        TNodeFacts Facts;
        int Parent = None;
        int SeenIn = 0; // generations, see below
        int LoadedIn = 0;
        std::vector<int> Children;
    };

    int Put(TNodeFacts facts, int parent);
    void Load(TConnection& connection, int node);
    void LoadRoot(TConnection& connection);
    void SetChildren(int node, std::vector<int> children);
    bool IsWithin(int node, int ancestor) const;
    void Unload(int node) { FNodes[node].LoadedIn = 0; }

    const std::int32_t FBaselineId;
    std::deque<TNode> FNodes;
    std::unordered_map<std::int32_t, int> FPlaces;
    bool FRootIsKnown = false;
    // What was read in an earlier generation counts as not read.
    int FGeneration = 1;
    // In the order in which the server has to hear of them.
    std::deque<TMove> FUnsaved;
};

} // namespace Sdk
