// The widgets of user-defined attributes: which one, where, with what in it, and what a
// change writes.
#include <gtest/gtest.h>

#include "frames/FramesFixture.h"
#include "panel/UQuoraneGUIHelpers.h"
#include "platform/widgets/Containers.h"
#include "platform/widgets/Edits.h"
#include "platform/widgets/Lists.h"
#include "platform/widgets/tree/TreeView.h"

using namespace Quorane_TLB;
using testing::_;
using testing::ElementsAre;
using testing::Return;

namespace {

class AttributeControls : public TFramesTest {
protected:
    AttributeControls() {
        Helpers.RequirementsTree = &Tree;
        Helpers.CurrentRequirement = Requirement;
        Tree.SetSelected(&Tree.Add("Boiler starts"));
        ON_CALL(*Requirement, Get_AttributeValues()).WillByDefault(Return(Values));
        ON_CALL(*Requirement, lock()).WillByDefault([this] {
            Log.push_back("lock");
            if (!Gate.Refusal.empty()) throw ServerFailure(Gate.Refusal);
        });
        Host.Show();
    }

    // The requirement holds its values, and each of them knows the requirement.
    ~AttributeControls() override { testing::Mock::VerifyAndClear(Requirement.get()); }

    // An attribute with a value in the requirement, when value is given.
    template<class TAttribute, class TValue>
    Handle<TAttribute> Attribute(const std::u16string& name,
                                 const std::shared_ptr<testing::NiceMock<TValue>>& value,
                                 const std::shared_ptr<testing::NiceMock<TAttribute>>& attribute) {
        const auto id = MakeMock<TMockAttributeID>();
        ON_CALL(*id, Get_IDNumber()).WillByDefault(Return(++FLastID));
        const auto byDefault = MakeMock<TMockAttributeValue>();
        ON_CALL(*byDefault, Get_AttributeID()).WillByDefault(Return(id));
        ON_CALL(*attribute, Get_Name()).WillByDefault(Return(name));
        ON_CALL(*attribute, Get_DefaultValue()).WillByDefault(Return(byDefault));
        if (value) {
            ON_CALL(*value, Get_AttributeID()).WillByDefault(Return(id));
            ON_CALL(*value, Get_Requirement()).WillByDefault(Return(Requirement));
            Values->Add(Variant(value));
        }
        return attribute;
    }

    Handle<IAttribute> Text(const std::shared_ptr<testing::NiceMock<TMockUDATextValue>>& value,
                            int maxLength = 255) {
        const auto attribute = MakeMock<TMockUDAText>();
        ON_CALL(*attribute, Get_MaxLength()).WillByDefault(Return(maxLength));
        return Attribute(u"Hazard", value, attribute);
    }

    // The three regions, with these selected.
    Handle<IUDAList> List(const std::shared_ptr<testing::NiceMock<TMockUDAListValue>>& value,
                          int maxSelections, const std::vector<std::int32_t>& selected) {
        const auto entries = std::make_shared<TListCollection>();
        for (const Variant& content :
             {Variant(u"North"), Variant(Handle<IDispatch>(User(u"Anna"))), Variant(7)}) {
            const auto entry = MakeMock<TMockUDAListEntry>();
            ON_CALL(*entry, Get_Value()).WillByDefault(Return(content));
            entries->Add(Variant(entry));
        }
        const auto positions = std::make_shared<TListCollection>();
        for (const std::int32_t position : selected)
            positions->Add(position);
        ON_CALL(*value, Get_SelectedIndices()).WillByDefault(Return(positions));
        const auto attribute = MakeMock<TMockUDAList>();
        ON_CALL(*attribute, Get_Entries()).WillByDefault(Return(entries));
        ON_CALL(*attribute, Get_MaxSelections()).WillByDefault(Return(maxSelections));
        return Attribute(u"Regions", value, attribute);
    }

    Handle<IAttribute> Date(const std::shared_ptr<testing::NiceMock<TMockUDADateValue>>& value) {
        const auto attribute = MakeMock<TMockUDADate>();
        ON_CALL(*attribute, Get_MinValue()).WillByDefault(Return(40000.0));
        ON_CALL(*attribute, Get_MaxValue()).WillByDefault(Return(50000.0));
        if (value) ON_CALL(*value, Get_UDADate()).WillByDefault(Return(attribute));
        return Attribute(u"Due", value, attribute);
    }

    // Makes the widget as a rebuild of the tabs does, at the running top.
    template<class TWidget> TWidget& Make(const Handle<IAttribute>& attribute) {
        Helpers.CreatingCustomTabs = true;
        Helpers.CreateAttributeControl(Top, Box, attribute);
        Helpers.CreatingCustomTabs = false;
        return dynamic_cast<TWidget&>(*Box.Controls().back());
    }

    TQuoraneGUIHelpers Helpers;
    TTreeView Tree{&Host, "trvRequirements"};
    TScrollBox Box{&Host, "box"};
    int Top = 10;
    std::shared_ptr<TListCollection> Values = std::make_shared<TListCollection>();
    std::int32_t FLastID = 100;
};

template<class TMock, class TContent>
std::shared_ptr<testing::NiceMock<TMock>> Holding(const TContent& content) {
    const auto value = MakeMock<TMock>();
    ON_CALL(*value, Get_Value()).WillByDefault(Return(content));
    return value;
}

TEST_F(AttributeControls, ATextOfUpTo255LettersGetsOneLineAndALongerOneAMemo) {
    EXPECT_EQ(Make<TEdit>(Text(Holding<TMockUDATextValue>(u"Fire"), 255)).Text(), "Fire");
    EXPECT_EQ(Make<TMemo>(Text(Holding<TMockUDATextValue>(u"Fire"), 256)).Text(), "Fire");
}

TEST_F(AttributeControls, WidgetsStandBelowTheirLabelsInOneColumn) {
    TMemo& memo = Make<TMemo>(Text(Holding<TMockUDATextValue>(u""), 2000));
    TControl& label = *Box.Controls().front();
    EXPECT_EQ(label.Left(), 10);
    EXPECT_EQ(label.Top(), 10);
    EXPECT_EQ(memo.Left(), 10);
    EXPECT_EQ(memo.Width(), 300);
    EXPECT_EQ(memo.Height(), 50);
    EXPECT_EQ(memo.Top(), 10 + label.Height() + 3);
    EXPECT_EQ(Top, memo.Top() + 50 + 5);
    EXPECT_EQ(memo.Name(), "ctl_box_2");
}

TEST_F(AttributeControls, NumbersShowInTheirDecimalForms) {
    const auto number = MakeMock<TMockUDAFloat>();
    const auto whole = MakeMock<TMockUDADuration>();
    const auto half = Holding<TMockUDAFloatValue>(1.5F);
    const auto days = Holding<TMockUDADurationValue>(-3);
    EXPECT_EQ(Make<TMaskEdit>(Attribute(u"Weight", half, number)).Text(), "1.5");
    EXPECT_EQ(Make<TMaskEdit>(Attribute(u"Effort", days, whole)).Text(), "-3");
}

TEST_F(AttributeControls, ABooleanIsACheckBoxWithoutALabel) {
    const auto value = Holding<TMockUDABooleanValue>(WordTrue);
    TCheckBox& box = Make<TCheckBox>(Attribute(u"Safety & more", value, MakeMock<TMockUDABoolean>()));
    EXPECT_TRUE(box.Checked());
    EXPECT_EQ(box.Caption(), "Safety & more");
    EXPECT_EQ(Box.ControlCount(), 1);
    EXPECT_CALL(*value, Set_Value(WordFalse));
    box.SetChecked(false);
}

TEST_F(AttributeControls, AListWithOneSelectionIsADropDownListInTheEntriesOrder) {
    for (const int maxSelections : {0, 1}) {
        const auto value = MakeMock<TMockUDAListValue>();
        TComboBox& box = Make<TComboBox>(List(value, maxSelections, {1}));
        ASSERT_EQ(box.Items().Count(), 3);
        EXPECT_EQ(box.Items().Text(0), "North");
        EXPECT_EQ(box.Items().Text(1), "Anna") << "a user shows as a name";
        EXPECT_EQ(box.Items().Text(2), "7");
        EXPECT_EQ(box.ItemIndex(), 1);
    }
    EXPECT_EQ(Make<TComboBox>(List(MakeMock<TMockUDAListValue>(), 1, {})).ItemIndex(), -1);
}

TEST_F(AttributeControls, AListWithMoreSelectionsWritesTheCheckedPositionsInOrder) {
    const auto value = MakeMock<TMockUDAListValue>();
    TCheckListBox& box = Make<TCheckListBox>(List(value, 2, {2}));
    EXPECT_FALSE(box.Checked(0));
    EXPECT_TRUE(box.Checked(2));
    EXPECT_CALL(*value, Set_SelectedIndices(_)).WillOnce([](const Handle<IStCollection>& positions) {
        ASSERT_EQ(positions->Get_Count(), 2);
        EXPECT_EQ(positions->Get_Item(0), Variant(0));
        EXPECT_EQ(positions->Get_Item(1), Variant(2));
    });
    box.SetChecked(0, true);
    box.OnClickCheck(0);
    EXPECT_THAT(Log, ElementsAre("lock"));
}

TEST_F(AttributeControls, ADateShowsWithItsLimitsAndNoDateAsABlank) {
    const auto set = Holding<TMockUDADateValue>(45000.0);
    EXPECT_EQ(Make<TDatePicker>(Date(set)).Date(), 45000.0);
    const auto empty = Holding<TMockUDADateValue>(0.0);
    ON_CALL(*empty, Get_IsEmpty()).WillByDefault(Return(WordTrue));
    TDatePicker& picker = Make<TDatePicker>(Date(empty));
    EXPECT_TRUE(picker.Blank());
    picker.SetDate(60000.0);
    EXPECT_EQ(picker.Date(), 50000.0);
    EXPECT_CALL(*empty, Set_Value(50000.0));
    picker.OnChange();
    EXPECT_FALSE(picker.Blank());
}

TEST_F(AttributeControls, AMissingDateEndsTheRebuild) {
    try {
        Make<TDatePicker>(Date(nullptr));
        FAIL() << "a date without a value was shown";
    } catch (const Exception& failure) {
        EXPECT_STREQ(failure.what(), "IllegalState: Date attribute value was not found");
    }
}

TEST_F(AttributeControls, AMissingValueOfAnotherKindDisablesTheWidgetAndSaysWhy) {
    const auto value = std::shared_ptr<testing::NiceMock<TMockUDAIntegerValue>>();
    TMaskEdit& edit = Make<TMaskEdit>(Attribute(u"Effort", value, MakeMock<TMockUDAInteger>()));
    EXPECT_FALSE(edit.Enabled());
    EXPECT_EQ(edit.Text(), "");
    EXPECT_EQ(edit.Hint(), "The requirement holds no value for this attribute");
    Handle<IUDAIntegerValue> none;
    EXPECT_EQ(Helpers.GetUDAIntegerValue(Text(nullptr), none), -2147483646);
    EXPECT_FALSE(none);
}

TEST_F(AttributeControls, AFrozenBaselineDisablesTheWidget) {
    EXPECT_TRUE(Make<TEdit>(Text(Holding<TMockUDATextValue>(u"Fire"))).Enabled());
    InFrozenBaseline();
    TEdit& edit = Make<TEdit>(Text(Holding<TMockUDATextValue>(u"Fire")));
    EXPECT_FALSE(edit.Enabled());
    EXPECT_EQ(edit.Color(), clInactiveCaptionText);
}

TEST_F(AttributeControls, ATextIsWrittenUnderTheLockAndClearedByName) {
    const auto value = Holding<TMockUDATextValue>(u"Fire");
    TEdit& edit = Make<TEdit>(Text(value));
    EXPECT_TRUE(Log.empty()) << "filling locks nothing";
    EXPECT_CALL(*value, Set_Value(std::u16string(u"Ice"))).WillOnce([this] { Log.push_back("write"); });
    edit.SetText(std::string("Ice"));
    EXPECT_THAT(Log, ElementsAre("lock", "write"));
    EXPECT_CALL(*value, Set_Value(std::u16string()));
    edit.Clear();
}

TEST_F(AttributeControls, ATextThatIsNoNumberIsReportedAndTheValueStays) {
    const auto value = Holding<TMockUDAIntegerValue>(3);
    TMaskEdit& edit = Make<TMaskEdit>(Attribute(u"Effort", value, MakeMock<TMockUDAInteger>()));
    EXPECT_CALL(*value, Set_Value(_)).Times(0);
    edit.SetText(std::string("soon"));
    EXPECT_THAT(Log, ElementsAre("lock")) << "the lock is taken before the text is read";
    EXPECT_EQ(edit.Text(), "soon");
    EXPECT_THAT(Dialogs.Errors(), ElementsAre("'soon' is not a valid integer value"));
}

TEST_F(AttributeControls, ARefusedLockWritesNothing) {
    const auto value = Holding<TMockUDATextValue>(u"Fire");
    TEdit& edit = Make<TEdit>(Text(value));
    Gate.Refusal = "ObjectLockedException: locked by Ben Ortega.";
    EXPECT_CALL(*value, Set_Value(_)).Times(0);
    edit.SetText(std::string("Ice"));
    EXPECT_THAT(Dialogs.Errors(), ElementsAre("The object requested is currently locked."));
    EXPECT_EQ(edit.Text(), "Ice");
}

TEST_F(AttributeControls, APictureIsReadPixelByPixelFromTheTopLeft) {
    const auto pixels = std::make_shared<TListCollection>();
    EXPECT_EQ(TQuoraneGUIHelpers::GenerateTempIcon(pixels), nullptr);
    for (std::int32_t pixel = 0; pixel < 16 * 16; ++pixel)
        pixels->Elements.insert(pixels->Elements.end(), {Variant(pixel), Variant(256 + 7), Variant(9)});
    const auto icon = TQuoraneGUIHelpers::GenerateTempIcon(pixels);
    EXPECT_EQ(icon->Pixel(0, 0), TColor::Rgb(0, 7, 9));
    EXPECT_EQ(icon->Pixel(3, 2), TColor::Rgb(35, 7, 9)) << "only the low 8 bits count";
    EXPECT_EQ(icon->Pixel(15, 15), TColor::Rgb(255, 7, 9));
}

} // namespace
