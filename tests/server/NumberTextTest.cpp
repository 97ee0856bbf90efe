// Numbers as the user writes them.
#include <string>

#include <gtest/gtest.h>

#include "contracts/Exceptions.h"
#include "server/UNumberText.h"

namespace {

TEST(NumberText, AnIntegerIsTakenWithSignAndBlanksAround) {
    EXPECT_EQ(UserTextToInteger("42"), 42);
    EXPECT_EQ(UserTextToInteger(" +7 "), 7);
    EXPECT_EQ(UserTextToInteger("-2147483648"), -2147483647 - 1);
}

TEST(NumberText, AFloatIsTakenInBothFormsOfWriting) {
    EXPECT_EQ(UserTextToFloat("1.5"), 1.5F);
    EXPECT_EQ(UserTextToFloat("-2e3"), -2000.0F);
    EXPECT_EQ(UserTextToFloat(" +0.25"), 0.25F);
}

TEST(NumberText, ASeparatorMayHaveSeveralBytes) {
    for (const char* separator : {".", ",", "\u066B"}) {
        const std::string text = std::string("-1") + separator + "5";
        EXPECT_EQ(FloatToUserText(-1.5, separator), text);
        EXPECT_EQ(UserTextToFloat(text, separator), -1.5F) << separator;
    }
    EXPECT_THROW(UserTextToFloat("1.5", ","), EConvertError);
    EXPECT_THROW(UserTextToFloat("1,5,", ","), EConvertError);
}

class NoNumber : public testing::TestWithParam<const char*> {};

TEST_P(NoNumber, IsRefusedAsAnInteger) {
    EXPECT_THROW(UserTextToInteger(GetParam()), EConvertError);
}

TEST_P(NoNumber, IsRefusedAsAFloat) {
    EXPECT_THROW(UserTextToFloat(GetParam()), EConvertError);
}

INSTANTIATE_TEST_SUITE_P(Texts, NoNumber,
                         testing::Values("", " ", "12 monkeys", "1,5,0", "+-1", "1 2", "--3", "1e99999"));

TEST(NumberText, AnIntegerOutOfRangeAndAFractionAreRefused) {
    EXPECT_THROW(UserTextToInteger("2147483648"), EConvertError);
    EXPECT_THROW(UserTextToInteger("1.5"), EConvertError);
}

TEST(NumberText, TheRefusalQuotesTheText) {
    try {
        UserTextToInteger("abc");
        FAIL() << "abc was taken";
    } catch (const EConvertError& failure) {
        EXPECT_STREQ(failure.what(), "'abc' is not a valid integer value");
    }
}

TEST(NumberText, TheWideningOfA32BitFloatShows) {
    EXPECT_EQ(FloatToUserText(static_cast<double>(0.1F)), "0.100000001490116");
}

} // namespace
