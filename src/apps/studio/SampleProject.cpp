#include "SampleProject.h"

#include "contracts/Exceptions.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QProcess>

namespace {

[[noreturn]] void Fail(const QString& what) {
    throw Exception(what.toStdString());
}

QString Beside(const QString& name) {
    return QCoreApplication::applicationDirPath() + u'/' + name;
}

// The seed program looks in the same places.
QString SamplesFolder() {
    const QString told = qEnvironmentVariable("QUORANE_SAMPLES");
    return told.isEmpty() ? Beside(QStringLiteral("samples")) : told;
}

void SeedDatabase(const QString& database, const QString& source) {
    constexpr int longestMs = 60'000;
    QProcess seed;
    seed.start(Beside(QStringLiteral("quorane-seed")),
               {QStringLiteral("--database"), database, QStringLiteral("--source"), source});
    if (!seed.waitForStarted())
        Fail(QStringLiteral("The sample project cannot be made: %1.").arg(seed.errorString()));
    const bool ended = seed.waitForFinished(longestMs);
    if (!ended || seed.exitStatus() != QProcess::NormalExit || seed.exitCode() != 0)
        Fail(QStringLiteral("The sample project cannot be made: %1")
                 .arg(QString::fromUtf8(seed.readAllStandardError()).trimmed()));
}

void CopyFolder(const QString& from, const QString& to) {
    for (QDirIterator files(from, QDir::Files, QDirIterator::Subdirectories); files.hasNext();) {
        const QString file = files.next();
        const QString copy = to + file.mid(from.size());
        if (!QDir().mkpath(QFileInfo(copy).path()) || !QFile::copy(file, copy))
            Fail(QStringLiteral("The sample file %1 cannot be written.").arg(copy));
        QFile::setPermissions(copy, QFile::permissions(copy) | QFileDevice::WriteOwner);
    }
}

} // namespace

TSampleProject PrepareSampleProject(const QString& dataFolder) {
    if (!QDir().mkpath(dataFolder)) Fail(QStringLiteral("The folder %1 cannot be made.").arg(dataFolder));
    const QString source = dataFolder + QStringLiteral("/source");
    if (!QFileInfo::exists(source)) CopyFolder(SamplesFolder() + QStringLiteral("/source"), source);

    const QString database = dataFolder + QStringLiteral("/quorane.db");
    if (!QFileInfo::exists(database)) SeedDatabase(database, source);
    return {source, QStringLiteral("Sample project: View, Quorane Requirements; server “local”, user “anna”, "
                                   "password “hearth-anna”")};
}
