#include "platform/widgets/look/ImageList.h"

#include <QIcon>
#include <QImage>
#include <QPainter>
#include <QPixmap>

#include "contracts/Exceptions.h"
#include "platform/widgets/QtText.h"
#include "platform/widgets/look/IconSheets.h"

TImageList::TImageList(TComponent* owner, const std::string& name)
    : QObject(owner ? &owner->Object() : nullptr) {
    SetName(name);
}

void TImageList::Put(int index, const std::string& iconName) {
    const std::size_t position = static_cast<std::size_t>(index);
    QIcon icon = NamedIcon(iconName);
    if (FIcons.size() <= position) FIcons.resize(position + 1);
    FIcons[position] = {std::move(icon), iconName};
}

int TImageList::Add(const std::string& iconName) {
    Put(Count(), iconName);
    return Count() - 1;
}

namespace {

QImage ToImage(const TBitmap& bitmap) {
    QImage image(bitmap.Width(), bitmap.Height(), QImage::Format_ARGB32);
    for (int y = 0; y < bitmap.Height(); ++y)
        for (int x = 0; x < bitmap.Width(); ++x) {
            const TColor color = bitmap.Pixel(x, y);
            image.setPixel(x, y, qRgb(color.Red(), color.Green(), color.Blue()));
        }
    return image;
}

} // namespace

int TImageList::Add(const TBitmap& bitmap) {
    FIcons.push_back({QIcon(QPixmap::fromImage(ToImage(bitmap))), {}});
    return Count() - 1;
}

int TImageList::AddMasked(const TBitmap& bitmap, TColor transparent) {
    QImage image = ToImage(bitmap);
    const QRgb clear = qRgb(transparent.Red(), transparent.Green(), transparent.Blue());
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) == clear) image.setPixel(x, y, qRgba(0, 0, 0, 0));
    FIcons.push_back({QIcon(QPixmap::fromImage(image)), {}});
    return Count() - 1;
}

int TImageList::AddRgba(int width, int height, const std::vector<std::uint8_t>& bytes) {
    if (bytes.size() != static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4)
        throw Exception("A picture's size and its pixels do not agree.");
    const QImage image(bytes.data(), width, height, width * 4, QImage::Format_RGBA8888);
    FIcons.push_back({QIcon(QPixmap::fromImage(image)), {}});
    return Count() - 1;
}

int TImageList::AddFrom(const TImageList& other, int index) {
    FIcons.push_back({other.Icon(index), other.IconName(index)});
    return Count() - 1;
}

void TImageList::Delete(int index) {
    if (index >= 0 && index < Count()) FIcons.erase(FIcons.begin() + index);
}

void TImageList::Truncate(int index) {
    if (index >= 0 && index < Count()) FIcons.resize(static_cast<std::size_t>(index));
}

QIcon TImageList::Icon(int index) const {
    return index >= 0 && index < Count() ? FIcons[static_cast<std::size_t>(index)].Icon : QIcon();
}

std::string TImageList::IconName(int index) const {
    return index >= 0 && index < Count() ? FIcons[static_cast<std::size_t>(index)].Name : std::string();
}

TBitmap NamedBitmap(const std::string& iconName, int size, TColor background) {
    QImage image(size, size, QImage::Format_RGB32);
    image.fill(QColor(background.Red(), background.Green(), background.Blue()));
    QPainter painter(&image);
    PaintIcon(painter, iconName, QRect(0, 0, size, size), IconColorsOnLight());
    painter.end();
    TBitmap bitmap(size, size);
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x) {
            const QColor color = image.pixelColor(x, y);
            bitmap.SetPixel(x, y,
                            TColor::Rgb(static_cast<std::uint8_t>(color.red()),
                                        static_cast<std::uint8_t>(color.green()),
                                        static_cast<std::uint8_t>(color.blue())));
        }
    return bitmap;
}
