// Whether a requirements database is whole: the file itself, its keys, and the tree,
// in which every node hangs below a type by exactly one way and counts its children
// rightly.
#pragma once

#include "backend/store/Database.h"

#include <gtest/gtest.h>

inline int FirstNumber(Backend::Database& database, Backend::Sql sql) {
    Backend::Rows rows = database.Query(sql);
    return rows.Next() ? rows.Int(0) : -1;
}

inline void ExpectSound(Backend::Database& database) {
    {
        Backend::Rows rows = database.Query("select integrity_check from pragma_integrity_check");
        ASSERT_TRUE(rows.Next());
        EXPECT_EQ(rows.Text(0), "ok");
    }
    EXPECT_EQ(FirstNumber(database, "select count(*) from pragma_foreign_key_check"), 0);
    EXPECT_EQ(FirstNumber(database,
                          "select count(*) from tree_node n where n.child_count <> (select count(*) from "
                          "tree_node c where c.baseline_id = n.baseline_id and c.parent_id = n.node_id)"),
              0);
    EXPECT_EQ(FirstNumber(database,
                          "select count(*) from tree_node n where n.version_id is not null and not exists "
                          "(select 1 from tree_node p where p.baseline_id = n.baseline_id and "
                          "p.node_id = n.parent_id and p.type_id = n.type_id)"),
              0);
    EXPECT_EQ(FirstNumber(database,
                          "select count(*) from tree_node n join baseline b on b.id = n.baseline_id "
                          "join requirement_version v on v.id = n.version_id where v.type_id <> n.type_id "
                          "or b.type = 1 and v.minor <> (select max(minor) from requirement_version where "
                          "requirement_id = n.node_id)"),
              0);
    EXPECT_EQ(
        FirstNumber(database,
                    "with recursive below (baseline, id) as (select baseline_id, node_id from tree_node "
                    "where version_id is null union all select n.baseline_id, n.node_id from tree_node n "
                    "join below on n.baseline_id = below.baseline and n.parent_id = below.id) "
                    "select (select count(*) from tree_node) - (select count(*) from below)"),
        0);
}
