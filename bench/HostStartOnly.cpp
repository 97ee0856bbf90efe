// Starts the studio once, with the module named on the command line or without one,
// and prints the milliseconds to the shown window and the private memory in MB. A
// program of its own, because it must link no more than the studio does.
#include "hosts/studio/Studio.h"
#include "platform/widgets/look/Look.h"

#include <QApplication>
#include <QTemporaryDir>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <string>

namespace {

double PrivateMegabytes() {
    std::ifstream file("/proc/self/smaps_rollup");
    double kilobytes = 0;
    for (std::string word; file >> word;)
        if (double value = 0; word.starts_with("Private_") && file >> value) kilobytes += value;
    return kilobytes / 1024;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication application(argc, argv);
    const QTemporaryDir folder;
    ApplyLook(TPalette::Light);
    TStudioOptions options;
    options.Desktop = folder.filePath(QStringLiteral("desktop.ini")).toStdString();
    if (argc > 1) options.Module = argv[1];

    const auto start = std::chrono::steady_clock::now();
    TStudio studio(options);
    studio.Window().show();
    QApplication::processEvents();
    const std::chrono::duration<double, std::milli> spent = std::chrono::steady_clock::now() - start;
    if (studio.HasModule() != (argc > 1)) return 1;
    std::printf("%f %f\n", spent.count(), PrivateMegabytes());
    std::fflush(stdout);
}
