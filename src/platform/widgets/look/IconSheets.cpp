#include "platform/widgets/look/IconSheets.h"

#include <algorithm>
#include <map>

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include "contracts/Exceptions.h"
#include "platform/widgets/QtText.h"
#include "platform/widgets/look/ImageList.h"

namespace {

using TDrawings = std::map<std::string, QByteArray>;

// A sheet is one SVG with a symbol for each drawing. The renderer knows no symbols, so
// each becomes a document of its own.
void ReadSheet(const QString& path, TDrawings& drawings) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) throw Exception("The icon sheet " + FromQt(path) + " is missing.");
    QXmlStreamReader reader(&file);
    reader.readNextStartElement();
    const QXmlStreamAttributes common = reader.attributes();
    while (reader.readNextStartElement()) {
        const QXmlStreamAttributes own = reader.attributes();
        const std::string name = FromQt(own.value(QStringLiteral("id")).toString());
        QByteArray drawing;
        QXmlStreamWriter writer(&drawing);
        writer.writeStartElement(QStringLiteral("svg"));
        writer.writeDefaultNamespace(QStringLiteral("http://www.w3.org/2000/svg"));
        writer.writeAttribute(QStringLiteral("viewBox"), own.value(QStringLiteral("viewBox")).toString());
        writer.writeStartElement(QStringLiteral("g"));
        writer.writeAttributes(common);
        for (int depth = 1; depth > 0;) {
            const auto token = reader.readNext();
            depth += token == QXmlStreamReader::StartElement ? 1
                     : token == QXmlStreamReader::EndElement ? -1
                                                             : 0;
            if (reader.hasError()) throw Exception("The icon sheet " + FromQt(path) + " is damaged.");
            if (depth > 0) writer.writeCurrentToken(reader);
        }
        writer.writeEndDocument();
        drawings[name] = drawing;
    }
}

const TDrawings& Drawings() {
    static const TDrawings drawings = [] {
        TDrawings read;
        for (const char* sheet : {"tree", "commands", "format", "marks", "pictures"})
            ReadSheet(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(sheet)), read);
        return read;
    }();
    return drawings;
}

QByteArray Colored(const std::string& iconName, const TIconColors& colors) {
    const auto found = Drawings().find(iconName);
    if (found == Drawings().end()) throw Exception("There is no icon named " + iconName + ".");
    QByteArray drawing = found->second;
    const TIconColors drawn = IconColorsOnLight();
    for (const auto part : {&TIconColors::Ink, &TIconColors::Accent, &TIconColors::Fill,
                            &TIconColors::Warning, &TIconColors::Good})
        drawing.replace((drawn.*part).name().toLatin1(), (colors.*part).name().toLatin1());
    return drawing;
}

QColor Mixed(const QColor& one, const QColor& other, double share) {
    return QColor::fromRgbF(one.redF() * share + other.redF() * (1 - share),
                            one.greenF() * share + other.greenF() * (1 - share),
                            one.blueF() * share + other.blueF() * (1 - share));
}

// Paints at whatever size and scale it is asked for, and keeps the result until the
// palette changes.
class TSheetIconEngine : public QIconEngine {
public:
    explicit TSheetIconEngine(std::string name)
        : FName(std::move(name)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        const qreal scale = painter->device() ? painter->device()->devicePixelRatioF() : 1;
        painter->drawPixmap(rect, scaledPixmap(rect.size() * scale, mode, state, scale));
    }

    QSize actualSize(const QSize& size, QIcon::Mode, QIcon::State) override {
        const int side = std::min(size.width(), size.height());
        return QSize(side, side);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return scaledPixmap(size, mode, state, 1);
    }

    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal) override {
        const QPalette palette = QGuiApplication::palette();
        const QString key = QStringLiteral("quorane-icon-%1-%2x%3-%4-%5")
                                .arg(ToQt(FName))
                                .arg(size.width())
                                .arg(size.height())
                                .arg(static_cast<int>(mode))
                                .arg(palette.cacheKey());
        QPixmap pixmap;
        if (QPixmapCache::find(key, &pixmap)) return pixmap;
        pixmap = QPixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        if (mode == QIcon::Disabled) painter.setOpacity(0.35);
        PaintIcon(painter, FName, QRect(QPoint(0, 0), size), IconColorsFor(palette));
        painter.end();
        QPixmapCache::insert(key, pixmap);
        return pixmap;
    }

    QIconEngine* clone() const override { return std::make_unique<TSheetIconEngine>(FName).release(); }

private:
    std::string FName;
};

} // namespace

TIconColors IconColorsOnLight() {
    return {QColor(0x3b, 0x42, 0x52), QColor(0x1f, 0x6f, 0xd0), QColor(0xdc, 0xe8, 0xf8),
            QColor(0xc7, 0x3e, 0x1d), QColor(0x2e, 0x8b, 0x57)};
}

TIconColors IconColorsFor(const QPalette& palette) {
    if (palette.color(QPalette::Window).lightness() >= 128) return IconColorsOnLight();
    const QColor ink = Mixed(palette.color(QPalette::Text), palette.color(QPalette::Window), 0.85);
    return {ink, QColor(0x6c, 0xb0, 0xff), QColor(0x2d, 0x46, 0x66), QColor(0xff, 0x8a, 0x65),
            QColor(0x7b, 0xd3, 0x9b)};
}

void PaintIcon(QPainter& painter, const std::string& iconName, const QRect& place,
               const TIconColors& colors) {
    QSvgRenderer renderer(Colored(iconName, colors));
    painter.setRenderHint(QPainter::Antialiasing);
    // Drawings are square; a place that is not keeps its margins empty.
    const int side = std::min(place.width(), place.height());
    QRectF square(0, 0, side, side);
    square.moveCenter(QRectF(place).center());
    renderer.render(&painter, square);
}

void PaintPicture(QPainter& painter, const std::string& name, const QRect& place, const TIconColors& colors) {
    QSvgRenderer renderer(Colored(name, colors));
    const QSizeF size = renderer.viewBoxF().size();
    QColor ground = colors.Fill;
    ground.setAlphaF(0.35F);
    painter.fillRect(place, ground);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter, QRectF(place.topLeft(),
                                     QSizeF(place.width(), place.width() * size.height() / size.width())));
}

QIcon NamedIcon(const std::string& iconName) {
    if (!Drawings().contains(iconName)) throw Exception("There is no icon named " + iconName + ".");
    return QIcon(std::make_unique<TSheetIconEngine>(iconName).release());
}

std::vector<std::string> IconNames() {
    std::vector<std::string> names;
    for (const auto& entry : Drawings())
        names.push_back(entry.first);
    return names;
}
