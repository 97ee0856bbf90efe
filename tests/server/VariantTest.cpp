#include <limits>

#include <gtest/gtest.h>

#include "server/FakeBinding.h"

using namespace Quorane_TLB;

namespace {

TEST(VariantText, ShowsEachPlainKind) {
    std::string referenced = "\xE2\x82\xAC";
    const std::vector<std::pair<Variant, std::string>> rows = {
        {Variant(), ""},
        {Variant::Null(), ""},
        {Variant::Byte(255), "255"},
        {-7, "-7"},
        {Variant::Boolean(WordTrue), "True"},
        {Variant::Boolean(WordFalse), "False"},
        {Variant::Float(0.1F), "0.100000001490116"},
        {2.5, "2.5"},
        {u"\u20AC", "\xE2\x82\xAC"},
        {Variant::TextReference(referenced), "\xE2\x82\xAC"},
    };
    for (const auto& [value, text] : rows)
        EXPECT_EQ(VarToStr(value), text);
}

TEST(VariantNumber, IsConvertedWhereTheValueAllows) {
    EXPECT_EQ(Variant(u"12").AsInteger(), 12);
    EXPECT_EQ(Variant(2.5).AsInteger(), 2);
    EXPECT_EQ(Variant(3.5).AsInteger(), 4);
    EXPECT_EQ(Variant::Boolean(WordTrue).AsInteger(), -1);
    EXPECT_EQ(Variant(5).AsBoolean(), WordTrue);
    EXPECT_EQ(Variant().AsInteger(), 0);
    EXPECT_DOUBLE_EQ(Variant::Byte(7).AsDouble(), 7);
}

TEST(VariantNumber, IsRefusedWhereItIsNone) {
    const Handle<IDispatch> object = MakeMock<TMockUser>();
    EXPECT_THROW(Variant(u"12 apples").AsInteger(), EConvertError);
    EXPECT_THROW(Variant(u"").AsInteger(), EConvertError);
    EXPECT_THROW(Variant(3e9).AsInteger(), EConvertError);
    EXPECT_THROW(Variant(std::numeric_limits<double>::quiet_NaN()).AsInteger(), EConvertError);
    EXPECT_THROW(Variant(object).AsInteger(), EConvertError);
    EXPECT_THROW(VarToStr(object), EConvertError);
    EXPECT_THROW(Variant::Null().AsInteger(), EConvertError);
}

TEST(VariantObject, ComesOnlyFromAnObjectOrFromNothing) {
    const auto user = MakeMock<TMockUser>();
    EXPECT_EQ(Variant(user).AsDispatch(), user);
    EXPECT_FALSE(Variant().AsDispatch());
    EXPECT_THROW(Variant(1).AsDispatch(), EConvertError);
    EXPECT_THROW(Variant::Null().AsDispatch(), EConvertError);
}

TEST(Text, SurvivesTheWayThereAndBack) {
    const std::string text = "Ma\xC3\x9F \xE2\x82\xAC \xF0\x9F\x9A\x80 \x7F";
    EXPECT_EQ(Wide(text), u"Ma\u00DF \u20AC \U0001F680 \u007F");
    EXPECT_EQ(Utf8(Wide(text)), text);
    EXPECT_EQ(Wide(std::string_view("a\0b", 3)).size(), 3U);
}

TEST(Text, ReplacesWhatIsNotWellFormed) {
    const std::string mark = "\xEF\xBF\xBD";
    const std::vector<std::pair<std::string, std::u16string>> rows = {
        {"a\xFF", u"a\uFFFD"},
        {"\xE2\x82", u"\uFFFD\uFFFD"},
        {"\xC0\xAF", u"\uFFFD\uFFFD"},
        {"\xE0\x80\x80", u"\uFFFD\uFFFD\uFFFD"},
        {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},
        {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"\xC3(", u"\uFFFD("},
    };
    for (const auto& [bytes, text] : rows)
        EXPECT_EQ(Wide(bytes), text);
    const std::u16string loneHigh{u'x', char16_t(0xD800), u'y'};
    const std::u16string loneLow{char16_t(0xDC00)};
    EXPECT_EQ(Utf8(loneHigh), "x" + mark + "y");
    EXPECT_EQ(Utf8(loneLow), mark);
}

} // namespace
