#include "ServiceFixture.h"

#include <gmock/gmock.h>

using namespace Backend;
using namespace testing;

namespace {

class BulkWriterTest : public ServiceFixture {
public:
    NewRequirement Under(int type, int parent, const std::string& name) const {
        NewRequirement requirement;
        requirement.ProjectId = FProject;
        requirement.TypeId = type;
        requirement.ParentId = parent;
        requirement.Name = name;
        return requirement;
    }

    Revision By(const std::string& user) { return {FUsers[user], 5000, "bulk"}; }
};

TEST_F(BulkWriterTest, AddsToWhatIsThereWithOrderAndCounts) {
    BulkWriter writer(FFolder.File("quorane.db"), BulkWriter::Hashing::QuickForTests);
    EXPECT_EQ(writer.FindProject("Heating"), FProject);
    EXPECT_EQ(writer.FindRequirementType(FProject, "Software"), FSrs);
    EXPECT_EQ(writer.Attributes(FSrs)["Note"], FAttributes["Note"]);
    const int four = writer.AddRequirement(Under(FSrs, 0, "Four"), By("ben"));
    writer.AddRequirement(Under(0, four, "Four.A"), By("ben"));
    writer.AddRequirement(Under(0, Id("One"), "One.D"), By("ben"));
    writer.Commit();
    Client client = LoggedOn("ann");
    EXPECT_THAT(client.ChildNames(FCurrent, FSrs), ElementsAre("One", "Two", "Three", "Four"));
    EXPECT_THAT(client.ChildNames(FCurrent, Id("One")), ElementsAre("One.A", "One.B", "One.C", "One.D"));
    EXPECT_EQ(client.Path(FCurrent, four).back().child_count(), 1);
    EXPECT_EQ(client.Path(FCurrent, Id("One")).back().child_count(), 4);
    EXPECT_EQ(client.History(four)[0].comment(), "bulk");
    const int made = client.Create(FProject, FSrs, 0, "By a client", 9);
    EXPECT_GT(made, four);
}

TEST_F(BulkWriterTest, LeavesNothingWithoutACommit) {
    {
        BulkWriter writer(FFolder.File("quorane.db"), BulkWriter::Hashing::QuickForTests);
        writer.AddRequirement(Under(FSrs, 0, "Lost"), By("ann"));
        writer.AddUser({"lost", "", "Password1"});
    }
    Client client = LoggedOn("ann");
    EXPECT_EQ(client.Children(FCurrent, FSrs).size(), 3U);
    EXPECT_THROW(LoggedOn("lost"), Refused);
}

TEST_F(BulkWriterTest, GoesOnAfterARefusedRecord) {
    BulkWriter writer(FFolder.File("quorane.db"), BulkWriter::Hashing::QuickForTests);
    auto bad = Under(FSrs, 0, "Bad");
    bad.Description = "<p open";
    EXPECT_THROW(writer.AddRequirement(bad, By("ann")), RuleViolation);
    EXPECT_THROW(writer.AddRequirement(Under(FSrs, 0, ""), By("ann")), RuleViolation);
    EXPECT_THROW(writer.AddRequirement(Under(0, 999999, "Orphan"), By("ann")), RuleViolation);
    EXPECT_THROW(writer.AddUser({"ann", "", "Password1"}), RuleViolation);
    writer.AddRequirement(Under(FSrs, 0, "Good"), By("ann"));
    writer.Commit();
    Client client = LoggedOn("ann");
    EXPECT_THAT(client.ChildNames(FCurrent, FSrs), ElementsAre("One", "Two", "Three", "Good"));
    EXPECT_EQ(client.Children(FCurrent, FSrs).size(), 4U);
}

TEST_F(BulkWriterTest, ARevisionIsAClientsSave) {
    BulkWriter writer(FFolder.File("quorane.db"), BulkWriter::Hashing::QuickForTests);
    RequirementChange change;
    change.Name = "Two, second edition";
    change.StatusIndex = 2;
    EXPECT_TRUE(writer.AddRevision(Id("Two"), change, By("ben")));
    EXPECT_FALSE(writer.AddRevision(Id("Two"), change, By("ben")));
    writer.Commit();
    Client client = LoggedOn("ann");
    const auto history = client.History(Id("Two"));
    ASSERT_EQ(history.size(), 2U);
    EXPECT_EQ(history[0].user_name(), "Ben Ortega");
    EXPECT_EQ(history[0].date(), 5000);
    EXPECT_EQ(history[0].changes_size(), 2);
    EXPECT_TRUE(client.Traces(Id("Two")).traces_from(0).suspect());
    EXPECT_EQ(client.Read(Id("Two"), FFrozen).name(), "Two");
}

TEST_F(BulkWriterTest, ReportsProgressAndStopsWhenTheHandlerThrows) {
    BulkWriter writer(FFolder.File("quorane.db"), BulkWriter::Hashing::QuickForTests);
    std::vector<std::int64_t> reports;
    writer.OnProgress(2, [&](std::int64_t written) {
        reports.push_back(written);
        if (written == 4) throw std::runtime_error("stop");
    });
    const auto write = [&] {
        for (int i = 0; i < 10; ++i)
            writer.AddRequirement(Under(FTst, 0, "R"), By("ann"));
    };
    EXPECT_THROW(write(), std::runtime_error);
    EXPECT_THAT(reports, ElementsAre(2, 4));
}

} // namespace
