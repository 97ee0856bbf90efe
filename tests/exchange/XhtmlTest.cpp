#include "backend/exchange/Xhtml.h"

#include <gtest/gtest.h>

namespace Exchange {
namespace {

struct ParagraphCase {
    const char* Name;
    const char* Text;
    const char* Xhtml;
};

class Paragraphs : public testing::TestWithParam<ParagraphCase> {};

TEST_P(Paragraphs, AreWellFormed) {
    EXPECT_EQ(ParagraphsOf(GetParam().Text), GetParam().Xhtml);
}

INSTANTIATE_TEST_SUITE_P(All, Paragraphs,
                         testing::Values(ParagraphCase{"OneLine", "a b", "<p>a b</p>"},
                                         ParagraphCase{"LineBreak", "a\r\nb", "<p>a<br />b</p>"},
                                         ParagraphCase{"EmptyLines", "\n\na\n \n\nb\n", "<p>a</p><p>b</p>"},
                                         ParagraphCase{"OldLineEnds", "a\rb\r\rc", "<p>a<br />b</p><p>c</p>"},
                                         ParagraphCase{"VerticalTab", "a\vb", "<p>a<br />b</p>"},
                                         ParagraphCase{"Markup", "<https://x?a=1&b> \"q\"",
                                                       "<p>&lt;https://x?a=1&amp;b&gt; &quot;q&quot;</p>"},
                                         ParagraphCase{"Nothing", " \n ", ""}),
                         [](const auto& row) { return row.param.Name; });

} // namespace
} // namespace Exchange
