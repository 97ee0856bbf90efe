#include "backend/exchange/TextEncoding.h"

#include <gmock/gmock.h>

namespace Exchange {
namespace {

using namespace std::string_literals;

struct DecodingCase {
    const char* Name;
    std::string Bytes;
    const char* Encoding;
    const char* Utf8;
    std::vector<int> BadLines;
};

class Decoding : public testing::TestWithParam<DecodingCase> {};

TEST_P(Decoding, GivesUtf8AndTheLinesWithWrongBytes) {
    const auto decoded = DecodeText(GetParam().Bytes, GetParam().Encoding);
    EXPECT_EQ(decoded.Utf8, GetParam().Utf8);
    EXPECT_EQ(decoded.BadLines, GetParam().BadLines);
}

INSTANTIATE_TEST_SUITE_P(
    All, Decoding,
    testing::Values(DecodingCase{"Utf8WithoutMark", "für", "", "für", {}},
                    DecodingCase{"Utf8WithMark", "\xEF\xBB\xBFid", "", "id", {}},
                    DecodingCase{"Utf8ByNameWithMark", "\xEF\xBB\xBFid", "utf-8", "id", {}},
                    DecodingCase{"Utf16ByItsMark", "\xFF\xFE"s + "a\0\xE4\0"s, "", "aä", {}},
                    DecodingCase{"Utf16BigEndianByItsMark", "\xFE\xFF"s + "\0a\x04\x16"s, "", "aЖ", {}},
                    DecodingCase{"Utf16BigEndianByName", "\0a\0b"s, "UTF-16BE", "ab", {}},
                    DecodingCase{"Latin1ByName", "f\xFCr", "ISO-8859-1", "für", {}},
                    DecodingCase{"WindowsQuotes", "\x93ok\x94", "WINDOWS-1252", "“ok”", {}},
                    DecodingCase{
                        "Latin1TakenForUtf8", "a\nf\xFCr\nb\n\xFC", "", "a\nf\uFFFDr\nb\n\uFFFD", {2, 4}},
                    DecodingCase{"TwoFaultsInALine", "\xFF\xFF\r\nb\r\n", "", "\uFFFD\uFFFD\r\nb\r\n", {1}},
                    DecodingCase{"LinesByCarriageReturns", "a\rb\r\xFF", "", "a\rb\r\uFFFD", {3}},
                    DecodingCase{"CutOffCharacter", "a\n\xC3", "", "a\n\uFFFD", {2}},
                    DecodingCase{"CutOffUnit", "a\0b"s, "UTF-16LE", "a\uFFFD", {1}},
                    DecodingCase{"Empty", "", "", "", {}}),
    [](const auto& row) { return row.param.Name; });

TEST(DecodingUnknown, EncodingIsRefusedByName) {
    try {
        DecodeText("a", "UTF-9");
        FAIL();
    } catch (const EncodingError& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr("\"UTF-9\" is not known"));
    }
}

TEST(DecodingLong, TextKeepsEveryCharacterOverBufferBounds) {
    std::string bytes, expected;
    for (int i = 0; i < 20000; ++i) {
        bytes += "x\xFC";
        expected += "xü";
    }
    EXPECT_EQ(DecodeText(bytes, "ISO-8859-1").Utf8, expected);
}

} // namespace
} // namespace Exchange
