// What opening a branch of 10,000 children costs beside the bare work: reading those
// rows by the SQLite C API, and inserting that many items with text and icon into a
// bare Qt tree.
#include "Limits.h"

#include "backend/exchange/GeneratedProject.h"
#include "platform/widgets/tree/TreeView.h"
#include "server/UQuoraneStHelpers.h"
#include "support/PanelStage.h"

#include <sqlite3.h>

#include <QApplication>
#include <QIcon>
#include <QPixmap>
#include <QTreeWidget>

#include <stdexcept>

namespace {

constexpr int ChildCount = 10'000;

struct TRow {
    std::int64_t Fields[7] = {};
    std::string Name;
    std::string Tag;
};

// The rows of one branch with all that a node shows, read from a connection that is
// open by a statement that is prepared.
class TBareBranch {
public:
    TBareBranch(const std::string& path, std::int64_t parent) {
        if (sqlite3_open_v2(path.c_str(), &FDatabase, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK)
            throw std::runtime_error("cannot open " + path);
        const char* sql =
            "select n.node_id, n.parent_id, n.type_id, n.version_id, n.child_count, "
            "case when r.message_count = 0 then 0 else r.message_count > coalesce((select c.read_messages "
            "from read_count c where c.user_id = 1 and c.requirement_id = r.id), 0) end, "
            "exists (select 1 from interest i where i.user_id = 1 and i.requirement_id = n.node_id), "
            "v.name, t.tag "
            "from tree_node n join requirement_version v on v.id = n.version_id "
            "join requirement r on r.id = n.node_id join requirement_type t on t.id = n.type_id "
            "where n.baseline_id = (select baseline_id from tree_node where node_id = ?1) "
            "and n.parent_id = ?1 order by n.order_key";
        if (sqlite3_prepare_v2(FDatabase, sql, -1, &FStatement, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(FDatabase));
        sqlite3_bind_int64(FStatement, 1, parent);
    }
    ~TBareBranch() {
        sqlite3_finalize(FStatement);
        sqlite3_close(FDatabase);
    }
    TBareBranch(const TBareBranch&) = delete;
    TBareBranch& operator=(const TBareBranch&) = delete;

    std::vector<TRow> Read() {
        std::vector<TRow> rows;
        while (sqlite3_step(FStatement) == SQLITE_ROW) {
            TRow row;
            for (int field = 0; field < 7; ++field)
                row.Fields[field] = sqlite3_column_int64(FStatement, field);
            row.Name = reinterpret_cast<const char*>(sqlite3_column_text(FStatement, 7));
            row.Tag = reinterpret_cast<const char*>(sqlite3_column_text(FStatement, 8));
            rows.push_back(std::move(row));
        }
        sqlite3_reset(FStatement);
        return rows;
    }

private:
    sqlite3* FDatabase = nullptr;
    sqlite3_stmt* FStatement = nullptr;
};

// A bare Qt tree that takes a branch with text and icon.
class TBareTree {
public:
    TBareTree() {
        QPixmap picture(16, 16);
        picture.fill(Qt::gray);
        FIcon = QIcon(picture);
        FTree.setUniformRowHeights(true);
        FTree.resize(400, 700);
        FTree.show();
    }

    void Empty() {
        FTree.clear();
        FParent = new QTreeWidgetItem(&FTree);
        QApplication::processEvents();
    }

    void Fill(const std::vector<TRow>& rows) {
        QList<QTreeWidgetItem*> items;
        items.reserve(static_cast<int>(rows.size()));
        for (const TRow& row : rows) {
            auto* item = new QTreeWidgetItem;
            item->setText(0, QString::fromStdString(row.Name));
            item->setIcon(0, FIcon);
            items.append(item);
        }
        FParent->addChildren(items);
        FParent->setExpanded(true);
        QApplication::processEvents();
    }

private:
    QTreeWidget FTree;
    QTreeWidgetItem* FParent = nullptr;
    QIcon FIcon;
};

} // namespace

TLimits MeasureBranch() {
    const TTempFolder folder;
    const std::string database = folder.File("generated.db");
    Exchange::BuildGeneratedDatabase(database, {ChildCount + 100, ChildCount},
                                     Backend::BulkWriter::Hashing::QuickForTests);
    TPanelStage stage(database);
    if (!stage.LogOn("local", "admin", "admin")) throw std::runtime_error("the logon was refused");
    TTreeView& tree = *stage.Panel().trvRequirements;
    // Observed calls would be timed with what observing them costs.
    Sdk::RemoveCallObserver(stage.Server->Calls);
    const auto baseline = stage.Helpers().CurrentBaseline;
    TTreeNode* branch = nullptr;
    // Nothing of the tree is known to the client before each opening.
    const auto forget = [&] {
        baseline->Get_RequirementTree()->Get_Manager()->Get_Cache()->clear();
        stage.Panel().SelectBaseLine(baseline);
        TTreeNode& type = *tree.GetFirstNode()->GetFirstChild();
        type.Expand(false);
        branch = type.GetFirstChild();
        QApplication::processEvents();
    };
    const auto open = [&] {
        branch->Expand(false);
        QApplication::processEvents();
    };
    forget();
    TBareBranch bareBranch(database,
                           branch->DataAs<TRequirementTreeNodeContainer>()->Node->Get_ID()->Get_IDNumber());
    TBareTree bareTree;
    std::vector<TRow> rows;
    const TComparison times = CompareTimes(9, {open, forget},
                                           {{[&] { rows = bareBranch.Read(); }, [&] { rows.clear(); }},
                                            {[&] { bareTree.Fill(rows); }, [&] { bareTree.Empty(); }}});
    if (branch->Count() < ChildCount) throw std::runtime_error("the branch is not whole");
    if (rows.size() != static_cast<std::size_t>(branch->Count()))
        throw std::runtime_error("the bare reading found other rows");
    const std::string detail =
        std::to_string(times.Ours) + " ms against " + std::to_string(times.Bare) + " ms";
    return {{"branch of 10,000 against bare SQL and Qt", 2.5, times.Ratio, "x", detail}};
}
