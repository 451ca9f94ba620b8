#include "recording_surface.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>

namespace qor {
namespace {

constexpr double Pi = std::numbers::pi;
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

// What the tool drawing does before every redraw: origin in the centre, y up, same unit.
void CentreWithYUp(PictureSurface &surface)
{
    const double w = std::abs(surface.ScaleWidth());
    const double h = std::abs(surface.ScaleHeight());
    surface.SetScale(-w / 2, h / 2, w / 2, -h / 2);
}

TEST(RecordingSurface, MeasuresInMillimetresAndKeepsTheUnitAcrossCentredRedraws)
{
    RecordingSurface screen(400, 300);
    RecordingSurface s(100, 200, 25.4);
    RecordingSurface empty(0, 300);

    CentreWithYUp(s);
    CentreWithYUp(s);
    CentreWithYUp(empty);
    empty.Line(0, 0, 1, 1);

    EXPECT_DOUBLE_EQ(screen.ScaleWidth(), 400 * 25.4 / 96);
    EXPECT_DOUBLE_EQ(s.ScaleWidth(), 100.0);
    EXPECT_DOUBLE_EQ(s.ScaleHeight(), -200.0) << "y up";
    EXPECT_TRUE(empty.Primitives().empty()) << "a surface without area draws nothing";
}

TEST(RecordingSurface, CircleSweepsCounterClockwiseFromStartToEndWithItsAspect)
{
    RecordingSurface s(100, 100, 25.4);
    CentreWithYUp(s);

    s.Circle(0, 0, 5, 1.5 * Pi, 0.0);   // quarter from straight down to +x, wrapping round
    s.Circle(0, 0, 5, 0.0, 2 * Pi);     // full circle
    s.Circle(0, 0, 5, 1.0, 1.0);        // nothing
    s.Circle(0, 0, 5, -Pi / 2, Pi / 2); // right half: negative angles are plain angles
    s.Circle(0, 3, 6, Pi, 2 * Pi, 0.5); // flat: 6 wide, 3 high, resting on y = 0

    const std::vector<SurfaceArc> arcs = s.Arcs();
    ASSERT_EQ(arcs.size(), 4u);
    EXPECT_NEAR(arcs[0].sweep, Pi / 2, 1e-12);
    EXPECT_DOUBLE_EQ(arcs[1].sweep, 2 * Pi);
    EXPECT_DOUBLE_EQ(arcs[2].sweep, Pi);
    double sx, sy, ex, ey;
    RecordingSurface::ArcEnds(arcs[0], sx, sy, ex, ey);
    EXPECT_NEAR(sx, 0.0, 1e-12);
    EXPECT_NEAR(sy, -5.0, 1e-12);
    EXPECT_NEAR(ex, 5.0, 1e-12);
    EXPECT_NEAR(ey, 0.0, 1e-12);
    EXPECT_DOUBLE_EQ(arcs[3].rx, 6.0);
    EXPECT_DOUBLE_EQ(arcs[3].ry, 3.0);
}

TEST(RecordingSurface, BoundingBoxFollowsArcsToTheirExtremes)
{
    RecordingSurface s(100, 100, 25.4);
    CentreWithYUp(s);

    s.Circle(0, 3, 6, Pi, 2 * Pi, 0.5);       // lower half of an oval tip resting on y = 0
    s.Circle(20, 0, 1, 0.25 * Pi, 0.75 * Pi); // passes its top only
    s.PSet(0, 30, RgbRed);

    const Bounds box = s.BoundingBox().value();
    EXPECT_NEAR(box.left, -6.0, 1e-12);
    EXPECT_NEAR(box.bottom, 0.0, 1e-12);
    EXPECT_NEAR(box.right, 20.0 + std::sqrt(0.5), 1e-12);
    EXPECT_NEAR(box.top, 30.0, 1e-12);
    s.Clear();
    EXPECT_FALSE(s.BoundingBox().has_value());
}

TEST(RecordingSurface, IgnoresAndCountsCallsItCannotDraw)
{
    RecordingSurface s(100, 100, 25.4);
    CentreWithYUp(s);

    s.Line(0, 0, NaN, 1);
    s.PSet(std::numeric_limits<double>::infinity(), 0, RgbRed);
    s.Circle(0, 0, -1, 0, Pi);
    s.Circle(0, 0, 1, 0, Pi, 0.0);
    s.Circle(0, 0, 1, NaN, Pi);
    s.SetScale(5, 5, 5, -5);

    EXPECT_EQ(s.RefusedCalls(), 6);
    EXPECT_TRUE(s.Primitives().empty());
    EXPECT_DOUBLE_EQ(s.ScaleWidth(), 100.0) << "the previous scale stays";
}

} // namespace
} // namespace qor
