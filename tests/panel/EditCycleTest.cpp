// From clean to changed to saved or cancelled. The lock on the server is the mark.
#include "panel/PanelTest.h"

#include "platform/widgets/Application.h"

using namespace Quorane_TLB;
using testing::IsEmpty;

class TPanelEdit : public TPanelTest {
protected:
    TPanelEdit() {
        LogOn();
        Select(ZoneControl);
        FNumber = SelectedNumber();
        Server->Calls.Clear();
    }
    bool LockedHere() { return Helpers().CurrentRequirement->Get_LockedByCurrentUser() != WordFalse; }

    std::int32_t FNumber;
};

TEST_F(TPanelEdit, TheFirstChangeLocksBeforeItWrites) {
    User->Type("edtRequirementName", "Z");
    EXPECT_TRUE(LockedHere());
    EXPECT_GE(FirstCall("ILockableQuoraneObject.lock"), 0);
    EXPECT_LT(FirstCall("ILockableQuoraneObject.lock"), FirstCall("IQuoraneObject.Set_Name"));
    EXPECT_EQ(SelectedImage(), imRequirementLocked);
    EXPECT_TRUE(Panel().actSave->Enabled());
    EXPECT_TRUE(Panel().actCancelSave->Enabled());
    EXPECT_EQ(SelectedText(), "Zone control");
    EXPECT_EQ(NameOnServer(FNumber), "Zone control");
}

TEST_F(TPanelEdit, OnlyTheFirstChangeAsksTheServer) {
    User->Type("edtRequirementName", "Z");
    Server->Calls.Clear();
    User->Type("edtRequirementName", "Zones of the home");
    EXPECT_EQ(Server->Calls.RoundTrips(), 0);
    EXPECT_FALSE(Called("ILockableQuoraneObject.lock"));
}

TEST_F(TPanelEdit, AFillNeverLocks) {
    for (const char* tab :
         {"Validation", "Discussion", "References", "History", "Responsibilities", "Details"})
        User->ChooseTab("pgcRequirement", tab);
    Select(Implausible);
    Select({"System Requirement", "Be installed within one hour"});
    EXPECT_FALSE(Called("ILockableQuoraneObject.lock"));
    EXPECT_EQ(SelectedImage(), imRequirement);
    EXPECT_FALSE(Panel().actSave->Enabled());
}

TEST_F(TPanelEdit, ASaveWritesGivesTheLockBackAndShowsWhatTheServerMadeOfIt) {
    const std::string version = Panel().fraDetails->edtRequirementVersion->Text();
    User->Type("edtRequirementName", "Zones");
    User->Click("btnSave");
    EXPECT_EQ(NameOnServer(FNumber), "Zones");
    EXPECT_EQ(SelectedText(), "Zones");
    EXPECT_EQ(SelectedImage(), imRequirement);
    EXPECT_NE(Panel().fraDetails->edtRequirementVersion->Text(), version);
    EXPECT_FALSE(Panel().actSave->Enabled());
    EXPECT_NO_THROW(ReadAs("ben", FNumber)->lock());
}

TEST_F(TPanelEdit, ASaveCostsAtMostFiveRoundTrips) {
    User->Type("edtRequirementName", "Zones");
    Server->Calls.Clear();
    User->Click("btnSave");
    EXPECT_LE(Server->Calls.RoundTrips(), 5) << testing::PrintToString(Server->Calls.Requests());
}

TEST_F(TPanelEdit, ACancelLeavesNothingThatWasWritten) {
    User->Type("edtRequirementName", "Zones");
    User->Click("btnCancelSave");
    EXPECT_EQ(NameEdit().Text(), "Zone control");
    EXPECT_EQ(SelectedName(), "Zone control");
    EXPECT_EQ(SelectedImage(), imRequirement);
    EXPECT_FALSE(LockedHere());
    Select(FilterReadings);
    Select(ZoneControl);
    EXPECT_EQ(NameEdit().Text(), "Zone control");
    EXPECT_EQ(NameOnServer(FNumber), "Zone control");
}

TEST_F(TPanelEdit, ACancelForgetsWhatTheClientHadKeptOfTheTree) {
    const std::int32_t child = [this] {
        Select(FilterReadings);
        return SelectedNumber();
    }();
    TTreeNode& node = Select(ZoneControl);
    node.Collapse();
    RenameAs(ReadAs("ben", child), u"Renamed by Ben");
    User->Type("edtRequirementName", "Z");
    User->Click("btnCancelSave");
    node.Expand(false);
    EXPECT_EQ(node.GetFirstChild()->Text(), "Renamed by Ben");
}

TEST_F(TPanelEdit, LeavingAChangedRequirementSavesItWithoutAQuestion) {
    User->Type("edtRequirementName", "Zones");
    Select({FirmwareType, "Schedule"});
    EXPECT_EQ(NameOnServer(FNumber), "Zones");
    EXPECT_THAT(Dialogs.Messages(), IsEmpty());
    EXPECT_EQ(SelectedText(), "Schedule");
    EXPECT_EQ(NameEdit().Text(), "Schedule");
    EXPECT_EQ(User->Node("trvRequirements", {Top().Text(), FirmwareType, "Zones"}).ImageIndex(),
              imRequirement);
}

TEST_F(TPanelEdit, LeavingByAnotherBaselineSavesToo) {
    User->Type("edtRequirementName", "Zones");
    User->Choose("cbxProjectBaselines", "Release 1.0");
    EXPECT_EQ(NameOnServer(FNumber), "Zones");
    EXPECT_NO_THROW(ReadAs("ben", FNumber)->lock());
}

TEST_F(TPanelEdit, ARequirementWithoutANameIsNotSaved) {
    User->Type("edtRequirementName", "");
    User->Click("btnSave");
    EXPECT_EQ(OnlyError(), "Requirement name cannot be empty!");
    EXPECT_FALSE(Called("IRequirement.save"));
    EXPECT_TRUE(LockedHere());
    EXPECT_EQ(SelectedImage(), imRequirementLocked);
}

TEST_F(TPanelEdit, ASaveThatFailsOnLeavingIsToldAndTheSelectionStillMoves) {
    User->Type("edtRequirementName", "Zones");
    Server->Calls.FailOperation("IRequirement.save", "ServerException: no.");
    Select({FirmwareType, "Schedule"});
    EXPECT_EQ(OnlyError(), "ServerException: no.");
    EXPECT_EQ(NameEdit().Text(), "Schedule");
    EXPECT_THROW(ReadAs("ben", FNumber)->lock(), std::exception);
}

TEST_F(TPanelEdit, ARefusedLockLeavesTheTextButWritesNothing) {
    const Handle<ISession> ben = Server->LogOn("ben");
    const TReq other = ben->getLatestRequirement(FNumber);
    other->lock();
    User->Type("edtRequirementName", "Z");
    for (const std::string& error : Dialogs.TakeErrors())
        EXPECT_EQ(error, "The object requested is currently locked.");
    EXPECT_EQ(SelectedImage(), imRequirement);
    EXPECT_EQ(SelectedName(), "Zone control");
    EXPECT_EQ(NameEdit().Text(), "Z");
    EXPECT_FALSE(Called("IQuoraneObject.Set_Name"));
    EXPECT_FALSE(Panel().actSave->Enabled());
}

TEST_F(TPanelEdit, AFailedCancelDoesNotKeepTheIdleCheckOut) {
    User->Type("edtRequirementName", "Zones");
    Server->Calls.FailOperation("IQuoraneObjectCache.clear", "ServerException: no.");
    User->Click("btnCancelSave");
    EXPECT_EQ(OnlyError(), "ServerException: no.");
    TActor::Settle();
    EXPECT_FALSE(Panel().actSave->Enabled());
    User->Type("edtRequirementName", "Zones again");
    EXPECT_TRUE(Panel().actSave->Enabled());
}

TEST_F(TPanelEdit, UnlockingKeepsTheTextOnShowAndSavesNothing) {
    User->Type("edtRequirementName", "Zones");
    Panel().actUnlock->Execute();
    TActor::Settle();
    EXPECT_EQ(NameEdit().Text(), "Zones");
    EXPECT_FALSE(Panel().actSave->Enabled());
    EXPECT_EQ(SelectedImage(), imRequirement);
    EXPECT_EQ(NameOnServer(FNumber), "Zone control");
}

TEST_F(TPanelEdit, UnlockingIsOfferedForRequirementsOnly) {
    EXPECT_TRUE(Panel().actUnlock->Visible());
    Select({FirmwareType});
    TActor::Settle();
    EXPECT_FALSE(Panel().actUnlock->Visible());
}
