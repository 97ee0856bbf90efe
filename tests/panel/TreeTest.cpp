// What the tree shows and how nodes are found in it.
#include "backend/service/BulkWriter.h"
#include "panel/PanelTest.h"

#include <map>

using namespace Quorane_TLB;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class TPanelTree : public TPanelTest {
protected:
    TPanelTree() { LogOn(); }

    std::vector<TTreeNode*> AllNodes() {
        std::vector<TTreeNode*> nodes;
        for (TTreeNode* node = Top().GetNext(); node; node = node->GetNext())
            nodes.push_back(node);
        return nodes;
    }
    TTreeNode& Firmware() { return User->Node("trvRequirements", {Top().Text(), FirmwareType}); }
};

TEST_F(TPanelTree, NothingIsReadAheadOfWhatIsOpened) {
    for (TTreeNode* type = Top().GetFirstChild(); type; type = type->GetNextSibling()) {
        EXPECT_TRUE(type->HasChildren());
        EXPECT_EQ(type->Count(), 0);
    }
    Server->Calls.Clear();
    Firmware().Expand(false);
    EXPECT_EQ(Server->Calls.RoundTrips(), 1);
    ASSERT_GT(Firmware().Count(), 0);
    for (TTreeNode* child = Firmware().GetFirstChild(); child; child = child->GetNextSibling())
        EXPECT_EQ(child->Count(), 0);
}

TEST_F(TPanelTree, ABranchIsReadAnewEachTimeItOpens) {
    TTreeNode& firmware = Firmware();
    firmware.Expand(false);
    const std::int32_t number =
        firmware.GetFirstChild()->DataAs<TRequirementTreeNodeContainer>()->Node->Get_ID()->Get_IDNumber();
    RenameAs(ReadAs("ben", number), u"Renamed elsewhere");
    firmware.Collapse();
    User->Click("btnRefresh");
    Firmware().Expand(false);
    EXPECT_EQ(Firmware().GetFirstChild()->Text(), "Renamed elsewhere");
}

TEST_F(TPanelTree, AnotherBaselineLeavesNoNodeOfTheOldOne) {
    Select(Implausible);
    User->Choose("cbxProjectBaselines", "Release 1.0");
    EXPECT_TRUE(Top().Selected());
    EXPECT_EQ(Helpers().CurrentRequirement, nullptr);
    EXPECT_EQ(Panel().nbkContents->PageIndex(), ProjectPage);
    Helpers().EnsureFirstLevelRequirements();
    for (const TTreeNode* node : AllNodes())
        EXPECT_EQ(node->DataAs<TRequirementTreeNodeContainer>()->Baseline, Helpers().CurrentBaseline);
}

TEST_F(TPanelTree, AFrozenBaselineShowsTheVersionThatWasFrozenInIt) {
    Select(ZoneControl);
    RenameAs(ReadAs("ben", SelectedNumber()), u"Zones");
    User->Click("btnRefresh");
    Select({FirmwareType, "Zones"});
    const std::string latest = Panel().fraDetails->edtRequirementVersion->Text();
    User->Choose("cbxProjectBaselines", "Release 1.0");
    Select(ZoneControl);
    EXPECT_EQ(NameEdit().Text(), "Zone control");
    EXPECT_NE(Panel().fraDetails->edtRequirementVersion->Text(), latest);
    EXPECT_FALSE(NameEdit().Enabled());
}

TEST_F(TPanelTree, LabelsCarryTheNumbersThatAreSwitchedOnAlsoInClosedBranches) {
    TTreeNode& firmware = Firmware();
    firmware.Expand(false);
    firmware.Collapse();
    auto& node = *firmware.GetFirstChild()->DataAs<TRequirementTreeNodeContainer>()->Node;
    const std::string name = "Zone control";
    const std::string serial = Utf8(node.Get_SerialNumber());
    const std::string number = Utf8(node.Get_HierarchicalNumber());
    EXPECT_EQ(firmware.GetFirstChild()->Text(), name);
    User->Click("btnSerialNumbers");
    EXPECT_EQ(firmware.GetFirstChild()->Text(), name + " - " + serial);
    User->Click("btnHierarchicalNumbers");
    EXPECT_EQ(firmware.GetFirstChild()->Text(), number + " " + name + " - " + serial);
    EXPECT_EQ(firmware.Text(), FirmwareType);
    EXPECT_EQ(Top().Text(), "Hearth Controller");
    User->Click("btnSerialNumbers");
    EXPECT_EQ(firmware.GetFirstChild()->Text(), number + " " + name);
}

TEST_F(TPanelTree, AStateImageTellsInterestAndUnreadMessages) {
    using namespace Backend;
    BulkWriter writer(Server->DatabasePath(), BulkWriter::Hashing::QuickForTests);
    const ObjectId anna = writer.FindUser("anna"), ben = writer.FindUser("ben");
    NewRequirement requirement;
    requirement.ProjectId = writer.FindProject("Hearth Controller");
    requirement.TypeId = writer.FindRequirementType(requirement.ProjectId, FirmwareType);
    for (const bool interested : {false, true})
        for (const bool unread : {false, true}) {
            requirement.Name = std::string(interested ? "i" : "-") + (unread ? "u" : "-");
            const ObjectId id = writer.AddRequirement(requirement, {anna, 1, ""});
            writer.SetInterest(anna, id, interested);
            const ObjectId message = writer.AddMessage({id, 0, "Why?", "Because.", ben, 1});
            if (!unread) writer.MarkRead(anna, message);
        }
    writer.Commit();
    Firmware().Expand(false);
    std::map<std::string, int> images;
    for (TTreeNode* node = Firmware().GetFirstChild(); node; node = node->GetNextSibling())
        if (node->Text().size() == 2) images[node->Text()] = node->StateIndex();
    EXPECT_THAT(images, ElementsAre(testing::Pair("--", -1), testing::Pair("-u", 3), testing::Pair("i-", 1),
                                    testing::Pair("iu", 2)));
}

TEST_F(TPanelTree, AFailedReadingIsToldOnceAndTheBranchCanBeOpenedAgain) {
    Server->Calls.FailOperation("ITreeNode.Get_Children", "ServerException: out of order.");
    Firmware().Expand(false);
    EXPECT_EQ(OnlyError(), "ServerException: out of order.");
    EXPECT_FALSE(Screen().HourglassShown());
    EXPECT_EQ(Firmware().Count(), 0);
    EXPECT_TRUE(Firmware().HasChildren());
    Firmware().Collapse();
    Firmware().Expand(false);
    EXPECT_GT(Firmware().Count(), 0);
}

TEST_F(TPanelTree, APictureThatCannotBeToldLeavesTheBranchReadable) {
    Server->Calls.FailOperation("IRequirementTreeNode.Get_UserIsInterested", "ServerException: no.", 1000);
    Firmware().Expand(false);
    EXPECT_GT(Firmware().Count(), 0);
}

TEST_F(TPanelTree, TheSearchSelectsARequirementInBranchesThatWereNeverOpened) {
    Select(Implausible);
    const std::int32_t number = SelectedNumber();
    User->ChooseTab("pgcRequirement", "History");
    User->Choose("cbxProjectBaselines", "Release 1.0");
    User->Choose("cbxProjectBaselines", "Current");
    Server->Calls.Clear();
    Helpers().SearchNodeById(number);
    EXPECT_EQ(SelectedText(), Implausible.back());
    EXPECT_EQ(Tree().Selected()->Parent()->Text(), FilterReadings.back());
    EXPECT_EQ(SelectedNumber(), number);
    EXPECT_EQ(Panel().pgcRequirement->ActivePageIndex(), rtDetails);
    EXPECT_EQ(NameEdit().Text(), Implausible.back());
    EXPECT_FALSE(Helpers().SelectingNode);
    EXPECT_THAT(Server->Calls.Requests(), testing::SizeIs(testing::Le(12U)));
}

TEST_F(TPanelTree, OnlyRequirementsCanBeSelectedByTheProgram) {
    const auto node = Firmware().DataAs<TRequirementTreeNodeContainer>()->Node;
    try {
        Helpers().SelectRequirementInTree(node);
        FAIL();
    } catch (const std::exception& failure) {
        EXPECT_STREQ(failure.what(), "Only requirement traces are supported.");
    }
    EXPECT_FALSE(Helpers().SelectingNode);
}

TEST_F(TPanelTree, ARequirementThatIsGoneIsToldWhenItIsReadAgain) {
    Select(Implausible);
    const TReq other = ReadAs("admin", SelectedNumber());
    other->remove();
    try {
        Helpers().RefreshCurrentRequirement();
        FAIL();
    } catch (const std::exception& failure) {
        EXPECT_STREQ(failure.what(), "The requirement no longer exists in this baseline.");
    }
}

TEST_F(TPanelTree, EveryIdleMomentIsFreeOfRoundTrips) {
    Select(Implausible);
    Server->Calls.Clear();
    TActor::Settle();
    EXPECT_EQ(Server->Calls.RoundTrips(), 0);
}
