// Drives the studio's window through the whole main job without a person, checks each
// step against the server, and leaves numbered pictures.
#include "platform/widgets/look/Look.h"
#include "tour/Chapters.h"
#include "tour/Tour.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QLocale>

#include <cstdio>
#include <exception>

int main(int argc, char** argv) {
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication application(argc, argv);
    QLocale::setDefault(QLocale::c());
    QApplication::setQuitOnLastWindowClosed(false);

    const QCommandLineOption pictures(QStringLiteral("pictures"),
                                      QStringLiteral("Write pictures to <folder>."), QStringLiteral("folder"),
                                      QStringLiteral("tour"));
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption(pictures);
    parser.process(application);
    const std::filesystem::path folder = std::filesystem::absolute(parser.value(pictures).toStdString());

    try {
        ApplyLook(TPalette::Light);
        TTour tour(folder);
        TourConnect(tour);
        TourBrowse(tour);
        TourEdit(tour);
        TourDescribe(tour);
        TourExplain(tour);
        TourAttributes(tour);
        tour.CloseStudio();
        std::printf("%d steps done; the pictures are in %s\n", tour.Steps(), folder.c_str());
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "The tour has failed: %s\nThe pictures so far are in %s\n", failure.what(),
                     folder.c_str());
        return 1;
    }
}
