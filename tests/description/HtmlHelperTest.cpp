// Counting rows and columns of tables in the engine's documents.
#include "description/UDHTMLHelper.h"

#include "engine/EngineFixture.h"

namespace {

class HtmlHelper : public TEngineFixture {
protected:
    // The first element inside the body.
    THtmlHandle<IHTMLElement> First() {
        const auto html = Document<IHTMLDocument3>()->get_documentElement();
        const auto body = html->get_children()->item(1);
        return body->get_children()->item(0);
    }
};

TEST_F(HtmlHelper, CountsRowsAndTheAverageOfColumns) {
    struct TRow {
        const char* Html;
        int Rows, Columns;
    };
    for (const TRow& row : {
             TRow{"<table></table>", 0, 0},
             TRow{"<table><tr></tr><tr></tr></table>", 2, 0},
             TRow{"<table><tr><td>1<td>2<td>3</tr></table>", 1, 3},
             TRow{"<table><thead><tr><th>a<th>b</tr></thead><tbody><tr><td>1<td>2</tr></tbody></table>", 2,
                  1},
             TRow{"<table><tr><td>1<td>2<td>3</tr><tr><td colspan=3>4</tr></table>", 2, 2},
             TRow{"<table><tr><td><table><tr><td>1<td>2</tr><tr><td>3</tr></table><td>4</tr></table>", 1, 2},
         }) {
        Load(row.Html);
        const auto table = First();
        EXPECT_EQ(THTMLHelper::GetTableRowCount(*table), row.Rows) << row.Html;
        EXPECT_EQ(THTMLHelper::GetTableColCount(*table), row.Columns) << row.Html;
    }
}

TEST_F(HtmlHelper, LooksIntoChildrenOnlyWhenAskedAndNeverIntoAMatch) {
    Load("<div><p>1</p><div><p>2</p></div><blockquote><p>3</p></blockquote></div>");
    const auto outer = First();
    EXPECT_EQ(THTMLHelper::GetSubElementCount(*outer, "p", false), 1);
    EXPECT_EQ(THTMLHelper::GetSubElementCount(*outer, "P", true), 3);
    EXPECT_EQ(THTMLHelper::GetSubElementCount(*outer, "Div", true), 1);
    EXPECT_EQ(THTMLHelper::GetSubElementCount(*outer, "table", true), 0);
}

} // namespace
