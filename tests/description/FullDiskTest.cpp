// The description's file on a disk that has no room left.
#include "description/DescriptionTest.h"

using namespace Quorane_TLB;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

class TFullDisk : public TDescriptionTest {
protected:
    TFullDisk() {
        LogOn();
        Select(ZoneControl);
        FNumber = SelectedNumber();
        FFile = CurrentSession().PrepareRequirementDescriptionFile(u"");
    }

    // Every byte that is written to the file from now on finds the disk full.
    void Fill() {
        std::filesystem::remove(FFile);
        std::filesystem::create_symlink("/dev/full", FFile);
    }
    void MakeRoom() { std::filesystem::remove(FFile); }
    static auto SaysThatTheDiskIsFull(const std::string& file) {
        return ElementsAre(AllOf(HasSubstr("No space left on device"), HasSubstr(file)));
    }

    std::int32_t FNumber;
    std::string FFile;
};

TEST_F(TFullDisk, IsToldAndTheDescriptionStaysAsItWas) {
    const std::string before = DescriptionOnServer(FNumber);
    Select(FilterReadings);
    Fill();
    Select(ZoneControl);
    EXPECT_THAT(Dialogs.TakeErrors(), SaysThatTheDiskIsFull(FFile));
    EXPECT_FALSE(Frame().IsDirty());
    EXPECT_EQ(Document<IHTMLDocument2>()->get_designMode(), "Off") << "what is typed would be lost";
    EXPECT_EQ(NameEdit().Text(), "Zone control") << "a change would go to the last requirement";
    User->Type("edtRequirementName", "Zones");
    User->Click("btnSave");
    Dialogs.TakeErrors();
    EXPECT_EQ(NameOnServer(FNumber), "Zones");
    EXPECT_EQ(DescriptionOnServer(FNumber), before);
    MakeRoom();
    Select({FirmwareType});
    Select({FirmwareType, "Zones"});
    EXPECT_TRUE(WaitForHtml("<img"));
}

TEST_F(TFullDisk, LosesNothingThatWasTypedBefore) {
    ClickIntoText();
    TypeIntoPage("kept");
    ASSERT_TRUE(WaitForLock());
    ASSERT_TRUE(WaitForHtml("kept"));
    TActor::Settle();
    Fill();
    User->Click("btnSave");
    EXPECT_THAT(Dialogs.TakeErrors(), SaysThatTheDiskIsFull(FFile));
    EXPECT_THAT(DescriptionOnServer(FNumber), HasSubstr("kept"));
    MakeRoom();
    Select(FilterReadings);
    Select(ZoneControl);
    EXPECT_TRUE(WaitForHtml("kept"));
}

} // namespace
