// The details of a requirement, shown and edited.
#include <gtest/gtest.h>

#include "frames/FramesFixture.h"
#include "frames/UDetailsFrame.h"
#include "platform/widgets/Edits.h"
#include "platform/widgets/Lists.h"

using namespace Quorane_TLB;
using testing::_;
using testing::ElementsAre;
using testing::Return;

namespace {

class DetailsFrame : public TFramesTest {
protected:
    DetailsFrame() {
        const auto type = MakeMock<TMockRequirementType>();
        ON_CALL(*type, Get_Tag()).WillByDefault(Return(u"SRS"));
        const auto version = MakeMock<TMockVersion>();
        ON_CALL(*version, Get_MajorVersion()).WillByDefault(Return(2));
        ON_CALL(*version, Get_MinorVersion()).WillByDefault(Return(11));
        ON_CALL(*Requirement, Get_Name()).WillByDefault(Return(u"Boiler starts"));
        ON_CALL(*Requirement, Get_RequirementType()).WillByDefault(Return(type));
        ON_CALL(*Requirement, Get_IDNumber()).WillByDefault(Return(12));
        ON_CALL(*Requirement, Get_Version()).WillByDefault(Return(version));
        ON_CALL(*Requirement, Get_Priority()).WillByDefault(Return(Priority));
        ON_CALL(*Requirement, Get_Status()).WillByDefault(Return(Status));
        ON_CALL(*Session, Get_Users()).WillByDefault(Return(ListOf(Anna, Ben)));
        Offer(Status, {u"Draft", u"Open", u"Done"}, Variant(u"Open"));
        Offer(Priority, {u"Low", u"High"}, Variant::Null());
        ON_CALL(*Requirement, Set_Name(_)).WillByDefault([this](const std::u16string& name) {
            Log.push_back("name:" + Utf8(name));
        });
    }

    using TListValue = std::shared_ptr<testing::NiceMock<TMockUDAListValue>>;

    static void Offer(const TListValue& value, const std::vector<std::u16string>& texts,
                      const Variant& selected) {
        const auto entries = std::make_shared<TListCollection>();
        for (const std::u16string& text : texts) {
            const auto entry = MakeMock<TMockUDAListEntry>();
            ON_CALL(*entry, Get_Value()).WillByDefault(Return(Variant(text)));
            entries->Add(Variant(entry));
        }
        ON_CALL(*value, Get_Entries()).WillByDefault(Return(entries));
        ON_CALL(*value, Get_EntryCount()).WillByDefault(Return(entries->Get_Count()));
        ON_CALL(*value, Get_SelectedValue()).WillByDefault(Return(selected));
    }

    static std::vector<std::string> Texts(TComboBox& list) {
        std::vector<std::string> texts;
        for (int index = 0; index < list.Items().Count(); ++index)
            texts.push_back(list.Items().Text(index));
        return texts;
    }

    Handle<IUser> Anna = User(u"Anna");
    Handle<IUser> Ben = User(u"Ben");
    TListValue Status = MakeMock<TMockUDAListValue>();
    TListValue Priority = MakeMock<TMockUDAListValue>();
    TfraDetails Frame{&Host};
};

TEST_F(DetailsFrame, ShowsNameIdVersionAndSelectedEntries) {
    Fill(Frame);
    EXPECT_EQ(Frame.edtRequirementName->Text(), "Boiler starts");
    EXPECT_EQ(Frame.edtRequirementTagID->Text(), "SRS12");
    EXPECT_EQ(Frame.edtRequirementVersion->Text(), "2.11");
    EXPECT_EQ(Frame.cbxRequirementStatus->Text(), "Open");
    EXPECT_EQ(Frame.cbxRequirementPriority->ItemIndex(), -1) << "a null value selects nothing";
}

TEST_F(DetailsFrame, ARequirementNeverSavedIsMarkedNewWithoutAMessage) {
    ON_CALL(*Requirement, Get_IDNumber())
        .WillByDefault(testing::Throw(ServerFailure("IllegalStateException: not saved yet")));
    Fill(Frame);
    EXPECT_EQ(Frame.edtRequirementTagID->Text(), "SRS-NEW");
    EXPECT_EQ(Frame.edtRequirementVersion->Text(), "2.11");
    EXPECT_TRUE(Dialogs.Errors().empty());
}

TEST_F(DetailsFrame, ARepeatedEntryStandsInTheListOnce) {
    Offer(Status, {u"Open", u"Done", u"Open"}, Variant(u"Done"));
    Fill(Frame);
    EXPECT_THAT(Texts(*Frame.cbxRequirementStatus), ElementsAre("Open", "Done"));
    EXPECT_EQ(Frame.cbxRequirementStatus->Text(), "Done");
}

TEST_F(DetailsFrame, OnlyTheOfferedEntriesAreListed) {
    ON_CALL(*Status, Get_EntryCount()).WillByDefault(Return(2));
    Fill(Frame);
    EXPECT_THAT(Texts(*Frame.cbxRequirementStatus), ElementsAre("Draft", "Open"));
}

TEST_F(DetailsFrame, TheOwnerIsSelectedByName) {
    ON_CALL(*Requirement, Get_Owner()).WillByDefault(Return(Ben));
    Fill(Frame);
    EXPECT_EQ(Frame.cbxRequirementOwner->Text(), "Ben");
}

TEST_F(DetailsFrame, AnOwnerWhoIsNoUserAnyMoreLeavesNoSelection) {
    ON_CALL(*Requirement, Get_Owner()).WillByDefault(Return(User(u"Zoe")));
    Fill(Frame);
    EXPECT_THAT(Texts(*Frame.cbxRequirementOwner), ElementsAre("Anna", "Ben"));
    EXPECT_EQ(Frame.cbxRequirementOwner->ItemIndex(), -1);
}

TEST_F(DetailsFrame, WithoutAnOwnerTheItemsStayAndNoUserIsRead) {
    ON_CALL(*Requirement, Get_Owner()).WillByDefault(Return(Ben));
    Fill(Frame);
    ON_CALL(*Requirement, Get_Owner()).WillByDefault(Return(Handle<IUser>()));
    EXPECT_CALL(*Session, Get_Users()).Times(0);
    Fill(Frame);
    EXPECT_EQ(Frame.cbxRequirementOwner->ItemIndex(), -1);
    EXPECT_THAT(Texts(*Frame.cbxRequirementOwner), ElementsAre("Anna", "Ben"));
}

TEST_F(DetailsFrame, FillingTakesNoLockAndWritesNothing) {
    ON_CALL(*Requirement, Get_Owner()).WillByDefault(Return(Ben));
    EXPECT_CALL(*Requirement, Set_Owner(_)).Times(0);
    EXPECT_CALL(*Status, Set_SelectedIndex(_)).Times(0);
    Fill(Frame);
    ON_CALL(*Requirement, Get_Name()).WillByDefault(Return(u"Another name"));
    Fill(Frame);
    EXPECT_TRUE(Log.empty());
}

TEST_F(DetailsFrame, EveryWidgetFollowsTheBaseline) {
    Fill(Frame);
    for (TWinControl* control : Frame.InputControls()) {
        EXPECT_TRUE(control->Enabled()) << control->Name();
        EXPECT_EQ(control->Color(), clWindow) << control->Name();
    }
    InFrozenBaseline();
    Fill(Frame);
    EXPECT_EQ(Frame.InputControls().size(), 6U);
    for (TWinControl* control : Frame.InputControls()) {
        EXPECT_FALSE(control->Enabled()) << control->Name();
        EXPECT_EQ(control->Color(), clInactiveCaptionText) << control->Name();
    }
}

TEST_F(DetailsFrame, TypingANameLocksBeforeItIsWritten) {
    Fill(Frame);
    Frame.edtRequirementName->SetText(std::string("Boiler stops"));
    EXPECT_THAT(Log, ElementsAre("lock", "name:Boiler stops"));
}

TEST_F(DetailsFrame, AnEmptiedNameIsStoredAsOneBlank) {
    Fill(Frame);
    Actor.Type("edtRequirementName", "");
    EXPECT_THAT(Log, ElementsAre("lock", "name: "));
}

TEST_F(DetailsFrame, ARefusedLockLeavesTheObjectAndKeepsTheText) {
    Fill(Frame);
    Gate.Refusal = "The object requested is currently locked.";
    Frame.edtRequirementName->SetText(std::string("Mine"));
    EXPECT_THAT(Log, ElementsAre("lock"));
    EXPECT_EQ(Frame.edtRequirementName->Text(), "Mine");
    EXPECT_THAT(Dialogs.Errors(), ElementsAre("The object requested is currently locked."));
    Fill(Frame);
    EXPECT_EQ(Frame.edtRequirementName->Text(), "Boiler starts") << "the next fill puts the value back";
}

TEST_F(DetailsFrame, PickedEntriesAreWrittenByPositionUnderTheLock) {
    Fill(Frame);
    EXPECT_CALL(*Status, Set_SelectedIndex(2)).WillOnce([this] { Log.push_back("status"); });
    EXPECT_CALL(*Priority, Set_SelectedIndex(1)).WillOnce([this] { Log.push_back("priority"); });
    Actor.Choose("cbxRequirementStatus", "Done");
    Actor.Choose("cbxRequirementPriority", "High");
    EXPECT_THAT(Log, ElementsAre("lock", "status", "lock", "priority"));
}

TEST_F(DetailsFrame, APickedOwnerIsTheUserOfTheEntry) {
    ON_CALL(*Requirement, Get_Owner()).WillByDefault(Return(Anna));
    Fill(Frame);
    EXPECT_CALL(*Requirement, Set_Owner(Ben)).WillOnce([this] { Log.push_back("owner"); });
    Actor.Choose("cbxRequirementOwner", "Ben");
    EXPECT_THAT(Log, ElementsAre("lock", "owner"));
}

TEST_F(DetailsFrame, WithoutARequirementNothingShowsAndNothingCanBeEdited) {
    Fill(Frame);
    Gate.ShowingRequirementInfo = true;
    Frame.SetRequirement({});
    EXPECT_EQ(Frame.edtRequirementName->Text(), "");
    EXPECT_FALSE(Frame.edtRequirementName->Enabled());
}

} // namespace
