// Whether the logon costs the same in a small project and in one a hundred times as
// large: time to the shown tree, and the client's memory before any branch is opened.
#include "Limits.h"

#include "backend/exchange/GeneratedProject.h"
#include "support/PanelStage.h"

#include <QProcess>

#include <cstdio>
#include <sstream>
#include <stdexcept>

namespace {

struct TLogon {
    double Milliseconds = 0;
    double Megabytes = 0;
};

TLogon LogonOnly(const std::string& program, const std::string& database) {
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QString::fromStdString(program),
                  {QStringLiteral("--logon-only"), QString::fromStdString(database)});
    if (!process.waitForFinished(120'000) || process.exitCode() != 0)
        throw std::runtime_error("the logon of a process of its own has failed");
    std::istringstream output(process.readAllStandardOutput().toStdString());
    TLogon logon;
    if (!(output >> logon.Milliseconds >> logon.Megabytes)) throw std::runtime_error("no figures came back");
    return logon;
}

} // namespace

void MeasureLogonOnly(const std::string& database) {
    TPanelStage stage(database);
    Sdk::RemoveCallObserver(stage.Server->Calls);
    if (!stage.LogOn("local", "admin", "admin")) throw std::runtime_error("the logon was refused");
    const double milliseconds = MedianTime(
        9, [&] { stage.LogOn("local", "admin", "admin"); }, [&] { stage.Panel().actLogoff->Execute(); });
    std::printf("%f %f\n", milliseconds, PrivateMemory());
}

TLimits MeasureProjectSize(const std::string& program) {
    const TTempFolder folder;
    const std::string small = folder.File("small.db");
    const std::string large = folder.File("large.db");
    using Backend::BulkWriter;
    Exchange::BuildGeneratedDatabase(small, {1'000, 100}, BulkWriter::Hashing::QuickForTests);
    Exchange::BuildGeneratedDatabase(large, {100'000, 10'000}, BulkWriter::Hashing::QuickForTests);

    std::vector<double> times, memory;
    TLogon last[2];
    for (int round = 0; round < 5; ++round) {
        last[0] = LogonOnly(program, small);
        last[1] = LogonOnly(program, large);
        times.push_back(last[1].Milliseconds / last[0].Milliseconds);
        memory.push_back(last[1].Megabytes / last[0].Megabytes);
    }
    const auto pair = [](double bigger, double smaller, const char* unit) {
        char text[64];
        std::snprintf(text, sizeof text, "%.1f against %.1f %s", bigger, smaller, unit);
        return std::string(text);
    };
    return {{"logon, 100,000 against 1,000 requirements", 1.3, Median(times), "x",
             pair(last[1].Milliseconds, last[0].Milliseconds, "ms")},
            {"memory after it, 100,000 against 1,000", 1.3, Median(memory), "x",
             pair(last[1].Megabytes, last[0].Megabytes, "MB")}};
}
