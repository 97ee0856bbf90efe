// The custom tabs of a requirement in the real panel: made from its type, kept in step
// with the selection, saved and dropped with the requirement.
#include "panel/PanelTest.h"

using namespace Quorane_TLB;
using testing::ElementsAre;

namespace {

const std::vector<std::string> SeeTheHome{"App Requirement", "See the home at a glance"};
const std::string PlanningBox = "ctl_ctl_pgcRequirement_8_1";
const std::string SafetyBox = "ctl_ctl_pgcRequirement_9_1";

class CustomTabs : public TPanelTest {
protected:
    CustomTabs() { LogOn("ben"); }

    TPageControl& Tabs() { return *Panel().pgcRequirement; }

    std::vector<std::string> CustomCaptions() {
        std::vector<std::string> captions;
        for (int index = rtFirstCustom; index < Tabs().PageCount(); ++index)
            captions.push_back(Tabs().Page(index).Caption());
        return captions;
    }

    // The widget that was made as the given one of its box.
    template<class TWidget> TWidget& Widget(const std::string& box, int number) {
        auto* widget = Tabs().FindComponent<TWidget>("ctl_" + box + "_" + std::to_string(number));
        if (!widget) throw std::runtime_error("no such widget in " + box);
        return *widget;
    }
    TMaskEdit& Effort() { return Widget<TMaskEdit>(PlanningBox, 2); }
    TCheckBox& SafetyRelevant() { return Widget<TCheckBox>(SafetyBox, 1); }
    TEdit& Hazard() { return Widget<TEdit>(SafetyBox, 9); }

    // What another client reads of an attribute of the selected requirement.
    std::string OnServer(const std::u16string& attribute) {
        return ValueOf(ReadAs("admin", SelectedNumber()), attribute);
    }
};

TEST_F(CustomTabs, StandBehindTheFixedTabsWithTheValuesOfTheRequirement) {
    Select(Implausible);
    EXPECT_THAT(CustomCaptions(), ElementsAre("Planning", "Safety"));
    EXPECT_TRUE(SafetyRelevant().Checked());
    EXPECT_EQ(Hazard().Text(), "Zone heated without limit by a broken sensor");
    EXPECT_EQ(Widget<TMaskEdit>(SafetyBox, 3).Text(), "40");
    EXPECT_EQ(Widget<TComboBox>(SafetyBox, 5).Text(), "Safety Board");
    EXPECT_EQ(Widget<TMemo>(SafetyBox, 11).Text().substr(0, 9), "A reading");
    EXPECT_TRUE(Widget<TDatePicker>(PlanningBox, 4).Blank());
    EXPECT_GT(Tabs().Page(rtFirstCustom).ImageIndex(), 0) << "the type gives the tab a picture";
    EXPECT_EQ(SelectedImage(), imRequirement) << "filling locks nothing";
}

TEST_F(CustomTabs, AreThoseOfTheTypeOfTheRequirement) {
    Select(Implausible);
    Select(SeeTheHome);
    EXPECT_THAT(CustomCaptions(), ElementsAre("Release"));
    Select(ZoneControl);
    EXPECT_THAT(CustomCaptions(), ElementsAre("Planning", "Safety"));
    EXPECT_EQ(Effort().Text(), "120");
}

TEST_F(CustomTabs, TheActiveTabStaysByIndexAndEndsOnTheLastOneThere) {
    Select(Implausible);
    User->ChooseTab("pgcRequirement", "Safety");
    Select(ZoneControl);
    EXPECT_EQ(Tabs().ActivePageIndex(), rtFirstCustom + 1);
    Select(SeeTheHome);
    EXPECT_EQ(Tabs().ActivePageIndex(), rtFirstCustom);
}

TEST_F(CustomTabs, OneThatCannotBeMadeLeavesNoValuesOfTheLastRequirement) {
    Select(Implausible);
    Server->Calls.FailOperation("ICustomTab.Get_Attributes", "ServerException: no.");
    Select(ZoneControl);
    EXPECT_EQ(OnlyError(), "ServerException: no.");
    EXPECT_EQ(NameEdit().Text(), "Zone control");
}

TEST_F(CustomTabs, AChangeIsSavedWithTheRequirement) {
    Select(Implausible);
    Effort().SetText(std::string("17"));
    Widget<TComboBox>(PlanningBox, 6).SetItemIndex(3);
    Widget<TComboBox>(PlanningBox, 6).OnChange();
    Hazard().Clear();
    SafetyRelevant().SetChecked(false);
    EXPECT_EQ(SelectedImage(), imRequirementLocked);
    EXPECT_EQ(OnServer(u"Hazard"), "Zone heated without limit by a broken sensor") << "not saved yet";
    Panel().actSave->Execute();
    EXPECT_EQ(SelectedImage(), imRequirement);
    EXPECT_EQ(OnServer(u"Effort"), "17");
    EXPECT_EQ(OnServer(u"Target release"), "Later");
    EXPECT_EQ(OnServer(u"Hazard"), "");
    EXPECT_EQ(OnServer(u"Safety relevant"), "0");
    EXPECT_EQ(Effort().Text(), "17") << "the rebuilt tabs show what was saved";
}

TEST_F(CustomTabs, APickedDateAndCheckedUsersAreSaved) {
    Select(FilterReadings);
    auto& due = Widget<TDatePicker>(PlanningBox, 4);
    due.SetDate(46100.0);
    due.OnChange();
    auto& reviewers = Widget<TCheckListBox>(SafetyBox, 7);
    const int eva = reviewers.Items().IndexOf("Eva Novak");
    ASSERT_GE(eva, 0);
    reviewers.SetChecked(eva, true);
    reviewers.OnClickCheck(eva);
    Panel().actSave->Execute();
    EXPECT_EQ(OnServer(u"Due"), System.ShortDateText(46100.0));
    EXPECT_EQ(OnServer(u"Reviewers"), "Eva Novak");
    EXPECT_FALSE(Widget<TDatePicker>(PlanningBox, 4).Blank());
}

TEST_F(CustomTabs, ACancelPutsTheValuesBack) {
    Select(Implausible);
    Effort().SetText(std::string("17"));
    Panel().actCancelSave->Execute();
    EXPECT_EQ(SelectedImage(), imRequirement);
    EXPECT_NE(Effort().Text(), "17");
    Panel().actRefresh->Execute();
    Select(Implausible);
    EXPECT_NE(Effort().Text(), "17");
}

TEST_F(CustomTabs, AnotherUsersLockKeepsTheValueUnwritten) {
    Select(Implausible);
    const TReq theirs = ReadAs("eva", SelectedNumber());
    theirs->lock();
    Hazard().SetText(std::string("Mine"));
    EXPECT_EQ(OnlyError(), "The object requested is currently locked.");
    EXPECT_EQ(SelectedImage(), imRequirement);
    EXPECT_EQ(Hazard().Text(), "Mine");
    theirs->unlock();
    Select(ZoneControl);
    EXPECT_EQ(OnServer(u"Hazard"), "");
    Select(Implausible);
    EXPECT_EQ(Hazard().Text(), "Zone heated without limit by a broken sensor");
}

TEST_F(CustomTabs, AValueOutOfItsBoundsIsRefusedByTheServerAndStaysLocked) {
    Select(Implausible);
    Effort().SetText(std::string("4000"));
    Panel().actSave->Execute();
    EXPECT_FALSE(Dialogs.TakeErrors().empty());
    EXPECT_NE(OnServer(u"Effort"), "4000");
}

} // namespace
