// The revisions of a requirement and what changed in them.
#include <gtest/gtest.h>

#include "frames/FramesFixture.h"
#include "frames/UHistoryFrame.h"
#include "platform/widgets/tree/ListView.h"

using namespace Quorane_TLB;
using testing::_;
using testing::ElementsAre;
using testing::Return;
using testing::Throw;

namespace {

using TChange = std::shared_ptr<testing::NiceMock<TMockHistoryChange>>;
using TRevision = std::shared_ptr<testing::NiceMock<TMockHistoryRevision>>;

class HistoryFrame : public TFramesTest {
protected:
    HistoryFrame() {
        const auto history = MakeMock<TMockHistory>();
        ON_CALL(*history, Get_Revisions()).WillByDefault(Return(Revisions));
        ON_CALL(*Requirement, Get_History()).WillByDefault(Return(history));
        const auto html = MakeMock<TMockHTMLHelper>();
        ON_CALL(*html, htmlToPlainText(_)).WillByDefault([](const std::u16string& text) {
            return u"plain\r\n" + text.substr(3, text.size() - 7);
        });
        ON_CALL(*HtmlFactory, Create1()).WillByDefault(Return(html));
        Classes.Register(CLASS_HTMLHelperFactory, HtmlFactory);
    }

    static TChange Change(const std::u16string& attribute, const Variant& before, const Variant& after) {
        const auto change = MakeMock<TMockHistoryChange>();
        ON_CALL(*change, Get_AttributeName()).WillByDefault(Return(attribute));
        ON_CALL(*change, Get_OldValue()).WillByDefault(Return(before));
        ON_CALL(*change, Get_NewValue()).WillByDefault(Return(after));
        return change;
    }

    template<class... TChanges> TRevision Revise(int minor, const TChanges&... changes) {
        const auto version = MakeMock<TMockVersion>();
        ON_CALL(*version, Get_MajorVersion()).WillByDefault(Return(1));
        ON_CALL(*version, Get_MinorVersion()).WillByDefault(Return(minor));
        const auto revision = MakeMock<TMockHistoryRevision>();
        ON_CALL(*revision, Get_Version()).WillByDefault(Return(version));
        ON_CALL(*revision, Get_Date()).WillByDefault(Return(46000.0 + minor));
        ON_CALL(*revision, Get_UserName()).WillByDefault(Return(u"Anna"));
        ON_CALL(*revision, Get_Comment()).WillByDefault(Return(u"as agreed"));
        ON_CALL(*revision, Get_Changes()).WillByDefault(Return(ListOf(changes...)));
        Revisions->Add(Variant(revision));
        return revision;
    }

    static std::string Row(const TListView& list, int index) {
        const TListItem& item = *list.Item(index);
        std::string text = item.Caption();
        for (int column = 0; column < item.SubItemCount(); ++column)
            text += "|" + item.SubItem(column);
        return text;
    }

    std::shared_ptr<TListCollection> Revisions = std::make_shared<TListCollection>();
    std::shared_ptr<testing::NiceMock<TMockHTMLHelperFactory>> HtmlFactory =
        MakeMock<TMockHTMLHelperFactory>();
    TfraHistory Frame{&Host};
};

TEST_F(HistoryFrame, TheFirstRevisionOfTheServersOrderIsSelectedWithItsChanges) {
    Revise(1, Change(u"Status", u"Draft", u"Open"));
    Revise(5, Change(u"Priority", Variant::Null(), 3));
    Fill(Frame);
    ASSERT_EQ(Frame.lstHistory->ItemCount(), 2);
    EXPECT_EQ(Row(*Frame.lstHistory, 0), "1.1|" + System.DateTimeText(46001) + "|Anna|as agreed");
    EXPECT_TRUE(Frame.lstHistory->Item(0)->Selected());
    ASSERT_EQ(Frame.lstChanges->ItemCount(), 1);
    EXPECT_EQ(Row(*Frame.lstChanges, 0), "Status|Draft|Open");
}

TEST_F(HistoryFrame, SelectingAnotherRevisionReplacesTheChanges) {
    Revise(1, Change(u"Status", u"Draft", u"Open"));
    Revise(2, Change(u"Priority", Variant::Null(), 3));
    Fill(Frame);
    Frame.lstHistory->SetSelected(Frame.lstHistory->Item(1));
    ASSERT_EQ(Frame.lstChanges->ItemCount(), 1);
    EXPECT_EQ(Row(*Frame.lstChanges, 0), "Priority||3");
}

TEST_F(HistoryFrame, ADeselectionAloneLeavesTheChanges) {
    Revise(1, Change(u"Status", u"Draft", u"Open"));
    Fill(Frame);
    Frame.lstHistory->SetSelected(nullptr);
    EXPECT_EQ(Frame.lstChanges->ItemCount(), 1);
}

TEST_F(HistoryFrame, OnlyTheDescriptionIsMadePlainAndPutOnOneLine) {
    Revise(1, Change(u"Description", u"<p>a</p>", u"<p>b</p>"),
           Change(u"description", u"<p>a</p>", u"<p>b</p>"));
    Fill(Frame);
    ASSERT_EQ(Frame.lstChanges->ItemCount(), 2);
    EXPECT_EQ(Row(*Frame.lstChanges, 0), "Description|plain a|plain b");
    EXPECT_EQ(Row(*Frame.lstChanges, 1), "description|<p>a</p>|<p>b</p>");
}

TEST_F(HistoryFrame, AnUnreadableChangeLeavesNoHalfRowAndNoMessage) {
    const TChange nameless = Change(u"", u"a", u"b");
    ON_CALL(*nameless, Get_AttributeName()).WillByDefault(Throw(ServerFailure("no name")));
    const TChange noNewValue = Change(u"Status", u"a", u"b");
    ON_CALL(*noNewValue, Get_NewValue()).WillByDefault(Throw(ServerFailure("no value")));
    Revise(1, nameless, noNewValue, Change(u"Weight", u"a", Variant(1.5)), Change(u"Name", u"a", u"b"));
    Fill(Frame);
    ASSERT_EQ(Frame.lstChanges->ItemCount(), 1);
    EXPECT_EQ(Row(*Frame.lstChanges, 0), "Name|a|b");
    EXPECT_TRUE(Dialogs.Errors().empty());
}

TEST_F(HistoryFrame, AFailureOfTheChangesIsReportedAndTheRevisionsStay) {
    Revise(1);
    const TRevision broken = Revise(2);
    ON_CALL(*broken, Get_Changes()).WillByDefault(Throw(ServerFailure("out of order")));
    Fill(Frame);
    Frame.lstHistory->SetSelected(Frame.lstHistory->Item(1));
    EXPECT_THAT(Dialogs.Errors(), ElementsAre("out of order"));
    EXPECT_EQ(Frame.lstHistory->ItemCount(), 2);
}

TEST_F(HistoryFrame, BothListsShareTheHeight) {
    Fill(Frame);
    Frame.SetBounds(0, 0, 500, 311);
    TActor::Settle();
    EXPECT_EQ(Frame.lstHistory->Height(), 155 - Frame.lstHistory->Top() - 5);
    EXPECT_EQ(Frame.lstChanges->Height(), Frame.lstHistory->Height());
    EXPECT_EQ(Frame.lstChanges->Top(), 311 - Frame.lstHistory->Top() - Frame.lstChanges->Height());
    EXPECT_GE(Frame.lstChanges->Top() - Frame.lstHistory->Height() - Frame.lstHistory->Top(), 10);
}

} // namespace
