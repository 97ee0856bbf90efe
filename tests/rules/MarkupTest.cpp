#include "backend/rules/Markup.h"
#include "backend/rules/Refusal.h"

#include <gmock/gmock.h>

using namespace Backend;
using namespace testing;

namespace {

struct MarkupCase {
    const char* Name;
    const char* Html;
    // What is kept; null when it is what was given.
    const char* Kept = nullptr;
};

void PrintTo(const MarkupCase& row, std::ostream* out) {
    *out << row.Name;
}

std::string NameOf(const TestParamInfo<MarkupCase>& info) {
    return info.param.Name;
}

class GoodMarkup : public TestWithParam<MarkupCase> {};

TEST_P(GoodMarkup, IsKeptAsWellFormedMarkup) {
    const MarkupCase& row = GetParam();
    const std::string kept = CleanMarkup(row.Html);
    EXPECT_EQ(kept, row.Kept ? row.Kept : row.Html);
    EXPECT_EQ(CleanMarkup(kept), kept);
}

INSTANTIATE_TEST_SUITE_P(
    Markup, GoodMarkup,
    Values(MarkupCase{"Nothing", ""}, MarkupCase{"NestedElements", "<p>a <b>bold</b> word</p>\n"},
           MarkupCase{"PlainText", "just text > with an arrow", "just text &gt; with an arrow"},
           MarkupCase{"WholeDocument", "<html><head></head><body bgcolor=\"white\"><p>x</p></body></html>"},
           MarkupCase{"HeadOfADocument",
                      "<!DOCTYPE html><HTML><head><meta charset=\"utf-8\"><title>t</title></head>"
                      "<body><p>x</p></body></HTML>\n",
                      "<html><head></head><body><p>x</p></body></html>"},
           MarkupCase{"ElementsWithoutEnd", "a<br>b<hr>", "a<br />b<hr />"},
           MarkupCase{"UpperCaseBesideLowerCase", "<P>x</p>", "<p>x</p>"},
           MarkupCase{"RowsWithoutABody", "<table border=0 width=100%><tr><td nowrap>x</table>",
                      "<table border=\"0\" width=\"100%\"><tbody><tr><td "
                      "nowrap=\"nowrap\">x</td></tr></tbody></table>"},
           MarkupCase{"StraysInATable",
                      "<table>a<tr>b<td>c</td><i>d</i></tr> <p>e</p><tr><td>f</td></tr></table>",
                      "ab<i>d</i><p>e</p><table><tbody><tr><td>c</td></tr> "
                      "<tr><td>f</td></tr></tbody></table>"},
           MarkupCase{"OpenElementsInATable",
                      "<table><caption><i>a<tr><td><font size=2>b<td><ul><li>c<tr><td><div><table><tr><td>d"
                      "</table><tr><td>e</table>",
                      "<table><caption><i>a</i></caption><tbody><tr><td><font size=\"2\">b</font></td><td>"
                      "<ul><li>c</li></ul></td></tr><tr><td><div><table><tbody><tr><td>d</td></tr></tbody>"
                      "</table></div></td></tr><tr><td>e</td></tr></tbody></table>"},
           MarkupCase{"FormInATable", "<table><form>\n<tr><td>a</td></tr></form></table>",
                      "<table>\n<tbody><tr><td>a</td></tr></tbody></table>"},
           MarkupCase{"CellsWithoutATable", "<p>a</p><td>b</td><td>c</td>",
                      "<p>a</p><div>b</div><div>c</div>"},
           MarkupCase{"BareAddress", "<a href=http://example.org/a/b?c=1&amp;d=2>x</a>",
                      "<a href=\"http://example.org/a/b?c=1&amp;d=2\">x</a>"},
           MarkupCase{"BracketInAttribute", "<p title=\"a > b\">x</p>", "<p title=\"a &gt; b\">x</p>"},
           MarkupCase{"Entities", "&amp; &lt; &nbsp; &#233; &apos;", "&amp; &lt; \u00A0 é '"},
           MarkupCase{"Comment", "<!-- <p> -->x", "x"}, MarkupCase{"OpenElement", "<p>x", "<p>x</p>"},
           MarkupCase{"EndWithoutStart", "x</p>", "x"},
           MarkupCase{"CrossedElements", "<b><i>x</b></i>", "<b><i>x</i></b>"},
           MarkupCase{"OpenItems", "<ul><li>a<li>b</ul>", "<ul><li>a</li><li>b</li></ul>"},
           MarkupCase{"StrayBracket", "a < b", "a &lt; b"},
           MarkupCase{"StrayAmpersand", "salt & pepper &unknown;", "salt &amp; pepper &amp;unknown;"},
           MarkupCase{"UnknownElement", "x <blink>y</blink>", "x y"},
           MarkupCase{"ElementsOfAnotherNamespace",
                      "<p>x<o:p></o:p></p><p><o:p>y</o:p></p><u1:script>z</u1:script>", "<p>x</p><p>y</p>z"},
           MarkupCase{"TextOfWhatIsNotKept",
                      "<object data=o><param name=a>a<div>b</div></object><noscript>c</noscript><map name=m>"
                      "<area href=x>d</map><math><mi>e</mi><annotation>no</annotation></math><svg><title>no"
                      "</title><desc>no</desc><text>f</text></svg><applet>g</applet><plaintext>h",
                      "a<div>b</div>cdefg<div>h</div>"},
           MarkupCase{"BlockInWhatIsNotKept", "<p>a<object><div>b</div></object>c</p>",
                      "<div>a<div>b</div>c</div>"},
           MarkupCase{"BlocksThatAreNotKept",
                      "<form>a</form><nav>b</nav><dialog title=t>c</dialog><form></form><select><option>d"
                      "<option>e</select><label>f</label>",
                      "<div>a</div><div>b</div><div title=\"t\">c</div><div>d</div><div>e</div>f"},
           MarkupCase{"EmptyBlocksThatAreNotKept",
                      "a<nav></nav><form></form>b<label><fieldset><input></fieldset>c</label> <nav></nav>d"
                      "<p>e</p><nav></nav>f",
                      "a<div></div>b<div></div>c d<p>e</p>f"},
           MarkupCase{"NothingButBlanksLeft", "<label>\n</label>", ""},
           MarkupCase{"BlockDeepInAParagraph", "<p align=left>a<b>b<div>c</div></b></p>",
                      "<div align=\"left\">a<b>b<div>c</div></b></div>"},
           MarkupCase{"LinkInALink", "<a href=x>a<i>b<a href=y>c</a></i>d</a>e",
                      "<a href=\"x\">a</a><i>b<a href=\"y\">c</a></i>de"},
           MarkupCase{"ItemInAnItem", "<ul><li>a<div><li>b</div><ul><li>c</ul></ul>",
                      "<ul><li>a<div><div>b</div></div><ul><li>c</li></ul></li></ul>"},
           MarkupCase{"HeadingInAHeading", "<h1>a<svg><h2>b</h2></svg>c</h1>", "<h1>a</h1><h2>b</h2>c"},
           MarkupCase{"TextBehindTheDocument", "<html><body><p>x</p></body></html>tail",
                      "<html><head></head><body><p>x</p><p>tail</p></body></html>"},
           MarkupCase{"Style", "<p style=\"COLOR:Red;text-align: center; position:fixed\">x</p>",
                      "<p style=\"color: Red; text-align: center;\">x</p>"},
           MarkupCase{"StyleOfAnEditor",
                      "<span style=\"background-color: rgb(255, 255, 0); font-size: 12pt;\">x</span>"},
           MarkupCase{"StoredImage",
                      "<img alt=\"A\" src=\"file:///a/b\" "
                      "src_original=\"0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef\">",
                      "<img src=\"0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef\" "
                      "src_original=\"0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef\" "
                      "alt=\"A\" />"},
           MarkupCase{"ImageWithoutSource", "<p>a <img alt=\"x &lt; y\"><img></p>", "<p>a x &lt; y</p>"},
           MarkupCase{"OfficeClasses", "<p class=\"MsoNormal\"><i class=\"a SpellE b\">x</i></p>",
                      "<p><i class=\"a b\">x</i></p>"},
           MarkupCase{"OfficeStyle", "<p style=\"text-autospace:none;mso-x:1;text-align:left\">x</p>",
                      "<p style=\"text-align: left;\">x</p>"},
           MarkupCase{"LineBreakThatIsNone", "<pre>\nx</pre>", "<pre>x</pre>"},
           MarkupCase{"LineBreaksOfWhatIsNotKept",
                      "<xmp>a\nb</xmp><textarea>\nc\nd</textarea><textarea></textarea><listing>e\n</listing>",
                      "<pre>a\nb</pre><pre>c\nd</pre><pre>e\n</pre>"},
           MarkupCase{"LineBreakAtTheStart", "<pre>\n\nx\n</pre><pre><b>\ny</b></pre>"},
           MarkupCase{"LineBreaksOfAnotherSystem", "<pre>a\r\nb\rc</pre>", "<pre>a\nb\nc</pre>"}),
    NameOf);

class BadMarkup : public TestWithParam<MarkupCase> {};

TEST_P(BadMarkup, IsRefusedWithTheSentenceThatClientsKnow) {
    try {
        CleanMarkup(GetParam().Html);
        FAIL() << "taken";
    } catch (const MarkupViolation& refusal) {
        EXPECT_STREQ(refusal.what(), "RemoteServerException: The content of elements must consist of "
                                     "well-formed character data or markup.");
    }
}

INSTANTIATE_TEST_SUITE_P(Markup, BadMarkup,
                         Values(MarkupCase{"UnendedTag", "<p class=\"x\""},
                                MarkupCase{"UnendedAttribute", "<p class=\"x>y</p>"},
                                MarkupCase{"UnendedComment", "a<!-- x"},
                                MarkupCase{"TagOfABracket", "if a<b"}),
                         NameOf);

TEST(Markup, RefusesWhatNestsTooDeep) {
    std::string html = "deep";
    for (int level = 0; level < 300; ++level)
        html = "<b>" + html + "</b>";
    EXPECT_THROW(CleanMarkup(html), MarkupViolation);
}

TEST(Markup, RefusesAnImageThatIsNeitherStoredNorNew) {
    const auto unknown = ThrowsMessage<MarkupViolation>(
        HasSubstr("contains an image that has a 'src' attribute but does not have a 'src_original' "));
    EXPECT_THAT([] { CleanMarkup("<p><img src=\"file:///tmp/a.png\"/></p>"); }, unknown);
    EXPECT_THAT([] { CleanMarkup("<img src=\"a\" src_original=\"file:///tmp/a.png\"/>"); }, unknown);
    EXPECT_THAT([] { CleanMarkup("<img src_original=\"abc\"/>"); }, unknown);
    EXPECT_THAT([] { CleanMarkup("<IMG src=\"c:\\a.png\" border=0 new=\"true\">"); },
                ThrowsMessage<RuleViolation>(HasSubstr("was not sent")));
}

TEST(Markup, SeesTheSameDescriptionWithAndWithoutTheDocumentAroundIt) {
    const std::string piece = "<p>a</p><p>b</p>";
    for (const std::string& whole :
         {"<html><head></head><body>" + piece + "</body></html>",
          "<HTML><BODY bgcolor=\"white\">\n" + piece + "\n</BODY></HTML>", " " + piece + "\n", piece})
        EXPECT_EQ(BodyOf(whole), piece) << whole;
    EXPECT_EQ(BodyOf("<body></body>"), "");
    EXPECT_EQ(BodyOf("<body"), "<body");
}

TEST(Markup, SeesTheSameDescriptionInWhatAnEditorMakesOfIt) {
    const char* kept = "<p>a&nbsp;b<br/><table><tr><td>x</td></tr></table>";
    const char* edited = "<html><head></head><body><p>a&nbsp;b<br></p><table><tbody><tr><td>x</td></tr>"
                         "</tbody></table></body></html>";
    EXPECT_TRUE(SameMarkup(CleanMarkup(edited), kept));
    EXPECT_FALSE(SameMarkup(CleanMarkup("<p>a b</p>"), "<p>a b c</p>"));
    EXPECT_FALSE(SameMarkup("a", "<p class=\"x\""));
    EXPECT_TRUE(SameMarkup("<body bgcolor=\"red\">a</body>", "<BODY onload=x BGCOLOR=red> a</BODY>"));
    EXPECT_TRUE(SameMarkup("<body bgcolor=\"red\">a</body>", "a"));
    EXPECT_FALSE(SameMarkup("<body bgcolor=\"red\">a</body>", "<body bgcolor=\"blue\">a</body>"));
    EXPECT_FALSE(SameMarkup("<body>a</body>", "<body bgcolor=\"blue\">a</body>"));
}

} // namespace
