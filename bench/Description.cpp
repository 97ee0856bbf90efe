// The group of the description, which a program of its own measures.
#include "Limits.h"

#include <QProcess>

#include <sstream>
#include <stdexcept>

namespace {

constexpr int LongestRunMs = 1'800'000;

TLimit Parse(const std::string& line) {
    std::istringstream fields(line);
    std::string name, limit, measured, unit, detail;
    std::getline(fields, name, '\t');
    std::getline(fields, limit, '\t');
    std::getline(fields, measured, '\t');
    std::getline(fields, unit, '\t');
    std::getline(fields, detail, '\t');
    return {name, std::stod(limit), std::stod(measured), unit, detail};
}

} // namespace

TLimits MeasureDescription(const std::string& binaryFolder) {
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QString::fromStdString(binaryFolder) + QStringLiteral("/quorane-bench-description"),
                  QStringList());
    if (!process.waitForFinished(LongestRunMs) || process.exitCode() != 0)
        throw std::runtime_error("the measuring of the description has failed");
    std::istringstream output(process.readAllStandardOutput().toStdString());
    TLimits limits;
    for (std::string line; std::getline(output, line);)
        limits.push_back(Parse(line));
    return limits;
}
