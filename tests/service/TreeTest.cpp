#include "ServiceFixture.h"

#include <gmock/gmock.h>

#include <thread>

using namespace testing;

namespace {

class TreeTest : public ServiceFixture {
public:
    Client FAnn = LoggedOn("ann");

    void Move(const std::string& name, int parent, int position) {
        FAnn.Move(FCurrent, parent, Id(name), position);
    }

    std::string Reparent(int child, int parent, int baseline = 0) {
        return RefusalOf([&] { FAnn.AddChild(baseline ? baseline : FCurrent, parent, child); });
    }

    // Numbers, names and stored counts of the whole tree, as a user sees it.
    std::string Tree() {
        std::string text;
        for (const wire::Node& node : FAnn.Branch(FCurrent, FSrs)) {
            text += node.hierarchical_number() + " " + node.name() + "; ";
            EXPECT_EQ(static_cast<std::size_t>(node.child_count()),
                      FAnn.Children(FCurrent, node.id()).size());
        }
        return text;
    }
};

TEST_F(TreeTest, ANewRequirementStandsWhereItWasAskedFor) {
    FAnn.Create(FProject, FSrs, 0, "First", 0);
    FAnn.Create(FProject, 0, Id("One"), "Between", 1);
    FAnn.Create(FProject, 0, Id("One"), "Last", 100);
    const int leaf = FAnn.Create(FProject, 0, Id("Two"), "Leaf", 0);
    EXPECT_EQ(Tree(),
              "1 First; 2 One; 2.1 One.A; 2.2 Between; 2.3 One.B; 2.4 One.C; 2.5 Last; 3 Two; 3.1 Leaf; "
              "4 Three; ");
    const wire::Requirement made = FAnn.Read(leaf);
    EXPECT_EQ(made.version().major(), 1);
    EXPECT_EQ(made.requirement_type_id(), FSrs);
    EXPECT_EQ(FAnn.History(leaf).size(), 1U);
}

TEST_F(TreeTest, RefusesANewRequirementWithoutANameOrAPlace) {
    EXPECT_THROW(FAnn.Create(FProject, FSrs, 0, "", 0), Refused);
    EXPECT_THROW(FAnn.Create(FProject, FSrs, 0, "x", -1), Refused);
    EXPECT_THROW(FAnn.Create(FProject, 999999, 0, "x", 0), Refused);
    EXPECT_THROW(FAnn.Create(FProject, 0, 999999, "x", 0), Refused);
    EXPECT_EQ(FAnn.Children(FCurrent, FSrs).size(), 3U);
}

TEST_F(TreeTest, ManyInsertionsAtOnePlaceKeepTheOrder) {
    std::vector<std::string> expected = {"One.A"};
    for (int i = 0; i < 100; ++i) {
        const std::string name = "New" + std::to_string(i);
        FAnn.Create(FProject, 0, Id("One"), name, 1);
        expected.insert(expected.begin() + 1, name);
    }
    expected.insert(expected.end(), {"One.B", "One.C"});
    EXPECT_EQ(FAnn.ChildNames(FCurrent, Id("One")), expected);
}

TEST_F(TreeTest, AMovedRequirementHasThePositionThatWasGiven) {
    Move("One.C", Id("One"), 0);
    EXPECT_THAT(FAnn.ChildNames(FCurrent, Id("One")), ElementsAre("One.C", "One.A", "One.B"));
    Move("One.C", Id("One"), 1);
    EXPECT_THAT(FAnn.ChildNames(FCurrent, Id("One")), ElementsAre("One.A", "One.C", "One.B"));
    Move("One.C", Id("One"), 2);
    EXPECT_THAT(FAnn.ChildNames(FCurrent, Id("One")), ElementsAre("One.A", "One.B", "One.C"));
    EXPECT_THROW(Move("One.C", FSrs, 0), Refused);
    EXPECT_EQ(FAnn.Read(Id("One.C")).version().minor(), 0);
    EXPECT_EQ(Tree(), "1 One; 1.1 One.A; 1.2 One.B; 1.3 One.C; 2 Two; 3 Three; ");
}

TEST_F(TreeTest, ABranchMovesBelowAnotherRequirement) {
    EXPECT_EQ(Reparent(Id("One"), Id("Three")), "");
    EXPECT_EQ(Tree(), "1 Two; 2 Three; 2.1 One; 2.1.1 One.A; 2.1.2 One.B; 2.1.3 One.C; ");
    EXPECT_EQ(FAnn.Read(Id("One")).version().minor(), 0);
    EXPECT_THAT(FAnn.Path(FCurrent, Id("One.B")), SizeIs(5));
}

TEST_F(TreeTest, ACycleIsRefused) {
    EXPECT_THAT(Reparent(Id("One"), Id("One.B")), HasSubstr("below itself"));
    EXPECT_THAT(Reparent(Id("One"), Id("One")), HasSubstr("below itself"));
    EXPECT_THAT(Reparent(FSrs, Id("One")), HasSubstr("requirement type cannot be moved"));
    EXPECT_THAT(Reparent(Id("One"), FTst, FFrozen), HasSubstr("is frozen"));
    EXPECT_EQ(Tree(), "1 One; 1.1 One.A; 1.2 One.B; 1.3 One.C; 2 Two; 3 Three; ");
}

TEST_F(TreeTest, UnderAnotherTypeTheBranchLosesWhatThatTypeLacks) {
    wire::SaveRequirementRequest save;
    save.set_id(Id("One.A"));
    auto& note = *save.add_values();
    note.set_attribute_id(FAttributes["Note"]);
    note.set_text("kept?");
    auto& status = *save.add_values();
    status.set_attribute_id(FAnn.Read(Id("One.A")).status().attribute_id());
    status.mutable_selected()->add_indices(2);
    FAnn.Lock(Id("One.A"));
    FAnn.Save(save);
    EXPECT_EQ(Reparent(Id("One"), FTst), "");
    const wire::Requirement moved = FAnn.Read(Id("One.A"));
    EXPECT_EQ(moved.requirement_type_id(), FTst);
    EXPECT_EQ(moved.values_size(), 0);
    EXPECT_THAT(moved.status().selected().indices(), ElementsAre(2));
    EXPECT_EQ(moved.description(), "<p>About One.A</p>");
    EXPECT_EQ(FAnn.History(Id("One.A"))[0].changes(0).attribute_name(), "Requirement Type");
    EXPECT_EQ(FAnn.Children(FCurrent, FTst)[0].serial_number(), "TST" + std::to_string(Id("One")));
}

TEST_F(TreeTest, ARemovedBranchIsGoneWithItsTracesButNotFromFrozenBaselines) {
    EXPECT_EQ(FAnn.Remove(Id("One")), 4);
    EXPECT_EQ(Tree(), "1 Two; 2 Three; ");
    EXPECT_THAT(FAnn.Path(FCurrent, Id("One.B")), IsEmpty());
    EXPECT_THROW(FAnn.Read(Id("One")), Refused);
    EXPECT_THROW(FAnn.Lock(Id("One.A")), Refused);
    EXPECT_EQ(FAnn.Traces(Id("Two")).traces_from_size(), 0);
    EXPECT_EQ(FAnn.Read(Id("One"), FFrozen).name(), "One");
    EXPECT_EQ(FAnn.Children(FFrozen, Id("One")).size(), 3U);
    EXPECT_THROW(FAnn.Remove(Id("One")), Refused);
}

TEST_F(TreeTest, ConcurrentCommandsLeaveASoundTree) {
    std::vector<std::thread> threads;
    for (int t = 0; t < 3; ++t)
        threads.emplace_back([this, t] {
            Client client = LoggedOn(t == 0 ? "ann" : "ben");
            for (int i = 0; i < 30; ++i) {
                const int id = client.Create(FProject, 0, Id("One"), "N", i % 3);
                client.AddChild(FCurrent, i % 2 ? Id("Two") : FSrs, id);
                if (i % 5 == 0) client.Remove(id);
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    Tree();
    EXPECT_EQ(FAnn.Branch(FCurrent, FSrs).size(), 6U + 3 * 24);
}

} // namespace
