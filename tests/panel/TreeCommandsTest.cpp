// Commands that change the tree: creating, renaming, deleting, moving.
#include "panel/PanelTest.h"

#include <QLineEdit>
#include <QTest>

using namespace Quorane_TLB;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

class TPanelCommands : public TPanelTest {
protected:
    TPanelCommands() { LogOn(); }

    TTreeNode& Firmware() { return User->Node("trvRequirements", {Top().Text(), FirmwareType}); }
    // The children of the node as another client reads them now.
    std::vector<std::string> ServerChildren(TTreeNode& node) {
        const auto number = node.DataAs<TRequirementTreeNodeContainer>()->Node->Get_ID()->Get_IDNumber();
        const auto project = Cast<IProject>(Server->LogOn("admin")->Get_Projects()->Get_Item(0).AsDispatch());
        const auto root = project->Get_CurrentBaseline()->Get_RequirementTree()->Get_Root();
        Handle<ITreeNode> parent = root->findByIDNumber(number);
        for (std::int32_t index = 0; !parent && index < root->Get_ChildCount(); ++index)
            if (root->getChild(index)->Get_ID()->Get_IDNumber() == number) parent = root->getChild(index);
        std::vector<std::string> names;
        for (std::int32_t index = 0; index < parent->Get_ChildCount(); ++index)
            names.push_back(Utf8(parent->getChild(index)->Get_Name()));
        return names;
    }
    void FinishName(const std::string& name) {
        auto* editor = Tree().findChild<QLineEdit*>();
        ASSERT_NE(editor, nullptr);
        editor->selectAll();
        QTest::keyClicks(editor, QString::fromStdString(name));
        QTest::keyClick(editor, Qt::Key_Return);
        TActor::Settle();
    }
};

TEST_F(TPanelCommands, ANewChildIsTheLastOneAndGetsItsName) {
    Select(ZoneControl);
    const std::vector<std::string> before = ServerChildren(*Tree().Selected());
    User->Click("btnCreateRequirement");
    EXPECT_TRUE(Tree().IsEditing());
    EXPECT_EQ(SelectedText(), "New Requirement");
    EXPECT_EQ(Tree().Selected()->Parent()->Text(), "Zone control");
    auto after = before;
    after.push_back("New Requirement");
    EXPECT_EQ(ServerChildren(*Tree().Selected()->Parent()), after);
    FinishName("Heat the attic");
    EXPECT_EQ(NameEdit().Text(), "Heat the attic");
    User->Click("btnSave");
    EXPECT_EQ(NameOnServer(SelectedNumber()), "Heat the attic");
}

TEST_F(TPanelCommands, ANewChildOfATypeStandsOnItsFirstLevel) {
    Select({FirmwareType});
    User->Click("btnCreateRequirement");
    EXPECT_EQ(Tree().Selected()->Level(), 2);
    EXPECT_EQ(Firmware().GetLastChild(), Tree().Selected());
    EXPECT_EQ(ServerChildren(Firmware()).back(), "New Requirement");
    Tree().EndEdit(true);
}

TEST_F(TPanelCommands, TheNewChildIsSelectedAlsoBesideOneThatAnotherHasJustMade) {
    Select(ZoneControl);
    const std::int32_t parent = SelectedNumber();
    const Handle<ISession> other = Server->LogOn("admin");
    const auto position = static_cast<std::int32_t>(ServerChildren(*Tree().Selected()).size());
    SaveByName(CoRequirementFactory::Create()->Create2(u"From elsewhere", other->getLatestRequirement(parent),
                                                       position, other));
    User->Click("btnCreateRequirement");
    EXPECT_EQ(SelectedText(), "New Requirement");
    EXPECT_EQ(ServerChildren(*Tree().Selected()->Parent()).size(), static_cast<std::size_t>(position) + 2);
    Tree().EndEdit(true);
}

TEST_F(TPanelCommands, AChangedRequirementIsSavedWhenItGetsAChild) {
    Select(ZoneControl);
    const std::int32_t number = SelectedNumber();
    User->Type("edtRequirementName", "Zones");
    User->Click("btnCreateRequirement");
    EXPECT_EQ(SelectedText(), "New Requirement");
    EXPECT_EQ(NameOnServer(number), "Zones");
    Tree().EndEdit(true);
}

TEST_F(TPanelCommands, ARequirementThatTheServerRefusesCannotBeNamed) {
    Select(ZoneControl);
    Server->Calls.FailOperation("IRequirementFactory.Create2", "NoPermissionException: no.");
    User->Click("btnCreateRequirement");
    EXPECT_EQ(OnlyError(), "NoPermissionException: no.");
    EXPECT_FALSE(Tree().IsEditing());
    EXPECT_EQ(SelectedText(), "Zone control");
    Server->Calls.FailOperation("IRequirement.save", "ServerException: no.");
    User->Click("btnCreateRequirement");
    EXPECT_EQ(OnlyError(), "ServerException: no.");
    EXPECT_FALSE(Tree().IsEditing());
}

struct TInsertion {
    const char* Button;
    std::vector<std::string> Path;
    int Offset;
};

class TInsertions : public TPanelCommands, public testing::WithParamInterface<TInsertion> {};

TEST_P(TInsertions, StandBesideTheSelectedRequirement) {
    TTreeNode& node = Select(GetParam().Path);
    const int position = node.Index() + GetParam().Offset;
    User->Click(GetParam().Button);
    EXPECT_TRUE(Tree().IsEditing());
    EXPECT_EQ(SelectedText(), "New Requirement");
    EXPECT_EQ(Tree().Selected()->Index(), position);
    EXPECT_EQ(ServerChildren(*Tree().Selected()->Parent()).at(static_cast<std::size_t>(position)),
              "New Requirement");
    Tree().EndEdit(true);
}

INSTANTIATE_TEST_SUITE_P(, TInsertions,
                         testing::Values(TInsertion{"btnInsertBefore", ZoneControl, 0},
                                         TInsertion{"btnInsertAfter", ZoneControl, 1},
                                         TInsertion{"btnInsertBefore", FilterReadings, 0},
                                         TInsertion{"btnInsertAfter", Implausible, 1}));

TEST_F(TPanelCommands, RenamingInPlaceLocksAndIsSavedByTheEditCycle) {
    Select(ZoneControl);
    const std::int32_t number = SelectedNumber();
    User->Key("trvRequirements", Qt::Key_F2);
    EXPECT_EQ(SelectedImage(), imRequirementLocked);
    FinishName("Zones");
    EXPECT_EQ(NameEdit().Text(), "Zones");
    EXPECT_EQ(NameOnServer(number), "Zone control");
    User->Click("btnSave");
    EXPECT_EQ(NameOnServer(number), "Zones");
}

TEST_F(TPanelCommands, WhatSomebodyElseHasLockedCannotBeRenamedInPlace) {
    Select(ZoneControl);
    const Handle<ISession> ben = Server->LogOn("ben");
    const TReq other = ben->getLatestRequirement(SelectedNumber());
    other->lock();
    User->Key("trvRequirements", Qt::Key_F2);
    EXPECT_EQ(OnlyError(), "The object requested is currently locked.");
    EXPECT_FALSE(Tree().IsEditing());
}

TEST_F(TPanelCommands, DeletingAsksAndTakesTheBranchAway) {
    Select(FilterReadings);
    Dialogs.Answer(TMessageResult::No);
    User->Key("trvRequirements", Qt::Key_Delete);
    const auto asked = Dialogs.TakeMessages();
    ASSERT_EQ(asked.size(), 1U);
    EXPECT_EQ(asked[0].Text, "Deleting requirement Filter the readings of a zone and all child requirements "
                             "of Filter the readings of a zone.  Are you sure?");
    EXPECT_EQ(asked[0].Default, TMessageResult::No);
    EXPECT_EQ(SelectedText(), FilterReadings.back());
    TTreeNode& parent = *Tree().Selected()->Parent();
    Dialogs.Answer(TMessageResult::Yes);
    User->Click("btnDeleteRequirement");
    EXPECT_THAT(Children(parent), Not(Contains(FilterReadings.back())));
    EXPECT_EQ(ServerChildren(parent), Children(parent));
}

TEST_F(TPanelCommands, ADeletionThatTheServerRefusesLeavesTheTree) {
    Select(FilterReadings);
    Server->Calls.FailOperation("IMutableQuoraneObject.remove", "ServerException: no.");
    Dialogs.Answer(TMessageResult::Yes);
    User->Click("btnDeleteRequirement");
    EXPECT_EQ(OnlyError(), "ServerException: no.");
    EXPECT_EQ(SelectedText(), FilterReadings.back());
}

TEST_F(TPanelCommands, AChangedRequirementCanBeDeleted) {
    Select(Implausible);
    User->Type("edtRequirementName", "Nonsense");
    Dialogs.Answer(TMessageResult::Yes);
    User->Click("btnDeleteRequirement");
    EXPECT_THAT(Children(User->Node("trvRequirements",
                                    {Top().Text(), FirmwareType, FilterReadings[1], FilterReadings[2]})),
                Not(Contains(Implausible.back())));
}

TEST_F(TPanelCommands, MovesChangeTheServersOrderAndKeepTheSelection) {
    Select(FilterReadings);
    TTreeNode& parent = *Tree().Selected()->Parent();
    const std::vector<std::string> before = Children(parent);
    ASSERT_EQ(before[0], FilterReadings.back());
    User->Click("btnMoveRequirementDown");
    auto moved = before;
    std::swap(moved[0], moved[1]);
    EXPECT_EQ(Children(parent), moved);
    EXPECT_EQ(ServerChildren(parent), moved);
    EXPECT_EQ(SelectedText(), FilterReadings.back());
    User->Click("btnMoveRequirementUp");
    EXPECT_EQ(Children(parent), before);
    EXPECT_EQ(ServerChildren(parent), before);
}

TEST_F(TPanelCommands, TheFirstMovesNotUpAndTheLastNotDown) {
    Select(FilterReadings);
    TTreeNode& parent = *Tree().Selected()->Parent();
    Server->Calls.Clear();
    User->Click("btnMoveRequirementUp");
    EXPECT_FALSE(Called("ITreeNode.moveChild"));
    Tree().SetSelected(parent.GetLastChild());
    Server->Calls.Clear();
    User->Click("btnMoveRequirementDown");
    EXPECT_FALSE(Called("ITreeNode.moveChild"));
}

TEST_F(TPanelCommands, AMoveThatTheServerRefusesLeavesTheTree) {
    Select(FilterReadings);
    TTreeNode& parent = *Tree().Selected()->Parent();
    const std::vector<std::string> before = Children(parent);
    for (const char* operation : {"ITreeNode.moveChild", "IMutableQuoraneObject.save"}) {
        Server->Calls.FailOperation(operation, "ServerException: no.");
        User->Click("btnMoveRequirementDown");
        EXPECT_EQ(OnlyError(), "ServerException: no.");
        EXPECT_EQ(Children(parent), before);
    }
}

TEST_F(TPanelCommands, AChangedRequirementIsSavedOnItsWayUnderAnotherNode) {
    TTreeNode& target = User->Node("trvRequirements", {Top().Text(), FirmwareType, "Schedule"});
    TTreeNode& source = Select(FilterReadings);
    const std::int32_t number = SelectedNumber();
    User->Type("edtRequirementName", "Filter");
    User->DragNode(Tree(), source, target);
    EXPECT_EQ(NameOnServer(number), "Filter");
    EXPECT_EQ(Tree().Selected()->Parent()->Text(), "Schedule");
    EXPECT_EQ(SelectedNumber(), number);
    EXPECT_THAT(ServerChildren(*Tree().Selected()->Parent()), Contains("Filter"));
}

TEST_F(TPanelCommands, AMoveUnderAnotherTypeIsWarnedOf) {
    TTreeNode& target = User->Node("trvRequirements", {Top().Text(), "App Requirement"});
    Select(FilterReadings);
    Dialogs.Answer(TMessageResult::No);
    User->DragNode(Tree(), *Tree().Selected(), target);
    const auto asked = Dialogs.TakeMessages();
    ASSERT_EQ(asked.size(), 1U);
    EXPECT_EQ(asked[0].Caption, "Data Loss WARNING!");
    EXPECT_EQ(asked[0].Text, "You are about to move a requirement into a different\n\r"
                             "requirement type. All data from used defined attributes\n\r"
                             "that do not exist in the target requirement type will be lost.\n\r\n\r"
                             "Do you wish to continute?");
    EXPECT_EQ(Tree().Selected()->Parent()->Text(), "Zone control");
    Dialogs.Answer(TMessageResult::Yes);
    User->DragNode(Tree(), *Tree().Selected(), target);
    EXPECT_EQ(Tree().Selected()->Parent()->Text(), "App Requirement");
    EXPECT_THAT(ServerChildren(target), Contains(FilterReadings.back()));
}

struct TDrag {
    std::vector<std::string> From, To;
};

class TRefusedDrags : public TPanelCommands, public testing::WithParamInterface<TDrag> {};

TEST_P(TRefusedDrags, TellTheServerNothing) {
    std::vector<std::string> to{Top().Text()};
    to.insert(to.end(), GetParam().To.begin(), GetParam().To.end());
    TTreeNode& target = User->Node("trvRequirements", to);
    TTreeNode& source = Select(GetParam().From);
    User->DragNode(Tree(), source, target);
    EXPECT_FALSE(Called("IRequirementTreeNode.addChild"));
    EXPECT_TRUE(source.Selected());
}

INSTANTIATE_TEST_SUITE_P(, TRefusedDrags,
                         testing::Values(TDrag{FilterReadings, ZoneControl}, TDrag{FilterReadings, {}},
                                         TDrag{FilterReadings, FilterReadings},
                                         TDrag{{}, {"App Requirement"}},
                                         TDrag{{FirmwareType}, {"App Requirement"}}));

TEST_F(TPanelCommands, CommandsFollowTheSelection) {
    struct TRow {
        std::vector<std::string> Path;
        bool Child, Beside;
    };
    for (const TRow& row :
         {TRow{{}, false, false}, TRow{{FirmwareType}, true, false}, TRow{ZoneControl, true, true}}) {
        Select(row.Path);
        EXPECT_EQ(Panel().actCreateRequirement->Enabled(), row.Child);
        for (TAction* action :
             {Panel().actCreateRequirementAbove, Panel().actCreateRequirementBelow, Panel().actMoveReqUp,
              Panel().actMoveReqDown, Panel().actDeleteReq, Panel().actRenameReq})
            EXPECT_EQ(action->Enabled(), row.Beside) << action->Name();
    }
}
