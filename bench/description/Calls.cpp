// How often the engine and the server are asked while the user works in a description.
#include "DescriptionStage.h"

#include <QElapsedTimer>
#include <QTest>

#include <cstdio>

namespace {

class TMoveEvent : public IHTMLEventObj {
public:
    std::string get_type() override { return "mousemove"; }
};

constexpr std::int32_t MouseMoveNumber = -606;

// The calls from an action on the page until the bar has taken it in.
double CallsOf(TDescriptionStage& stage, const std::string& what, const std::function<void()>& action) {
    TActor::Settle();
    const std::int64_t before = stage.EngineCalls();
    action();
    TDescriptionStage::WaitUntil(what, [&] { return stage.EngineCalls() > before; });
    TActor::Settle();
    return static_cast<double>(stage.EngineCalls() - before);
}

// The handler of a mouse move over a term, without what the system needs to bring it.
TTimedWork MovesOf(TDescriptionStage& stage) {
    return {[&stage] {
                TMoveEvent move;
                for (int count = 0; count < 100; ++count)
                    stage.Frame().eddDescription->PreHandleEvent(MouseMoveNumber, move);
            },
            [&stage] {
                QCursor::setPos(stage.Page().mapToGlobal(QPoint(30, 18)));
                TActor::Settle();
            }};
}

void ShowTerm(TDescriptionStage& stage) {
    stage.Write(0, "<p>term7 and other words</p>" + TextOfSize(2'000));
    stage.Select(0);
    QTest::mouseMove(&stage.Page(), QPoint(31, 18));
    MovesOf(stage).Prepare();
    if (stage.Frame().CurrentDescriptionElement() != u"term7")
        throw std::runtime_error("the pointer is not on the term");
}

void CountActions(TLimits& limits) {
    TDescriptionStage stage(10);
    ShowTerm(stage);
    QWidget& page = stage.Page();
    page.window()->activateWindow();
    const double click =
        CallsOf(stage, "the click", [&] { QTest::mouseClick(&page, Qt::LeftButton, {}, QPoint(60, 18)); });
    limits.push_back({"engine calls: click", 2, click, ""});
    limits.push_back({"engine calls: key", 2,
                      CallsOf(stage, "the key", [&] { QTest::keyClick(&page, Qt::Key_Right); }), ""});
    CallsOf(stage, "the first move", [&] { QTest::mouseMove(&page, QPoint(33, 18)); });
    stage.Panel().Server->Calls.Clear();
    double most = 0;
    for (int x = 35; x < 135; x += 5)
        most = std::max(most, CallsOf(stage, "a move", [&] { QTest::mouseMove(&page, QPoint(x, 18)); }));
    limits.push_back({"engine calls: mouse move", 1, most, ""});
    limits.push_back({"round trips: mouse move after the first word", 0,
                      static_cast<double>(stage.Panel().Server->Calls.RoundTrips()), ""});
}

// A table of 100 by 100, from the dialog's OK until the bar has taken the text in.
void InsertTable(TLimits& limits) {
    TDescriptionStage stage;
    stage.Write(0, TextOfSize(2'000));
    stage.Select(0);
    stage.Page().window()->activateWindow();
    QTest::mouseClick(&stage.Page(), Qt::LeftButton, {}, QPoint(60, 18));
    TDescriptionStage::WaitUntil("the bar", [&] { return stage.Bar().btnInsertTable->Enabled(); });
    TActor& user = *stage.Panel().User;
    QElapsedTimer clock;
    std::int64_t before = 0;
    user.WhenModal([&](TForm& form) {
        TActor filler(form.Widget());
        for (const char* name : {"edtRows", "edtColumns"})
            filler.Type(name, "100");
        before = stage.EngineCalls();
        clock.start();
        filler.Click("btnOk");
    });
    user.Click("btnInsertTable");
    const auto milliseconds = static_cast<double>(clock.elapsed());
    limits.push_back(
        {"engine calls: table of 10,000 cells", 10, static_cast<double>(stage.EngineCalls() - before), ""});
    limits.push_back({"insert a table of 10,000 cells", 1'000, milliseconds, "ms"});
}

} // namespace

TLimits MeasureCalls() {
    TLimits limits;
    CountActions(limits);
    InsertTable(limits);
    // One after the other, since there is one panel at a time.
    const auto took = [](int terms) {
        TDescriptionStage stage(terms);
        Sdk::RemoveCallObserver(stage.Panel().Server->Calls);
        ShowTerm(stage);
        const TTimedWork moves = MovesOf(stage);
        return MedianTime(15, moves.Work, moves.Prepare) / 100;
    };
    std::vector<double> ratios, few, many;
    for (int round = 0; round < 5; ++round) {
        few.push_back(took(10));
        many.push_back(took(10'000));
        ratios.push_back(many.back() / few.back());
    }
    char detail[64];
    std::snprintf(detail, sizeof detail, "%.3f against %.3f ms", Median(many), Median(few));
    limits.push_back({"mouse move, 10,000 against 10 terms", 1.5, Median(ratios), "x", detail});
    return limits;
}
