#include "backend/exchange/SampleDatabase.h"

#include "backend/exchange/GeneratedProject.h"
#include "backend/exchange/Outline.h"
#include "exchange/TestDatabase.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace Exchange {
namespace {

using testing::ElementsAre;

constexpr auto Quick = Backend::BulkWriter::Hashing::QuickForTests;

// Built once for all cases, which only read it.
class SampleDatabase : public testing::Test {
protected:
    static void SetUpTestSuite() {
        Folder = std::make_unique<TTempFolder>();
        Path = Folder->File("sample.db");
        BuildSampleDatabase({Path, QUORANE_SAMPLES_DIR, {}, Quick});
    }
    static void TearDownTestSuite() { Folder.reset(); }

    static std::vector<std::string> Rows(Backend::Sql sql, int columns) {
        return TestDatabase::RowsOf(Path, sql, columns);
    }

    static std::unique_ptr<TTempFolder> Folder;
    static std::string Path;
};

std::unique_ptr<TTempFolder> SampleDatabase::Folder;
std::string SampleDatabase::Path;

TEST_F(SampleDatabase, HoldsTwoProjectsOfFourTypes) {
    EXPECT_THAT(
        Rows(
            "select p.name, t.tag, (select count(*) from tree_node n join baseline b on b.id = n.baseline_id "
            "where n.type_id = t.id and n.version_id is not null and b.type = 1) from project p join "
            "requirement_type t on t.project_id = p.id order by t.id",
            3),
        ElementsAre("Hearth Controller|SYS|31", "Hearth Controller|FW|50", "Hearth Controller|APP|27",
                    "Hearth Service Portal|PRT|42"));
}

TEST_F(SampleDatabase, NestsFiveLevelsDeep) {
    EXPECT_THAT(
        Rows(
            "with recursive t(id, depth) as (select node_id, 0 from tree_node where version_id is null union "
            "all select n.node_id, depth + 1 from tree_node n join t on n.parent_id = t.id) select "
            "max(depth) "
            "from t",
            1),
        ElementsAre("5"));
}

struct ContentCase {
    const char* Name;
    Backend::Sql Count;
    int AtLeast;
};

class SampleContent : public SampleDatabase, public testing::WithParamInterface<ContentCase> {};

TEST_P(SampleContent, IsThere) {
    EXPECT_GE(std::stoi(Rows(GetParam().Count, 1).at(0)), GetParam().AtLeast);
}

INSTANTIATE_TEST_SUITE_P(
    All, SampleContent,
    testing::Values(
        ContentCase{"AttributeKinds", "select count(distinct kind) from attribute", 7},
        ContentCase{"ShortTexts", "select count(*) from attribute where kind = 7 and max_length <= 255", 1},
        ContentCase{"LongTexts", "select count(*) from attribute where kind = 7 and max_length > 255", 1},
        ContentCase{
            "MultipleListsOfTexts",
            "select count(*) from attribute a join attribute_entry e on e.attribute_id = a.id where role = 0 "
            "and max_selections > 1 and text_entry is not null",
            1},
        ContentCase{"SingleListsOfUsers",
                    "select count(*) from attribute a join attribute_entry e on e.attribute_id = a.id where "
                    "max_selections = 1 and user_id is not null",
                    1},
        ContentCase{"MultipleListsOfGroups",
                    "select count(*) from attribute a join attribute_entry e on e.attribute_id = a.id where "
                    "max_selections > 1 and group_id is not null",
                    1},
        ContentCase{"Icons", "select count(*) from custom_tab where length(icon) = 768", 3},
        ContentCase{"TabsWithoutIcon", "select count(*) from custom_tab where length(icon) = 0", 1},
        ContentCase{
            "RequirementsWithThreeRevisions",
            "select count(*) from (select 1 from requirement_version group by requirement_id having count(*) "
            ">= 3)",
            100},
        ContentCase{"Glossaries", "select count(*) from glossary", 3},
        ContentCase{"TracesBetweenRequirements",
                    "select count(*) from trace where from_object is null and to_object is null", 50},
        ContentCase{"TracesToSourceFiles", "select count(*) from trace where to_object is not null", 20},
        ContentCase{
            "TracesFromSourceFiles",
            "select count(*) from trace t join external_object o on o.id = t.from_object where external_key "
            "like '%/source/%'",
            1},
        ContentCase{
            "TracesFromOtherTools",
            "select count(*) from trace t join external_object o on o.id = t.from_object where external_key "
            "not like '%/source/%'",
            1},
        ContentCase{"TracesBetweenProjects",
                    "select count(*) from trace t join requirement f on f.id = from_requirement join "
                    "requirement r on "
                    "r.id = to_requirement where f.project_id <> r.project_id",
                    1},
        ContentCase{"SuspectTraces",
                    "select count(*) from trace where suspect = 1 and to_requirement is not null", 5},
        ContentCase{"SuspectSourceTraces",
                    "select count(*) from trace where suspect = 1 and to_object is not null", 1},
        ContentCase{"Replies", "select count(*) from message where parent_id is not null", 5},
        ContentCase{
            "MessagesThatAllHaveRead",
            "select count(*) from (select 1 from message_read group by message_id having count(*) = (select "
            "count(*) from user_account))",
            1},
        ContentCase{
            "MessagesThatSomeHaveNotRead",
            "select count(*) from (select 1 from message_read group by message_id having count(*) < 3)", 5},
        ContentCase{"FileReferences", "select count(*) from document_reference where kind = 1", 1},
        ContentCase{"WebReferences", "select count(*) from document_reference where kind = 2", 1},
        ContentCase{"TextReferences", "select count(*) from document_reference where kind = 3", 1},
        ContentCase{"KeyReferences", "select count(*) from document_reference where is_key = 1", 1},
        ContentCase{"Responsibilities",
                    "select count(distinct requirement_id) from responsibility r join "
                    "requirement_version v on v.id = r.version_id",
                    15},
        ContentCase{"Pictures", "select count(*) from image", 2},
        ContentCase{"DisabledUsers", "select count(*) from user_account where disabled = 1", 1},
        ContentCase{"UsersWhoMustChangeTheirPassword",
                    "select count(*) from user_account where must_change_password = 1", 1},
        ContentCase{"Roles", "select count(distinct role) from project_right", 4}),
    [](const auto& row) { return row.param.Name; });

TEST_F(SampleDatabase, HasBaselinesOfEachTypeAndFrozenOnesHoldTheirDay) {
    EXPECT_THAT(
        Rows("select b.name, b.type, (select count(*) from tree_node n where n.baseline_id = b.id and "
             "version_id is not null) from baseline b order by b.id",
             3),
        ElementsAre("Current|1|108", "Trade Fair Demo|3|87", "Release 1.0|2|87", "Current|1|42",
                    "Pilot|2|31"));
    EXPECT_THAT(
        Rows("select count(*) from baseline b join tree_node n on n.baseline_id = b.id join "
             "requirement_version v on v.id = n.version_id where b.type <> 1 and v.changed > b.created",
             1),
        ElementsAre("0"));
}

TEST_F(SampleDatabase, TracesOnlySourceFilesThatAreThere) {
    for (const auto& path :
         Rows("select external_key from external_object where external_key like '%/source/%'", 1))
        EXPECT_TRUE(std::filesystem::exists(path)) << path;
}

TEST_F(SampleDatabase, IsTheSameEachTime) {
    const TTempFolder folder;
    const auto again = folder.File("again.db");
    BuildSampleDatabase({again, QUORANE_SAMPLES_DIR, {}, Quick});
    constexpr Backend::Sql versions =
        "select id, requirement_id, minor, name, changed from requirement_version";
    EXPECT_EQ(TestDatabase::RowsOf(again, versions, 5), Rows(versions, 5));
}

struct BrokenCase {
    const char* Name;
    const char* Requirement; // the fields of the only one
    const char* Message;
};

class BrokenSamples : public testing::TestWithParam<BrokenCase> {};

TEST_P(BrokenSamples, AreToldWithTheirPlace) {
    const TTempFolder folder;
    std::filesystem::create_directory(folder.Path() / "p");
    WriteFile(folder.Path() / "people.txt", "# Ann\nkind: user\nlogin: ann\npassword: x\n");
    WriteFile(folder.Path() / "p" / "project.txt",
              "# P\nkind: project\nstart: 2025-01-01\nmanagers: ann\nmessages read until: 2025-01-01\n\n"
              "## T\nkind: type\ntag: T\nfile: t.txt\nstatuses: Draft\npriorities: Must\nowner: ann\n");
    WriteFile(folder.Path() / "p" / "t.txt",
              std::string("# R\nstatus: Draft\npriority: Must\n") + GetParam().Requirement);
    try {
        BuildSampleDatabase({folder.File("s.db"), folder.Path().string(), {}, Quick});
        FAIL();
    } catch (const OutlineError& error) {
        EXPECT_THAT(error.what(),
                    testing::AllOf(testing::HasSubstr("t.txt:"), testing::HasSubstr(GetParam().Message)));
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, BrokenSamples,
    testing::Values(
        BrokenCase{"UnknownStatus", "status: Done", "\"Done\" is no status"},
        BrokenCase{"UnknownOwner", "owner: bob", "there is no \"bob\""},
        BrokenCase{"UnknownAttribute", "@Size: 3", "4: the type has no attribute Size"},
        BrokenCase{"UnknownTrace", "trace: nobody", "there is no \"nobody\""},
        BrokenCase{"SourceFileMissing", "source: a.cpp", "4: there is no file"},
        BrokenCase{"RepeatedId", "id: a\n# S\nstatus: Draft\npriority: Must\nid: a", "\"a\" is taken"},
        BrokenCase{"MessageWithoutSubject", "message: 2025-01-01 | ann | text", "4: a message"},
        BrokenCase{"ChildOlderThanParent", "\n## S\nstatus: Draft\npriority: Must\ncreated: 2024-01-01",
                   "before the one above"}),
    [](const auto& row) { return row.param.Name; });

TEST(GeneratedDatabase, HasTheSizeAndTheLongBranchThatWereAskedFor) {
    const TTempFolder folder;
    const auto path = folder.File("big.db");
    BuildGeneratedDatabase(path, {2500, 700}, Quick);
    EXPECT_THAT(
        TestDatabase::RowsOf(path, "select count(*), max(child_count), sum(child_count) from tree_node", 3),
        ElementsAre("2501|710|2500"));
    EXPECT_THAT(
        TestDatabase::RowsOf(path,
                             "select count(*) from requirement_text where length(description) between "
                             "1000 and 3000",
                             1),
        ElementsAre("2500"));
}

} // namespace
} // namespace Exchange
