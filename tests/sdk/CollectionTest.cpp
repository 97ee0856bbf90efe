#include "sdk/SdkTest.h"

#include <gmock/gmock.h>

using ::testing::HasSubstr;

class TCollectionTest : public TSdkTest {
protected:
    static Handle<IStCollection> Own(std::initializer_list<int> numbers) {
        auto collection = CoCollectionFactory::Create()->Create1();
        for (const int number : numbers)
            collection->Add(Variant(std::int32_t{number}));
        return collection;
    }

    static std::vector<int> Numbers(const Handle<IStCollection>& collection) {
        std::vector<int> numbers;
        for (int i = 0; i < collection->Get_Count(); ++i)
            numbers.push_back(collection->Get_Item(Variant(std::int32_t{i})).AsInteger());
        return numbers;
    }
};

TEST_F(TCollectionTest, AListOfAServerObjectRefusesChange) {
    const auto projects = LogOn()->Get_Projects();
    EXPECT_NE(projects->Get_ReadOnly(), WordFalse);
    EXPECT_THAT(FailureOf([&] { projects->Add(Variant(1)); }), HasSubstr("UnsupportedOperationException"));
    EXPECT_THAT(FailureOf([&] { projects->Remove(Variant(0)); }), HasSubstr("UnsupportedOperationException"));
    EXPECT_EQ(projects->Get_Count(), 1);
}

TEST_F(TCollectionTest, ACopyChangesAloneAndTheOriginalStays) {
    const auto projects = LogOn()->Get_Projects();
    const auto copy = CoCollectionFactory::Create()->CreateByIStCollection(projects);
    EXPECT_EQ(copy->Get_ReadOnly(), WordFalse);
    copy->Remove(Variant(0));
    EXPECT_EQ(copy->Get_Count(), 0);
    EXPECT_EQ(projects->Get_Count(), 1);
}

TEST_F(TCollectionTest, RemovingClosesTheGap) {
    const auto numbers = Own({7, 8, 9});
    numbers->Remove(Variant(1));
    EXPECT_THAT(Numbers(numbers), ::testing::ElementsAre(7, 9));
}

TEST_F(TCollectionTest, APositionOutsideTheListFails) {
    const auto numbers = Own({7});
    for (const int position : {-1, 1, 1000}) {
        const Variant index(std::int32_t{position});
        EXPECT_THAT(FailureOf([&] { numbers->Get_Item(index); }), HasSubstr("IndexOutOfBoundsException"));
        EXPECT_THAT(FailureOf([&] { numbers->Remove(index); }), HasSubstr("IndexOutOfBoundsException"));
    }
}

TEST_F(TCollectionTest, AnEmptyHandleIsNoSource) {
    EXPECT_THAT(FailureOf([] { CoCollectionFactory::Create()->CreateByIStCollection(nullptr); }),
                HasSubstr("IllegalArgumentException"));
}

TEST_F(TCollectionTest, AnEnumeratorWalksSkipsAndStartsAnew) {
    const auto walk = Query<IStCollectionEnum>(Own({7, 8, 9})->Get__NewEnum());
    ASSERT_TRUE(walk);
    Variant element;
    std::int32_t fetched = 0;
    walk->Next(1, element, fetched);
    EXPECT_EQ(element, Variant(7));
    const auto clone = walk->Clone();
    walk->Skip(1);
    walk->Next(1, element, fetched);
    EXPECT_EQ(element, Variant(9));
    walk->Next(1, element, fetched);
    EXPECT_EQ(fetched, 0);
    clone->Next(1, element, fetched);
    EXPECT_EQ(element, Variant(8));
    walk->Reset();
    walk->Next(1, element, fetched);
    EXPECT_EQ(element, Variant(7));
}
