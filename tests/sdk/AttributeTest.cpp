#include "sdk/SdkTest.h"

#include <functional>

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace {

std::vector<int> Positions(const Handle<IStCollection>& indices) {
    std::vector<int> positions;
    for (int i = 0; i < indices->Get_Count(); ++i)
        positions.push_back(indices->Get_Item(Variant(std::int32_t{i})).AsInteger());
    return positions;
}

Handle<IStCollection> Indices(std::initializer_list<std::int32_t> positions) {
    auto indices = CoCollectionFactory::Create()->Create1();
    for (const std::int32_t position : positions)
        indices->Add(Variant(position));
    return indices;
}

struct TKind {
    const char* Attribute;
    std::function<void(const Handle<IAttributeValue>&)> HoldsDefault, Write, HoldsWritten;
};

void PrintTo(const TKind& row, std::ostream* out) {
    *out << row.Attribute;
}

// One row for each kind of attribute.
const TKind Kinds[] = {
    {"Safe", [](const auto& value) { EXPECT_EQ(Query<IUDABooleanValue>(value)->Get_Value(), WordFalse); },
     [](const auto& value) { Query<IUDABooleanValue>(value)->Set_Value(7); },
     [](const auto& value) { EXPECT_EQ(Query<IUDABooleanValue>(value)->Get_Value(), WordTrue); }},
    {"Due", [](const auto& value) { EXPECT_EQ(Query<IUDADateValue>(value)->Get_IsEmpty(), WordTrue); },
     [](const auto& value) { Query<IUDADateValue>(value)->Set_Value(45000.0); },
     [](const auto& value) {
         const auto date = Query<IUDADateValue>(value);
         EXPECT_EQ(date->Get_IsEmpty(), WordFalse);
         EXPECT_EQ(date->Get_Value(), 45000.0);
         EXPECT_LT(date->Get_UDADate()->Get_MinValue(), date->Get_UDADate()->Get_MaxValue());
     }},
    {"Cost", [](const auto& value) { EXPECT_EQ(Query<IUDAFloatValue>(value)->Get_Value(), 0.5F); },
     [](const auto& value) { Query<IUDAFloatValue>(value)->Set_Value(0.1F); },
     [](const auto& value) { EXPECT_EQ(Query<IUDAFloatValue>(value)->Get_Value(), 0.1F); }},
    {"Size", [](const auto& value) { EXPECT_EQ(Query<IUDAIntegerValue>(value)->Get_Value(), 3); },
     [](const auto& value) { Query<IUDAIntegerValue>(value)->Set_Value(-4); },
     [](const auto& value) {
         EXPECT_EQ(Query<IUDAIntegerValue>(value)->Get_Value(), -4);
         EXPECT_FALSE(Query<IUDADurationValue>(value));
     }},
    {"Effort", [](const auto& value) { EXPECT_EQ(Query<IUDADurationValue>(value)->Get_Value(), 8); },
     [](const auto& value) { Query<IUDADurationValue>(value)->Set_Value(9); },
     [](const auto& value) {
         EXPECT_EQ(Query<IUDAIntegerValue>(value)->Get_Value(), 9);
         EXPECT_EQ(Cast<IUDADuration>(value->Get_Attribute())->Get_UnitName(), u"h");
     }},
    {"Color",
     [](const auto& value) {
         const auto list = Query<IUDAListValue>(value);
         EXPECT_TRUE(list->Get_SelectedValue().IsNull());
         EXPECT_EQ(list->Get_EntryCount(), 3);
     },
     [](const auto& value) { Query<IUDAListValue>(value)->Set_SelectedIndex(2); },
     [](const auto& value) {
         const auto list = Query<IUDAListValue>(value);
         EXPECT_EQ(list->Get_SelectedValue(), Variant(u"blue"));
         EXPECT_THAT(Positions(list->Get_SelectedIndices()), ElementsAre(2));
         EXPECT_EQ(Item<IUDAListEntry>(list->Get_Entries(), 2)->Get_Selected(), WordTrue);
         EXPECT_EQ(Item<IUDAListEntry>(list->Get_Entries(), 0)->Get_Selected(), WordFalse);
     }},
    {"Colors",
     [](const auto& value) {
         EXPECT_EQ(Query<IUDAListValue>(value)->Get_SelectedIndices()->Get_Count(), 0);
         EXPECT_EQ(Cast<IUDAList>(value->Get_Attribute())->Get_MaxSelections(), 3);
     },
     [](const auto& value) {
         Query<IUDAListValue>(value)->Set_SelectedIndices(Indices({2, 0}));
     },
     [](const auto& value) {
         EXPECT_THAT(Positions(Query<IUDAListValue>(value)->Get_SelectedIndices()), ElementsAre(0, 2));
     }},
    {"Note", [](const auto& value) { EXPECT_EQ(Query<IUDATextValue>(value)->Get_Value(), u"none"); },
     [](const auto& value) { Query<IUDATextValue>(value)->Set_Value(u"später"); },
     [](const auto& value) { EXPECT_EQ(Query<IUDATextValue>(value)->Get_Value(), u"später"); }},
};

class TAttributes : public TSdkTest {
protected:
    static Handle<IAttributeValue> Value(const Handle<IRequirement>& requirement,
                                         const std::u16string& name) {
        const auto values = requirement->Get_AttributeValues();
        for (int i = 0; i < values->Get_Count(); ++i) {
            auto value = Item<IAttributeValue>(values, i);
            if (value->Get_Attribute()->Get_Name() == name) return value;
        }
        return nullptr;
    }

    Handle<ISession> FSession = LogOn();
};

class TAttributeKinds : public TAttributes, public ::testing::WithParamInterface<TKind> {};

} // namespace

TEST_P(TAttributeKinds, AreReadWrittenSavedAndReadAgain) {
    const TKind& kind = GetParam();
    const std::u16string name = Wide(kind.Attribute);
    const auto requirement = FSession->getLatestRequirement(FSample.Stop);
    kind.HoldsDefault(Value(requirement, name));
    requirement->lock();
    kind.Write(Value(requirement, name));
    kind.HoldsWritten(Value(requirement, name));
    kind.HoldsDefault(Value(LogOn(u"ben")->getLatestRequirement(FSample.Stop), name));
    requirement->save();
    kind.HoldsWritten(Value(requirement, name));
    kind.HoldsWritten(Value(LogOn(u"ben")->getLatestRequirement(FSample.Stop), name));
}

INSTANTIATE_TEST_SUITE_P(Rows, TAttributeKinds, ::testing::ValuesIn(Kinds));

TEST_F(TAttributes, StatusAndPriorityAreListsOfTheirType) {
    const auto requirement = FSession->getLatestRequirement(FSample.Stop);
    requirement->lock();
    EXPECT_EQ(requirement->Get_Status()->Get_SelectedValue(), Variant(u"Draft"));
    requirement->Get_Status()->Set_SelectedIndex(1);
    requirement->Get_Priority()->Set_SelectedIndex(2);
    requirement->save();
    const auto other = LogOn(u"ben")->getLatestRequirement(FSample.Stop);
    EXPECT_EQ(other->Get_Status()->Get_SelectedValue(), Variant(u"Review"));
    EXPECT_EQ(other->Get_Priority()->Get_SelectedValue(), Variant(u"High"));
}

TEST_F(TAttributes, ATextIsClearedByThePropertysName) {
    const auto requirement = FSession->getLatestRequirement(FSample.Stop);
    requirement->lock();
    const auto value = Cast<IUDATextValue>(Value(requirement, u"Note"));
    std::string empty;
    PutByName(value, "Value", Variant::TextReference(empty));
    EXPECT_EQ(value->Get_Value(), u"");
    requirement->save();
    EXPECT_EQ(
        Cast<IUDATextValue>(Value(LogOn(u"ben")->getLatestRequirement(FSample.Stop), u"Note"))->Get_Value(),
        u"");
}

TEST_F(TAttributes, APositionThatTheListLacksIsRefusedAtTheWrite) {
    const auto requirement = FSession->getLatestRequirement(FSample.Stop);
    const auto color = Cast<IUDAListValue>(Value(requirement, u"Color"));
    color->Set_SelectedIndex(1);
    EXPECT_THAT(FailureOf([&] { color->Set_SelectedIndex(3); }), HasSubstr("IndexOutOfBoundsException"));
    EXPECT_THAT(Positions(color->Get_SelectedIndices()), ElementsAre(1));
    color->Set_SelectedIndex(-1);
    EXPECT_TRUE(color->Get_SelectedValue().IsNull());
}

TEST_F(TAttributes, ADefaultValueTellsItsAttributeAndBelongsToNoRequirement) {
    const auto value = Value(FSession->getLatestRequirement(FSample.Stop), u"Size");
    const auto byDefault = value->Get_Attribute()->Get_DefaultValue();
    EXPECT_EQ(NumberOf(byDefault->Get_AttributeID()), NumberOf(value->Get_AttributeID()));
    EXPECT_FALSE(byDefault->Get_Requirement());
    EXPECT_TRUE(value->Get_Requirement());
    EXPECT_THAT(FailureOf([&] { Cast<IUDAIntegerValue>(byDefault)->Set_Value(1); }),
                HasSubstr("UnsupportedOperationException"));
}

TEST_F(TAttributes, ATypeTellsItsTabsWithIconAndAttributes) {
    const auto tabs = FSession->getLatestRequirement(FSample.Stop)->Get_RequirementType()->Get_CustomTabs();
    ASSERT_EQ(tabs->Get_Count(), 1);
    const auto tab = Item<ICustomTab>(tabs, 0);
    EXPECT_EQ(tab->Get_Name(), u"Planning");
    EXPECT_EQ(tab->Get_Icon()->Get_Count(), 768);
    EXPECT_EQ(tab->Get_Icon()->Get_Item(Variant(0)), Variant(0x7f));
    EXPECT_THAT(Names(tab->Get_Attributes()),
                ElementsAre(u"Safe", u"Due", u"Cost", u"Size", u"Effort", u"Color", u"Colors", u"Note"));
}
