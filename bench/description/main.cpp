// Measures the description in a process of its own, since the HTML engine is no part of
// what the other groups measure. Prints a line of fields for each limit.
#include "DescriptionStage.h"

#include <QApplication>
#include <QLocale>

#include <cstdio>
#include <exception>
#include <functional>
#include <map>

int main(int argc, char** argv) {
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication application(argc, argv);
    QLocale::setDefault(QLocale::c());
    QApplication::setQuitOnLastWindowClosed(false);
    try {
        const std::map<std::string, std::function<TLimits()>> parts = {{"loading", MeasureLoading},
                                                                       {"calls", MeasureCalls},
                                                                       {"idle", MeasureIdle},
                                                                       {"memory", MeasureMemory},
                                                                       {"drift", MeasureDrift}};
        for (const auto& [name, measure] : parts) {
            if (argc > 1 && name != argv[1]) continue;
            for (const TLimit& limit : measure())
                std::printf("%s\t%f\t%f\t%s\t%s\n", limit.Name.c_str(), limit.Limit, limit.Measured,
                            limit.Unit.c_str(), limit.Detail.c_str());
            std::fflush(stdout);
        }
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "quorane-bench-description: %s\n", failure.what());
        return 1;
    }
}
