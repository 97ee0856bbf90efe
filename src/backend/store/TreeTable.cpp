#include "backend/store/TreeTable.h"

#include <algorithm>

namespace Backend {

namespace {

// Some forty insertions at the same place halve a gap to nothing; then the siblings
// are spread anew. There is room for a hundred million of them.
constexpr std::int64_t OrderGap = std::int64_t{1} << 36;

TreePlace ToPlace(ObjectId baselineId, const Rows& rows) {
    return {baselineId, rows.Int(0), rows.Int64(1), rows.Int(2), rows.Int(3), rows.Int64(4), rows.Int(5)};
}

// Columns: node_id, parent_id, type_id, version_id, child_count, name, tag, unread,
// interested. Texts go into the room that the node already has.
void ReadNode(const Rows& rows, TreeNode& node) {
    node.Id = rows.Int(0);
    node.ParentId = rows.Int(1);
    node.TypeId = rows.Int(2);
    node.VersionId = rows.Int64(3);
    node.ChildCount = rows.Int(4);
    node.Name = rows.View(5);
    node.TypeTag = rows.View(6);
    node.Unread = rows.Bool(7);
    node.Interested = rows.Bool(8);
}

TreeNode ToNode(const Rows& rows) {
    TreeNode node;
    ReadNode(rows, node);
    return node;
}

} // namespace

std::optional<TreePlace> TreeTable::Find(ObjectId baselineId, ObjectId nodeId) {
    Rows rows = FDatabase.Query("select parent_id, order_key, node_id, type_id, version_id, child_count "
                                "from tree_node where baseline_id = $1 and node_id = $2",
                                baselineId, nodeId);
    if (!rows.Next()) return std::nullopt;
    return ToPlace(baselineId, rows);
}

std::vector<TreeNode> TreeTable::TypeNodes(ObjectId baselineId) {
    std::vector<TreeNode> nodes;
    Rows rows =
        FDatabase.Query("select n.node_id, n.parent_id, n.type_id, 0, n.child_count, t.name, t.tag, 0, 0 "
                        "from tree_node n join requirement_type t on t.id = n.node_id "
                        "where n.baseline_id = $1 and n.parent_id = $1 order by n.order_key",
                        baselineId);
    while (rows.Next())
        nodes.push_back(ToNode(rows));
    return nodes;
}

void TreeTable::VisitChildren(ObjectId baselineId, ObjectId nodeId, ObjectId userId, const Visitor& visit) {
    // Most requirements have no discussion; the count spares them the look at what
    // the user has read.
    Rows rows = FDatabase.Query(
        "select n.node_id, n.parent_id, n.type_id, n.version_id, n.child_count, v.name, t.tag, "
        "case when r.message_count = 0 then 0 else r.message_count > coalesce((select c.read_messages "
        "from read_count c where c.user_id = $3 and c.requirement_id = r.id), 0) end, "
        "exists (select 1 from interest i where i.user_id = $3 and i.requirement_id = n.node_id) "
        "from tree_node n join requirement_version v on v.id = n.version_id "
        "join requirement r on r.id = n.node_id join requirement_type t on t.id = n.type_id "
        "where n.baseline_id = $1 and n.parent_id = $2 order by n.order_key",
        baselineId, nodeId, userId);
    for (TreeNode node; rows.Next();) {
        ReadNode(rows, node);
        visit(node);
    }
}

std::string TreeTable::NumberPrefix(const TreePlace& place) {
    return place.VersionId ? NumberOf(place) + "." : std::string();
}

std::vector<TreeNode> TreeTable::PathTo(ObjectId baselineId, ObjectId nodeId, ObjectId userId) {
    std::vector<TreeNode> path;
    ObjectId at = nodeId;
    while (const std::optional<TreePlace> place = Find(baselineId, at)) {
        if (place->VersionId == 0) {
            for (TreeNode& node : TypeNodes(baselineId))
                if (node.Id == at) path.push_back(std::move(node));
            break;
        }
        Rows rows = FDatabase.Query(
            "select n.node_id, n.parent_id, n.type_id, n.version_id, n.child_count, v.name, t.tag, "
            "r.message_count > coalesce((select c.read_messages from read_count c "
            "where c.user_id = $3 and c.requirement_id = r.id), 0), "
            "exists (select 1 from interest i where i.user_id = $3 and i.requirement_id = n.node_id) "
            "from tree_node n join requirement_version v on v.id = n.version_id "
            "join requirement r on r.id = n.node_id join requirement_type t on t.id = n.type_id "
            "where n.baseline_id = $1 and n.node_id = $2",
            baselineId, at, userId);
        rows.Next();
        path.push_back(ToNode(rows));
        path.back().Number = std::to_string(PositionOf(*place) + 1);
        at = place->ParentId;
    }
    std::ranges::reverse(path);
    for (std::size_t i = 2; i < path.size(); ++i)
        path[i].Number = path[i - 1].Number + "." + path[i].Number;
    return path;
}

int TreeTable::PositionOf(const TreePlace& place) {
    Rows rows = FDatabase.Query("select count(*) from tree_node where baseline_id = $1 and parent_id = $2 "
                                "and order_key < $3",
                                place.BaselineId, place.ParentId, place.OrderKey);
    rows.Next();
    return rows.Int(0);
}

std::string TreeTable::NumberOf(const TreePlace& place) {
    std::string number = std::to_string(PositionOf(place) + 1);
    std::optional<TreePlace> parent = Find(place.BaselineId, place.ParentId);
    while (parent && parent->VersionId) {
        number = std::to_string(PositionOf(*parent) + 1) + "." + number;
        parent = Find(place.BaselineId, parent->ParentId);
    }
    return number;
}

std::vector<ObjectId> TreeTable::Branch(ObjectId baselineId, ObjectId nodeId) {
    std::vector<ObjectId> branch{nodeId};
    for (std::size_t i = 0; i < branch.size(); ++i) {
        Rows rows = FDatabase.Query("select node_id from tree_node where baseline_id = $1 and parent_id = $2 "
                                    "order by order_key",
                                    baselineId, branch[i]);
        while (rows.Next())
            branch.push_back(rows.Int(0));
    }
    return branch;
}

bool TreeTable::IsBelow(ObjectId baselineId, ObjectId nodeId, ObjectId ancestorId) {
    std::optional<TreePlace> place = Find(baselineId, nodeId);
    while (place) {
        if (place->ParentId == ancestorId) return true;
        place = Find(baselineId, place->ParentId);
    }
    return false;
}

void TreeTable::AddRow(const TreePlace& node) {
    FDatabase.Run("insert into tree_node (baseline_id, parent_id, order_key, node_id, type_id, version_id, "
                  "child_count) values ($1, $2, $3, $4, $5, nullif($6, 0), $7)",
                  node.BaselineId, node.ParentId, node.OrderKey, node.NodeId, node.TypeId, node.VersionId,
                  node.ChildCount);
}

void TreeTable::InsertType(ObjectId baselineId, ObjectId typeId) {
    AddRow({baselineId, baselineId, LastOrderKey(baselineId, baselineId) + OrderGap, typeId, typeId, 0, 0});
}

void TreeTable::Insert(const TreePlace& node, int position) {
    TreePlace row = node;
    row.OrderKey = FreeKey(node.BaselineId, node.ParentId, position);
    AddRow(row);
    CountChildren(node.BaselineId, node.ParentId, 1);
}

std::int64_t TreeTable::AppendAfter(std::int64_t lastOrderKey, const TreePlace& node) {
    TreePlace row = node;
    row.OrderKey = lastOrderKey + OrderGap;
    AddRow(row);
    return row.OrderKey;
}

void TreeTable::SetChildCount(ObjectId baselineId, ObjectId nodeId, int count) {
    FDatabase.Run("update tree_node set child_count = $3 where baseline_id = $1 and node_id = $2", baselineId,
                  nodeId, count);
}

void TreeTable::Move(const TreePlace& node, int position) {
    // Taken out first, so that the position counts the others alone.
    FDatabase.Run("delete from tree_node where baseline_id = $1 and node_id = $2", node.BaselineId,
                  node.NodeId);
    TreePlace row = node;
    row.OrderKey = FreeKey(node.BaselineId, node.ParentId, position);
    AddRow(row);
}

void TreeTable::Reparent(const TreePlace& node, ObjectId newParentId) {
    const std::int64_t key = LastOrderKey(node.BaselineId, newParentId) + OrderGap;
    FDatabase.Run(
        "update tree_node set parent_id = $3, order_key = $4 where baseline_id = $1 and node_id = $2",
        node.BaselineId, node.NodeId, newParentId, key);
    CountChildren(node.BaselineId, node.ParentId, -1);
    CountChildren(node.BaselineId, newParentId, 1);
}

void TreeTable::SetVersion(ObjectId baselineId, ObjectId nodeId, ObjectId typeId, std::int64_t versionId) {
    FDatabase.Run(
        "update tree_node set type_id = $3, version_id = $4 where baseline_id = $1 and node_id = $2",
        baselineId, nodeId, typeId, versionId);
}

void TreeTable::RemoveBranch(const TreePlace& node, const std::vector<ObjectId>& branch) {
    for (ObjectId id : branch)
        FDatabase.Run("delete from tree_node where baseline_id = $1 and node_id = $2", node.BaselineId, id);
    CountChildren(node.BaselineId, node.ParentId, -1);
}

void TreeTable::Copy(ObjectId fromBaselineId, ObjectId toBaselineId) {
    FDatabase.Run("insert into tree_node (baseline_id, parent_id, order_key, node_id, type_id, version_id, "
                  "child_count) select $2, case when parent_id = $1 then $2 else parent_id end, order_key, "
                  "node_id, type_id, version_id, child_count from tree_node where baseline_id = $1 "
                  "order by parent_id, order_key",
                  fromBaselineId, toBaselineId);
}

void TreeTable::CountChildren(ObjectId baselineId, ObjectId parentId, int change) {
    FDatabase.Run("update tree_node set child_count = child_count + $3 "
                  "where baseline_id = $1 and node_id = $2",
                  baselineId, parentId, change);
}

std::int64_t TreeTable::LastOrderKey(ObjectId baselineId, ObjectId parentId) {
    Rows rows =
        FDatabase.Query("select max(order_key) from tree_node where baseline_id = $1 and parent_id = $2",
                        baselineId, parentId);
    rows.Next();
    return rows.Int64(0);
}

std::optional<std::int64_t> TreeTable::KeyAt(ObjectId baselineId, ObjectId parentId, int position) {
    Rows rows = FDatabase.Query("select order_key from tree_node where baseline_id = $1 and parent_id = $2 "
                                "order by order_key limit 1 offset $3",
                                baselineId, parentId, position);
    return rows.Next() ? std::optional(rows.Int64(0)) : std::nullopt;
}

std::int64_t TreeTable::FreeKey(ObjectId baselineId, ObjectId parentId, int position) {
    for (;;) {
        const std::optional<std::int64_t> after = KeyAt(baselineId, parentId, position);
        if (!after) return LastOrderKey(baselineId, parentId) + OrderGap;
        const std::int64_t before =
            position > 0 ? *KeyAt(baselineId, parentId, position - 1) : *after - 2 * OrderGap;
        if (*after - before >= 2) return before + (*after - before) / 2;
        SpreadKeys(baselineId, parentId);
    }
}

void TreeTable::SpreadKeys(ObjectId baselineId, ObjectId parentId) {
    std::vector<ObjectId> siblings;
    {
        Rows rows = FDatabase.Query("select node_id from tree_node where baseline_id = $1 and parent_id = $2 "
                                    "order by order_key",
                                    baselineId, parentId);
        while (rows.Next())
            siblings.push_back(rows.Int(0));
    }
    // In two passes through keys that nobody has, as no two siblings may share one
    // even for a moment: below all of them, then from one gap upwards.
    const std::int64_t first = *KeyAt(baselineId, parentId, 0);
    std::int64_t key = std::min<std::int64_t>(first, 0) - static_cast<std::int64_t>(siblings.size()) - 1;
    const auto place = [&](ObjectId id) {
        FDatabase.Run("update tree_node set order_key = $3 where baseline_id = $1 and node_id = $2",
                      baselineId, id, key);
    };
    for (ObjectId id : siblings) {
        ++key;
        place(id);
    }
    key = 0;
    for (ObjectId id : siblings) {
        key += OrderGap;
        place(id);
    }
}

} // namespace Backend
