#include "backend/exchange/SampleText.h"

#include <gmock/gmock.h>

namespace Exchange {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

OutlineEntry Entry(const std::string& text) {
    return ParseOutline(text, "file").at(0);
}

TEST(Outline, HoldsFieldsAndBlocksOfEachHeading) {
    const auto entries = ParseOutline(
        "# One\nkey: text\n  goes on\nkey: again: x\n\nfirst\nblock\n\n- second\n## Two\n", "file");
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].Title, "One");
    ASSERT_EQ(entries[0].Fields.size(), 2U);
    EXPECT_EQ(entries[0].Fields[0].Text, "text goes on");
    EXPECT_EQ(entries[0].Text("key"), "again: x");
    EXPECT_THAT(entries[0].Blocks, ElementsAre("first\nblock", "- second"));
    EXPECT_EQ(entries[1].Level, 2);
    EXPECT_EQ(entries[1].Line, 10);
}

TEST(Outline, GathersListsOverRepeatedFields) {
    EXPECT_THAT(Entry("# A\nlist: a; b;\nlist: c").List("list"), ElementsAre("a", "b", "c"));
}

struct FaultCase {
    const char* Name;
    const char* Text;
    const char* Message;
};

class OutlineFaults : public testing::TestWithParam<FaultCase> {};

TEST_P(OutlineFaults, AreToldWithFileAndLine) {
    try {
        ParseOutline(GetParam().Text, "file");
        FAIL();
    } catch (const OutlineError& error) {
        EXPECT_THAT(error.what(), HasSubstr(GetParam().Message));
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, OutlineFaults,
    testing::Values(FaultCase{"TextBeforeHeading", "\ntext\n", "file:2: a text stands before"},
                    FaultCase{"LevelLeftOut", "# A\n\n### B\n", "file:3: the heading leaves out"},
                    FaultCase{"FirstLevelLeftOut", "## A\n", "file:1: the heading leaves out"},
                    FaultCase{"HeadingWithoutText", "# \n", "file:1: the heading has no text"},
                    FaultCase{"FieldWithoutKey", "# A\n\n# B\nx\n", "file:4: a field"},
                    FaultCase{"FieldWithEmptyKey", "# A\n: x\n", "file:2: a field"}),
    [](const auto& row) { return row.param.Name; });

struct ValueCase {
    const char* Name;
    const char* Attribute;
    const char* Text;
    std::optional<Backend::Value> Value; // empty: no value of the attribute
};

class SampleValues : public testing::TestWithParam<ValueCase> {};

TEST_P(SampleValues, AreOfTheAttributesKind) {
    const auto attribute = ReadAttribute(Entry(std::string("# A\n") + GetParam().Attribute),
                                         {{"ben", 11}, {"anna", 10}}, {{"Team", 20}});
    if (GetParam().Value)
        EXPECT_EQ(ParseValue(attribute, GetParam().Text), *GetParam().Value);
    else
        EXPECT_THROW(ParseValue(attribute, GetParam().Text), std::invalid_argument);
}

INSTANTIATE_TEST_SUITE_P(
    All, SampleValues,
    testing::Values(ValueCase{"Boolean", "kind: boolean", "yes", true},
                    ValueCase{"BooleanOfOtherWord", "kind: boolean", "true", {}},
                    ValueCase{"Date", "kind: date", "1899-12-31", Backend::Date{1}},
                    ValueCase{"DateAndTime", "kind: date", "1970-01-01 12:00", Backend::Date{25569.5}},
                    ValueCase{"DayThatIsNotThere", "kind: date", "2025-02-29", {}},
                    ValueCase{"Float", "kind: float", "2.5", 2.5F},
                    ValueCase{"FloatWithRest", "kind: float", "2.5 h", {}},
                    ValueCase{"Duration", "kind: duration", "-3", std::int32_t{-3}},
                    ValueCase{"IntegerTooLarge", "kind: integer", "5000000000", {}},
                    ValueCase{"ListInItsOrder", "kind: list\nentries: a; b; c", "c; a",
                              Backend::Selection{{0, 2}}},
                    ValueCase{"ListOfUsers", "kind: list\nof: user", "ben", Backend::Selection{{1}}},
                    ValueCase{"ListOfGroups", "kind: list\nof: group", "Team", Backend::Selection{{0}}},
                    ValueCase{"UnknownEntry", "kind: list\nentries: a", "b", {}},
                    ValueCase{"Text", "kind: text", "a; b", std::string("a; b")}),
    [](const auto& row) { return row.param.Name; });

TEST(Descriptions, TurnBlocksIntoMarkup) {
    const auto entry = Entry("# A\n\ntwo\nlines\n\n- a\n- b\nmore\n\n<table><tr><td>x</td></tr></table>\n\n"
                             "{{picture p.png | a & b}}\n");
    const auto html = DescriptionOf(entry, [](const std::string& file) { return "hash of " + file; });
    EXPECT_EQ(html,
              "<p>two\nlines</p>\n<ul><li>a</li><li>b more</li></ul>\n<table><tr><td>x</td></tr></table>\n"
              "<p><img src_original=\"hash of p.png\" src=\"hash of p.png\" alt=\"a &amp; b\" /></p>\n");
}

} // namespace
} // namespace Exchange
