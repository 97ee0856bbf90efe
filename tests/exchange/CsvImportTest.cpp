#include "backend/exchange/CsvImport.h"

#include "exchange/TestDatabase.h"

#include <gmock/gmock.h>

namespace Exchange {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr Backend::Instant Now = 1'750'000'000'000'000;

class CsvImport : public testing::Test {
protected:
    ImportReport Import(const std::string& text, const std::function<void(ImportOptions&)>& change = {},
                        int pages = 0) {
        Backend::BulkWriter writer(FDatabase.Path, Backend::BulkWriter::Hashing::QuickForTests);
        if (pages > 0) writer.LimitPages(pages);
        ImportOptions options;
        options.Table.Columns = {"id", "name", "text", "why", {"part"}, ""};
        options.Table.Nesting = Nesting::ById;
        options.ProjectName = "P";
        options.AuthorId = FDatabase.Root;
        if (change) change(options);
        return ImportCsv(writer, text, options, Now);
    }

    // "parent's name > name minor version" of all requirements as they are now.
    std::vector<std::string> Tree() const {
        return FDatabase.Rows(
            "select coalesce((select pv.name from tree_node p join requirement_version pv on "
            "pv.id = p.version_id where p.node_id = n.parent_id), '') || ' > ' || v.name || ' ' || "
            "v.minor from tree_node n join requirement_version v on v.id = n.version_id "
            "order by n.node_id",
            1);
    }

    std::vector<std::string> Values(const char* name) const {
        std::vector<std::string> values;
        for (const auto& row :
             FDatabase.Rows("select a.name, v.text_value from tree_node n join attribute_value v on "
                            "v.version_id = n.version_id join attribute a on a.id = v.attribute_id "
                            "order by n.node_id",
                            2))
            if (row.starts_with(name + std::string("|")))
                values.push_back(row.substr(std::string(name).size() + 1));
        return values;
    }

    TestDatabase FDatabase;
};

const char* const Table = "id,name,text,why,More\nA,one,x,,m\nA.1,two,\"y\n<z>\",because,\nB,three,,,n\n";

TEST_F(CsvImport, MakesProjectTypeAndTree) {
    const auto report = Import(Table);
    EXPECT_TRUE(report.Written && report.NewProject && report.NewType);
    EXPECT_EQ(report.Taken, 3);
    EXPECT_THAT(Tree(), ElementsAre(" > one 0", "one > two 0", " > three 0"));
    EXPECT_THAT(Values("id"), ElementsAre("A", "A.1", "B"));
    EXPECT_THAT(Values("More"), ElementsAre("m", "n"));
    EXPECT_THAT(FDatabase.Rows("select t.description from tree_node n join requirement_version v on v.id = "
                               "n.version_id join requirement_text t on t.id = v.text_id order by n.node_id",
                               1),
                ElementsAre("<p>x</p>", "<p>y<br />&lt;z&gt;</p><h4>Rationale</h4><p>because</p>", ""));
    EXPECT_THAT(FDatabase.Rows("select name, tag from requirement_type", 2),
                ElementsAre("Imported Requirement|REQ"));
}

TEST_F(CsvImport, NamesTheAuthorInTheHistory) {
    Import(Table);
    EXPECT_THAT(FDatabase.Rows("select distinct u.user_name, v.comment from requirement_version v join "
                               "user_account u on u.id = v.changed_by",
                               2),
                ElementsAre("root|Imported"));
}

struct OutcomeCase {
    const char* Name;
    bool Skip, DryRun;
    std::string BadRecord; // in line 3
    bool Written;
    int Taken;
    std::vector<int> RefusedLines;
};

class Outcomes : public CsvImport, public testing::WithParamInterface<OutcomeCase> {};

TEST_P(Outcomes, WriteEverythingOrNothing) {
    const auto& row = GetParam();
    const auto before = FDatabase.Rows("select name, value from counter", 2);
    const auto report = Import("id,name,text,why\nA,one,x,\n" + row.BadRecord + "\nA.1,two,x,\nC,four,x,\n",
                               [&](ImportOptions& options) {
                                   options.SkipBad = row.Skip;
                                   options.DryRun = row.DryRun;
                               });
    std::vector<int> lines;
    for (const auto& refusal : report.Refusals)
        lines.push_back(refusal.Line);
    EXPECT_EQ(lines, row.RefusedLines);
    EXPECT_EQ(report.Written, row.Written);
    EXPECT_EQ(report.Taken, row.Taken);
    EXPECT_EQ(Tree().size(), row.Written ? static_cast<std::size_t>(row.Taken) : 0U);
    EXPECT_EQ(FDatabase.Rows("select name, value from counter", 2) == before, !row.Written);
}

INSTANTIATE_TEST_SUITE_P(
    All, Outcomes,
    testing::Values(
        OutcomeCase{"AllGood", false, false, "B,b,x,", true, 4, {}},
        OutcomeCase{"AllGoodButDryRun", false, true, "B,b,x,", false, 4, {}},
        OutcomeCase{"StopsAtBadRecord", false, false, "B,b", false, 0, {3}},
        OutcomeCase{"SkipsBadRecord", true, false, "B,b", true, 3, {3}},
        OutcomeCase{"DryRunSkipsBadRecord", true, true, "B,b", false, 3, {3}},
        OutcomeCase{
            "StopsAtRefusalOfTheDatabase", false, false, "B," + std::string(256, 'b') + ",x,", false, 1, {3}},
        OutcomeCase{
            "SkipsRefusalOfTheDatabase", true, false, "B," + std::string(256, 'b') + ",x,", true, 3, {3}}),
    [](const auto& row) { return row.param.Name; });

TEST_F(CsvImport, LeavesOutWhatGoesUnderARefusedRecord) {
    const auto report = Import("id,name,text,why\nA," + std::string(256, 'a') + ",x,\nA.1,b,x,\nC,c,x,\n",
                               [](ImportOptions& options) { options.SkipBad = true; });
    ASSERT_EQ(report.Refusals.size(), 2U);
    EXPECT_EQ(report.Refusals[1].Line, 3);
    EXPECT_EQ(report.Refusals[1].Reason, "the record that it goes under was not taken");
    EXPECT_THAT(Tree(), ElementsAre(" > c 0"));
}

TEST_F(CsvImport, WritesNothingWhenNoRecordCanBeTaken) {
    const auto report =
        Import("id,name,text,why\nA,,x,\n", [](ImportOptions& options) { options.SkipBad = true; });
    EXPECT_FALSE(report.Written);
    EXPECT_THAT(FDatabase.Rows("select name from project", 1), testing::IsEmpty());
}

TEST_F(CsvImport, RefusesKnownIdsUnlessToldToUpdate) {
    Import(Table);
    const auto report = Import(Table);
    EXPECT_FALSE(report.Written);
    ASSERT_EQ(report.Refusals.size(), 1U);
    EXPECT_EQ(report.Refusals[0].Line, 2);
    EXPECT_THAT(report.Refusals[0].Reason, HasSubstr("\"A\" is in the project already"));
}

TEST_F(CsvImport, UpdatesWhatDiffersAndAddsWhatIsNew) {
    Import(Table);
    const auto report = Import("id,name,text,why,More\nA,one,x,,changed\nA.1,two,\"y\n<z>\",because,\n"
                               "A.1.1,new,,,\n",
                               [](ImportOptions& options) { options.Update = true; });
    EXPECT_TRUE(report.Written);
    EXPECT_EQ(report.Changed, 1);
    EXPECT_EQ(report.AsBefore, 1);
    EXPECT_EQ(report.Taken, 1);
    EXPECT_EQ(report.Missing, 1);
    EXPECT_THAT(Tree(), ElementsAre(" > one 1", "one > two 0", " > three 0", "two > new 0"));
    EXPECT_THAT(Values("More"), ElementsAre("changed", "n"));
}

TEST_F(CsvImport, FindsItsHeadingsAgain) {
    const auto byColumns = [](ImportOptions& options) {
        options.Table.Nesting = Nesting::ByColumns;
        options.Update = true;
    };
    EXPECT_EQ(Import("id,name,text,why,part\n1,a,,,P\n", byColumns).Headings, 1);
    EXPECT_EQ(Import("id,name,text,why,part\n1,a,,,P\n2,b,,,P\n", byColumns).Headings, 0);
    EXPECT_THAT(Tree(), ElementsAre(" > P 0", "P > a 0", "P > b 0"));
}

TEST_F(CsvImport, LeavesARequirementAloneThatSomebodyEdits) {
    Import(Table);
    {
        Backend::Connection connection(FDatabase.Path);
        Backend::Transaction writing(connection.Db, Backend::Transaction::Kind::Write);
        connection.Db.Execute(
            "insert into session select 1, x'00', id, '', 0, 9e18 from user_account; "
            "insert into requirement_lock select min(r.id), 1, u.id, 9e18 from requirement r, "
            "user_account u");
        writing.Commit();
    }
    const auto report = Import("id,name,text,why\nA,other,x,\nB,other,x,\n", [](ImportOptions& options) {
        options.Update = true;
        options.SkipBad = true;
    });
    ASSERT_EQ(report.Refusals.size(), 1U);
    EXPECT_EQ(report.Refusals[0].Reason, "the requirement A is locked by root");
    EXPECT_THAT(Tree(), ElementsAre(" > one 0", "one > two 0", " > other 1"));
}

TEST_F(CsvImport, LeavesTheDatabaseAsItWasWhenTheDiskIsFull) {
    Import(Table);
    const auto before = Tree();
    std::string text = "id,name,text,why\n";
    for (int i = 0; i < 5000; ++i)
        text += "R" + std::to_string(i) + ",name," + std::string(500, 'x') + ",\n";
    try {
        Import(
            text, [](ImportOptions& options) { options.SkipBad = true; }, 100);
        FAIL();
    } catch (const Backend::StoreError& error) {
        EXPECT_EQ(error.Reason(), Backend::StoreError::Kind::Full);
    }
    EXPECT_EQ(Tree(), before);
    EXPECT_THAT(FDatabase.Rows("pragma integrity_check", 1), ElementsAre("ok"));
}

TEST_F(CsvImport, TellsItsProgress) {
    std::string text = "id,name,text,why\n";
    for (int i = 0; i < 2500; ++i)
        text += std::to_string(i) + ",name,,\n";
    Backend::BulkWriter writer(FDatabase.Path, Backend::BulkWriter::Hashing::QuickForTests);
    ImportOptions options;
    options.Table.Columns = {"id", "name", "text", "", {}, ""};
    options.ProjectName = "P";
    options.AuthorId = FDatabase.Root;
    std::vector<std::int64_t> told;
    ImportCsv(writer, text, options, Now, [&](std::int64_t written, std::int64_t of) {
        EXPECT_EQ(of, 2500);
        told.push_back(written);
    });
    EXPECT_THAT(told, ElementsAre(1000, 2000));
}

} // namespace
} // namespace Exchange
