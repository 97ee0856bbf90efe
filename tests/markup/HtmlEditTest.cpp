#include "markup/HtmlImages.h"
#include "markup/HtmlLists.h"
#include "markup/HtmlWriter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <libxml/parser.h>

using namespace Markup;

namespace {

const std::string Hash(64, 'a');

void Tidy(const HtmlDocument&) {}
void Bullets(const HtmlDocument& document) {
    MakeList(document, ListKind::Unordered);
}
void Numbers(const HtmlDocument& document) {
    MakeList(document, ListKind::Ordered);
}
void Show(const HtmlDocument& document) {
    ShowImages(document, "file:///cache & co/");
}
void Reset(const HtmlDocument& document) {
    ShowImages(document, "");
}

struct TRow {
    void (*Edit)(const HtmlDocument&);
    std::string From;
    std::string To;
};

void PrintTo(const TRow& row, std::ostream* out) {
    *out << row.From;
}

const TRow Rows[] = {
    {Tidy, "", ""},
    {Tidy, "a<BR>b<P Class=x>c<b><i>d</b></i>", "a<br />b<p class=\"x\">c<b><i>d</i></b></p>"},
    {Tidy, "x &nbsp;&lt;&amp;& <o:p checked title='\"'>y</o:p><!-- z -->",
     "x \u00A0&lt;&amp;&amp; <o-p checked=\"checked\" title=\"&quot;\">y</o-p>"},
    {Tidy, "<style>a<b</style><script>1<2</script><pre>\n\n x\n</pre>", "<pre>\n\n x\n</pre>"},
    {Tidy, "<!DOCTYPE html><HTML><title>t</title><BODY bgcolor=red>x",
     "<html><head><title>t</title></head><body bgcolor=\"red\">x</body></html>"},
    {Tidy, "<!--<html>--><p title=\"<body &#0;a\">it's = x</p>",
     "<p title=\"&lt;body \uFFFDa\">it's = x</p>"},
    {Bullets, "", ""},
    {Bullets, " <!-- x --> <p></p><style>p{}</style>", ""},
    {Bullets, "<style>p{}</style><p>a</p><div> </div>b<script></script>", "<ul><li>a</li><li>b</li></ul>"},
    {Bullets, "<p align=right>a</p>\n<p>b <b>c</b></p>",
     "<ul><li align=\"right\">a</li><li>b <b>c</b></li></ul>"},
    {Bullets, "a<br>b <i>c</i><h1>d</h1>e",
     "<ul><li>a</li><li>b <i>c</i></li><li><h1>d</h1></li><li>e</li></ul>"},
    {Bullets, "<ol start=3><li>a<ol><li>b</ol><li>c</ol><p>d",
     "<ul><li>a<ol><li>b</li></ol></li><li>c</li><li>d</li></ul>"},
    {Numbers, "<html><body class=x><ul>\n<li>a</li>\n</ul></body></html>",
     "<html><body class=\"x\"><ol><li>a</li></ol></body></html>"},
    {RemoveLists, "a<ul>\n<li>b <i>c</i></li>\n<li>d<ol><li>e</ol>f</ul>g",
     "a<p>b <i>c</i></p><p>d</p><p>e</p><p>f</p>g"},
    {RemoveLists, "<table><tr><td><ul><li><p>a</p><li align=right dir=rtl>b<br>c</ul></table>",
     "<table><tr><td><p>a</p><p align=\"right\" dir=\"rtl\">b<br />c</p></td></tr></table>"},
    {Show, "<img src=x src_original=" + Hash + "><img src=y src_original=../z><img src=w new=true>",
     "<img src=\"file:///cache &amp; co/" + Hash + "\" src_original=\"" + Hash +
         "\" /><img src=\"y\" src_original=\"../z\" /><img src=\"w\" new=\"true\" />"},
    {Reset, "<img src=\"file:///cache/" + Hash + "\" src_original=" + Hash + "><img src=y>",
     "<img src=\"" + Hash + "\" src_original=\"" + Hash + "\" /><img src=\"y\" />"},
};

class TEdits : public ::testing::TestWithParam<TRow> {};

} // namespace

TEST_P(TEdits, GiveWellFormedMarkupThatReadsTheSameAgain) {
    const auto& [edit, from, to] = GetParam();
    const HtmlDocument document(from);
    EXPECT_FALSE(document.Lost());
    edit(document);
    const std::string html = Write(document);
    EXPECT_EQ(html, to);
    EXPECT_EQ(Write(HtmlDocument(html)), html);
    const std::string whole = "<x>" + html + "</x>";
    const std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> parsed(
        xmlReadMemory(whole.data(), static_cast<int>(whole.size()), nullptr, "UTF-8", 0), xmlFreeDoc);
    EXPECT_TRUE(parsed) << html;
}

INSTANTIATE_TEST_SUITE_P(Rows, TEdits, ::testing::ValuesIn(Rows));

TEST(TImagesOf, TellsWhereEachComesFrom) {
    const auto images = ImagesOf(HtmlDocument("<p><img src='a&amp;b' new><b><IMG src_original=" + Hash +
                                              "></b><!-- <img src=no> --><img alt=x src_original=short>"));
    ASSERT_EQ(images.size(), 3U);
    EXPECT_EQ(images[0].Path, "a&b");
    EXPECT_TRUE(images[0].New);
    EXPECT_EQ(images[1].Hash, Hash);
    EXPECT_EQ(images[2].Hash, "");
    EXPECT_EQ(images[2].Html, "<img alt=\"x\" src_original=\"short\" />");
}
