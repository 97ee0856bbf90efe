#include "tour/Chapters.h"
#include "tour/Tour.h"
#include "tour/TourServer.h"

#include "platform/widgets/tree/TreeView.h"

#include <QLabel>
#include <QTest>

namespace {

using Quorane_TLB::Utf8;

const std::string Project = "Hearth Controller";
const std::vector<std::string> Zones{"Firmware Requirement", "Zone control"};
const std::string Picture = QUORANE_SAMPLES_DIR "/pictures/control.png";

// A description with a table and a picture of the user's, and the terms in its text.
class TExplaining {
public:
    explicit TExplaining(TTour& tour)
        : FTour(tour)
        , FServer("ben", "hearth-ben")
        , FBaseline(FServer.Baseline(Project, "Current")) {}

    void Select() {
        std::vector<std::string> path{Project};
        path.insert(path.end(), Zones.begin(), Zones.end());
        FTour.User().SelectNode("trvRequirements", path);
        FTour.User().ChooseTab("pgcRequirement", "Details");
    }
    QWidget& Page() { return *FTour.User().Find("wbrReqDescription").focusProxy(); }
    void ClickAt(const QPoint& place) {
        Page().window()->activateWindow();
        QTest::mouseClick(&Page(), Qt::LeftButton, {}, place);
        WaitFor("the bar", [this] { return FTour.User().Find("btnInsertTable").isEnabled(); });
    }
    void PressTable(const std::string& title, const std::function<void(TActor&)>& steps) {
        FTour.User().WhenModal([&](TForm& form) {
            TActor dialog(form.Widget());
            steps(dialog);
            FTour.Picture(title, form.Widget());
            dialog.Click("btnOk");
        });
        FTour.User().Click("btnInsertTable");
        Page().window()->activateWindow();
    }
    void Save() {
        WaitFor("the edit", [this] {
            TActor::Settle();
            return FTour.User().Find("btnSave").isEnabled();
        });
        FTour.User().Click("btnSave");
    }
    void CheckOnServer(const std::vector<std::string>& parts) {
        FServer.Forget(FBaseline);
        const std::string html =
            Utf8(FServer.Latest(FServer.Node(FBaseline, Zones))->Get_Description()->Get_Text());
        for (const std::string& part : parts)
            TTour::Check(html.find(part) != std::string::npos,
                         "the second client does not read " + part + " in " + html);
    }
    static void WaitFor(const std::string& what, const std::function<bool()>& condition) {
        TTour::Check(TActor::WaitFor(condition), "waited in vain for " + what);
    }

private:
    TTour& FTour;
    TTourServer FServer;
    Quorane_TLB::Handle<Quorane_TLB::IBaseline> FBaseline;
};

void InsertTable(TExplaining& explaining) {
    explaining.Select();
    explaining.ClickAt(QPoint(explaining.Page().width() - 20, 18));
    QTest::keyClick(&explaining.Page(), Qt::Key_Home, Qt::ControlModifier);
    explaining.PressTable("table properties", [](TActor& dialog) {
        dialog.Type("edtColumns", "3");
        dialog.Type("edtBorderWidth", "8");
        dialog.Type("edtCellPadding", "6");
        dialog.Type("edtCellSpacing", "4");
    });
    explaining.Save();
    explaining.CheckOnServer({"<td width=\"33%\">", "border=\"8\"", "width=\"100%\""});
}

void ChangeTable(TExplaining& explaining) {
    // On the outer border, which begins at the page's margin.
    explaining.ClickAt(QPoint(11, 12));
    explaining.PressTable("properties of a table", [](TActor& dialog) {
        TTour::CheckEqual<std::string>(dialog.Get<TForm>("frmTableProperties").Caption(), "Table Properties",
                                       "the dialog");
        dialog.Type("edtWidth", "60");
        dialog.Type("edtBorderWidth", "2");
        dialog.Choose("cbxAlignment", "Center");
    });
    explaining.Save();
    explaining.CheckOnServer({"border=\"2\"", "width=\"60%\"", "align=\"Center\""});
}

void InsertPicture(TTour& tour, TExplaining& explaining) {
    explaining.ClickAt(QPoint(explaining.Page().width() - 20, explaining.Page().height() - 20));
    QTest::keyClick(&explaining.Page(), Qt::Key_End, Qt::ControlModifier);
    tour.Dialogs().AnswerFile(Picture);
    tour.User().Click("btnInsertImage");
    explaining.Save();
    explaining.CheckOnServer({"<img", "src_original"});
}

// The whole page is searched, since where the words stand is the engine's business.
void HoverTerm(TTour& tour, TExplaining& explaining) {
    const QWidget& hint = tour.User().Find("frmGlossaryHint");
    QWidget& page = explaining.Page();
    for (int y = 20; y < page.height() && !hint.isVisible(); y += 8)
        for (int x = 12; x < page.width() && !hint.isVisible(); x += 20) {
            QTest::mouseMove(&page, QPoint(x, y));
            TActor::WaitFor([&hint] { return hint.isVisible(); }, 30);
        }
    TTour::Check(hint.isVisible(), "no term is explained");
    TTour::Check(!tour.User().Get<QLabel>("lblDefinition").text().isEmpty(), "the definition is empty");
}

void LeaveTerm(TTour& tour, TExplaining& explaining) {
    const QWidget& hint = tour.User().Find("frmGlossaryHint");
    QTest::mouseMove(&explaining.Page(), explaining.Page().rect().bottomRight() - QPoint(10, 10));
    explaining.WaitFor("the hint's end", [&hint] { return !hint.isVisible(); });
}

} // namespace

void TourExplain(TTour& tour) {
    TExplaining explaining(tour);
    tour.Step("insert a table", [&] { InsertTable(explaining); });
    tour.Step("change the table", [&] { ChangeTable(explaining); });
    tour.Step("insert a picture", [&] { InsertPicture(tour, explaining); });
    tour.Step("term under the pointer", [&] { HoverTerm(tour, explaining); });
    tour.Step("pointer beside the text", [&] { LeaveTerm(tour, explaining); });
}
