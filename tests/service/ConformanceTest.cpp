// What the service promises, over both kinds of channel.
#include "ServiceFixture.h"

#include <gmock/gmock.h>

using namespace testing;

namespace {

class Conformance : public ServiceFixture, public WithParamInterface<Transport> {
public:
    Conformance()
        : ServiceFixture(GetParam()) {}
};

INSTANTIATE_TEST_SUITE_P(Channels, Conformance, Values(Transport::InProcess, Transport::Loopback),
                         [](const auto& test) {
                             return test.param == Transport::InProcess ? "InProcess" : "Loopback";
                         });

TEST_P(Conformance, LogonGivesTokenVersionAndLease) {
    Client client(Channel());
    wire::LoginRequest request;
    request.set_user("ann");
    request.set_password("Password1");
    const auto reply = client.Call(&Stub::Login, request);
    EXPECT_EQ(reply.token().size(), 16U);
    EXPECT_EQ(reply.user_id(), FUsers["ann"]);
    EXPECT_THAT(reply.server_version(), StartsWith("7."));
    EXPECT_EQ(reply.lease_seconds(), 60);
}

TEST_P(Conformance, RefusesEveryCallWithoutASession) {
    Client client(Channel());
    const std::string ended =
        "RemoteServerException: Quorane.SERVER_ERROR: The session has ended; log on again.";
    EXPECT_EQ(RefusalOf([&] { client.Call(&Stub::ListProjects, wire::ListProjectsRequest()); }), ended);
    EXPECT_EQ(RefusalOf([&] { client.Lock(Id("One")); }), ended);
    EXPECT_EQ(RefusalOf([&] { client.Children(FCurrent, FSrs); }), ended);
    client.UseToken(std::string(16, 'x'));
    EXPECT_EQ(RefusalOf([&] { client.Read(Id("One")); }), ended);
}

TEST_P(Conformance, ListsProjectsWithEverythingThatTheyShowInOneCall) {
    Client client = LoggedOn("ann");
    const auto reply = client.Call(&Stub::ListProjects, wire::ListProjectsRequest());
    ASSERT_EQ(reply.projects_size(), 1);
    const wire::Project& project = reply.projects(0);
    EXPECT_EQ(project.name(), "Heating");
    EXPECT_EQ(project.description(), "Controls a heating.");
    std::vector<std::pair<std::string, int>> baselines;
    for (const wire::Baseline& baseline : project.baselines())
        baselines.emplace_back(baseline.name(), baseline.type());
    EXPECT_THAT(baselines, ElementsAre(Pair("Current", wire::BASELINE_TYPE_CURRENT),
                                       Pair("Release 1", wire::BASELINE_TYPE_GENERAL),
                                       Pair("Trial", wire::BASELINE_TYPE_DELETED)));
    EXPECT_EQ(project.current_baseline_id(), project.baselines(0).id());
    EXPECT_THAT(project.baselines(1).requirement_type_ids(), ElementsAre(FSrs, FTst));
    EXPECT_EQ(reply.directory().users_size(), 6);
    EXPECT_THAT(project.group_ids(), ElementsAre(FGroup, FTeam));
    EXPECT_TRUE(project.permissions().edit());
}

TEST_P(Conformance, SendsTheDirectoryOnlyWhenTheClientsIsOld) {
    Client client = LoggedOn("ann");
    const auto first = client.Call(&Stub::GetDirectory, wire::GetDirectoryRequest());
    EXPECT_EQ(first.directory().groups(0).user_ids_size(), 2);
    wire::GetDirectoryRequest again;
    again.set_known_revision(first.directory().revision());
    EXPECT_FALSE(client.Call(&Stub::GetDirectory, again).has_directory());
    wire::ListProjectsRequest list;
    list.set_known_directory_revision(first.directory().revision());
    EXPECT_FALSE(client.Call(&Stub::ListProjects, list).has_directory());
}

TEST_P(Conformance, GivesTreeAndBranchesWithNumbersAndChildCounts) {
    Client client = LoggedOn("ann");
    wire::GetTreeRequest request;
    request.set_baseline_id(FCurrent);
    const auto tree = client.Call(&Stub::GetTree, request);
    EXPECT_EQ(tree.root().child_count(), 2);
    ASSERT_EQ(tree.requirement_types_size(), 2);
    EXPECT_EQ(tree.requirement_types(0).name(), "Software");
    EXPECT_EQ(tree.requirement_types(0).child_count(), 3);
    const auto children = client.Children(FCurrent, FSrs);
    ASSERT_EQ(children.size(), 3U);
    EXPECT_EQ(children[1].name(), "Two");
    EXPECT_EQ(children[1].hierarchical_number(), "2");
    EXPECT_EQ(children[1].serial_number(), "SRS" + std::to_string(Id("Two")));
    EXPECT_EQ(children[0].child_count(), 3);
    EXPECT_EQ(client.Children(FCurrent, Id("One"))[2].hierarchical_number(), "1.3");
    std::vector<std::string> all;
    for (const wire::Node& node : client.Branch(FCurrent, FSrs))
        all.push_back(node.name());
    EXPECT_THAT(all, ElementsAre("One", "One.A", "One.B", "One.C", "Two", "Three"));
}

TEST_P(Conformance, FindsANodeWithThePathToIt) {
    Client client = LoggedOn("ann");
    const auto path = client.Path(FCurrent, Id("One.B"));
    ASSERT_EQ(path.size(), 4U);
    EXPECT_EQ(path[0].id(), FCurrent);
    EXPECT_EQ(path[1].id(), FSrs);
    EXPECT_EQ(path[2].name(), "One");
    EXPECT_EQ(path[3].hierarchical_number(), "1.2");
    EXPECT_EQ(path[3].parent_id(), Id("One"));
    EXPECT_THAT(client.Path(FCurrent, 999999), IsEmpty());
}

TEST_P(Conformance, AnswersAKnownStampWithUnchanged) {
    Client client = LoggedOn("ann");
    wire::GetRequirementRequest request;
    request.set_latest_id(Id("Two"));
    const auto first = client.Call(&Stub::GetRequirement, request);
    EXPECT_EQ(first.requirement().description(), "<p>About Two</p>");
    EXPECT_EQ(first.requirement().values_size(), 8);
    EXPECT_THAT(first.requirement().status().selected().indices(), ElementsAre(0));
    request.set_known_stamp(first.stamp());
    request.set_known_directory_revision(first.directory().revision());
    const auto again = client.Call(&Stub::GetRequirement, request);
    EXPECT_FALSE(again.has_requirement());
    EXPECT_FALSE(again.has_directory());
    client.Rename(Id("Two"), "Two changed");
    EXPECT_EQ(client.Call(&Stub::GetRequirement, request).requirement().name(), "Two changed");
}

TEST_P(Conformance, AFrozenBaselineKeepsVersionsTreeAndHistory) {
    Client client = LoggedOn("ann");
    client.Rename(Id("One"), "One renamed");
    client.Create(FProject, FSrs, 0, "New", 0);
    EXPECT_EQ(client.Read(Id("One")).name(), "One renamed");
    EXPECT_EQ(client.Read(Id("One"), FFrozen).name(), "One");
    EXPECT_EQ(client.Read(Id("One"), FFrozen).version().minor(), 0);
    EXPECT_THAT(client.ChildNames(FFrozen, FSrs), ElementsAre("One", "Two", "Three"));
    EXPECT_EQ(client.History(Id("One"), FFrozen).size(), 1U);
    EXPECT_EQ(client.History(Id("One")).size(), 2U);
}

TEST_P(Conformance, SendsALongBranchAndALargeTextInOneCall) {
    Client client = LoggedOn("ann");
    const std::string text = "<p>" + std::string(1'400'000, 'x') + "</p>";
    wire::SaveRequirementRequest save;
    save.set_id(Id("Two"));
    for (const std::string& description : {text, text + "<p>more</p>"}) {
        save.set_description(description);
        client.Lock(Id("Two"));
        client.Save(save);
    }
    EXPECT_EQ(client.Read(Id("Two")).description().size(), text.size() + 11);
    EXPECT_EQ(client.History(Id("Two")).size(), 3U);
    for (int i = 0; i < 1500; ++i)
        client.Create(FProject, FTst, 0, "Case", i);
    const auto children = client.Children(FCurrent, FTst);
    ASSERT_EQ(children.size(), 1500U);
    EXPECT_EQ(children.back().hierarchical_number(), "1500");
}

TEST_P(Conformance, GoesOnAfterARestartUnderTheSameTokenAndLock) {
    Client before = LoggedOn("ann");
    before.Lock(Id("Two"));
    FServer->Stop();
    EXPECT_NE(RefusalOf([&] { before.Read(Id("Two")); }), "");
    FServer->Start();
    Client after(Channel());
    after.UseToken(before.Token());
    wire::SaveRequirementRequest save;
    save.set_id(Id("Two"));
    save.set_name("Saved after the restart");
    after.Save(save);
    EXPECT_EQ(after.Read(Id("Two")).name(), "Saved after the restart");
}

} // namespace
