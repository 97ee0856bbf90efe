// Who is responsible for a requirement, shown and changed by clicks on the boxes.
#include <set>

#include <QTest>

#include <gtest/gtest.h>

#include "frames/FramesFixture.h"
#include "frames/UResponibilitiesFrame.h"
#include "platform/widgets/look/Images.h"
#include "platform/widgets/tree/TreeView.h"

using namespace Quorane_TLB;
using testing::_;
using testing::ElementsAre;
using testing::Return;

namespace {

// A group of users and who of them is responsible.
class TAssignment {
public:
    TAssignment(const std::u16string& group, std::vector<Handle<IUser>> users)
        : Users(std::move(users)) {
        const auto members = std::make_shared<TListCollection>();
        for (const Handle<IUser>& user : Users)
            members->Add(Variant(user));
        const auto groupMock = MakeMock<TMockGroup>();
        ON_CALL(*groupMock, Get_Name()).WillByDefault(Return(group));
        ON_CALL(*groupMock, Get_Users()).WillByDefault([this, members]() -> Handle<IStCollection> {
            if (Failing) throw Exception("no members");
            return members;
        });
        ON_CALL(*Mock, Get_Group()).WillByDefault(Return(groupMock));
        ON_CALL(*Mock, addUser(_)).WillByDefault([this](const auto& user) { Assigned.insert(user); });
        ON_CALL(*Mock, removeUser(_)).WillByDefault([this](const auto& user) { Assigned.erase(user); });
        ON_CALL(*Mock, Get_AssignedUsers()).WillByDefault([this] {
            const auto list = std::make_shared<TListCollection>();
            for (const Handle<IUser>& user : Assigned)
                list->Add(Variant(user));
            return list;
        });
        ON_CALL(*Mock, isUserAssigned(_)).WillByDefault([this](const Handle<IUserID>& id) {
            for (const Handle<IUser>& user : Assigned)
                if (user->Get_UserID() == id) return WordTrue;
            return WordFalse;
        });
    }

    std::vector<Handle<IUser>> Users;
    std::set<Handle<IUser>> Assigned;
    bool Failing = false;
    std::shared_ptr<testing::NiceMock<TMockGroupMemberAssignment>> Mock =
        MakeMock<TMockGroupMemberAssignment>();
};

Handle<IUser> Member(const std::u16string& name) {
    const auto user = MakeMock<TMockUser>();
    ON_CALL(*user, Get_Name()).WillByDefault(Return(name));
    ON_CALL(*user, Get_UserID()).WillByDefault(Return(MakeMock<TMockUserID>()));
    return user;
}

class ResponsibilitiesFrame : public TFramesTest {
protected:
    ResponsibilitiesFrame() {
        const auto project = MakeMock<TMockProject>();
        ON_CALL(*project, Get_Name()).WillByDefault(Return(u"Heating"));
        ON_CALL(*Requirement, Get_Project()).WillByDefault(Return(project));
        ON_CALL(*Requirement, Get_ResponsibleUsers())
            .WillByDefault(Return(ListOf(Developers.Mock, Empty.Mock)));
        ON_CALL(*Requirement, Set_ResponsibleUsers(_)).WillByDefault([this](const auto&) {
            Log.push_back("write");
        });
    }

    TTreeNode& Group(int index) { return *Frame.trvResponsibilities->GetFirstNode()->Item(index); }

    void ClickBox(TTreeNode& node) {
        TTreeView& tree = *Frame.trvResponsibilities;
        TActor::Settle();
        const TRect box = tree.StateIconRect(node);
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {},
                          {box.Left + box.Width / 2, box.Top + box.Height / 2});
        TActor::Settle();
    }

    TAssignment Developers{u"Developers", {Member(u"Anna"), Member(u"Ben")}};
    TAssignment Empty{u"Nobody", {}};
    TfraResponsibilities Frame{&Host};
};

TEST_F(ResponsibilitiesFrame, AGroupsBoxTellsHowManyMembersAreResponsible) {
    const std::vector<std::pair<std::size_t, int>> rows = {{0, ckEmpty}, {1, ckGrey}, {2, ckChecked}};
    for (const auto& [responsible, state] : rows) {
        Developers.Assigned = {Developers.Users.begin(), Developers.Users.begin() + responsible};
        Fill(Frame);
        EXPECT_EQ(Group(0).StateIndex(), state) << responsible;
        EXPECT_EQ(Group(1).StateIndex(), ckEmpty);
    }
    EXPECT_TRUE(Frame.trvResponsibilities->GetFirstNode()->Expanded());
    EXPECT_TRUE(Log.empty()) << "filling locks nothing";
}

TEST_F(ResponsibilitiesFrame, MembersAreReadWhenTheirGroupOpens) {
    Developers.Assigned = {Developers.Users[1]};
    Fill(Frame);
    EXPECT_EQ(Group(0).Count(), 0);
    Group(0).Expand(false);
    ASSERT_EQ(Group(0).Count(), 2);
    EXPECT_EQ(Group(0).Item(0)->Text(), "Anna");
    EXPECT_EQ(Group(0).Item(0)->StateIndex(), ckEmpty);
    EXPECT_EQ(Group(0).Item(1)->StateIndex(), ckChecked);
}

TEST_F(ResponsibilitiesFrame, AMembersBoxChangesTheAssignmentUnderTheLock) {
    Developers.Assigned = {Developers.Users.begin(), Developers.Users.end()};
    Fill(Frame);
    Group(0).Expand(false);
    ClickBox(*Group(0).Item(0));
    EXPECT_EQ(Developers.Assigned, std::set<Handle<IUser>>{Developers.Users[1]});
    EXPECT_EQ(Group(0).Item(0)->StateIndex(), ckEmpty);
    EXPECT_EQ(Group(0).StateIndex(), ckGrey);
    EXPECT_THAT(Log, ElementsAre("lock", "lock", "write"));
}

TEST_F(ResponsibilitiesFrame, TheBoxOfAnOpenedGroupChangesAllItsMembers) {
    Fill(Frame);
    Group(0).Expand(false);
    ClickBox(Group(0));
    EXPECT_EQ(Developers.Assigned.size(), 2U);
    EXPECT_EQ(Group(0).StateIndex(), ckChecked);
    EXPECT_EQ(Group(0).Item(1)->StateIndex(), ckChecked);
    ClickBox(Group(0));
    EXPECT_TRUE(Developers.Assigned.empty());
    EXPECT_EQ(Group(0).StateIndex(), ckEmpty);
}

TEST_F(ResponsibilitiesFrame, TheBoxOfAGroupNeverOpenedGoesBackThoughTheLockIsTaken) {
    Fill(Frame);
    ClickBox(Group(0));
    EXPECT_TRUE(Developers.Assigned.empty());
    EXPECT_EQ(Group(0).StateIndex(), ckEmpty);
    EXPECT_FALSE(Log.empty());
}

TEST_F(ResponsibilitiesFrame, AChangeNotYetSavedStaysVisibleWhenTheGroupOpensAgain) {
    Fill(Frame);
    Group(0).Expand(false);
    ClickBox(*Group(0).Item(1));
    Group(0).Collapse();
    Group(0).Expand(false);
    EXPECT_EQ(Group(0).Item(1)->StateIndex(), ckChecked);
}

TEST_F(ResponsibilitiesFrame, TheSecondOfTwoQuickClicksCountsAsWell) {
    Fill(Frame);
    Group(0).Expand(false);
    TTreeNode& member = *Group(0).Item(0);
    ClickBox(member);
    const TRect box = Frame.trvResponsibilities->StateIconRect(member);
    QTest::mouseDClick(Frame.trvResponsibilities->viewport(), Qt::LeftButton, {},
                       {box.Left + box.Width / 2, box.Top + box.Height / 2});
    EXPECT_EQ(member.StateIndex(), ckEmpty);
    EXPECT_TRUE(Developers.Assigned.empty());
}

TEST_F(ResponsibilitiesFrame, AGroupWhoseMembersCannotBeReadCanBeOpenedAgain) {
    Fill(Frame);
    Developers.Failing = true;
    Group(0).Expand(false);
    EXPECT_FALSE(Dialogs.Errors().empty());
    EXPECT_TRUE(Group(0).HasChildren());
    Developers.Failing = false;
    Group(0).Collapse();
    Group(0).Expand(false);
    EXPECT_EQ(Group(0).Count(), 2);
}

TEST_F(ResponsibilitiesFrame, AClickBesideTheBoxChangesNothing) {
    Fill(Frame);
    TTreeView& tree = *Frame.trvResponsibilities;
    const TRect row = tree.DisplayRect(Group(0));
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {},
                      {row.Left + row.Width - 4, row.Top + row.Height / 2});
    EXPECT_TRUE(Log.empty());
}

TEST_F(ResponsibilitiesFrame, ARefusedLockChangesNeitherBoxNorAssignment) {
    Fill(Frame);
    Group(0).Expand(false);
    Gate.Refusal = "The object requested is currently locked.";
    ClickBox(*Group(0).Item(0));
    EXPECT_EQ(Group(0).Item(0)->StateIndex(), ckEmpty);
    EXPECT_TRUE(Developers.Assigned.empty());
    EXPECT_THAT(Dialogs.Errors(), ElementsAre(Gate.Refusal));
}

TEST_F(ResponsibilitiesFrame, AFrozenBaselineLetsNoClickThrough) {
    InFrozenBaseline();
    Fill(Frame);
    ClickBox(Group(0));
    EXPECT_TRUE(Log.empty());
}

} // namespace
