// What loading the add-in's module and its registration add to the start of an empty
// host: time and memory.
#include "Limits.h"

#include <QProcess>

#include <cstdio>
#include <sstream>
#include <stdexcept>

namespace {

struct TStart {
    double Milliseconds = 0;
    double Megabytes = 0;
};

TStart StartOnce(const std::string& folder, bool withModule) {
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    const QString programs = QString::fromStdString(folder);
    QStringList arguments;
    if (withModule) arguments << programs + QStringLiteral("/libquorane-addin.so");
    process.start(programs + QStringLiteral("/quorane-bench-host"), arguments);
    if (!process.waitForFinished(60'000) || process.exitCode() != 0)
        throw std::runtime_error("the studio did not start");
    std::istringstream output(process.readAllStandardOutput().toStdString());
    TStart start;
    if (!(output >> start.Milliseconds >> start.Megabytes)) throw std::runtime_error("no figures came back");
    return start;
}

} // namespace

TLimits MeasureHostStart(const std::string& binaryFolder) {
    std::vector<double> emptyTimes, times, emptyMemory, memory;
    StartOnce(binaryFolder, true);
    for (int round = 0; round < 7; ++round) {
        const TStart empty = StartOnce(binaryFolder, false);
        const TStart full = StartOnce(binaryFolder, true);
        emptyTimes.push_back(empty.Milliseconds);
        emptyMemory.push_back(empty.Megabytes);
        times.push_back(full.Milliseconds);
        memory.push_back(full.Megabytes);
    }
    char detail[64];
    std::snprintf(detail, sizeof detail, "empty host: %.0f ms, %.0f MB", Median(emptyTimes),
                  Median(emptyMemory));
    return {{"module and registration, time", 100, Median(times) - Median(emptyTimes), "ms", detail},
            {"module and registration, memory", 30, Median(memory) - Median(emptyMemory), "MB", detail}};
}
