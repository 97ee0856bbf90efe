// The studio: reads the command line and composes look, host and sample project.
#include "SampleProject.h"
#include "hosts/studio/Studio.h"
#include "platform/widgets/Application.h"
#include "platform/widgets/QtText.h"
#include "platform/widgets/look/Look.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <cstdio>

namespace {

struct TArguments {
    TStudioOptions Host;
    TPalette Palette = TPalette::System;
    bool Sample = false;
    QString DataFolder;
    QStringList Files;
};

std::filesystem::path Path(const QString& text) {
    return QFile::encodeName(QFileInfo(text).absoluteFilePath()).toStdString();
}

QString DefaultDataFolder() {
    const QString told = qEnvironmentVariable("QUORANE_DATA_DIR");
    return told.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                                QStringLiteral("/quorane")
                          : told;
}

TPalette ParsePalette(QCommandLineParser& parser, const QString& name) {
    if (name == QStringLiteral("light")) return TPalette::Light;
    if (name == QStringLiteral("dark")) return TPalette::Dark;
    if (name == QStringLiteral("system")) return TPalette::System;
    std::fputs("quorane-studio: the palette is light, dark or system\n\n", stderr);
    parser.showHelp(2);
}

TArguments Parse(const QApplication& application) {
    const QCommandLineOption module(QStringLiteral("module"), QStringLiteral("Load the add-in from <path>."),
                                    QStringLiteral("path"));
    const QCommandLineOption sample(QStringLiteral("sample"),
                                    QStringLiteral("Make and open the sample project."));
    const QCommandLineOption palette(QStringLiteral("palette"), QStringLiteral("light, dark or system."),
                                     QStringLiteral("name"), QStringLiteral("system"));
    const QCommandLineOption data(QStringLiteral("data"),
                                  QStringLiteral("Keep the embedded server's database in <folder>."),
                                  QStringLiteral("folder"), DefaultDataFolder());
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("A source editor with the requirements beside the code."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions({module, sample, palette, data});
    parser.addPositionalArgument(QStringLiteral("files"), QStringLiteral("Files, or a folder, to open."),
                                 QStringLiteral("[files...]"));
    parser.process(application);

    TArguments arguments{TStudioOptions::Default(), ParsePalette(parser, parser.value(palette)),
                         parser.isSet(sample), QFileInfo(parser.value(data)).absoluteFilePath(),
                         parser.positionalArguments()};
    if (parser.isSet(module)) arguments.Host.Module = Path(parser.value(module));
    return arguments;
}

void OpenSample(TStudio& studio, const QString& dataFolder) {
    const TSampleProject sample = PrepareSampleProject(dataFolder);
    studio.Window().OpenFolder(sample.SourceFolder);
    studio.Window().ShowNote(sample.LogonHint);
    std::puts(sample.LogonHint.toUtf8().constData());
    std::fflush(stdout);
}

} // namespace

int main(int count, char** texts) {
    // The description's engine, which the add-in may load later, shares its graphics.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication application(count, texts);
    QApplication::setApplicationName(QStringLiteral("quorane-studio"));
    QApplication::setApplicationDisplayName(QStringLiteral("Quorane Studio"));
    QApplication::setApplicationVersion(QStringLiteral(QUORANE_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("quorane-studio"));

    const TArguments arguments = Parse(application);
    qputenv("QUORANE_DATA_DIR", QFile::encodeName(arguments.DataFolder));
    ApplyLook(arguments.Palette);

    TStudio studio(arguments.Host);
    studio.Window().show();
    for (const QString& file : arguments.Files)
        QFileInfo(file).isDir() ? studio.Window().OpenFolder(file) : studio.Window().OpenFile(file);
    if (arguments.Sample) Application().Dispatch(nullptr, [&] { OpenSample(studio, arguments.DataFolder); });
    return QApplication::exec();
}
