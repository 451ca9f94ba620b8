#include "qt_picture_surface.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <numbers>

namespace qor {
namespace {

// Painting needs a QGuiApplication (fonts, platform integration); the tests run offscreen.
class GuiEnvironment : public testing::Environment
{
public:
    void SetUp() override
    {
        static int argc = 1;
        static char name[] = "qt_surface_tests";
        static char *argv[] = {name, nullptr};
        m_app = std::make_unique<QGuiApplication>(argc, argv);
    }
    void TearDown() override { m_app.reset(); }

private:
    std::unique_ptr<QGuiApplication> m_app;
};

[[maybe_unused]] testing::Environment *const guiEnvironment =
    testing::AddGlobalTestEnvironment(new GuiEnvironment);

const QColor Background(250, 235, 190); // light, so that "dark" means drawn

// A 400 × 300 picture at 10 pixels per millimetre: 40 × 30 mm, the centre at pixel (200, 150).
QImage MakeImage(double devicePixelRatio = 1.0)
{
    QImage image(int(400 * devicePixelRatio), int(300 * devicePixelRatio), QImage::Format_ARGB32);
    image.setDotsPerMeterX(10000);
    image.setDotsPerMeterY(10000);
    image.setDevicePixelRatio(devicePixelRatio);
    image.fill(Background);
    return image;
}

// A line 10 mm below the centre, a red dot 5 mm right of and 4 mm above it, the upper right
// quarter of a circle of 8 mm; all in millimetres with y up.
void PaintKnownPicture(QImage &image)
{
    QtPictureSurface s(image);
    const double w = std::abs(s.ScaleWidth());
    const double h = std::abs(s.ScaleHeight());
    s.SetScale(-w / 2, h / 2, w / 2, -h / 2);
    s.SetDrawWidth(2);
    s.Line(-15, -10, 15, -10);
    s.PSet(5, 4, RgbRed);
    s.Circle(0, 0, 8, 0, std::numbers::pi / 2);
}

bool IsDark(QRgb pixel)
{
    return qGray(pixel) < 100;
}
bool IsRed(QRgb pixel)
{
    return qRed(pixel) > 200 && qGreen(pixel) < 60 && qBlue(pixel) < 60;
}

int DarkRunDown(const QImage &image, int x, int fromY, int toY)
{
    int count = 0;
    for (int y = fromY; y <= toY; ++y) {
        count += IsDark(image.pixel(x, y)) ? 1 : 0;
    }
    return count;
}

TEST(QtPictureSurface, PaintsAtTheLogicalPositionsWithYUpAndScalesPensWithThePixelRatio)
{
    QImage image = MakeImage();
    QImage doubled = MakeImage(2.0);

    PaintKnownPicture(image);
    PaintKnownPicture(doubled);

    EXPECT_TRUE(IsRed(image.pixel(250, 110))) << "the dot 5 mm right, 4 mm up";
    EXPECT_TRUE(IsDark(image.pixel(200, 250))) << "the line 10 mm down";
    EXPECT_TRUE(IsDark(image.pixel(56 + 200, 150 - 57))) << "the arc at 45 degrees";
    EXPECT_EQ(image.pixel(56 + 200, 150 + 57), Background.rgb()) << "not at -45 degrees";
    EXPECT_EQ(image.pixel(200 - 57, 150 - 56), Background.rgb()) << "not at 135 degrees";
    EXPECT_EQ(image.pixel(200, 150), Background.rgb());
    EXPECT_TRUE(IsRed(doubled.pixel(501, 221))) << "the dot is several device pixels wide";
    const int thin = DarkRunDown(image, 200, 240, 260);
    const int thick = DarkRunDown(doubled, 400, 480, 520);
    EXPECT_GE(thin, 2);
    EXPECT_NEAR(thick, 2 * thin, 1);
}

TEST(QtPictureSurface, ClearFillsWithTheBackColourAndFarLinesStillShow)
{
    QImage image = MakeImage();

    {
        QtPictureSurface s(image);
        s.Clear();
        s.SetScale(-20, 15, 20, -15);
        s.SetDrawWidth(2);
        s.Line(0, -1e12, 0, 1e12); // an outline run far off the picture on purpose
        s.Line(-1e12, -1e12, 1e12, 1e12);
    }

    EXPECT_EQ(image.pixel(10, 10), qRgb(255, 255, 255));
    EXPECT_TRUE(IsDark(image.pixel(200, 20)));
    EXPECT_TRUE(IsDark(image.pixel(200, 280)));
    EXPECT_TRUE(IsDark(image.pixel(300, 50))) << "the diagonal through the centre";
}

TEST(QtPictureSurface, LeavesABorrowedPainterAsItWas)
{
    QImage image = MakeImage();
    QPainter painter(&image);
    painter.translate(30, 40);

    {
        QtPictureSurface s(painter);
        s.PSet(0, 0, RgbRed);
    }

    EXPECT_EQ(painter.transform(), QTransform::fromTranslate(30, 40));
    painter.end();
    EXPECT_TRUE(IsRed(image.pixel(0, 0))) << "the surface paints in device coordinates";
}

// A sheet's picture box: a 100 × 80 pixel area at (200, 100), half a millimetre to the unit, so
// 20 × 16 units; the line 5 units below its centre lies 25 pixels down, and nothing leaves it.
TEST(QtPictureSurface, PaintsIntoAnAreaAtItsScaleAndNowhereElse)
{
    QImage image = MakeImage();
    QPainter painter(&image);

    {
        QtPictureSurface s(painter, QRectF(200, 100, 100, 80), 0.5, 0.1);
        EXPECT_DOUBLE_EQ(s.ScaleWidth(), 20.0);
        s.SetScale(-10, 8, 10, -8);
        s.SetDrawWidth(2);
        s.Line(-100, -5, 100, -5);
    }

    painter.end();
    EXPECT_TRUE(IsDark(image.pixel(250, 165)));
    EXPECT_TRUE(IsDark(image.pixel(202, 165)));
    EXPECT_FALSE(IsDark(image.pixel(197, 165))) << "drawn outside the area";
    EXPECT_FALSE(IsDark(image.pixel(303, 165))) << "drawn outside the area";
    EXPECT_EQ(DarkRunDown(image, 250, 155, 175), 2) << "a pen of 0.2 mm at 10 pixels a mm";
}

} // namespace
} // namespace qor
