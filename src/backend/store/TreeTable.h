// The requirement tree of each baseline. The root is the baseline itself; below it
// stand the requirement types, below them the requirements. Positions are the places
// among siblings, from zero; hierarchical numbers are computed from them when read.
#pragma once

#include "backend/store/Database.h"
#include "backend/store/Model.h"

#include <functional>
#include <optional>

namespace Backend {

// A node with all that a label, an expand mark and a state image need.
struct TreeNode {
    ObjectId Id = 0;
    ObjectId ParentId = 0; // the baseline's for a requirement type's node
    ObjectId TypeId = 0;
    std::int64_t VersionId = 0; // 0: stands for a requirement type
    int ChildCount = 0;
    std::string Name;
    std::string TypeTag;
    std::string Number; // "2.1.4", where the reading says so; empty for a requirement type
    bool Unread = false;
    bool Interested = false;

    bool IsRequirement() const { return VersionId != 0; }
};

// Where a node stands.
struct TreePlace {
    ObjectId BaselineId = 0;
    ObjectId ParentId = 0;
    std::int64_t OrderKey = 0;
    ObjectId NodeId = 0;
    ObjectId TypeId = 0;
    std::int64_t VersionId = 0;
    int ChildCount = 0;
};

class TreeTable {
public:
    explicit TreeTable(Database& database)
        : FDatabase(database) {}

    using Visitor = std::function<void(const TreeNode&)>;

    // ---- reading; unread and interested are those of the given user

    std::optional<TreePlace> Find(ObjectId baselineId, ObjectId nodeId);
    std::vector<TreeNode> TypeNodes(ObjectId baselineId);
    // The children of a type's or a requirement's node in their order, without their
    // numbers. The visitor may not write.
    void VisitChildren(ObjectId baselineId, ObjectId nodeId, ObjectId userId, const Visitor& visit);
    // What stands before the position in the numbers of its children: "2.1.", or
    // nothing below a requirement type.
    std::string NumberPrefix(const TreePlace& place);
    // The nodes from the requirement type's to the given one, with numbers; empty when
    // the baseline lacks it.
    std::vector<TreeNode> PathTo(ObjectId baselineId, ObjectId nodeId, ObjectId userId);
    int PositionOf(const TreePlace& place);
    // The requirements of a branch, the given one first.
    std::vector<ObjectId> Branch(ObjectId baselineId, ObjectId nodeId);
    bool IsBelow(ObjectId baselineId, ObjectId nodeId, ObjectId ancestorId);

    // ---- writing; child counts are kept right

    void InsertType(ObjectId baselineId, ObjectId typeId);
    // A position beyond the last child means the end.
    void Insert(const TreePlace& node, int position);
    std::int64_t LastOrderKey(ObjectId baselineId, ObjectId parentId); // 0: no child
    // For many appended siblings; the caller tells the place of the last one, which
    // it got from here, or 0 when there is none, and sets the parent's child count.
    std::int64_t AppendAfter(std::int64_t lastOrderKey, const TreePlace& node);
    void SetChildCount(ObjectId baselineId, ObjectId nodeId, int count);
    // Puts a node at a position among its siblings, the one that it has afterwards.
    void Move(const TreePlace& node, int position);
    // Takes a node, with all below it, to the end of another node's children.
    void Reparent(const TreePlace& node, ObjectId newParentId);
    void SetVersion(ObjectId baselineId, ObjectId nodeId, ObjectId typeId, std::int64_t versionId);
    void RemoveBranch(const TreePlace& node, const std::vector<ObjectId>& branch);
    // Copies a whole tree into an empty baseline.
    void Copy(ObjectId fromBaselineId, ObjectId toBaselineId);

private:
    std::string NumberOf(const TreePlace& place);
    std::int64_t FreeKey(ObjectId baselineId, ObjectId parentId, int position);
    std::optional<std::int64_t> KeyAt(ObjectId baselineId, ObjectId parentId, int position);
    void SpreadKeys(ObjectId baselineId, ObjectId parentId);
    void AddRow(const TreePlace& node);
    void CountChildren(ObjectId baselineId, ObjectId parentId, int change);

    Database& FDatabase;
};

} // namespace Backend
