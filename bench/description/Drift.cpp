// Whether a description changes by being shown and saved without a change of the user's.
#include "DescriptionStage.h"

#include "contracts/Pictures.h"
#include "platform/widgets/Actions.h"

#include <cstdio>
#include <random>

namespace {

constexpr int Descriptions = 500;
constexpr int Saves = 10;

// Pieces of every kind that a description is made of; "@" stands for more of them.
constexpr const char* Pieces[] = {
    "plain words",
    "<p>@</p>",
    "<p align=\"center\">@</p>",
    "<b>@</b>",
    "<i>in <u>two</u> @</i>",
    "<font color=\"#ff0000\" size=\"5\" face=\"Courier New\">@</font>",
    "<ul><li>@</li><li>@</li></ul>",
    "<ol><li>one<ol><li>@</li></ol></li></ol>",
    "<table border=\"1\" width=\"50%\"><tbody><tr><td>@</td><td>@</td></tr></tbody></table>",
    "<table><tbody><tr><td><table><tbody><tr><td>@</td></tr></tbody></table></td></tr></tbody></table>",
    "<table><tr><th>no body</th></tr><tr><td colspan=\"2\">@</td></tr></table>",
    "a &lt; b &amp;&amp; c &gt; d &quot;e&quot; &nbsp;&#160; &euro; &#x1F600;",
    "<p dir=\"rtl\">\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D \xD8\xB3\xD9\x84\xD8\xA7\xD9\x85 @</p>",
    "\xC3\xA4\xC3\xB6\xC3\xBC \xE2\x82\xAC \xF0\x9F\x94\xA5 e\xCC\x81 \xE2\x80\x8F",
    "<a href=\"https://example.org/a%20b?c=d&amp;e=f\">@</a>",
    "<pre>  two\n    lines  </pre>",
    "<pre>\n\n  two\n    lines\n</pre><pre>\none</pre>",
    "<h2>@</h2><hr><br>",
    "<blockquote>@</blockquote>",
    "<div style=\"margin-left: 20px;\">@</div>",
    "<p></p><p>&nbsp;</p>",
    "  blanks   and\n\n\tbreaks  ",
    "100%20 percent",
};

class TWriter {
public:
    explicit TWriter(unsigned seed)
        : FRandom(seed) {}

    std::string Text(int pieces) {
        std::string html;
        for (int piece = 0; piece < pieces; ++piece)
            html += Piece(3);
        return html;
    }

private:
    std::string Piece(int depth) {
        std::string html = Pieces[FRandom() % std::size(Pieces)];
        for (auto at = html.find('@'); at != html.npos; at = html.find('@', at)) {
            const std::string inner = depth > 0 ? Piece(depth - 1) : "x";
            html.replace(at, 1, inner);
            at += inner.size();
        }
        return html;
    }

    std::mt19937 FRandom;
};

std::string DescriptionOf(int number) {
    switch (number) {
    case 0:
        return "x";
    case 1:
        return TextOfSize(1'000'000);
    case 2:
        ChoosePicture(QUORANE_SAMPLES_DIR "/pictures/control.png");
        return "<p>before <img src=\"" QUORANE_SAMPLES_DIR
               "/pictures/control.png\" border=\"0\" new=\"true\"> after</p>";
    default:
        return TWriter(static_cast<unsigned>(number)).Text(1 + number % 12);
    }
}

// Shows the requirement, marks it as changed and saves it, as a change of the user's
// that leaves no trace would.
void SaveAsItIs(TDescriptionStage& stage) {
    stage.Bar().SetDocDirty();
    TActor::Settle();
    stage.Panel().Panel().actSave->Execute();
}

} // namespace

TLimits MeasureDrift() {
    TDescriptionStage stage;
    Sdk::RemoveCallObserver(stage.Panel().Server->Calls);
    int drifted = 0;
    std::string first;
    for (int number = 0; number < Descriptions; ++number) {
        stage.SelectNone();
        stage.Write(0, DescriptionOf(number));
        stage.Select(0);
        SaveAsItIs(stage);
        const std::string settled = stage.Read(0);
        bool same = true;
        // Each save shows the description anew, as the server has it then.
        for (int save = 1; save < Saves && same; ++save) {
            SaveAsItIs(stage);
            same = stage.Read(0) == settled;
        }
        if (!same && drifted++ == 0) first = "the first is number " + std::to_string(number);
    }
    return {{"descriptions of 500 that drift in ten saves", 0, static_cast<double>(drifted), "", first}};
}
