// Files that cannot be used: each is told in a sentence that names the file and what
// to do, and is left as it was.
#include "backend/store/Migrations.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>
#include <sqlite3.h>

#include <sys/stat.h>
#include <unistd.h>

using namespace Backend;
using namespace testing;
using Kind = StoreError::Kind;

namespace {

class Fault : public Test {
public:
    TTempFolder FFolder;
    std::string FPath = FFolder.File("quorane.db");

    // What opening the file and bringing it up to date says.
    std::pair<Kind, std::string> Opening() const {
        try {
            Database database(FPath);
            Migrate(database);
        } catch (const StoreError& error) {
            return {error.Reason(), error.what()};
        }
        return {Kind::Other, "no error"};
    }

    void Make() const {
        Database database(FPath);
        Migrate(database);
    }

    // Runs SQL on the file behind the store's back.
    void Raw(const std::string& statements) const {
        sqlite3* handle = nullptr;
        ASSERT_EQ(sqlite3_open(FPath.c_str(), &handle), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(handle, statements.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(handle);
    }
};

TEST_F(Fault, ATextFileIsNoDatabase) {
    WriteFile(FPath, "These are my notes about heating.\n");
    const auto [kind, sentence] = Opening();
    EXPECT_EQ(kind, Kind::NotADatabase);
    EXPECT_THAT(sentence,
                AllOf(HasSubstr(FPath), HasSubstr("not a requirements database"), HasSubstr("Move it")));
    EXPECT_EQ(ReadFile(FPath), "These are my notes about heating.\n");
}

TEST_F(Fault, SomebodyElsesDatabaseIsNotTouched) {
    Raw("create table recipe (name text); insert into recipe values ('soup')");
    const std::string before = ReadFile(FPath);
    EXPECT_EQ(Opening().first, Kind::NotADatabase);
    EXPECT_EQ(ReadFile(FPath), before);
}

TEST_F(Fault, ANewerReleasesDatabaseIsNotTouched) {
    Make();
    Raw("pragma user_version = 999");
    const std::string before = ReadFile(FPath);
    const auto [kind, sentence] = Opening();
    EXPECT_EQ(kind, Kind::NewerRelease);
    EXPECT_THAT(sentence, AllOf(HasSubstr(FPath), HasSubstr("newer release")));
    EXPECT_EQ(ReadFile(FPath), before);
}

TEST_F(Fault, ADamagedDatabaseIsToldFromOthers) {
    Make();
    std::string bytes = ReadFile(FPath);
    for (std::size_t i = 100; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i * 31);
    WriteFile(FPath, bytes);
    const auto [kind, sentence] = Opening();
    EXPECT_EQ(kind, Kind::Corrupt);
    EXPECT_THAT(sentence, AllOf(HasSubstr(FPath), HasSubstr("damaged"), HasSubstr("backup")));
    EXPECT_EQ(ReadFile(FPath), bytes);
}

TEST_F(Fault, ACutOffDatabaseIsToldWhenItsPagesAreMissing) {
    Make();
    const std::string bytes = ReadFile(FPath);
    WriteFile(FPath, bytes.substr(0, bytes.size() / 2));
    EXPECT_EQ(Opening().first, Kind::Corrupt);
}

TEST_F(Fault, AFileWithoutTheRightToWriteIsReadOnly) {
    Make();
    ASSERT_EQ(chmod(FPath.c_str(), 0444), 0);
    // The administrator may write everything; as somebody else it is refused.
    if (geteuid() == 0) {
        ASSERT_EQ(seteuid(65534), 0);
    }
    const auto [kind, sentence] = Opening();
    if (getuid() == 0) {
        ASSERT_EQ(seteuid(0), 0);
        // Nobody cannot even enter the temporary folder.
        EXPECT_THAT(kind, AnyOf(Kind::ReadOnly, Kind::CannotOpen));
    } else {
        EXPECT_EQ(kind, Kind::ReadOnly);
    }
    EXPECT_THAT(sentence, HasSubstr(FPath));
}

TEST_F(Fault, AFolderThatIsMissingIsTold) {
    FPath = FPath + "/nowhere/quorane.db";
    const auto [kind, sentence] = Opening();
    EXPECT_EQ(kind, Kind::CannotOpen);
    EXPECT_THAT(sentence, HasSubstr("folder"));
}

TEST_F(Fault, AnotherProgramsLockIsTold) {
    Make();
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(FPath.c_str(), &other), SQLITE_OK);
    ASSERT_EQ(
        sqlite3_exec(other, "pragma locking_mode = exclusive; begin exclusive", nullptr, nullptr, nullptr),
        SQLITE_OK);
    const auto [kind, sentence] = Opening();
    sqlite3_close(other);
    EXPECT_EQ(kind, Kind::Locked);
    EXPECT_THAT(sentence, HasSubstr("locked by another program"));
    EXPECT_EQ(Opening().second, "no error");
}

TEST_F(Fault, AFullDiskRollsBackAndTheFileStaysUsable) {
    Database database(FPath);
    Migrate(database);
    const auto insert = [&](std::size_t size) {
        Transaction transaction(database, Transaction::Kind::Write);
        database.Run("insert into requirement_text (description, validation) values ($1, '')",
                     std::string(size, 'x'));
        transaction.Commit();
    };
    database.LimitPages(200);
    try {
        insert(4'000'000);
        FAIL() << "no error";
    } catch (const StoreError& error) {
        EXPECT_EQ(error.Reason(), Kind::Full);
        EXPECT_THAT(error.what(), AllOf(HasSubstr(FPath), HasSubstr("full")));
    }
    insert(100);
    Rows rows = database.Query("select count(*) from requirement_text");
    ASSERT_TRUE(rows.Next());
    EXPECT_EQ(rows.Int(0), 1);
}

} // namespace
