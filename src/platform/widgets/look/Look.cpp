#include "platform/widgets/look/Look.h"

#include <algorithm>
#include <memory>

#include <QApplication>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QProxyStyle>
#include <QStyleOption>

namespace {

// The selection is a tint, so that the icons on it keep their colours.
QPalette Light() {
    QPalette palette(QColor(0xef, 0xf1, 0xf4), QColor(0xf4, 0xf5, 0xf7));
    palette.setColor(QPalette::Base, QColor(0xff, 0xff, 0xff));
    palette.setColor(QPalette::AlternateBase, QColor(0xf6, 0xf8, 0xfa));
    palette.setColor(QPalette::WindowText, QColor(0x1f, 0x24, 0x2d));
    palette.setColor(QPalette::Text, QColor(0x1f, 0x24, 0x2d));
    palette.setColor(QPalette::ButtonText, QColor(0x1f, 0x24, 0x2d));
    palette.setColor(QPalette::PlaceholderText, QColor(0x7a, 0x82, 0x90));
    palette.setColor(QPalette::Highlight, QColor(0xc6, 0xdd, 0xfa));
    palette.setColor(QPalette::HighlightedText, QColor(0x10, 0x24, 0x3e));
    palette.setColor(QPalette::Inactive, QPalette::Highlight, QColor(0xdd, 0xe2, 0xea));
    palette.setColor(QPalette::Inactive, QPalette::HighlightedText, QColor(0x1f, 0x24, 0x2d));
    palette.setColor(QPalette::Link, QColor(0x1f, 0x6f, 0xd0));
    palette.setColor(QPalette::ToolTipBase, QColor(0xff, 0xff, 0xff));
    palette.setColor(QPalette::ToolTipText, QColor(0x1f, 0x24, 0x2d));
    return palette;
}

QPalette Dark() {
    QPalette palette(QColor(0x3a, 0x3f, 0x47), QColor(0x2a, 0x2e, 0x35));
    const QColor text(0xe4, 0xe7, 0xeb);
    palette.setColor(QPalette::Base, QColor(0x20, 0x23, 0x29));
    palette.setColor(QPalette::AlternateBase, QColor(0x26, 0x2a, 0x30));
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(role, text);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::PlaceholderText, QColor(0x8b, 0x93, 0xa0));
    palette.setColor(QPalette::Highlight, QColor(0x2c, 0x4f, 0x7c));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Inactive, QPalette::Highlight, QColor(0x3f, 0x4a, 0x59));
    palette.setColor(QPalette::Inactive, QPalette::HighlightedText, text);
    palette.setColor(QPalette::Link, QColor(0x6c, 0xb0, 0xff));
    palette.setColor(QPalette::ToolTipBase, QColor(0x3a, 0x3f, 0x47));
    return palette;
}

void DimDisabled(QPalette& palette) {
    const QColor text = palette.color(QPalette::Active, QPalette::Text);
    const QColor window = palette.color(QPalette::Active, QPalette::Window);
    const QColor dim((text.red() + window.red()) / 2, (text.green() + window.green()) / 2,
                     (text.blue() + window.blue()) / 2);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, dim);
    palette.setColor(QPalette::Disabled, QPalette::Base, window);
    palette.setColor(QPalette::Disabled, QPalette::Highlight,
                     palette.color(QPalette::Inactive, QPalette::Highlight));
}

QColor Between(const QColor& one, const QColor& other, double share) {
    return QColor::fromRgbF(static_cast<float>(one.redF() * share + other.redF() * (1 - share)),
                            static_cast<float>(one.greenF() * share + other.greenF() * (1 - share)),
                            static_cast<float>(one.blueF() * share + other.blueF() * (1 - share)));
}

// Fusion derives its outlines from the window by darkening it, which leaves none on a
// dark one. Here they are mixed from text and window.
class TLookStyle : public QProxyStyle {
public:
    TLookStyle()
        : QProxyStyle(QStringLiteral("Fusion")) {}

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        switch (element) {
        case PE_FrameLineEdit:
        case PE_Frame:
            DrawFrame(*option, *painter);
            return;
        case PE_IndicatorCheckBox:
        case PE_IndicatorItemViewItemCheck:
            DrawCheck(*option, *painter);
            return;
        default:
            QProxyStyle::drawPrimitive(element, option, painter, widget);
        }
    }

private:
    static QColor Outline(const QStyleOption& option) {
        const QPalette& palette = option.palette;
        if (option.state & State_HasFocus && option.state & State_Enabled)
            return palette.color(QPalette::Active, QPalette::Link);
        return Between(palette.color(QPalette::WindowText), palette.color(QPalette::Window), 0.28);
    }

    static void DrawFrame(const QStyleOption& option, QPainter& painter) {
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Outline(option));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
        painter.restore();
    }

    static void DrawCheck(const QStyleOption& option, QPainter& painter) {
        const QPalette& palette = option.palette;
        const bool enabled = option.state & State_Enabled;
        const QColor ink = palette.color(enabled ? QPalette::Active : QPalette::Disabled, QPalette::Text);
        const QColor window = palette.color(QPalette::Window);
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        const qreal side = std::min(option.rect.width(), option.rect.height()) - 1;
        QRectF box(0, 0, side, side);
        box.moveCenter(QRectF(option.rect).center());
        painter.setPen(option.state & State_HasFocus ? Outline(option) : Between(ink, window, 0.5));
        painter.setBrush(palette.color(enabled ? QPalette::Active : QPalette::Disabled, QPalette::Base));
        painter.drawRoundedRect(box, 2, 2);
        const QColor mark = enabled ? palette.color(QPalette::Active, QPalette::Link) : ink;
        painter.setPen(QPen(mark, side / 7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        const auto at = [&](double x, double y) { return box.topLeft() + QPointF(x, y) * side; };
        if (option.state & State_On)
            painter.drawPolyline(QPolygonF({at(0.24, 0.52), at(0.43, 0.71), at(0.77, 0.3)}));
        else if (option.state & State_NoChange)
            painter.drawLine(at(0.27, 0.5), at(0.73, 0.5));
        painter.restore();
    }
};

} // namespace

void ApplyLook(TPalette choice) {
    QApplication::setStyle(std::make_unique<TLookStyle>().release());
    QPalette palette = QApplication::style()->standardPalette();
    const bool dark = choice == TPalette::Dark ||
                      (choice == TPalette::System && palette.color(QPalette::Window).lightness() < 128);
    palette = dark ? Dark() : Light();
    DimDisabled(palette);
    QApplication::setPalette(palette);
    QPixmapCache::clear();
}

bool PaletteIsDark() {
    return QApplication::palette().color(QPalette::Window).lightness() < 128;
}
