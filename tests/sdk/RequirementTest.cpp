#include "sdk/SdkTest.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

class TRequirement : public TSdkTest {
protected:
    Handle<ISession> FSession = LogOn();
};

TEST_F(TRequirement, SelectingTakesOneRoundTripAndTwoTheFirstTimeForItsType) {
    Project(FSession);
    FCalls.Clear();
    const auto show = [&](int id) {
        FCalls.Clear();
        const auto requirement = FSession->getLatestRequirement(id);
        requirement->Get_Name();
        requirement->Get_RequirementType()->Get_CustomTabs();
        requirement->Get_Description()->Get_Text();
        requirement->Get_AttributeValues();
        requirement->Get_Priority()->Get_SelectedValue();
        requirement->Get_Status()->Get_Entries();
        requirement->Get_Owner()->Get_UserName();
        requirement->Get_Baseline()->Get_Type();
        requirement->Get_DocumentReferences();
        requirement->Get_ResponsibleUsers();
        FSession->Get_Users();
        return FCalls.RoundTrips();
    };
    EXPECT_EQ(show(FSample.Start), 2);
    EXPECT_EQ(show(FSample.Start), 1);
    EXPECT_EQ(show(FSample.Stop), 1);
}

TEST_F(TRequirement, TheCurrentBaselineGivesTheNewestVersionAndAFrozenOneItsOwn) {
    const auto newest = FSession->getLatestRequirement(FSample.Start);
    EXPECT_EQ(newest->Get_Name(), u"Start quickly");
    const auto root = Baseline(FSession, u"Release 1")->Get_RequirementTree()->Get_Root();
    const auto frozen = Cast<IRequirement>(FSession->get(root->findByIDNumber(FSample.Start)->Get_ID()));
    EXPECT_EQ(frozen->Get_Name(), u"Start");
    EXPECT_EQ(frozen->Get_Baseline()->Get_Name(), u"Release 1");
    EXPECT_LT(frozen->Get_Version()->Get_MajorVersion() * 1000 + frozen->Get_Version()->Get_MinorVersion(),
              newest->Get_Version()->Get_MajorVersion() * 1000 + newest->Get_Version()->Get_MinorVersion());
}

TEST_F(TRequirement, EveryReadingOfTheNewestVersionAsksTheServer) {
    EXPECT_EQ(FSession->getLatestRequirement(FSample.Stop)->Get_Name(), u"Stop");
    const auto other = LogOn(u"ben")->getLatestRequirement(FSample.Stop);
    other->lock();
    other->Set_Name(u"Halt");
    CallByName(other, "save", {Variant(u"")});
    other->unlock();
    FCalls.Clear();
    EXPECT_EQ(FSession->getLatestRequirement(FSample.Stop)->Get_Name(), u"Halt");
    EXPECT_EQ(FSession->getLatestRequirement(FSample.Stop)->Get_Name(), u"Halt");
    EXPECT_THAT(FCalls.Requests(), ElementsAre("GetRequirement", "GetRequirement"));
}

TEST_F(TRequirement, WhatIsWrittenReachesTheServerWithTheSaveAlone) {
    const auto requirement = FSession->getLatestRequirement(FSample.Stop);
    requirement->lock();
    FCalls.Clear();
    requirement->Set_Name(u"Halt");
    requirement->Set_Validation(u"Press the button");
    requirement->Get_Description()->Set_Text(u"<p>Halts</p>");
    requirement->Set_Owner(Cast<IUser>(FSession->get(Item<IUser>(FSession->Get_Users(), 1)->Get_UserID())));
    EXPECT_EQ(requirement->Get_LockedByCurrentUser(), WordTrue);
    EXPECT_EQ(FCalls.RoundTrips(), 0);
    const auto other = LogOn(u"ben");
    EXPECT_EQ(other->getLatestRequirement(FSample.Stop)->Get_Name(), u"Stop");
    std::string comment;
    CallByName(requirement, "save", {Variant::TextReference(comment)});
    const auto saved = other->getLatestRequirement(FSample.Stop);
    EXPECT_EQ(saved->Get_Name(), u"Halt");
    EXPECT_EQ(saved->Get_Validation(), u"Press the button");
    EXPECT_EQ(saved->Get_Description()->Get_Text(), u"<p>Halts</p>");
    EXPECT_EQ(saved->Get_Owner()->Get_UserName(), u"Ben Ortega");
}

TEST_F(TRequirement, WhileItIsLockedHereEveryHandleShowsWhatWasWritten) {
    const auto requirement = FSession->getLatestRequirement(FSample.Stop);
    FSession->getLatestRequirement(FSample.Stop); // somebody else's look at it
    requirement->lock();
    requirement->Set_Name(u"Halt");
    FCalls.Clear();
    EXPECT_EQ(FSession->getLatestRequirement(FSample.Stop)->Get_Name(), u"Halt");
    EXPECT_EQ(FCalls.RoundTrips(), 0);
}

TEST_F(TRequirement, WhatWasNotSavedGoesWithTheLock) {
    const auto requirement = FSession->getLatestRequirement(FSample.Stop);
    requirement->lock();
    requirement->Set_Name(u"Halt");
    requirement->unlock();
    EXPECT_EQ(requirement->Get_Name(), u"Halt") << "until the next reading";
    EXPECT_EQ(FSession->getLatestRequirement(FSample.Stop)->Get_Name(), u"Stop");
}

TEST_F(TRequirement, WhatWasNotSavedGoesWithTheCache) {
    const auto requirement = FSession->getLatestRequirement(FSample.Stop);
    requirement->lock();
    requirement->Set_Name(u"Halt");
    requirement->Get_Manager()->Get_Cache()->clear();
    const auto again = FSession->getLatestRequirement(FSample.Stop);
    EXPECT_EQ(again->Get_Name(), u"Stop");
    EXPECT_EQ(again->Get_LockedByCurrentUser(), WordTrue);
}

TEST_F(TRequirement, ASecondUserIsRefusedTheLockAndToldWhoHasIt) {
    FSession->getLatestRequirement(FSample.Stop)->lock();
    const auto other = LogOn(u"ben")->getLatestRequirement(FSample.Stop);
    const std::string text = FailureOf([&] { other->lock(); });
    EXPECT_THAT(text, StartsWith("ObjectLockedException: "));
    EXPECT_THAT(text, HasSubstr("Ann Lee"));
    EXPECT_EQ(other->Get_LockedByCurrentUser(), WordFalse);
}

TEST_F(TRequirement, ALockOnAnOutdatedReadingIsRefusedAndGivenBack) {
    const auto outdated = FSession->getLatestRequirement(FSample.Stop);
    const auto other = LogOn(u"ben")->getLatestRequirement(FSample.Stop);
    other->lock();
    other->Set_Name(u"Halt");
    other->save();
    other->unlock();
    const std::string text = FailureOf([&] { outdated->lock(); });
    EXPECT_THAT(text, StartsWith("ConcurrentModificationException: Ben Ortega has changed"));
    EXPECT_EQ(outdated->Get_LockedByCurrentUser(), WordFalse);
    other->lock();
    other->unlock();
    const auto newest = FSession->getLatestRequirement(FSample.Stop);
    newest->lock();
    EXPECT_EQ(newest->Get_Name(), u"Halt");
}

TEST_F(TRequirement, SavingWithoutTheLockIsRefusedAndKeepsWhatWasWritten) {
    const auto requirement = FSession->getLatestRequirement(FSample.Stop);
    requirement->Set_Name(u"Halt");
    EXPECT_THAT(FailureOf([&] { requirement->save(); }), HasSubstr("Object is not locked by current user"));
    EXPECT_EQ(requirement->Get_Name(), u"Halt");
}

TEST_F(TRequirement, TheWholeSequenceOfASaveTakesFiveRoundTrips) {
    const auto root = Root(FSession);
    const auto requirement = FSession->getLatestRequirement(FSample.Stop);
    requirement->Get_AttributeValues();
    requirement->lock();
    requirement->Get_Description()->Set_Text(u"<p>Halts</p>");
    FCalls.Clear();
    CallByName(requirement, "save", {Variant(u"")});
    requirement->unlock();
    root->Get_Tree()->Get_Manager()->Get_Cache()->clear();
    EXPECT_EQ(root->findByIDNumber(FSample.Stop)->Get_Name(), u"Stop");
    for (int reading = 0; reading < 2; ++reading) {
        const auto again = FSession->getLatestRequirement(FSample.Stop);
        EXPECT_EQ(again->Get_Description()->Get_Text(), u"<p>Halts</p>");
        again->Get_RequirementType()->Get_CustomTabs();
        again->Get_Owner()->Get_Name();
    }
    EXPECT_LE(FCalls.RoundTrips(), 5);
}
