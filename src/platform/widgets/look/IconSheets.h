// The drawings of the icon sheets, and an icon engine that paints them in the colours
// of the palette. Drawings use the colours of IconColorsOnLight and white; the former
// are replaced on the way.
#pragma once

#include <string>

#include <QColor>
#include <QRect>

class QPainter;
class QPalette;

struct TIconColors {
    QColor Ink;
    QColor Accent;
    QColor Fill;
    QColor Warning;
    QColor Good;
};

TIconColors IconColorsOnLight();
TIconColors IconColorsFor(const QPalette& palette);

// Raises Exception for a name that no sheet has.
void PaintIcon(QPainter& painter, const std::string& iconName, const QRect& place, const TIconColors& colors);
// As wide as the place, from its top, in the drawing's own proportions; the rest of the
// place gets a pale ground.
void PaintPicture(QPainter& painter, const std::string& name, const QRect& place, const TIconColors& colors);
