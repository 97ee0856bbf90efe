#include "backend/rules/Markup.h"
#include "backend/rules/Refusal.h"

#include <gmock/gmock.h>

using namespace Backend;
using namespace testing;

namespace {

struct MarkupCase {
    const char* Name;
    const char* Html;
};

void PrintTo(const MarkupCase& row, std::ostream* out) {
    *out << row.Name;
}

std::string NameOf(const TestParamInfo<MarkupCase>& info) {
    return info.param.Name;
}

class GoodMarkup : public TestWithParam<MarkupCase> {};

TEST_P(GoodMarkup, IsTaken) {
    EXPECT_NO_THROW(CheckMarkup(GetParam().Html));
}

INSTANTIATE_TEST_SUITE_P(
    Markup, GoodMarkup,
    Values(MarkupCase{"Nothing", ""}, MarkupCase{"PlainText", "just text > with an arrow"},
           MarkupCase{"NestedElements", "<p>a <b>bold</b> word</p>"},
           MarkupCase{"WholeDocument",
                      "<html><head><meta charset=\"utf-8\"></head><body><p>x</p></body></html>"},
           MarkupCase{"ElementsWithoutEnd", "a<br>b<hr><input type=checkbox>"},
           MarkupCase{"ElementsThatCloseThemselves", "a<br/>b<hr />"},
           MarkupCase{"UpperCaseBesideLowerCase", "<P>x</p>"},
           MarkupCase{"BareAttributes", "<table border=0 width=100%><tr><td nowrap>x</td></tr></table>"},
           MarkupCase{"BareAddress", "<a href=http://example.org/a/b>x</a>"},
           MarkupCase{"BracketInAttribute", "<p title=\"a > b\">x</p>"},
           MarkupCase{"Entities", "&amp; &lt; &nbsp; &#233; &#xe9;"}, MarkupCase{"Comment", "<!-- <p> -->x"},
           MarkupCase{"DocumentType", "<!DOCTYPE html><p>x</p>"},
           MarkupCase{"StyleSheetWithBrackets", "<style>p > b { color: red }</style>"},
           MarkupCase{"StoredImage", "<img src=\"a.png\" src_original=\"abc\">"},
           MarkupCase{"NewImage", "<IMG src=\"c:\\a.png\" border=0 new=\"true\">"},
           MarkupCase{"ImageWithoutSource", "<img alt=\"x\">"}),
    NameOf);

class BadMarkup : public TestWithParam<MarkupCase> {};

TEST_P(BadMarkup, IsRefusedWithTheSentenceThatClientsKnow) {
    try {
        CheckMarkup(GetParam().Html);
        FAIL() << "taken";
    } catch (const MarkupViolation& refusal) {
        EXPECT_STREQ(refusal.what(), "RemoteServerException: The content of elements must consist of "
                                     "well-formed character data or markup.");
    }
}

INSTANTIATE_TEST_SUITE_P(
    Markup, BadMarkup,
    Values(MarkupCase{"OpenElement", "<p>x"}, MarkupCase{"EndWithoutStart", "x</p>"},
           MarkupCase{"CrossedElements", "<b><i>x</b></i>"}, MarkupCase{"StrayBracket", "a < b"},
           MarkupCase{"BracketAtTheEnd", "a <"}, MarkupCase{"UnendedTag", "<p class=\"x\""},
           MarkupCase{"UnendedAttribute", "<p class=\"x>y</p>"}, MarkupCase{"UnendedComment", "<!-- x"},
           MarkupCase{"StrayAmpersand", "salt & pepper"}, MarkupCase{"EmptyEntity", "&;"},
           MarkupCase{"UnendedEntity", "&amp"}, MarkupCase{"TagInTag", "<p <b>x</b></p>"},
           MarkupCase{"AttributeWithoutValue", "<p class=>x</p>"}, MarkupCase{"UnendedStyle", "<style>p{}"}),
    NameOf);

TEST(Markup, RefusesAnImageThatIsNeitherStoredNorNew) {
    const auto check = [] { CheckMarkup("<p><img src=\"file:///tmp/a.png\"/></p>"); };
    EXPECT_THAT(check, ThrowsMessage<MarkupViolation>(
                           HasSubstr("contains an image that has a 'src' attribute but does not have a "
                                     "'src_original' attribute.")));
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

} // namespace
