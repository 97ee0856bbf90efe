#include "platform/system/DesktopSystemServices.h"

#include "contracts/Exceptions.h"
#include "platform/system/FileVersionReader.h"

#include <QDateTime>
#include <QDesktopServices>
#include <QDir>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QLocale>
#include <QPainter>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QUrl>

#include <cmath>

namespace {

constexpr double MillisecondsPerDay = 86'400'000.0;

QDate OleEpoch() {
    return {1899, 12, 30};
}

// The fraction of an OLE date counts forward from midnight, also before the epoch.
QDateTime FromOleDate(double date) {
    const double days = std::trunc(date);
    const auto milliseconds = std::llround(std::abs(date - days) * MillisecondsPerDay);
    const QDateTime midnight = OleEpoch().addDays(static_cast<qint64>(days)).startOfDay(Qt::UTC);
    return midnight.addMSecs(milliseconds);
}

TPixels ToPixels(const QImage& source) {
    const QImage image = source.convertToFormat(QImage::Format_RGBA8888);
    TPixels pixels{image.width(), image.height(), {}};
    for (int y = 0; y < image.height(); ++y) {
        const uchar* line = image.constScanLine(y);
        pixels.Bytes.insert(pixels.Bytes.end(), line, line + 4 * image.width());
    }
    return pixels;
}

// A sheet with a folded corner, for a desktop that has no icons at all.
QImage PlainSheet(int size) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / 16.0, size / 16.0);
    painter.setPen(QPen(QColor(0x60, 0x68, 0x70), 1));
    painter.setBrush(QColor(0xF4, 0xF5, 0xF6));
    painter.drawPolygon(QPolygonF{{3.5, 1.5}, {9.5, 1.5}, {12.5, 4.5}, {12.5, 14.5}, {3.5, 14.5}});
    painter.drawPolyline(QPolygonF{{9.5, 1.5}, {9.5, 4.5}, {12.5, 4.5}});
    return image;
}

std::string Text(const QString& text) {
    return text.toStdString();
}

QString Text(const std::string& text) {
    return QString::fromStdString(text);
}

} // namespace

TSystemPaths TSystemPaths::Default() {
    const QString config = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return {
        QFile::encodeName(config).toStdString() + "/quorane/settings.ini", "/etc/quorane/settings.ini", {}};
}

TDesktopSystemServices::TDesktopSystemServices(TSystemPaths paths)
    : FPaths(std::move(paths))
    , FUserSettings(FPaths.UserSettings)
    , FMachineSettings(FPaths.MachineSettings) {}

TDesktopSystemServices::~TDesktopSystemServices() = default;

std::string TDesktopSystemServices::ReadUserSetting(const std::string& key, const std::string& name) {
    return FUserSettings.Read(key, name).value_or(std::string{});
}

void TDesktopSystemServices::WriteUserSetting(const std::string& key, const std::string& name,
                                              const std::string& value) {
    FUserSettings.Write({{key, {{name, value}}}});
}

std::string TDesktopSystemServices::ReadMachineSetting(const std::string& key, const std::string& name) {
    return FMachineSettings.Read(key, name).value_or(std::string{});
}

std::string TDesktopSystemServices::TypeLibraryPath(const std::string& libraryId) {
    const auto found = FPaths.TypeLibraries.find(libraryId);
    return found == FPaths.TypeLibraries.end() ? std::string{} : found->second;
}

std::string TDesktopSystemServices::FileVersion(const std::string& path) {
    return ReadFileVersion(path);
}

std::string TDesktopSystemServices::UniqueTempFileName() {
    if (!FTempDir) {
        // A folder of this user alone keeps names from being guessed and taken by others.
        FTempDir = std::make_unique<QTemporaryDir>(QDir::tempPath() + QStringLiteral("/quorane-XXXXXX"));
        if (!FTempDir->isValid()) {
            const std::string reason = Text(FTempDir->errorString());
            FTempDir.reset();
            throw Exception("The temporary folder cannot be created: " + reason + ".");
        }
    }
    return Text(FTempDir->filePath(QStringLiteral("description-%1").arg(++FTempFiles)));
}

bool TDesktopSystemServices::FileExists(const std::string& path) {
    return QFileInfo(Text(path)).isFile();
}

bool TDesktopSystemServices::DeleteFile(const std::string& path) {
    return FileExists(path) && QFile::remove(Text(path));
}

void TDesktopSystemServices::StartProcess(const std::string& path, const std::string& workingDirectory) {
    const QFileInfo program(Text(path));
    if (!program.isFile() || !QProcess::startDetached(program.absoluteFilePath(), {}, Text(workingDirectory)))
        throw Exception("The program " + path + " cannot be started.");
}

void TDesktopSystemServices::ShellOpen(const std::string& target) {
    QDesktopServices::openUrl(QUrl::fromUserInput(Text(target), QDir::currentPath()));
}

TPixels TDesktopSystemServices::FileIcon(const std::string& path, int size) {
    const QFileIconProvider provider;
    const QFileInfo file(Text(path));
    const QIcon icon = file.exists() ? provider.icon(file) : provider.icon(QFileIconProvider::File);
    const QImage image = icon.pixmap(QSize(size, size), 1.0).toImage();
    if (image.isNull()) return ToPixels(PlainSheet(size));
    return ToPixels(image.scaled(size, size, Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

std::string TDesktopSystemServices::ShortDateText(double date) {
    return Text(QLocale::system().toString(FromOleDate(date).date(), QLocale::ShortFormat));
}

std::string TDesktopSystemServices::DateTimeText(double date) {
    return Text(QLocale::system().toString(FromOleDate(date), QLocale::ShortFormat));
}

double TDesktopSystemServices::Now() {
    const QDateTime now = QDateTime::currentDateTime();
    const double midnight = static_cast<double>(OleEpoch().daysTo(now.date()));
    return midnight + now.time().msecsSinceStartOfDay() / MillisecondsPerDay;
}
