// What the save of one requirement costs, from the client's object to the disk and
// back, beside one bare transaction that writes the same rows into a database of the
// same content and is synced as fully.
#include "Limits.h"

#include "backend/exchange/GeneratedProject.h"
#include "support/SampleServer.h"

#include <sqlite3.h>

#include <chrono>
#include <cstdio>
#include <memory>
#include <stdexcept>

using namespace Quorane_TLB;

namespace {

constexpr int Rounds = 400;

std::string NameOf(int round) {
    return "Saved for the " + std::to_string(round) + "th time";
}

std::string DescriptionOf(const std::string& before, int round) {
    return before + "<p>" + std::to_string(round) + "</p>";
}

// The rows of one save, written by statements that are prepared.
class TBareSaves {
public:
    TBareSaves(const std::string& path, std::int32_t requirement)
        : FRequirement(requirement) {
        if (sqlite3_open_v2(path.c_str(), &FDatabase, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK)
            throw std::runtime_error("cannot open " + path);
        Run(Prepare("pragma journal_mode = wal"));
        Run(Prepare("pragma synchronous = full"));
        Run(Prepare("pragma foreign_keys = on"));
        FBegin = Prepare("begin immediate");
        FText = Prepare("insert into requirement_text (description, validation) values (?1, '')");
        FVersion = Prepare("insert into requirement_version (requirement_id, major, minor, type_id, name, "
                           "owner_id, text_id, "
                           "changed, changed_by, comment) select ?1, 1, ?2, v.type_id, ?3, v.owner_id, "
                           "last_insert_rowid(), v.changed + 1, v.changed_by, '' from requirement_version v "
                           "join tree_node n on n.version_id = v.id where n.node_id = ?1");
        FValues =
            Prepare("insert into attribute_value select ?1, a.attribute_id, a.integer_value, a.real_value, "
                    "a.text_value from attribute_value a join tree_node n on n.version_id = a.version_id "
                    "where n.node_id = ?2");
        FChange = Prepare("insert into history_change values (?1, ?2, ?3, 1, ?4, 1, ?5)");
        FPlace = Prepare("update tree_node set version_id = ?1 where baseline_id = "
                         "(select id from baseline where type = 1) and node_id = ?2");
        FCommit = Prepare("commit");
    }
    ~TBareSaves() {
        for (sqlite3_stmt* statement : {FBegin, FText, FVersion, FValues, FChange, FPlace, FCommit})
            sqlite3_finalize(statement);
        sqlite3_close(FDatabase);
    }
    TBareSaves(const TBareSaves&) = delete;
    TBareSaves& operator=(const TBareSaves&) = delete;

    void Save(int round, const std::string& name, const std::string& description) {
        Run(FBegin);
        Bind(FText, 1, description);
        Run(FText);
        sqlite3_bind_int64(FVersion, 1, FRequirement);
        sqlite3_bind_int64(FVersion, 2, round);
        Bind(FVersion, 3, name);
        Run(FVersion);
        const std::int64_t version = sqlite3_last_insert_rowid(FDatabase);
        sqlite3_bind_int64(FValues, 1, version);
        sqlite3_bind_int64(FValues, 2, FRequirement);
        Run(FValues);
        AddChange(version, 0, "Name", FName, name);
        AddChange(version, 1, "Description", FDescription, description);
        sqlite3_bind_int64(FPlace, 1, version);
        sqlite3_bind_int64(FPlace, 2, FRequirement);
        Run(FPlace);
        Run(FCommit);
        FName = name;
        FDescription = description;
    }

private:
    sqlite3_stmt* Prepare(const char* sql) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(FDatabase, sql, -1, &statement, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(FDatabase));
        return statement;
    }
    void Run(sqlite3_stmt* statement) {
        int code = SQLITE_ROW;
        while (code == SQLITE_ROW)
            code = sqlite3_step(statement);
        if (code != SQLITE_DONE) throw std::runtime_error(sqlite3_errmsg(FDatabase));
        sqlite3_reset(statement);
    }
    static void Bind(sqlite3_stmt* statement, int index, const std::string& text) {
        sqlite3_bind_text(statement, index, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
    }
    void AddChange(std::int64_t version, int position, const char* attribute, const std::string& before,
                   const std::string& after) {
        sqlite3_bind_int64(FChange, 1, version);
        sqlite3_bind_int64(FChange, 2, position);
        sqlite3_bind_text(FChange, 3, attribute, -1, SQLITE_STATIC);
        Bind(FChange, 4, before);
        Bind(FChange, 5, after);
        Run(FChange);
    }

    const std::int64_t FRequirement;
    std::string FName, FDescription;
    sqlite3* FDatabase = nullptr;
    sqlite3_stmt *FBegin = nullptr, *FText = nullptr, *FVersion = nullptr, *FValues = nullptr,
                 *FChange = nullptr, *FPlace = nullptr, *FCommit = nullptr;
};

} // namespace

TLimits MeasureSave() {
    const TTempFolder folder;
    // Two files: writers of the same file throw each other's cached pages away.
    const std::string database = folder.File("saved.db"), other = folder.File("bare.db");
    for (const std::string& path : {database, other})
        Exchange::BuildGeneratedDatabase(path, {1'000, 100}, Backend::BulkWriter::Hashing::QuickForTests);
    TSampleServer server(database);
    Sdk::RemoveCallObserver(server.Calls);
    const auto session = CoQuoraneServerFactory::Create()->Create1(u"local")->login(u"admin", u"admin");
    const auto project = Cast<IProject>(session->Get_Projects()->Get_Item(0).AsDispatch());
    const auto type = project->Get_CurrentBaseline()->Get_RequirementTree()->Get_Root()->getChild(0);
    const std::int32_t number = type->getChild(0)->Get_ID()->Get_IDNumber();
    const auto requirement = session->getLatestRequirement(number);
    const std::string description = Utf8(requirement->Get_Description()->Get_Text());
    TBareSaves bare(other, number);
    requirement->lock();

    int round = 0;
    std::string name, text;
    const auto change = [&] {
        ++round;
        name = NameOf(round);
        text = DescriptionOf(description, round);
        requirement->Set_Name(Wide(name));
        requirement->Get_Description()->Set_Text(Wide(text));
    };
    const TComparison times = CompareTimes(Rounds, {[&] { requirement->save(); }, change},
                                           {{[&] { bare.Save(round, name, text); }}});
    requirement->unlock();
    if (requirement->Get_Version()->Get_MinorVersion() != round)
        throw std::runtime_error("a save has written no version");
    char detail[64];
    std::snprintf(detail, sizeof detail, "%.3f ms against %.3f ms", times.Ours, times.Bare);
    return {{"save against one bare transaction", 2.5, times.Ratio, "x", detail}};
}
