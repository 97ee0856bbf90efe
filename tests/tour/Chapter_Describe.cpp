#include "tour/Chapters.h"
#include "tour/Tour.h"
#include "tour/TourServer.h"

#include "platform/widgets/Lists.h"
#include "platform/widgets/tree/TreeView.h"

#include <QImage>
#include <QTest>
#include <QToolButton>

namespace {

using Quorane_TLB::Utf8;

const std::string Project = "Hearth Controller";
const std::vector<std::string> Described{"System Requirement",
                                         "Keep every room at the temperature its people want"};
const std::vector<std::string> Referenced{
    "System Requirement", "Never let the home or its people come to harm", "Guard against frost"};
constexpr const char* Sentence = " Guests count as people.";

class TDescribing {
public:
    explicit TDescribing(TTour& tour)
        : FTour(tour)
        , FServer("ben", "hearth-ben")
        , FBaseline(FServer.Baseline(Project, "Current")) {}

    TTreeNode& Select(const std::vector<std::string>& below) {
        std::vector<std::string> path{Project};
        path.insert(path.end(), below.begin(), below.end());
        return FTour.User().SelectNode("trvRequirements", path);
    }
    // The widget that takes the document's keys.
    QWidget& Page() {
        QWidget* page = FTour.User().Find("wbrReqDescription").focusProxy();
        TTour::Check(page != nullptr, "the description has no page");
        return *page;
    }
    void ClickIntoText() {
        Page().window()->activateWindow();
        QTest::mouseClick(&Page(), Qt::LeftButton, {}, QPoint(300, 25));
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&Page(), key, modifiers); }
    // The page takes its keys when it gets round to them; the selection's blue tells that
    // it has.
    bool ShowsSelection() {
        const QImage page = Page().parentWidget()->grab().toImage();
        for (int y = 0; y < page.height(); ++y)
            for (int x = 0; x < page.width(); ++x)
                if (const QColor colour = page.pixelColor(x, y); colour.blue() > colour.red() + 100)
                    return true;
        return false;
    }
    QToolButton& Button(const std::string& name) { return FTour.User().Get<QToolButton>(name); }
    void CheckSave(bool enabled, const std::string& when) {
        TTour::Check(TActor::WaitFor([&] {
                         TActor::Settle();
                         return FTour.User().Find("btnSave").isEnabled() == enabled;
                     }),
                     when);
    }
    std::string OnServer(const std::vector<std::string>& path) {
        FServer.Forget(FBaseline);
        return Utf8(FServer.Latest(FServer.Node(FBaseline, path))->Get_Description()->Get_Text());
    }

private:
    TTour& FTour;
    TTourServer FServer;
    Quorane_TLB::Handle<Quorane_TLB::IBaseline> FBaseline;
};

void TypeText(TTour& tour, TDescribing& describing) {
    describing.Select(Described);
    tour.User().ChooseTab("pgcRequirement", "Details");
    TTour::Check(!describing.Button("btnBold").isEnabled(), "the bar is enabled without the focus");
    describing.ClickIntoText();
    TTour::Check(TActor::WaitFor([&] { return describing.Button("btnBold").isEnabled(); }),
                 "the bar stays disabled");
    describing.Key(Qt::Key_Home, Qt::ControlModifier);
    describing.Key(Qt::Key_End);
    QTest::keyClicks(&describing.Page(), QString::fromUtf8(Sentence));
    describing.CheckSave(true, "typing into the description is no edit");
}

void Format(TTour& tour, TDescribing& describing) {
    for (int word = 0; word < 3; ++word)
        describing.Key(Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier);
    TTour::Check(TActor::WaitFor([&] { return describing.ShowsSelection(); }), "nothing is selected");
    tour.User().Click("btnBold");
    TTour::Check(describing.Button("btnBold").isChecked(), "Bold is not down");
    QWidget& sizes = tour.User().Find("cbxFontSize");
    sizes.setFocus();
    tour.User().Choose("cbxFontSize", "5");
    tour.Dialogs().AnswerColor(TColor::Rgb(0xC0, 0x20, 0x20));
    tour.User().Click("btnForeColor");
    TTour::CheckEqual<std::string>(tour.Text("cbxFontSize"), "5", "font size");
    TTour::Check(!describing.Button("btnItalic").isChecked(), "Italic is down");
}

void SaveText(TTour& tour, TDescribing& describing) {
    tour.User().Click("btnSave");
    describing.CheckSave(false, "Save stays enabled after the save");
    const std::string html = describing.OnServer(Described);
    for (const char* part : {"Guests count", "#c02020", "size=\"5\""})
        TTour::Check(html.find(part) != std::string::npos,
                     std::string("the second client does not read ") + part + " in " + html);
}

void CancelText(TTour& tour, TDescribing& describing) {
    const std::string before = describing.OnServer(Described);
    describing.ClickIntoText();
    QTest::keyClicks(&describing.Page(), QStringLiteral("xyz"));
    describing.CheckSave(true, "typing into the description is no edit");
    tour.User().Click("btnCancelSave");
    describing.CheckSave(false, "Save stays enabled after the cancel");
    TTour::Check(describing.OnServer(Described) == before, "the cancelled text is on the server");
}

void ShowReference(TDescribing& describing) {
    describing.Select(Referenced);
    describing.ClickIntoText();
    TActor::Settle();
    TTour::Check(!describing.Button("btnBold").isEnabled(), "the text of a key reference can be formatted");
}

} // namespace

void TourDescribe(TTour& tour) {
    TDescribing describing(tour);
    tour.Step("type into the description", [&] { TypeText(tour, describing); });
    tour.Step("format the description", [&] { Format(tour, describing); });
    tour.Step("save the description", [&] { SaveText(tour, describing); });
    tour.Step("cancel a change of the description", [&] { CancelText(tour, describing); });
    tour.Step("key reference", [&] { ShowReference(describing); });
}
