#include "sdk/SdkTest.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class TTree : public TSdkTest {
protected:
    void Forget(const Handle<IRequirementTreeNode>& node) {
        node->Get_Tree()->Get_Manager()->Get_Cache()->clear();
    }

    Handle<ISession> FSession = LogOn();
    Handle<IRequirementTreeNode> FRoot = Root(FSession);
};

TEST_F(TTree, ABranchIsReadWhenItIsOpenedAndNotAhead) {
    FCalls.Clear();
    const auto types = FRoot->Get_Children();
    EXPECT_EQ(FCalls.RoundTrips(), 1);
    const auto software = Item<ITreeNode>(types, 0);
    EXPECT_EQ(software->Get_ChildCount(), 2);
    EXPECT_EQ(FCalls.RoundTrips(), 1) << "the expand mark needs no child";
    const auto children = software->Get_Children();
    EXPECT_THAT(Names(children), ElementsAre(u"Start quickly", u"Stop"));
    EXPECT_EQ(Item<ITreeNode>(children, 0)->Get_ChildCount(), 2);
    EXPECT_EQ(FCalls.RoundTrips(), 2);
}

TEST_F(TTree, EverythingThatALabelNeedsComesWithTheBranch) {
    const auto node = Item<IRequirementTreeNode>(Node(FSession, FSample.Start)->Get_Children(), 1);
    FCalls.Clear();
    EXPECT_EQ(node->Get_Name(), u"Cold");
    EXPECT_EQ(node->Get_HierarchicalNumber(), u"1.2");
    EXPECT_EQ(node->Get_SerialNumber(), Wide("SRS" + std::to_string(FSample.Cold)));
    EXPECT_EQ(node->Get_IsRequirement(), WordTrue);
    EXPECT_EQ(node->Get_HasUnreadMessages(), WordFalse);
    EXPECT_EQ(node->Get_UserIsInterested(), WordFalse);
    EXPECT_EQ(NumberOf(node->Get_ID()), FSample.Cold);
    EXPECT_EQ(NumberOf(node->Get_RequirementTypeID()), FSample.Software);
    EXPECT_EQ(NumberOf(node->Get_Parent()->Get_ID()), FSample.Start);
    EXPECT_EQ(FCalls.RoundTrips(), 0);
}

TEST_F(TTree, TheWayToAFoundNodeIsKnownAndItsSiblingsAreNot) {
    FCalls.Clear();
    const auto deep = FRoot->findByIDNumber(FSample.Deep);
    ASSERT_TRUE(deep);
    std::vector<int> way;
    for (Handle<ITreeNode> node = deep; node->Get_Parent(); node = node->Get_Parent())
        way.push_back(NumberOf(node->Get_ID()));
    EXPECT_THAT(way, ElementsAre(FSample.Deep, FSample.Cold, FSample.Start, FSample.Software));
    EXPECT_EQ(FCalls.RoundTrips(), 1);
    const auto start = deep->Get_Parent()->Get_Parent();
    EXPECT_EQ(start->Get_Children()->Get_Count(), 2);
    EXPECT_EQ(FCalls.RoundTrips(), 2) << "the branch on the way had not been read";
}

TEST_F(TTree, ANodeOutsideTheSubtreeIsNotFoundInIt) {
    const auto usage = FRoot->findByIDNumber(FSample.Usage);
    EXPECT_FALSE(usage->findByIDNumber(FSample.Deep));
    EXPECT_FALSE(FRoot->findByIDNumber(999'999));
    EXPECT_TRUE(Node(FSession, FSample.Start)->findByIDNumber(FSample.Deep));
}

TEST_F(TTree, AReadBranchIsReadAgainOnlyAfterTheCacheIsCleared) {
    const auto software = FRoot->findByIDNumber(FSample.Software);
    software->Get_Children();
    FCalls.Clear();
    software->Get_Children();
    EXPECT_EQ(FCalls.RoundTrips(), 0);

    const auto other = LogOn(u"ben");
    CoRequirementFactory::Create()->Create1(u"Pause", Project(other),
                                            Cast<IRequirementType>(other->get(software->Get_ID())), 1, other);
    Forget(software);
    EXPECT_THAT(Names(software->Get_Children()), ElementsAre(u"Start quickly", u"Pause", u"Stop"));
    EXPECT_EQ(software->Get_ChildCount(), 3);
}

TEST_F(TTree, AWalkOverTheWholeTreeAsksOncePerNodeThatHasChildren) {
    FCalls.Clear();
    const std::function<int(const Handle<ITreeNode>&)> count = [&](const Handle<ITreeNode>& node) {
        const auto children = node->Get_Children();
        int nodes = 1;
        for (int i = 0; i < children->Get_Count(); ++i)
            nodes += count(Item<ITreeNode>(children, i));
        return nodes;
    };
    EXPECT_EQ(count(FRoot), 9);
    EXPECT_EQ(FCalls.RoundTrips(), 5);
}

TEST_F(TTree, PositionsFollowTheServersOrder) {
    const auto software = FRoot->findByIDNumber(FSample.Software);
    EXPECT_EQ(software->indexOf(software->getChild(1)), 1);
    EXPECT_EQ(software->indexOf(Node(FSession, FSample.Evening)), -1);
    EXPECT_THAT(FailureOf([&] { software->getChild(2); }), HasSubstr("IndexOutOfBoundsException"));
    EXPECT_THAT(FailureOf([&] { software->getChild(-1); }), HasSubstr("IndexOutOfBoundsException"));
    EXPECT_THAT(FailureOf([&] { software->indexOf(nullptr); }), HasSubstr("IllegalArgumentException"));
}

TEST_F(TTree, AFrozenBaselineKeepsItsTree) {
    const auto root = Baseline(FSession, u"Release 1")->Get_RequirementTree()->Get_Root();
    EXPECT_THAT(Names(root->findByIDNumber(FSample.Software)->Get_Children()),
                ElementsAre(u"Start", u"Stop"));
    EXPECT_THAT(Names(FRoot->findByIDNumber(FSample.Software)->Get_Children()),
                ElementsAre(u"Start quickly", u"Stop"));
}
