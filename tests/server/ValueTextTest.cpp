#include "server/FakeBinding.h"
#include "server/UQuoraneStHelpers.h"
#include "support/FakeSystemServices.h"

#include <gtest/gtest.h>

using namespace Quorane_TLB;
using testing::Return;

namespace {

template<class Mock, class Value> std::shared_ptr<testing::NiceMock<Mock>> Holding(const Value& value) {
    const auto mock = MakeMock<Mock>();
    ON_CALL(*mock, Get_Value()).WillByDefault(Return(value));
    return mock;
}

Handle<IUDAListEntry> Entry(const Variant& value, bool selected) {
    const auto entry = Holding<TMockUDAListEntry>(value);
    ON_CALL(*entry, Get_Selected()).WillByDefault(Return(ToWordBool(selected)));
    return entry;
}

Handle<IUDAListValue> ListValue(const Handle<IStCollection>& entries) {
    const auto value = MakeMock<TMockUDAListValue>();
    ON_CALL(*value, Get_Entries()).WillByDefault(Return(entries));
    return value;
}

TEST(AttributeValueText, FollowsTheKindOfTheValue) {
    const TFakeSystemServices system;
    const std::vector<std::pair<Handle<IAttributeValue>, std::string>> rows = {
        {Holding<TMockUDABooleanValue>(WordTrue), "-1"},
        {Holding<TMockUDABooleanValue>(WordFalse), "0"},
        {Holding<TMockUDAFloatValue>(0.1F), "0.100000001490116"},
        {Holding<TMockUDAFloatValue>(12.0F), "12"},
        {Holding<TMockUDAIntegerValue>(-40), "-40"},
        {Holding<TMockUDADurationValue>(5), "5"},
        {Holding<TMockUDATextValue>(std::u16string(u"\u00FCber")), "\xC3\xBC"
                                                                   "ber"},
        {Holding<TMockUDADateValue>(45000.75), "day 45000"},
        {MakeMock<TMockAttributeValue>(), ""},
    };
    for (const auto& [value, text] : rows)
        EXPECT_EQ(TQuoraneHelpers::UDAToString(value), text);
}

TEST(AttributeValueText, JoinsTheSelectedEntriesOfAList) {
    const auto user = MakeMock<TMockUser>();
    ON_CALL(*user, Get_Name()).WillByDefault(Return(u"Ben"));
    const auto value = ListValue(ListOf(Entry(u"a", true), Entry(u"x", false), Entry(u"b", true),
                                        Entry(3, true), Entry(Handle<IUser>(user), true)));
    EXPECT_EQ(TQuoraneHelpers::UDAToString(value), "ab3Ben");
    EXPECT_EQ(TQuoraneHelpers::UDAToString(ListValue(ListOf(Entry(u"a", false)))), "");
}

TEST(VariantToStr, ShowsTextNumbersAndServerObjects) {
    const auto group = MakeMock<TMockGroup>();
    ON_CALL(*group, Get_Name()).WillByDefault(Return(u"Testers"));
    const std::vector<std::pair<Variant, std::string>> rows = {
        {Variant::Null(), ""},
        {Variant(), ""},
        {7, "7"},
        {u"7", "7"},
        {Handle<IGroup>(group), "Testers"},
        {Handle<IUDAIntegerValue>(Holding<TMockUDAIntegerValue>(9)), "9"},
        {Handle<IVersion>(MakeMock<TMockVersion>()), ""},
    };
    for (const auto& [value, text] : rows)
        EXPECT_EQ(TQuoraneHelpers::VariantToStr(value), text);
}

TEST(VariantToStr, RefusesOtherPlainKinds) {
    EXPECT_THROW(TQuoraneHelpers::VariantToStr(2.5), EConvertError);
    EXPECT_THROW(TQuoraneHelpers::VariantToStr(Variant::Boolean(WordTrue)), EConvertError);
    EXPECT_THROW(TQuoraneHelpers::VariantToStr(Variant::Byte(1)), EConvertError);
}

} // namespace
