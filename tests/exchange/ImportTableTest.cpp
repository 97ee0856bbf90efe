#include "backend/exchange/ImportTable.h"

#include <gmock/gmock.h>

namespace Exchange {
namespace {

TableOptions Options(Nesting nesting = Nesting::None) {
    TableOptions options;
    options.Columns = {"id", "name", "text", "", {"part", "chapter"}, "parent"};
    options.Nesting = nesting;
    return options;
}

// "parent's name > name" of each item, in order.
std::vector<std::string> Tree(const ImportTable& table) {
    std::vector<std::string> lines;
    for (const auto& item : table.Items) {
        const auto* parent = item.Parent < 0 ? nullptr : &table.Items[static_cast<std::size_t>(item.Parent)];
        lines.push_back((parent ? parent->Name : std::string()) + " > " + item.Name);
    }
    return lines;
}

std::vector<std::string> Refusals(const ImportTable& table) {
    std::vector<std::string> lines;
    for (const auto& refusal : table.Refusals)
        lines.push_back(std::to_string(refusal.Line) + ": " + refusal.Reason);
    return lines;
}

struct RefusalCase {
    const char* Name;
    const char* Records; // behind a good one in line 2
    std::vector<std::string> Refusals;
};

class BadRecords : public testing::TestWithParam<RefusalCase> {};

TEST_P(BadRecords, AreToldByLineAndTheOthersAreTaken) {
    const std::string good = "id,name,text\n1,good,x\n";
    const auto table = ReadImportTable(good + GetParam().Records + "\nlast,good,x\n", Options());
    EXPECT_EQ(Refusals(table), GetParam().Refusals);
    EXPECT_EQ(table.Items.size() + table.Refusals.size(), static_cast<std::size_t>(table.Records));
    EXPECT_EQ(table.Items.back().Id, "last");
}

INSTANTIATE_TEST_SUITE_P(
    All, BadRecords,
    testing::Values(RefusalCase{"TooFewCells", "2,b", {"3: it has 2 cells, the header has 3"}},
                    RefusalCase{"TooManyCells", "2,b,c,d", {"3: it has 4 cells, the header has 3"}},
                    RefusalCase{"NoId", " ,b,c", {"3: it has no id"}},
                    RefusalCase{"NoName", "2,\" \n\",c", {"3: it has no name"}},
                    RefusalCase{"RepeatedId", "2,b,c\n1,b,c", {"4: its id \"1\" stands in line 2 already"}},
                    RefusalCase{"ControlCharacter", "2,b,\"c\x01\"", {"3: it holds a control character"}},
                    RefusalCase{"BytesThatAreNotUtf8",
                                "2,b,\"c\n\xFF\"\n3,c,d",
                                {"3: line 4 holds bytes that are not UTF-8"}},
                    RefusalCase{"SeveralInOrder",
                                "2,b\n1,b,c\n3,\"c\nd\",e\n,x,y",
                                {"3: it has 2 cells, the header has 3",
                                 "4: its id \"1\" stands in line 2 already", "7: it has no id"}}),
    [](const auto& row) { return row.param.Name; });

struct NestingCase {
    const char* Name;
    Exchange::Nesting How;
    const char* Text;
    std::vector<std::string> Tree, Refusals;
};

class Nested : public testing::TestWithParam<NestingCase> {};

TEST_P(Nested, RecordsStandBehindWhatTheyGoUnder) {
    const auto table = ReadImportTable(GetParam().Text, Options(GetParam().How));
    EXPECT_EQ(Tree(table), GetParam().Tree);
    EXPECT_EQ(Refusals(table), GetParam().Refusals);
}

INSTANTIATE_TEST_SUITE_P(
    All, Nested,
    testing::Values(NestingCase{"IdsWithPoints",
                                Nesting::ById,
                                "id,name,text\nA1,a,\nA1.2,b,\nA1.2.1,c,\nA2,d,\nA1.3,e,\n",
                                {" > a", "a > b", "b > c", " > d", "a > e"},
                                {}},
                    NestingCase{"IdWithoutItsParent",
                                Nesting::ById,
                                "id,name,text\nA1,a,\nA1.2.1,c,\nB1.1,d,\n",
                                {" > a", "a > c", " > d"},
                                {}},
                    NestingCase{"ParentBehindItsChild",
                                Nesting::ById,
                                "id,name,text\nA.1,b,\nB,c,\nA,a,\n",
                                {" > a", "a > b", " > c"},
                                {}},
                    NestingCase{"AlikeBeginningWithoutPoint",
                                Nesting::ById,
                                "id,name,text\nA1,a,\nA12,b,\n",
                                {" > a", " > b"},
                                {}},
                    NestingCase{"ParentColumn",
                                Nesting::ByParent,
                                "id,name,text,parent\n1,a,,3\n2,b,,\n3,c,,2\n",
                                {" > b", "b > c", "c > a"},
                                {}},
                    NestingCase{"ParentThatIsNotThere",
                                Nesting::ByParent,
                                "id,name,text,parent\n1,a,,2\n2,b,,9\n3,c,,\n",
                                {" > c"},
                                {"2: the record that it goes under was not taken",
                                 "3: there is no record \"9\" for it to go under"}},
                    NestingCase{"Circle",
                                Nesting::ByParent,
                                "id,name,text,parent\n1,a,,2\n2,b,,1\n3,c,,\n",
                                {" > c"},
                                {"2: the records that it goes under run in a circle",
                                 "3: the records that it goes under run in a circle"}},
                    NestingCase{
                        "HeadingColumns",
                        Nesting::ByColumns,
                        "id,name,text,part,chapter\n1,a,,P,C\n2,b,,P,D\n3,c,,Q,C\n4,d,,P,C\n",
                        {" > P", "P > C", "C > a", "P > D", "D > b", " > Q", "Q > C", "C > c", "C > d"},
                        {}},
                    NestingCase{"EmptyHeading",
                                Nesting::ByColumns,
                                "id,name,text,part,chapter\n1,a,,P,\n2,b,,,C\n3,c,,,\n",
                                {" > P", "P > a", " > C", "C > b", " > c"},
                                {}}),
    [](const auto& row) { return row.param.Name; });

struct TableErrorCase {
    const char* Name;
    const char* Text;
    const char* Sentence;
};

class UnusableTables : public testing::TestWithParam<TableErrorCase> {};

TEST_P(UnusableTables, AreRefusedWithAHint) {
    try {
        ReadImportTable(GetParam().Text, Options());
        FAIL();
    } catch (const TableError& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr(GetParam().Sentence));
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, UnusableTables,
    testing::Values(TableErrorCase{"Empty", "\n\n", "it has no header"},
                    TableErrorCase{"ColumnMissing", "id,title,text\n",
                                   "The columns are \"id\", \"title\", \"text\"."},
                    TableErrorCase{"OtherSeparator", "id;name;text\n", "perhaps the separator is not ','"},
                    TableErrorCase{"HeaderWithStrayQuote", "id,na\"me,text\n", "The header cannot be read"}),
    [](const auto& row) { return row.param.Name; });

TEST(ExtraColumns, KeepTheirOrderAndGetNamesThatDiffer) {
    const auto table = ReadImportTable("a,id,,name,a,text,id\n1, 2 ,3,n,4,t,5\n", Options());
    EXPECT_THAT(table.ExtraColumns, testing::ElementsAre("a", "Column 3", "a (2)", "id (2)"));
    EXPECT_THAT(table.Items.at(0).Extras, testing::ElementsAre("1", "3", "4", "5"));
    EXPECT_EQ(table.Items.at(0).Id, "2");
}

TEST(Names, BecomeOneLineWhileTextsKeepTheirs) {
    const auto table = ReadImportTable("id,name,text\n1,\" two \r\n lines\",\"two\r\nlines \"\n", Options());
    EXPECT_EQ(table.Items.at(0).Name, "two lines");
    EXPECT_EQ(table.Items.at(0).Text, "two\r\nlines ");
}

struct TitleCase {
    const char* Name;
    std::string Text, Title;
};

class TitlesFromTexts : public testing::TestWithParam<TitleCase> {};

TEST_P(TitlesFromTexts, EndWithAWordAndNeverInsideACharacter) {
    auto options = Options();
    options.Columns.Name = "text";
    const auto table = ReadImportTable("id,text\n1,\"" + GetParam().Text + "\"\n", options);
    EXPECT_EQ(table.Items.at(0).Name, GetParam().Title);
    EXPECT_EQ(table.Items.at(0).Text, GetParam().Text);
}

std::string Times(int count, const std::string& text) {
    std::string all;
    while (count-- > 0)
        all += text;
    return all;
}

INSTANTIATE_TEST_SUITE_P(All, TitlesFromTexts,
                         testing::Values(TitleCase{"Short", "a b\nc", "a b c"},
                                         TitleCase{"Long", Times(40, "abc "), Times(24, "abc ") + "abc…"},
                                         TitleCase{"OneLongWord", Times(99, "a") + Times(9, "ü"),
                                                   Times(99, "a") + "…"}),
                         [](const auto& row) { return row.param.Name; });

} // namespace
} // namespace Exchange
