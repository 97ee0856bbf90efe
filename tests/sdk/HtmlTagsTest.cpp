#include "platform/sdk/HtmlTags.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

TEST(TAttributesOf, FindsQuotedAndBareValuesOfThatElementAlone) {
    const char* html =
        "<p src='no'><IMG alt=x SRC=\"a&amp;b\"><img src=bare><img alt='src'><img  src = 'c' />";
    EXPECT_THAT(Sdk::AttributesOf(html, "img", "src"), ::testing::ElementsAre("a&b", "bare", "c"));
}

TEST(TChangeTags, WritesAnewWhatWasChangedAndLeavesTheRestByteForByte) {
    const char* html = "<P  Class=x>a<IMG src='1'  alt=\"q\"/><img src=2>&unknown;<!-- <img src=3> --></P";
    const std::string changed = Sdk::ChangeTags(html, "img", [](Sdk::THtmlAttributes& attributes) {
        std::string& source = *Sdk::FindAttribute(attributes, "src");
        const bool isFirst = source == "1";
        source = "a\"&b";
        return isFirst;
    });
    EXPECT_EQ(changed, "<P  Class=x>a<img src=\"a&quot;&amp;b\" alt=\"q\" /><img src=2>&unknown;"
                       "<!-- <img src=3> --></P");
}
