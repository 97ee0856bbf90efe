#include "backend/exchange/CsvReader.h"

#include <gmock/gmock.h>

namespace Exchange {
namespace {

struct RecordCase {
    const char* Name;
    const char* Text;
    char Separator;
    std::vector<std::vector<std::string>> Cells;
    std::vector<std::pair<int, int>> Lines; // first and last of each record
};

class CsvRecords : public testing::TestWithParam<RecordCase> {};

TEST_P(CsvRecords, AreReadWithTheirCellsAndLines) {
    const auto records = ReadCsv(GetParam().Text, GetParam().Separator);
    std::vector<std::vector<std::string>> cells;
    std::vector<std::pair<int, int>> lines;
    for (const auto& record : records) {
        EXPECT_EQ(record.Fault, "");
        cells.push_back(record.Cells);
        lines.emplace_back(record.FirstLine, record.LastLine);
    }
    EXPECT_EQ(cells, GetParam().Cells);
    EXPECT_EQ(lines, GetParam().Lines);
}

INSTANTIATE_TEST_SUITE_P(
    All, CsvRecords,
    testing::Values(
        RecordCase{"LineFeeds", "a,b\nc,d\n", ',', {{"a", "b"}, {"c", "d"}}, {{1, 1}, {2, 2}}},
        RecordCase{"LineEndsInPairs", "a,b\r\nc,d\r\n", ',', {{"a", "b"}, {"c", "d"}}, {{1, 1}, {2, 2}}},
        RecordCase{"CarriageReturns", "a,b\rc,d", ',', {{"a", "b"}, {"c", "d"}}, {{1, 1}, {2, 2}}},
        RecordCase{"NoLastLineEnd", "a,b\nc,d", ',', {{"a", "b"}, {"c", "d"}}, {{1, 1}, {2, 2}}},
        RecordCase{
            "LoneLineEndAtTheEnd", "a,b\r\nc,d\r\n\n", ',', {{"a", "b"}, {"c", "d"}}, {{1, 1}, {2, 2}}},
        RecordCase{"EmptyLinesBetween", "a\n\n \nb\n", ',', {{"a"}, {"b"}}, {{1, 1}, {4, 4}}},
        RecordCase{"LineBreakInQuotes",
                   "a,\"b\r\n\r\nc\"\nd,e\n",
                   ',',
                   {{"a", "b\r\n\r\nc"}, {"d", "e"}},
                   {{1, 3}, {4, 4}}},
        RecordCase{"FirstCellBeginsWithEmptyLine",
                   "\"\n\na\",b\nc,d",
                   ',',
                   {{"\n\na", "b"}, {"c", "d"}},
                   {{1, 3}, {4, 4}}},
        RecordCase{"DoubledQuotes", "\"a \"\"b\"\"\",c\n", ',', {{"a \"b\"", "c"}}, {{1, 1}}},
        RecordCase{"OtherSeparator", "a;\"b;c\";d,e\n", ';', {{"a", "b;c", "d,e"}}, {{1, 1}}},
        RecordCase{"TabsWithEmptyCells", "a\tb\n\t\n", '\t', {{"a", "b"}, {"", ""}}, {{1, 1}, {2, 2}}},
        RecordCase{"BlanksOutsideQuotesOnly", " a , \" b \" \n", ',', {{"a", " b "}}, {{1, 1}}},
        RecordCase{"NothingAtAll", "", ',', {}, {}}),
    [](const auto& row) { return row.param.Name; });

struct FaultCase {
    const char* Name;
    const char* Text;
    int FirstLine, LastLine;
    const char* Fault;
    std::vector<std::string> CellsBehind; // of the record after the bad one
};

class CsvFaults : public testing::TestWithParam<FaultCase> {};

TEST_P(CsvFaults, AreToldWithTheirLinesAndReadingGoesOn) {
    const auto records = ReadCsv(GetParam().Text, ',');
    ASSERT_GE(records.size(), 2U);
    EXPECT_EQ(records[0].Fault, "");
    EXPECT_THAT(records[1].Fault, testing::HasSubstr(GetParam().Fault));
    EXPECT_EQ(records[1].FirstLine, GetParam().FirstLine);
    EXPECT_EQ(records[1].LastLine, GetParam().LastLine);
    const bool more = records.size() > 2;
    EXPECT_EQ(more ? records[2].Cells : std::vector<std::string>(), GetParam().CellsBehind);
}

INSTANTIATE_TEST_SUITE_P(
    All, CsvFaults,
    testing::Values(
        FaultCase{"QuoteInsideCell", "h\n5\" pipe,x\nb,c\n", 2, 2, "inside a cell", {"b", "c"}},
        FaultCase{"TextBehindClosingQuote", "h\n\"a\"b,c\nd,e\n", 2, 2, "closing one", {"d", "e"}},
        FaultCase{
            "TextBehindClosingQuoteLinesLater", "h\n\"a\nb\"c,d\ne,f\n", 2, 3, "closing one", {"e", "f"}},
        FaultCase{"ClosingQuoteMissing", "h\na,\"b\nc,d\n", 2, 3, "missing", {}}),
    [](const auto& row) { return row.param.Name; });

} // namespace
} // namespace Exchange
