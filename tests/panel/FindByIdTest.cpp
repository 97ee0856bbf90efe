// The search by number and the outside estimating tool.
#include "panel/PanelTest.h"

#include "panel/UFindByIdForm.h"

class TPanelFind : public TPanelTest {
protected:
    TPanelFind() { LogOn(); }

    void Find(const std::string& entry, const char* button = "btnFind") {
        User->WhenModal([this, entry, button](TForm& form) {
            auto& dialog = dynamic_cast<TfrmFindById&>(form);
            EXPECT_EQ(frmFindById, &dialog);
            dialog.edtID->SetText(entry);
            (std::string(button) == "btnFind" ? dialog.btnFind : dialog.btnCancel)->Click();
        });
        User->Click("btnSearchById");
        EXPECT_EQ(frmFindById, nullptr);
    }
};

TEST_F(TPanelFind, ANumberIsFoundWithItsTagAroundIt) {
    Select(Implausible);
    const std::string number = std::to_string(SelectedNumber());
    for (const std::string& entry :
         {number, "FW" + number, " " + number.substr(0, 1) + "-" + number.substr(1)}) {
        Select({FirmwareType});
        Find(entry);
        EXPECT_EQ(SelectedText(), Implausible.back()) << entry;
    }
}

TEST_F(TPanelFind, TheSelectedRequirementItselfComesUpOnItsFilledDetails) {
    Select(ZoneControl);
    User->ChooseTab("pgcRequirement", "History");
    Select(FilterReadings);
    EXPECT_EQ(NameEdit().Text(), "Zone control") << "the details are not on show";
    Find(std::to_string(SelectedNumber()));
    EXPECT_EQ(Panel().pgcRequirement->ActivePageIndex(), rtDetails);
    EXPECT_EQ(NameEdit().Text(), FilterReadings.back());
    EXPECT_EQ(SelectedImage(), imRequirement);
}

TEST_F(TPanelFind, WhatIsNoNumberOfTheBaselineIsTold) {
    Select(ZoneControl);
    for (const char* entry : {"", "letters", "2147483647", "2147483648", "99999999999999999999"}) {
        Dialogs.Answer(TMessageResult::Ok);
        Find(entry);
        const auto messages = Dialogs.TakeMessages();
        ASSERT_EQ(messages.size(), 1U) << entry;
        EXPECT_EQ(messages[0].Text, "Requirement not found in this baseline.");
        EXPECT_EQ(messages[0].Caption, "Quorane");
        EXPECT_EQ(SelectedText(), "Zone control");
    }
}

TEST_F(TPanelFind, CancelSearchesNothing) {
    Select(ZoneControl);
    Server->Calls.Clear();
    Find("12", "btnCancel");
    EXPECT_FALSE(Called("ITreeNode.findByIDNumber"));
    EXPECT_EQ(SelectedText(), "Zone control");
}

TEST_F(TPanelFind, TheEstimatingToolStartsInItsOwnFolder) {
    System.MachineSettings[{"SOFTWARE\\Vantrel\\Quorane", "Quorane_EXE"}] = "/opt/quorane/client";
    Panel().actTallyworks->SetVisible(true);
    Panel().actTallyworks->Execute();
    ASSERT_EQ(System.Started.size(), 1U);
    EXPECT_EQ(System.Started[0].first, "/opt/quorane/Quorane Tallyworks Pluggin.EXE");
    EXPECT_EQ(System.Started[0].second, "/opt/quorane");
}

TEST_F(TPanelFind, AnEstimatingToolThatDoesNotStartIsTold) {
    System.StartingFails = true;
    Panel().actTallyworks->Execute();
    EXPECT_EQ(OnlyError(), "You must have Tallyworks installed to use this feature");
}
