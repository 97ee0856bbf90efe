// The discussion of a requirement: reading, posting, replying.
#include <gtest/gtest.h>

#include "frames/FramesFixture.h"
#include "frames/UDiscussionFrame.h"
#include "frames/UQuoraneMessageForm.h"
#include "platform/widgets/Actions.h"
#include "platform/widgets/Buttons.h"
#include "platform/widgets/Edits.h"
#include "platform/widgets/tree/VirtualTree.h"

using namespace Quorane_TLB;
using testing::_;
using testing::ElementsAre;
using testing::Return;

namespace {

using TMessageMock = std::shared_ptr<testing::NiceMock<TMockDiscussionMessage>>;

class DiscussionFrame : public TFramesTest {
protected:
    DiscussionFrame() {
        const auto manager = MakeMock<TMockQuoraneObjectManager>();
        const auto cache = MakeMock<TMockQuoraneObjectCache>();
        ON_CALL(*cache, clear()).WillByDefault([this] { Log.push_back("clear"); });
        ON_CALL(*manager, Get_Cache()).WillByDefault(Return(cache));
        ON_CALL(*Discussion, Get_Manager()).WillByDefault(Return(manager));
        ON_CALL(*Discussion, Get_Messages()).WillByDefault(Return(Messages));
        ON_CALL(*Requirement, Get_Discussion()).WillByDefault(Return(Discussion));
        ON_CALL(*Requirement, Get_Name()).WillByDefault(Return(u"Boiler starts"));
        Panel.ActiveTab = rtDiscussion;
    }

    TMessageMock Message(const std::u16string& subject, bool read,
                         const Handle<IStCollection>& replies = ListOf()) {
        const auto message = MakeMock<TMockDiscussionMessage>();
        ON_CALL(*message, Get_Subject()).WillByDefault(Return(subject));
        ON_CALL(*message, Get_Author()).WillByDefault(Return(User(u"Ben")));
        ON_CALL(*message, Get_Date()).WillByDefault(Return(46000.5));
        ON_CALL(*message, Get_Body()).WillByDefault(Return(u"About " + subject));
        ON_CALL(*message, Get_Read()).WillByDefault(Return(ToWordBool(read)));
        ON_CALL(*message, Get_Replies()).WillByDefault(Return(replies));
        return message;
    }

    void SelectFirst() {
        Frame.trvRequirementDiscussion->SetSelected(Frame.trvRequirementDiscussion->GetFirstNode());
    }

    std::string Text(TTreeNode& node, int column) {
        std::string text;
        Frame.trvRequirementDiscussion->OnGetText(node, column, text);
        return text;
    }

    std::shared_ptr<TListCollection> Messages = std::make_shared<TListCollection>();
    std::shared_ptr<testing::NiceMock<TMockDiscussion>> Discussion = MakeMock<TMockDiscussion>();
    TfraDiscussion Frame{&Host};
};

TEST_F(DiscussionFrame, RepliesStandUnderTheirMessageInTheServersOrder) {
    Messages->Add(Variant(Message(u"One", true, ListOf(Message(u"One.One", true)))));
    Messages->Add(Variant(Message(u"Two", true)));
    Fill(Frame);
    TTreeNode* first = Frame.trvRequirementDiscussion->GetFirstNode();
    ASSERT_TRUE(first);
    EXPECT_EQ(Text(*first, 0), "One");
    EXPECT_EQ(Text(*first, 1), "Ben");
    EXPECT_EQ(Text(*first, 2), System.DateTimeText(46000.5));
    ASSERT_EQ(first->Count(), 1);
    EXPECT_EQ(Text(*first->Item(0), 0), "One.One");
    EXPECT_EQ(Text(*first->GetNextSibling(), 0), "Two");
}

TEST_F(DiscussionFrame, SelectingAnUnreadMessageReadsItAndUpdatesTheTree) {
    const TMessageMock message = Message(u"One", false);
    Messages->Add(Variant(message));
    Fill(Frame);
    Log.clear();
    EXPECT_CALL(*message, Set_Read(WordTrue)).WillOnce([this] { Log.push_back("read"); });
    SelectFirst();
    EXPECT_EQ(Frame.mmoDiscussionText->Text(), "About One");
    EXPECT_THAT(Log, ElementsAre("read", "clear"));
    EXPECT_EQ(Gate.StateImageUpdates, 1);
}

TEST_F(DiscussionFrame, AReadMessageIsNotMarkedAgain) {
    const TMessageMock message = Message(u"One", true);
    Messages->Add(Variant(message));
    Fill(Frame);
    EXPECT_CALL(*message, Set_Read(_)).Times(0);
    SelectFirst();
    EXPECT_EQ(Gate.StateImageUpdates, 0);
}

TEST_F(DiscussionFrame, OnlyUnreadMessagesAreBold) {
    Messages->Add(Variant(Message(u"One", false)));
    Messages->Add(Variant(Message(u"Two", true)));
    Fill(Frame);
    TTreeNode& first = *Frame.trvRequirementDiscussion->GetFirstNode();
    bool bold = false;
    Frame.trvRequirementDiscussion->OnPaintText(first, 0, bold);
    EXPECT_TRUE(bold);
    Frame.trvRequirementDiscussion->OnPaintText(*first.GetNextSibling(), 0, bold);
    EXPECT_FALSE(bold);
}

TEST_F(DiscussionFrame, AnotherTabInFrontLeavesTheTreeButForgetsTheSelection) {
    const TMessageMock message = Message(u"One", true);
    Messages->Add(Variant(message));
    Fill(Frame);
    SelectFirst();
    Panel.ActiveTab = rtDetails;
    Log.clear();
    Fill(Frame);
    EXPECT_THAT(Log, ElementsAre("clear"));
    EXPECT_EQ(Frame.trvRequirementDiscussion->Count(), 1);
    EXPECT_CALL(*message, reply(_, _)).Times(0);
    Frame.btnPostReply->Click();
}

TEST_F(DiscussionFrame, PostingSendsSubjectAndBodyAndRefreshes) {
    Fill(Frame);
    EXPECT_CALL(*Discussion, post(std::u16string(u""), std::u16string(u"Why?"))).WillOnce([this] {
        Messages->Add(Variant(Message(u"", true)));
        return Handle<IDiscussionMessage>();
    });
    Actor.WhenModal([](TForm& form) {
        auto& dialog = dynamic_cast<TfrmQuoraneMessage&>(form);
        EXPECT_EQ(dialog.Caption(), "New Message");
        EXPECT_EQ(dialog.lblRequirementName->Caption(), "Boiler starts");
        EXPECT_FALSE(dialog.actSend->Execute()) << "nothing to send yet";
        dialog.mmoBody->SetText(std::string("Why?"));
        EXPECT_TRUE(dialog.actSend->Execute()) << "a subject is not required";
    });
    Frame.btnPostNew->Click();
    EXPECT_EQ(Frame.trvRequirementDiscussion->Count(), 1);
    EXPECT_TRUE(Dialogs.Errors().empty());
}

TEST_F(DiscussionFrame, CancellingANewMessageRefreshesAndCancellingAReplyDoesNot) {
    const TMessageMock message = Message(u"One", true);
    Messages->Add(Variant(message));
    Fill(Frame);
    EXPECT_CALL(*Discussion, post(_, _)).Times(0);
    EXPECT_CALL(*message, reply(_, _)).Times(0);
    SelectFirst();
    Log.clear();
    Actor.WhenModal([](TForm& form) {
        EXPECT_EQ(form.Caption(), "New Reply Message");
        EXPECT_EQ(dynamic_cast<TfrmQuoraneMessage&>(form).edtSubject->Text(), "Re: One");
        form.Close();
    });
    Frame.btnPostReply->Click();
    EXPECT_TRUE(Log.empty());
    Actor.WhenModal([](TForm& form) { form.Close(); });
    Frame.btnPostNew->Click();
    EXPECT_THAT(Log, ElementsAre("clear"));
}

TEST_F(DiscussionFrame, AReplyGoesToTheSelectedMessage) {
    const TMessageMock message = Message(u"Re: One", true);
    Messages->Add(Variant(message));
    Fill(Frame);
    SelectFirst();
    EXPECT_CALL(*message, reply(std::u16string(u"Re: Re: One"), std::u16string(u"Because.")));
    Actor.WhenModal([](TForm& form) {
        auto& dialog = dynamic_cast<TfrmQuoraneMessage&>(form);
        dialog.mmoBody->SetText(std::string("Because."));
        dialog.actSend->Execute();
    });
    Frame.btnPostReply->Click();
    Frame.btnPostReply->Click();
}

TEST_F(DiscussionFrame, AFailedPostIsReportedOnce) {
    Fill(Frame);
    ON_CALL(*Discussion, post(_, _)).WillByDefault(testing::Throw(ServerFailure("no place left")));
    Actor.WhenModal([](TForm& form) {
        auto& dialog = dynamic_cast<TfrmQuoraneMessage&>(form);
        dialog.mmoBody->SetText(std::string("Why?"));
        dialog.actSend->Execute();
    });
    Frame.btnPostNew->Click();
    EXPECT_THAT(Dialogs.Errors(), ElementsAre("no place left"));
}

} // namespace
