#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QPainter>

#include "contracts/Exceptions.h"
#include "platform/widgets/QtText.h"
#include "platform/widgets/look/ImageList.h"
#include "platform/widgets/look/Images.h"
#include "platform/widgets/look/Look.h"

namespace {

int PixelsThatStandOut(const std::string& iconName) {
    const QColor background = QApplication::palette().color(QPalette::Base);
    QImage image(16, 16, QImage::Format_RGB32);
    image.fill(background);
    QPainter painter(&image);
    NamedIcon(iconName).paint(&painter, image.rect());
    painter.end();
    int count = 0;
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x)
            count += std::abs(image.pixelColor(x, y).lightness() - background.lightness()) > 60;
    return count;
}

class Icons : public ::testing::TestWithParam<TPalette> {};

TEST_P(Icons, EveryDrawingIsLegible) {
    ApplyLook(GetParam());
    for (const std::string& name : IconNames())
        EXPECT_GT(PixelsThatStandOut(name), 12) << name;
    ApplyLook(TPalette::Light);
}

INSTANTIATE_TEST_SUITE_P(OnLightAndDark, Icons, ::testing::Values(TPalette::Light, TPalette::Dark));

TEST(ImageList, TheIndexesWithAMeaningShowTheirDrawing) {
    TImageList quorane(nullptr);
    TImageList states(nullptr);
    TImageList checks(nullptr);
    FillQuoraneImages(quorane);
    FillTreeStateImages(states);
    FillCheckImages(checks);
    const std::tuple<TImageList*, int, const char*> meanings[] = {
        {&quorane, 0, "project"},         {&quorane, 1, "book-closed"},           {&quorane, 2, "book-open"},
        {&quorane, 3, "requirement"},     {&quorane, 23, "requirement-locked"},   {&quorane, 40, "user"},
        {&quorane, 56, "serial-numbers"}, {&quorane, 57, "hierarchical-numbers"}, {&states, 1, "note"},
        {&states, 3, "people-talking"},   {&checks, 2, "check-checked"},
    };
    for (const auto& [images, index, name] : meanings)
        EXPECT_EQ(images->IconName(index), name);
    EXPECT_TRUE(states.Icon(0).isNull());
    EXPECT_TRUE(states.Icon(99).isNull());
}

TEST(ImageList, ADrawingKeepsItsShapeInAPlaceThatIsNotSquare) {
    QImage image(16, 32, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    NamedIcon("check-empty").paint(&painter, image.rect());
    painter.end();
    for (int x = 0; x < 16; ++x) {
        EXPECT_EQ(qAlpha(image.pixel(x, 4)), 0);
        EXPECT_EQ(qAlpha(image.pixel(x, 28)), 0);
    }
}

TEST(ImageList, TheMaskColourOfAPictureIsTransparent) {
    TBitmap bitmap(16, 16);
    const TColor mask = TColor::Rgb(255, 0, 255);
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x)
            bitmap.SetPixel(x, y, x == 8 ? TColor::Rgb(10, 20, 30) : mask);
    TImageList images(nullptr);
    const QImage shown = images.Icon(images.AddMasked(bitmap, mask)).pixmap(16, 16).toImage();
    EXPECT_EQ(qAlpha(shown.pixel(0, 0)), 0);
    EXPECT_EQ(shown.pixelColor(8, 3), QColor(10, 20, 30));
}

TEST(ImageList, AnUnknownDrawingIsRefused) {
    TImageList images(nullptr);
    EXPECT_THROW(images.Put(0, "no-such-drawing"), Exception);
    EXPECT_EQ(images.Count(), 0);
}

} // namespace
