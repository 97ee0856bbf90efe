#include "sdk/SdkTest.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class TTreeEdit : public TSdkTest {
protected:
    std::vector<std::u16string> ChildrenSeenByOthers(int id) {
        return Names(Node(LogOn(u"ben"), id)->Get_Children());
    }

    Handle<ISession> FSession = LogOn();
};

TEST_F(TTreeEdit, AMoveReachesTheServerWithTheTreesSave) {
    const auto start = Node(FSession, FSample.Start);
    start->moveChild(start->getChild(1), 0);
    EXPECT_THAT(Names(start->Get_Children()), ElementsAre(u"Cold", u"Warm"));
    EXPECT_THAT(ChildrenSeenByOthers(FSample.Start), ElementsAre(u"Warm", u"Cold"));
    start->Get_Tree()->save();
    EXPECT_THAT(ChildrenSeenByOthers(FSample.Start), ElementsAre(u"Cold", u"Warm"));
    EXPECT_EQ(start->getChild(1)->Get_HierarchicalNumber(), u"1.2");
}

TEST_F(TTreeEdit, AMoveThatIsNotSavedGoesWithTheCache) {
    const auto start = Node(FSession, FSample.Start);
    start->moveChild(start->getChild(1), 0);
    start->Get_Tree()->Get_Manager()->Get_Cache()->clear();
    start->Get_Tree()->save();
    EXPECT_THAT(Names(start->Get_Children()), ElementsAre(u"Warm", u"Cold"));
}

TEST_F(TTreeEdit, AMoveThatTheServerRefusesIsTakenBack) {
    const auto start = Node(FSession, FSample.Start);
    start->moveChild(start->getChild(1), 0);
    const auto other = LogOn(u"ben")->getLatestRequirement(FSample.Cold);
    other->remove();
    EXPECT_THAT(FailureOf([&] { start->Get_Tree()->save(); }), HasSubstr("Exception: "));
    EXPECT_THAT(Names(start->Get_Children()), ElementsAre(u"Warm"));
    start->Get_Tree()->save();
}

TEST_F(TTreeEdit, ARequirementGoesUnderAnotherWithAllBelowIt) {
    const auto cold = Node(FSession, FSample.Cold);
    const auto stop = Node(FSession, FSample.Stop);
    stop->addChild(cold);
    EXPECT_EQ(stop->Get_ChildCount(), 1);
    EXPECT_EQ(NumberOf(cold->Get_Parent()->Get_ID()), FSample.Stop);
    stop->Get_Tree()->save();
    EXPECT_THAT(ChildrenSeenByOthers(FSample.Start), ElementsAre(u"Warm"));
    EXPECT_THAT(ChildrenSeenByOthers(FSample.Stop), ElementsAre(u"Cold"));
    EXPECT_THAT(ChildrenSeenByOthers(FSample.Cold), ElementsAre(u"Deep"));
}

TEST_F(TTreeEdit, AnAdditionThatDoesNotReachTheServerIsTakenBack) {
    const auto cold = Node(FSession, FSample.Cold);
    const auto stop = Node(FSession, FSample.Stop);
    const auto start = Node(FSession, FSample.Start);
    const auto expectAsBefore = [&] {
        EXPECT_EQ(NumberOf(cold->Get_Parent()->Get_ID()), FSample.Start);
        EXPECT_EQ(stop->Get_ChildCount(), 0);
        EXPECT_EQ(start->indexOf(cold), 1);
    };
    stop->addChild(cold);
    stop->Get_Tree()->Get_Manager()->Get_Cache()->clear();
    expectAsBefore();
    stop->addChild(cold);
    LogOn(u"ben")->getLatestRequirement(FSample.Stop)->remove();
    EXPECT_THAT(FailureOf([&] { stop->Get_Tree()->save(); }), HasSubstr("Exception: "));
    expectAsBefore();
}

TEST_F(TTreeEdit, ARequirementCannotGoUnderItself) {
    const auto cold = Node(FSession, FSample.Cold);
    const auto deep = Node(FSession, FSample.Deep);
    EXPECT_THAT(FailureOf([&] { deep->addChild(cold); }), HasSubstr("IllegalArgumentException"));
    EXPECT_THAT(FailureOf([&] { cold->addChild(cold); }), HasSubstr("IllegalArgumentException"));
    EXPECT_THAT(FailureOf([&] { deep->addChild(Root(FSession)); }), HasSubstr("IllegalArgumentException"));
}

TEST_F(TTreeEdit, ANewChildStandsWhereItWasAskedForAndIsUnnumberedUntilItsSave) {
    const auto start = Node(FSession, FSample.Start);
    start->Get_Children();
    const auto parent = FSession->getLatestRequirement(FSample.Start);
    const auto made = CoRequirementFactory::Create()->Create2(u"New Requirement", parent, 1, FSession);
    EXPECT_THAT(FailureOf([&] { made->Get_IDNumber(); }), HasSubstr("IllegalStateException"));
    EXPECT_EQ(made->Get_RequirementType()->Get_Tag(), u"SRS");
    std::string comment;
    CallByName(made, "save", {Variant::TextReference(comment)});
    EXPECT_GT(made->Get_IDNumber(), 0);
    EXPECT_THAT(Names(start->Get_Children()), ElementsAre(u"Warm", u"New Requirement", u"Cold"));
    EXPECT_THAT(ChildrenSeenByOthers(FSample.Start), ElementsAre(u"Warm", u"New Requirement", u"Cold"));
}

TEST_F(TTreeEdit, WhatIsWrittenToANewRequirementIsSavedWithoutALockOfTheCaller) {
    const auto type = Cast<IRequirementType>(FSession->get(Node(FSession, FSample.Usage)->Get_ID()));
    const auto made =
        CoRequirementFactory::Create()->Create1(u"New Requirement", Project(FSession), type, 0, FSession);
    made->Set_Name(u"Morning");
    made->save();
    EXPECT_EQ(made->Get_LockedByCurrentUser(), WordFalse);
    EXPECT_THAT(ChildrenSeenByOthers(FSample.Usage), ElementsAre(u"Morning", u"Evening"));
}

TEST_F(TTreeEdit, ARemovedRequirementTakesEverythingBelowItAlong) {
    const auto start = Node(FSession, FSample.Start);
    start->Get_Children();
    FSession->getLatestRequirement(FSample.Cold)->remove();
    EXPECT_THAT(Names(start->Get_Children()), ElementsAre(u"Warm"));
    EXPECT_FALSE(Root(FSession)->findByIDNumber(FSample.Deep));
    const auto frozen = Baseline(FSession, u"Release 1")->Get_RequirementTree()->Get_Root();
    EXPECT_TRUE(frozen->findByIDNumber(FSample.Deep)) << "a frozen baseline keeps what it held";
}

TEST_F(TTreeEdit, WhatAnotherUserEditsCannotBeRemoved) {
    LogOn(u"ben")->getLatestRequirement(FSample.Deep)->lock();
    const auto cold = FSession->getLatestRequirement(FSample.Cold);
    EXPECT_THAT(FailureOf([&] { cold->remove(); }), HasSubstr("ObjectLockedException"));
    EXPECT_THAT(ChildrenSeenByOthers(FSample.Cold), ElementsAre(u"Deep"));
}

TEST_F(TTreeEdit, AFrozenBaselineRefusesMoves) {
    const auto start =
        Baseline(FSession, u"Release 1")->Get_RequirementTree()->Get_Root()->findByIDNumber(FSample.Start);
    start->moveChild(start->getChild(1), 0);
    EXPECT_THAT(FailureOf([&] { start->Get_Tree()->save(); }), HasSubstr("Exception: "));
    EXPECT_THAT(Names(start->Get_Children()), ElementsAre(u"Warm", u"Cold"));
}
