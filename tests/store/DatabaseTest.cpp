#include "backend/store/Migrations.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>

#include <thread>

using namespace Backend;
using namespace testing;

namespace {

class DatabaseTest : public Test {
public:
    TTempFolder FFolder;
    std::string FPath = FFolder.File("test.db");
    Database FDatabase{FPath};

    DatabaseTest() { FDatabase.Execute("create table t (id integer primary key, a text, b blob)"); }

    int Count() {
        Rows rows = FDatabase.Query("select count(*) from t");
        rows.Next();
        return rows.Int(0);
    }
};

TEST_F(DatabaseTest, GivesBackWhatWasBoundInTheOrderOfTheNumbers) {
    const std::string text("gr\xc3\xbc\xc3\x9f", 6), bytes("a\0b\xff", 4);
    FDatabase.Run("insert into t (b, a, id) values ($3, $2, $1)", std::int64_t{1} << 40, text, Bytes{bytes});
    FDatabase.Run("insert into t (id, a) values ($1, $2)", 2, std::optional<std::string>());
    Rows rows = FDatabase.Query("select id, a, b from t order by id desc");
    ASSERT_TRUE(rows.Next());
    EXPECT_EQ(rows.Int64(0), std::int64_t{1} << 40);
    EXPECT_EQ(rows.Text(1), text);
    EXPECT_EQ(rows.View(2), bytes);
    ASSERT_TRUE(rows.Next());
    EXPECT_TRUE(rows.IsNull(1));
    EXPECT_FALSE(rows.Next());
}

TEST_F(DatabaseTest, ATransactionWithoutCommitLeavesNothing) {
    {
        Transaction transaction(FDatabase, Transaction::Kind::Write);
        FDatabase.Run("insert into t (id) values (1)");
    }
    EXPECT_EQ(Count(), 0);
    Transaction transaction(FDatabase, Transaction::Kind::Write);
    FDatabase.Run("insert into t (id) values (1)");
    transaction.Commit();
    EXPECT_EQ(Count(), 1);
}

TEST_F(DatabaseTest, AStatementServesTheLevelsOfARecursion) {
    for (int i = 1; i <= 3; ++i)
        FDatabase.Run("insert into t (id) values ($1)", i);
    int pairs = 0;
    const std::function<void(int)> walk = [&](int depth) {
        Rows rows = FDatabase.Query("select id from t");
        while (rows.Next()) {
            ++pairs;
            if (depth > 0) walk(depth - 1);
        }
    };
    walk(1);
    EXPECT_EQ(pairs, 3 + 9);
}

TEST_F(DatabaseTest, AnAbandonedReadHoldsNoTransactionOpen) {
    for (int i = 1; i <= 3; ++i)
        FDatabase.Run("insert into t (id) values ($1)", i);
    EXPECT_TRUE(FDatabase.Query("select id from t").Next());
    Database other(FPath);
    other.Run("insert into t (id) values (4)");
    EXPECT_EQ(Count(), 4);
}

TEST_F(DatabaseTest, ABrokenConstraintIsToldAndTheStatementGoesOnWorking) {
    const auto insert = [&](int id) { FDatabase.Run("insert into t (id) values ($1)", id); };
    insert(1);
    EXPECT_THAT([&] { insert(1); },
                Throws<StoreError>(Property(&StoreError::Reason, StoreError::Kind::Constraint)));
    insert(2);
    EXPECT_EQ(Count(), 2);
}

TEST_F(DatabaseTest, ManyWritersThatReadFirstAllSucceed) {
    FDatabase.Run("insert into t (id, a) values (1, '0')");
    const auto increase = [&] {
        Database own(FPath);
        for (int i = 0; i < 50; ++i) {
            Transaction transaction(own, Transaction::Kind::Write);
            Rows rows = own.Query("select a from t where id = 1");
            rows.Next();
            own.Run("update t set a = $1 where id = 1", std::to_string(std::stoi(rows.Text(0)) + 1));
            transaction.Commit();
        }
    };
    std::thread threads[] = {std::thread(increase), std::thread(increase), std::thread(increase)};
    for (std::thread& thread : threads)
        thread.join();
    Rows rows = FDatabase.Query("select a from t");
    ASSERT_TRUE(rows.Next());
    EXPECT_EQ(rows.Text(0), "150");
}

TEST_F(DatabaseTest, ANewFileIsDurableAndChecksItsKeys) {
    Rows rows = FDatabase.Query("select (select journal_mode from pragma_journal_mode), "
                                "(select page_size from pragma_page_size), "
                                "(select synchronous from pragma_synchronous), "
                                "(select foreign_keys from pragma_foreign_keys)");
    ASSERT_TRUE(rows.Next());
    EXPECT_EQ(rows.Text(0), "wal");
    EXPECT_EQ(rows.Int(1), 8192);
    EXPECT_EQ(rows.Int(2), 2);
    EXPECT_EQ(rows.Int(3), 1);
}

// ---- migrations

int VersionOf(Database& database) {
    Rows rows = database.Query("select user_version from pragma_user_version");
    rows.Next();
    return rows.Int(0);
}

class MigrationTest : public Test {
public:
    TTempFolder FFolder;
    Database FDatabase{FFolder.File("test.db")};
};

TEST_F(MigrationTest, AllStepsLeadFromNothingToThisRelease) {
    Migrate(FDatabase);
    EXPECT_EQ(VersionOf(FDatabase), Migrations().back().Number);
    int expected = 0;
    for (const Migration& step : Migrations())
        EXPECT_EQ(step.Number, ++expected);
    Rows rows = FDatabase.Query("select count(*) from requirement_version");
    EXPECT_TRUE(rows.Next());
}

TEST_F(MigrationTest, ALaterStepKeepsWhatTheReleaseBeforeWrote) {
    const Migration before[] = {{1, "create table note (text text)"}};
    const Migration after[] = {before[0], {2, "alter table note add column author text default 'nobody'"}};
    Migrate(FDatabase, before);
    FDatabase.Run("insert into note (text) values ('kept')");
    Migrate(FDatabase, after);
    EXPECT_EQ(VersionOf(FDatabase), 2);
    Rows rows = FDatabase.Query("select text, author from note");
    ASSERT_TRUE(rows.Next());
    EXPECT_EQ(rows.Text(0) + "/" + rows.Text(1), "kept/nobody");
}

TEST_F(MigrationTest, AFailingStepLeavesTheDatabaseAsTheStepBeforeDid) {
    const Migration steps[] = {{1, "create table note (text text)"},
                               {2, "drop table note; create table broken (; insert into nowhere values (1)"}};
    EXPECT_THROW(Migrate(FDatabase, steps), StoreError);
    EXPECT_EQ(VersionOf(FDatabase), 1);
    EXPECT_NO_THROW(FDatabase.Run("insert into note (text) values ('still there')"));
}

} // namespace
