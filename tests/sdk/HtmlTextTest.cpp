#include "platform/sdk/HtmlText.h"
#include "platform/sdk/HtmlTags.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

struct TRow {
    const char* From;
    const char* To;
};

const TRow PlainTexts[] = {
    {"", ""},
    {"plain", "plain"},
    {"<p>one</p><p>two</p>", "one\r\ntwo"},
    {"<P>one</P>\r\n<P>two</P>\r\n", "one\r\ntwo"},
    {"one<br>two<br/>three", "one\r\ntwo\r\nthree"},
    {"<p>one<br></p><p></p>", "one"},
    {"a  <b>b</b>\n c", "a b c"},
    {"<ul><li>a</li><li>b</li></ul>", "a\r\nb"},
    {"<table><tr><td>a</td><td>b</td></tr><tr><td>c</td></tr></table>", "a b\r\nc"},
    {"a&nbsp;&nbsp;b", "a  b"},
    {"3 &lt; 4 &amp;&amp; 5 > 4", "3 < 4 && 5 > 4"},
    {"&#228;&#xE4;&auml;&euro;", "äää€"},
    {"&unknown; &#0; &#xD800; & &;", "&unknown; &#0; &#xD800; & &;"},
    {"<head><title>no</title></head><body>yes<script>no()</script><style>p{}</style></body>", "yes"},
    {"a<!-- <p>hidden</p> -->b", "ab"},
    {"<img alt=\"a > b\" src='x'>after", "after"},
    {"1 < 2", "1 < 2"},
    {"open <b", "open"},
    {"<", "<"},
    {"Gr&ouml;&szlig;e", "Größe"},
};

class THtmlToPlainText : public ::testing::TestWithParam<TRow> {};

const TRow HtmlTexts[] = {
    {"", ""},
    {"a < b & \"c\"", "a &lt; b &amp; &quot;c&quot;"},
    {"one\r\ntwo\nthree\rfour", "one<br/>two<br/>three<br/>four"},
    {"a  b", "a &nbsp;b"},
    {" a", "&nbsp;a"},
};

class TPlainTextToHtml : public ::testing::TestWithParam<TRow> {};

} // namespace

TEST_P(THtmlToPlainText, ShowsWhatAReaderSees) {
    EXPECT_EQ(Sdk::HtmlToPlainText(GetParam().From), GetParam().To);
}

INSTANTIATE_TEST_SUITE_P(Rows, THtmlToPlainText, ::testing::ValuesIn(PlainTexts));

TEST_P(TPlainTextToHtml, ShowsTheTextAsItStands) {
    EXPECT_EQ(Sdk::PlainTextToHtml(GetParam().From), GetParam().To);
}

INSTANTIATE_TEST_SUITE_P(Rows, TPlainTextToHtml, ::testing::ValuesIn(HtmlTexts));

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
