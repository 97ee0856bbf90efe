// What it takes to show a requirement with its description, beside a bare view of the
// engine that loads the same file.
#include "DescriptionStage.h"

#include "server/UQuoraneSession.h"

#include <QWebEngineProfile>
#include <QWebEngineView>

#include <cstdio>

namespace {

class TBareView {
public:
    explicit TBareView(const QSize& size)
        : FPage(&FProfile) {
        FView.setPage(&FPage);
        FView.resize(size);
        FView.show();
        // The engine tells of the end before the page is laid out; ours is on show by then.
        QObject::connect(&FPage, &QWebEnginePage::loadFinished, &FPage, [this] {
            FPage.runJavaScript(QStringLiteral("document.body.offsetHeight"),
                                [this](const QVariant&) { FLoading = false; });
        });
    }
    void Load(const std::string& path) {
        FLoading = true;
        FPage.load(QUrl::fromLocalFile(QString::fromStdString(path)));
        TDescriptionStage::WaitUntil("the bare view", [this] { return !FLoading; });
    }

private:
    QWebEngineProfile FProfile;
    QWebEngineView FView;
    QWebEnginePage FPage;
    bool FLoading = false;
};

TLimit Compare(TDescriptionStage& stage, const std::string& name, std::size_t bytes, int runs, double limit) {
    stage.Write(0, TextOfSize(bytes));
    stage.Select(1);
    stage.Select(0);
    // The same file at another path, so that neither side waits for the other's.
    const TTempFolder folder;
    const std::string copy = folder.File("bare.html");
    WriteFile(copy, ReadFile(CurrentSession().DescriptionFileName()));
    TBareView bare(stage.Page().size());
    const TComparison times = CompareTimes(runs, {[&] { stage.Select(0); }, [&] { stage.Select(1); }},
                                           {{[&] { bare.Load(copy); }, {}}});
    char detail[64];
    std::snprintf(detail, sizeof detail, "%.1f against %.1f ms", times.Ours, times.Bare);
    return {"show a description of " + name + " against the bare engine", limit, times.Ratio, "x", detail};
}

} // namespace

TLimits MeasureLoading() {
    TDescriptionStage stage;
    Sdk::RemoveCallObserver(stage.Panel().Server->Calls);
    return {Compare(stage, "20 kB", 20'000, 31, 1.5), Compare(stage, "1 MB", 1'000'000, 7, 2)};
}
