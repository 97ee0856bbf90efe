// Checks every limit of speed and size: prints a line for each, and ends with exit
// status 1 when one is broken. The name of a group on the command line checks that one;
// a number behind "edits" is for how many seconds its many clients save.
#include "Limits.h"

#include <cstdio>
#include <exception>
#include <functional>
#include <map>
#include <string>

#include <QApplication>
#include <QLocale>

namespace {

bool Report(const TLimits& limits) {
    bool held = true;
    for (const TLimit& limit : limits) {
        std::printf("%-52s limit %8.2f  measured %8.2f %-4s %-6s %s\n", limit.Name.c_str(), limit.Limit,
                    limit.Measured, limit.Unit.c_str(), limit.Held() ? "held" : "broken",
                    limit.Detail.c_str());
        held = held && limit.Held();
    }
    std::fflush(stdout);
    return held;
}

TLimits MeasureEdits(int seconds) {
    TLimits limits = MeasureSave();
    for (const TLimits& more : {MeasureAttributes(), MeasureManyClients(seconds)})
        limits.insert(limits.end(), more.begin(), more.end());
    return limits;
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QLocale::setDefault(QLocale::c());
    QApplication::setQuitOnLastWindowClosed(false);
    try {
        if (argc == 3 && std::string(argv[1]) == "--logon-only") {
            MeasureLogonOnly(argv[2]);
            return 0;
        }
        const int seconds = argc == 3 ? std::stoi(argv[2]) : 60;
        const std::map<std::string, std::function<TLimits()>> groups = {
            {"round-trips", MeasureRoundTrips},
            {"branch", MeasureBranch},
            {"edits", [seconds] { return MeasureEdits(seconds); }},
            {"description",
             [] { return MeasureDescription(QCoreApplication::applicationDirPath().toStdString()); }},
            {"project-size",
             [] { return MeasureProjectSize(QCoreApplication::applicationFilePath().toStdString()); }},
            {"host-start",
             [] { return MeasureHostStart(QCoreApplication::applicationDirPath().toStdString()); }}};
        bool held = true;
        for (const auto& [name, measure] : groups)
            if (argc < 2 || name == argv[1]) held = Report(measure()) && held;
        return held ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "quorane-bench: %s\n", failure.what());
        return 2;
    }
}
