// What the description costs while nothing happens, and what a long day leaves behind.
#include "DescriptionStage.h"
#include "Processes.h"

#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

#include <cstdio>
#include <limits>

namespace {

constexpr int IdleMs = 10'000;

void StayIdle() {
    QEventLoop loop;
    QTimer::singleShot(IdleMs, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace

TLimits MeasureIdle() {
    TDescriptionStage stage;
    stage.Write(0, TextOfSize(20'000));
    stage.Select(0);
    QWidget& page = stage.Page();
    page.window()->activateWindow();
    QTest::mouseClick(&page, Qt::LeftButton, {}, QPoint(60, 18));
    TDescriptionStage::WaitUntil("the focus", [&] { return stage.Frame().isHtmlFocused(); });
    // What loading and drawing began has to come to its end.
    StayIdle();
    stage.Panel().Server->Calls.Clear();
    const std::int64_t calls = stage.EngineCalls();
    const double before = ProcessorTimeOfAll();
    StayIdle();
    const double spent = ProcessorTimeOfAll() - before;
    return {{"engine calls: idle with the caret in the text", 0,
             static_cast<double>(stage.EngineCalls() - calls), ""},
            {"round trips: idle with the caret in the text", 0,
             static_cast<double>(stage.Panel().Server->Calls.RoundTrips()), ""},
            {"processor, idle with the caret in the text", 1, 100 * spent * 1000 / IdleMs, "%"}};
}

TLimits MeasureMemory() {
    constexpr int selections = 1'000;
    TDescriptionStage stage;
    Sdk::RemoveCallObserver(stage.Panel().Server->Calls);
    const int count = std::min(stage.Count(), 10);
    for (int index = 0; index < count; ++index)
        stage.Write(index, TextOfSize(2'000 * static_cast<std::size_t>(index + 1)));
    // The engine lets garbage pile up for some hundred selections, so what is compared is
    // the least that was in use at the beginning and at the end.
    double early = std::numeric_limits<double>::max();
    double late = early;
    for (int selection = 1; selection <= selections; ++selection) {
        stage.Select(selection % count);
        TActor::Settle();
        if (selection % 10 != 0 || selection < selections / 10) continue;
        double& least = selection <= selections / 2 ? early : late;
        least = std::min(least, MemoryOfAll());
    }
    char detail[64];
    std::snprintf(detail, sizeof detail, "%.0f, then %.0f MB", early, late);
    return {{"memory of 900 selections, all processes", 20, late - early, "MB", detail}};
}
