// What a selection shows: pages, tabs and frames.
#include "panel/PanelTest.h"

#include "frames/UHistoryFrame.h"
#include "platform/widgets/tree/ListView.h"

using testing::ElementsAre;

class TPanelPages : public TPanelTest {
protected:
    TPanelPages() { LogOn(); }
};

TEST_F(TPanelPages, ATypeShowsItsTextsAndCustomTabs) {
    Select(ZoneControl);
    Select({FirmwareType});
    EXPECT_EQ(Helpers().CurrentRequirement, nullptr);
    EXPECT_EQ(Panel().nbkContents->PageIndex(), RequirementTypePage);
    EXPECT_EQ(Panel().edtReqTypeName->Text(), FirmwareType);
    EXPECT_EQ(Panel().edtReqTypeTag->Text(), "FW");
    ASSERT_EQ(Panel().lstReqTypeCustomTabs->ItemCount(), 2);
    EXPECT_EQ(Panel().lstReqTypeCustomTabs->Item(1)->Caption(), "Safety");
    EXPECT_EQ(Panel().lstCustomTabAttributes->Item(0)->Caption(), "Effort");
    Panel().lstReqTypeCustomTabs->SetSelected(Panel().lstReqTypeCustomTabs->Item(1));
    EXPECT_EQ(Panel().lstCustomTabAttributes->Item(0)->Caption(), "Safety relevant");
}

TEST_F(TPanelPages, OnlyTheFrameOfTheActiveTabIsFilled) {
    Select(ZoneControl);
    User->ChooseTab("pgcRequirement", "History");
    Server->Calls.Clear();
    Select(FilterReadings);
    EXPECT_EQ(Panel().pgcRequirement->ActivePageIndex(), rtHistory);
    EXPECT_TRUE(Called("IRequirement.Get_History"));
    EXPECT_EQ(NameEdit().Text(), "Zone control");
    User->ChooseTab("pgcRequirement", "Details");
    EXPECT_EQ(NameEdit().Text(), FilterReadings.back());
}

TEST_F(TPanelPages, FromAnotherPageARequirementOpensItsDetails) {
    Select(ZoneControl);
    User->ChooseTab("pgcRequirement", "Validation");
    Select({});
    EXPECT_EQ(Panel().nbkContents->PageIndex(), ProjectPage);
    Select(FilterReadings);
    EXPECT_EQ(Panel().pgcRequirement->ActivePageIndex(), rtDetails);
}

TEST_F(TPanelPages, SelectingAfterALostSessionDoesNothing) {
    Select(FilterReadings);
    Select(ZoneControl);
    QuoraneSession->Logout();
    Server->Calls.Clear();
    Select(FilterReadings);
    EXPECT_EQ(Server->Calls.RoundTrips(), 0);
    EXPECT_EQ(NameEdit().Text(), "Zone control");
}

TEST_F(TPanelPages, TheFlagOfAFillIsGoneWhenTheFillFails) {
    Server->Calls.FailOperation("IRequirement.Get_Status", "ServerException: no.");
    Select(ZoneControl);
    EXPECT_EQ(OnlyError(), "ServerException: no.");
    EXPECT_FALSE(Helpers().ShowingRequirementInfo);
}

TEST_F(TPanelPages, ASelectedRequirementCostsOneRoundTripWhenItsTypeIsKnown) {
    Select(ZoneControl);
    User->Node("trvRequirements", {Top().Text(), FirmwareType, "Schedule"});
    Server->Calls.Clear();
    Select({FirmwareType, "Schedule"});
    EXPECT_LE(Server->Calls.RoundTrips(), 1) << testing::PrintToString(Server->Calls.Requests());
}
