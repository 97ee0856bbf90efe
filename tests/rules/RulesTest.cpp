#include "backend/rules/Rules.h"

#include <gmock/gmock.h>

#include <limits>

using namespace Backend;
using namespace testing;

namespace {

Attribute Of(AttributeKind kind) {
    Attribute attribute;
    attribute.Name = "A";
    attribute.Kind = kind;
    attribute.MaxLength = 3;
    attribute.MinInteger = 1;
    attribute.MaxInteger = 9;
    attribute.MinFloat = 0.5F;
    attribute.MaxFloat = 1.5F;
    attribute.MinDate = {100};
    attribute.MaxDate = {200};
    attribute.Entries = {"a", "b", "c"};
    attribute.MaxSelections = 2;
    return attribute;
}

struct ValueCase {
    const char* Name;
    AttributeKind Kind;
    Backend::Value Content;
    const char* Refusal; // empty: taken
};

void PrintTo(const ValueCase& row, std::ostream* out) {
    *out << row.Name;
}

class AttributeValues : public TestWithParam<ValueCase> {};

TEST_P(AttributeValues, StayWithinKindAndBounds) {
    const ValueCase& row = GetParam();
    const auto check = [&] { CheckValue(Of(row.Kind), row.Content); };
    if (*row.Refusal == '\0')
        EXPECT_NO_THROW(check());
    else
        EXPECT_THAT(check, ThrowsMessage<RuleViolation>(HasSubstr(row.Refusal)));
}

constexpr float NotANumber = std::numeric_limits<float>::quiet_NaN();

INSTANTIATE_TEST_SUITE_P(
    Kinds, AttributeValues,
    Values(ValueCase{"Empty", AttributeKind::Date, std::monostate(), ""},
           ValueCase{"Boolean", AttributeKind::Boolean, true, ""},
           ValueCase{"TextForBoolean", AttributeKind::Boolean, "yes", "takes true or false"},
           ValueCase{"LeastInteger", AttributeKind::Integer, 1, ""},
           ValueCase{"TooSmallInteger", AttributeKind::Integer, 0, "takes values from 1 to 9"},
           ValueCase{"TooLargeDuration", AttributeKind::Duration, 10, "takes values from 1 to 9"},
           ValueCase{"FloatForInteger", AttributeKind::Integer, 2.0F, "takes a whole number"},
           ValueCase{"Float", AttributeKind::Float, 1.5F, ""},
           ValueCase{"TooLargeFloat", AttributeKind::Float, 1.6F, "takes values from 0.5 to 1.5"},
           ValueCase{"NotANumber", AttributeKind::Float, NotANumber, "takes values from"},
           ValueCase{"LastDate", AttributeKind::Date, Date{200}, ""},
           ValueCase{"TooLateDate", AttributeKind::Date, Date{200.1},
                     "takes dates from 1900-04-09 to 1900-07-18"},
           ValueCase{"EndlessDate", AttributeKind::Date, Date{std::numeric_limits<double>::infinity()},
                     "takes dates from"},
           ValueCase{"LongestText", AttributeKind::Text, "äöü", ""},
           ValueCase{"TooLongText", AttributeKind::Text, "abcd", "is longer than 3 characters"},
           ValueCase{"TextWithNul", AttributeKind::Text, std::string("a\0b", 3), "holds the character NUL"},
           ValueCase{"NoSelection", AttributeKind::List, Selection{}, ""},
           ValueCase{"TwoSelections", AttributeKind::List, Selection{{0, 2}}, ""},
           ValueCase{"ThreeSelections", AttributeKind::List, Selection{{0, 1, 2}}, "at most 2 entries"},
           ValueCase{"PositionBehindTheLast", AttributeKind::List, Selection{{3}}, "no entry at position 3"},
           ValueCase{"NegativePosition", AttributeKind::List, Selection{{-1}}, "no entry at position -1"},
           ValueCase{"RepeatedPosition", AttributeKind::List, Selection{{1, 1}}, "each position once"},
           ValueCase{"DescendingPositions", AttributeKind::List, Selection{{2, 0}}, "in ascending order"}),
    [](const auto& row) { return std::string(row.param.Name); });

struct TextCase {
    const char* Name;
    std::string Text;
    bool Valid;
};

void PrintTo(const TextCase& row, std::ostream* out) {
    *out << row.Name;
}

class Texts : public TestWithParam<TextCase> {};

TEST_P(Texts, AreValidUtf8WithoutNul) {
    EXPECT_EQ(IsPlainUtf8(GetParam().Text), GetParam().Valid);
}

INSTANTIATE_TEST_SUITE_P(
    Utf8, Texts,
    Values(TextCase{"Ascii", "abc", true}, TextCase{"TwoBytes", "\xc3\xa4", true},
           TextCase{"ThreeBytes", "\xe2\x82\xac", true}, TextCase{"FourBytes", "\xf0\x9f\x98\x80", true},
           TextCase{"Nul", std::string(1, '\0'), false}, TextCase{"LoneFollower", "\x80", false},
           TextCase{"CutOff", "a\xe2\x82", false}, TextCase{"Overlong", "\xc0\x80", false},
           TextCase{"OverlongThree", "\xe0\x80\x80", false},
           TextCase{"OverlongFour", "\xf0\x80\x80\x80", false}, TextCase{"Surrogate", "\xed\xa0\x80", false},
           TextCase{"BeyondUnicode", "\xf4\x90\x80\x80", false}, TextCase{"WrongFollower", "\xc3(", false},
           TextCase{"Latin1", "gr\xfc", false}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(Rules, TakeOneKeyReference) {
    DocumentReference key{ReferenceKind::Text, "x", {}, true};
    EXPECT_NO_THROW(CheckReferences({key, {}}));
    EXPECT_THROW(CheckReferences({key, key}), RuleViolation);
}

TEST(Rules, RefuseADefaultThatItsOwnAttributeRefuses) {
    Attribute attribute = Of(AttributeKind::Integer);
    attribute.Default = 10;
    EXPECT_THROW(CheckAttribute(attribute), RuleViolation);
}

} // namespace
