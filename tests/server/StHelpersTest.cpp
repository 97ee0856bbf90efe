#include "server/ServerFixture.h"
#include "server/UQuoraneStHelpers.h"

using namespace Quorane_TLB;
using testing::_;
using testing::Return;
using testing::Throw;

namespace {

TEST(Enumerator, GivesTheElementsInIndexOrder) {
    const auto first = MakeMock<TMockProject>();
    const auto second = MakeMock<TMockProject>();
    const auto walk = EnumerableStCollection(ListOf(first, second))->GetEnumerator();
    ASSERT_TRUE(walk->MoveNext());
    EXPECT_EQ(walk->GetCurrent(), first);
    ASSERT_TRUE(walk->MoveNext());
    EXPECT_EQ(walk->GetCurrent(), second);
    EXPECT_FALSE(walk->MoveNext());
    EXPECT_EQ(walk->GetCurrent(), second);
}

TEST(Enumerator, FetchesNothingFromAnEmptyCollection) {
    const auto empty = ListOf();
    const auto walk = EnumerableStCollection(empty)->GetEnumerator();
    EXPECT_FALSE(walk->MoveNext());
    EXPECT_EQ(empty->ItemCalls, 0);
}

TEST(Enumerator, WalksAListThatGrowsToItsNewEnd) {
    const auto list = ListOf(MakeMock<TMockUser>());
    const auto walk = EnumerableStCollection(list)->GetEnumerator();
    ASSERT_TRUE(walk->MoveNext());
    EXPECT_FALSE(walk->MoveNext());
    list->Add(MakeMock<TMockUser>());
    EXPECT_TRUE(walk->MoveNext());
    EXPECT_FALSE(walk->MoveNext());
}

TEST(Enumerator, OutlivesTheObjectThatMadeItAndAnExchangeOfItsCollection) {
    auto enumerable = EnumerableStCollection(ListOf(MakeMock<TMockUser>()));
    const auto walk = enumerable->GetEnumerator();
    enumerable->SetCollection(ListOf());
    enumerable.reset();
    EXPECT_TRUE(walk->MoveNext());
    EXPECT_TRUE(walk->GetCurrent());
}

TEST(Enumerator, PassesFailuresOn) {
    const auto broken = MakeMock<TMockStCollection>();
    EXPECT_CALL(*broken, Get_Count()).WillOnce(Throw(ServerFailure("RemoteServerException")));
    const auto walk = EnumerableStCollection(broken)->GetEnumerator();
    EXPECT_THROW(walk->MoveNext(), EOleSysError);
    const auto numbers = std::make_shared<TListCollection>(std::vector<Variant>{7});
    const auto plain = EnumerableStCollection(numbers)->GetEnumerator();
    ASSERT_TRUE(plain->MoveNext());
    EXPECT_THROW(plain->GetCurrent(), EConvertError);
    EXPECT_THROW(EnumerableStCollection({})->GetEnumerator()->MoveNext(), EOleSysError);
}

class NodeContainerTest : public TServerTest {
protected:
    NodeContainerTest() {
        QuoraneSession = std::make_unique<TQuoraneSession>();
        QuoraneSession->Login("dev7", "ben", "secret");
        ON_CALL(*Node, Get_IsRequirement()).WillByDefault(Return(WordTrue));
        ON_CALL(*Node, Get_ID()).WillByDefault(Return(Id));
        ON_CALL(*Id, Get_IDNumber()).WillByDefault(Return(12));
        ON_CALL(*Baseline, Get_TYPE_CURRENT()).WillByDefault(Return(4));
    }
    ~NodeContainerTest() override { FinalizeQuoraneSession(); }

    std::shared_ptr<testing::NiceMock<TMockRequirementTreeNode>> Node = MakeMock<TMockRequirementTreeNode>();
    std::shared_ptr<testing::NiceMock<TMockRequirementID>> Id = MakeMock<TMockRequirementID>();
    std::shared_ptr<testing::NiceMock<TMockBaseline>> Baseline = MakeMock<TMockBaseline>();
    TRequirementTreeNodeContainer Container{Node, Baseline};
};

TEST_F(NodeContainerTest, AsksAnewForTheLatestVersionInTheCurrentBaseline) {
    const auto older = MakeMock<TMockRequirement>();
    const auto newer = MakeMock<TMockRequirement>();
    ON_CALL(*Baseline, Get_Type()).WillByDefault(Return(4));
    EXPECT_CALL(*Session, get(_)).Times(0);
    EXPECT_CALL(*Session, getLatestRequirement(12)).WillOnce(Return(older)).WillOnce(Return(newer));
    EXPECT_EQ(Container.GetRequirement(), older);
    EXPECT_EQ(Container.GetRequirement(), newer);
}

TEST_F(NodeContainerTest, GivesTheFrozenVersionInAnotherBaseline) {
    const auto frozen = MakeMock<TMockRequirement>();
    ON_CALL(*Baseline, Get_Type()).WillByDefault(Return(2));
    EXPECT_CALL(*Session, getLatestRequirement(_)).Times(0);
    EXPECT_CALL(*Session, get(Handle<IQuoraneObjectID>(Id))).WillOnce(Return(frozen));
    EXPECT_EQ(Container.GetRequirement(), frozen);
}

TEST_F(NodeContainerTest, RefusesARequirementOnTheNodeOfAType) {
    EXPECT_CALL(*Node, Get_IsRequirement()).WillOnce(Return(WordFalse));
    try {
        Container.GetRequirement();
        FAIL() << "a type's node gave a requirement";
    } catch (const Exception& failure) {
        EXPECT_STREQ(failure.what(), "Not a requirement node!");
    }
}

TEST_F(NodeContainerTest, FollowsANewReadingOfTheTree) {
    const auto fresh = MakeMock<TMockRequirementTreeNode>();
    ON_CALL(*fresh, Get_IsRequirement()).WillByDefault(Return(WordTrue));
    EXPECT_CALL(*fresh, Get_ID()).WillOnce(Return(Id));
    ON_CALL(*Baseline, Get_Type()).WillByDefault(Return(4));
    EXPECT_CALL(*Session, getLatestRequirement(12));
    Container.RefreshRequirement(fresh);
    Container.GetRequirement();
}

TEST_F(NodeContainerTest, RaisesWithoutASessionObject) {
    FinalizeQuoraneSession();
    EXPECT_THROW(Container.GetRequirement(), EOleSysError);
}

} // namespace
