#include "exchange/TestDatabase.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include <gmock/gmock.h>
#include <sys/wait.h>

namespace {

using testing::HasSubstr;

struct Outcome {
    int Status = -1;
    std::string Output; // standard output and error
};

// The programs as a user runs them, with a folder of their own for everything.
class Programs : public testing::Test {
protected:
    Outcome Run(const std::string& program, const std::string& arguments,
                const std::string& input = {}) const {
        WriteFile(FFolder.Path() / "input", input);
        const char* build = std::getenv("QUORANE_BUILD_DIR");
        const std::string command = "cd '" + FFolder.Path().string() +
                                    "' && env -u USER -u QUORANE_SAMPLES " + "QUORANE_DATA_DIR=data '" +
                                    (build ? build : ".") + "/bin/" + program + "' " + arguments +
                                    " <input 2>&1";
        Outcome outcome;
        std::FILE* pipe = popen(command.c_str(), "r");
        std::array<char, 4096> buffer{};
        while (const auto count = std::fread(buffer.data(), 1, buffer.size(), pipe))
            outcome.Output.append(buffer.data(), count);
        const int status = pclose(pipe);
        outcome.Status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        return outcome;
    }

    Outcome Admin(const std::string& arguments, const std::string& input = {}) const {
        return Run("quorane-admin", arguments, input);
    }

    void CreateWithRoot() const {
        ASSERT_EQ(Admin("create").Status, 0);
        ASSERT_EQ(Admin("add-user root --admin", "secret\n").Status, 0);
    }

    std::vector<std::string> Rows(Backend::Sql sql, int columns) const {
        return TestDatabase::RowsOf(FFolder.File("data/quorane.db"), sql, columns);
    }

    TTempFolder FFolder;
};

using AdminProgram = Programs;
using SeedProgram = Programs;

TEST_F(AdminProgram, MakesADatabaseOnceAndAddsUsers) {
    CreateWithRoot();
    EXPECT_THAT(Admin("create").Output, HasSubstr("There is a file data/quorane.db already."));
    EXPECT_EQ(Admin("add-user eva --display-name 'Eva Novak' --must-change-password", "p w \r\n").Status, 0);
    EXPECT_THAT(
        Rows("select user_name, name, administrator, must_change_password from user_account order by id", 4),
        testing::ElementsAre("root|root|1|0", "eva|Eva Novak|0|1"));
    EXPECT_THAT(Rows("select password_hash from user_account", 1).at(1), testing::StartsWith("$argon2id$"));
}

TEST_F(AdminProgram, ImportsIntoTheDefaultDatabaseAndGrantsARole) {
    CreateWithRoot();
    ASSERT_EQ(Admin("add-user ben", "x\n").Status, 0);
    WriteFile(FFolder.Path() / "r.csv", "Key;Title;Body;Why;Size\nA;one;x;y;3\nA.1;two;;;\n");
    const auto outcome =
        Admin("import r.csv --project 'The P' --id Key --name Title --text Body --rationale Why "
              "--separator ';' --hierarchy id --type Rule --tag RU");
    EXPECT_EQ(outcome.Status, 0);
    EXPECT_THAT(outcome.Output, HasSubstr("2 records read: 2 new, 0 not taken."));
    EXPECT_EQ(Admin("grant 'The P' ben editor").Status, 0);
    EXPECT_THAT(
        Rows("select p.name, t.name, t.tag, r.role, r.user_id = u.id from project p join requirement_type t "
             "join project_right r join user_account u on u.user_name = 'ben'",
             5),
        testing::ElementsAre("The P|Rule|RU|3|1"));
}

struct RefusalCase {
    const char* Name;
    const char* Arguments;
    int Status;
    const char* Output;
};

class AdminRefusals : public Programs, public testing::WithParamInterface<RefusalCase> {};

TEST_P(AdminRefusals, AreToldWithTheirStatus) {
    CreateWithRoot();
    WriteFile(FFolder.Path() / "r.csv", "id,name,text\n1,a,x\n2,,x\n");
    const auto outcome = Admin(GetParam().Arguments, "x\n");
    EXPECT_EQ(outcome.Status, GetParam().Status);
    EXPECT_THAT(outcome.Output, HasSubstr(GetParam().Output));
}

constexpr const char* Import = "import r.csv --project P --id id --name name --text text";

INSTANTIATE_TEST_SUITE_P(
    All, AdminRefusals,
    testing::Values(
        RefusalCase{"NoCommand", "", 2, "a command is missing"},
        RefusalCase{"UnknownCommand", "destroy", 2, "there is no command destroy"},
        RefusalCase{"UnknownOption", "create --force", 2, "there is no option --force"},
        RefusalCase{"PasswordOnTheCommandLine", "add-user eva --password x", 2,
                    "there is no option --password"},
        RefusalCase{"OptionWithoutValue", "create --database", 2, "--database needs a value"},
        RefusalCase{"ColumnNotTold", "import r.csv --project P --id id --name name", 2, "--text is missing"},
        RefusalCase{"UserThatIsThere", "add-user root", 1, "There is a user root already"},
        RefusalCase{"NoDatabase", "add-user eva --database other.db", 1, "There is no database other.db"},
        RefusalCase{"NoProject", "grant P root reader", 1, "There is no project \"P\""},
        RefusalCase{"NoRole", "grant P root king", 2, "a role is"},
        RefusalCase{"NoFile", "import x.csv --project P --id id --name name --text text", 1,
                    "The file x.csv cannot be read: No such file or directory."},
        RefusalCase{"BadRecordStops", Import, 1, "r.csv:3: it has no name\nStopped at"}),
    [](const auto& row) { return row.param.Name; });

TEST_F(AdminProgram, TellsByItsStatusThatRecordsWereLeftOut) {
    CreateWithRoot();
    WriteFile(FFolder.Path() / "r.csv", "id,name,text\n1,a,x\n2,,x\n");
    EXPECT_EQ(Admin(std::string(Import) + " --on-error skip --dry-run").Status, 3);
    EXPECT_THAT(Rows("select name from project", 1), testing::IsEmpty());
    EXPECT_EQ(Admin(std::string(Import) + " --on-error skip").Status, 3);
    EXPECT_THAT(Rows("select name from project", 1), testing::ElementsAre("P"));
}

TEST_F(SeedProgram, WritesTheSampleDatabaseOnce) {
    EXPECT_EQ(Run("quorane-seed", "--database data/quorane.db").Status, 0);
    EXPECT_THAT(Rows("select count(*) from requirement", 1), testing::ElementsAre("150"));
    const auto before = std::filesystem::last_write_time(FFolder.File("data/quorane.db"));
    const auto again = Run("quorane-seed", "--database data/quorane.db");
    EXPECT_EQ(again.Status, 1);
    EXPECT_THAT(again.Output, HasSubstr("There is a file data/quorane.db already."));
    EXPECT_EQ(std::filesystem::last_write_time(FFolder.File("data/quorane.db")), before);
}

TEST_F(SeedProgram, LeavesNothingBehindWhenItFails) {
    std::filesystem::create_directory(FFolder.Path() / "texts");
    WriteFile(FFolder.Path() / "texts" / "people.txt",
              "# Ann\nkind: user\nlogin: ann\npassword: x\n# Bob\nkind: cat\n");
    const auto outcome = Run("quorane-seed", "--database data/quorane.db --samples texts");
    EXPECT_EQ(outcome.Status, 1);
    EXPECT_THAT(outcome.Output, HasSubstr("people.txt:5: Bob: the kind is none of"));
    EXPECT_TRUE(std::filesystem::is_empty(FFolder.Path() / "data"));
}

} // namespace
