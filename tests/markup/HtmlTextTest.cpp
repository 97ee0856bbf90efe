#include "markup/HtmlText.h"

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
    {"<div>a</div><div><br></div><div>b</div>", "a\r\n\r\nb"},
    {"<p>a</p><br>b", "a\r\n\r\nb"},
    {"a  <b>b</b>\n c", "a b c"},
    {"<ul><li>a</li><li>b</li></ul>", "a\r\nb"},
    {"<table><tr><td>a</td><td>b</td></tr><tr><td>c</td></tr></table>", "a b\r\nc"},
    {"<article>a</article>b<section>c</section><aside>d</aside><header>e</header><main>f</main><footer>g"
     "</footer><figure>h<figcaption>i</figcaption></figure>",
     "a\r\nb\r\nc\r\nd\r\ne\r\nf\r\ng\r\nh\r\ni"},
    {"<table><caption>a</caption><tr><td>b</table>c", "a\r\nb\r\nc"},
    {"a<pre>\n b\n\r\n  <b>c\n</b>d\n</pre> e\nf", "a\r\n b\r\n\r\n  c\r\nd\r\ne f"},
    {"<pre>\n\na</pre>", "\r\na"},
    {"<nav>a</nav><dialog>b</dialog>c", "a\r\nb\r\nc"},
    {"a&nbsp;&nbsp;b", "a  b"},
    {"3 &lt; 4 &amp;&amp; 5 > 4", "3 < 4 && 5 > 4"},
    {"&#228;&#xE4;&auml;&euro;", "äää€"},
    {"&unknown; & &; &notareference &#; &#x; &#y", "&unknown; & &; &notareference &#; &#x; &#y"},
    {"a&#0;b&#xD800;c&#99999999999d", "a\uFFFDb\uFFFDc\uFFFDd"},
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
    {"a\t b", "a&nbsp;&nbsp;&nbsp; &nbsp;b"},
};

const TRow NumericReferences[] = {
    {"&#228;&#xE4;&#XE4;&#8364;&#x1F600;", "äää€😀"},
    {"&lt;b&gt; &auml; &amp;#228;", "&lt;b&gt; &auml; &amp;#228;"},
    {"&#60;b&#x3E; &#38; &#34; &#39;", "&#60;b&#x3E; &#38; &#34; &#39;"},
    {"&#0; &#9; &#xD800; &#x110000; &#99999999999; &#; &#x; &#12a; &#228",
     "&#0; &#9; &#xD800; &#x110000; &#99999999999; &#; &#x; &#12a; &#228"},
};

class TNumericReferences : public ::testing::TestWithParam<TRow> {};

class TPlainTextToHtml : public ::testing::TestWithParam<TRow> {};

} // namespace

TEST_P(THtmlToPlainText, ShowsWhatAReaderSees) {
    EXPECT_EQ(Markup::HtmlToPlainText(GetParam().From), GetParam().To);
}

INSTANTIATE_TEST_SUITE_P(Rows, THtmlToPlainText, ::testing::ValuesIn(PlainTexts));

TEST_P(TPlainTextToHtml, ShowsTheTextAsItStands) {
    EXPECT_EQ(Markup::PlainTextToHtml(GetParam().From), GetParam().To);
}

INSTANTIATE_TEST_SUITE_P(Rows, TPlainTextToHtml, ::testing::ValuesIn(HtmlTexts));

TEST_P(TNumericReferences, BecomeCharactersUnlessTheseAreMarkUp) {
    EXPECT_EQ(Markup::DecodeNumericReferences(GetParam().From), GetParam().To);
}

INSTANTIATE_TEST_SUITE_P(Rows, TNumericReferences, ::testing::ValuesIn(NumericReferences));

TEST(TMarkupDepth, DoesNotMatterToPlainText) {
    std::string html;
    for (int level = 0; level < 100'000; ++level)
        html += "<b>";
    EXPECT_EQ(Markup::HtmlToPlainText(html + "deep"), "deep");
}
