#include "geometry.h"
#include "matrix_pg.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <tuple>

namespace qor {
namespace {

constexpr double Pi = std::numbers::pi;
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Inf = std::numeric_limits<double>::infinity();
constexpr double Tol = 1e-9;
constexpr Vec3 Untouched = {7.0, 8.0, 9.0};

double Radians(double degrees)
{
    return degrees * Pi / 180.0;
}

double DistanceFrom(const Vec3 &line, const Vec3 &point)
{
    double d = NaN;
    EXPECT_EQ(SignedDistance(line, point, d), GeoOk);
    return d;
}

double Length(const Vec3 &a, const Vec3 &b)
{
    return std::hypot(a[0] - b[0], a[1] - b[1]);
}

Vec3 Line(const Vec3 &p, const Vec3 &q)
{
    Vec3 line{};
    EXPECT_EQ(LineThroughPoints(p, q, line), GeoOk);
    return line;
}

// The difference of two angles, folded into (−π, π].
double AngleBetween(double a, double b)
{
    double d = std::remainder(a - b, 2.0 * Pi);
    return d == -Pi ? Pi : d;
}

#define EXPECT_POINT_NEAR(p, x, y)                                                                 \
    do {                                                                                           \
        EXPECT_NEAR((p)[0], (x), Tol);                                                             \
        EXPECT_NEAR((p)[1], (y), Tol);                                                             \
        EXPECT_EQ((p)[2], 1.0);                                                                    \
    } while (false)

// The building blocks of the fillets on a hand-checked figure; every refusal leaves the output as
// it was.
TEST(Geometry, LinesMeetOnlyWhereTheyCan)
{
    const Vec3 a = Line(MakePoint(0, 0), MakePoint(2, 1));
    Vec3 point{};
    Vec3 untouched = Untouched;

    ASSERT_EQ(IntersectLines(a, {1, 0, -4}, point), GeoOk);
    EXPECT_EQ(IntersectLines(a, Line(MakePoint(0, 3), MakePoint(2e15, 1e15 + 3.5)), untouched),
              GeoParallel)
        << "meets 10^16 away";
    EXPECT_EQ(IntersectLines(a, {0, 0, 1}, untouched), GeoDegenerate) << "line at infinity";
    EXPECT_EQ(OffsetLine(MakePoint(1, 1), MakePoint(1, 1), 2.0, untouched), GeoDegenerate);
    EXPECT_EQ(OffsetLine(MakePoint(0, 0), MakePoint(1, 1), NaN, untouched), GeoDegenerate);
    EXPECT_EQ(Normalize3({Inf, 0, 0}, untouched), GeoDegenerate);

    EXPECT_POINT_NEAR(point, 4.0, 2.0);
    EXPECT_EQ(untouched, Untouched);
}

// The corner of a tool's right-hand outline: the tip line outwards along y = 0 to (10, 0), then
// the flank upwards at theta from the axis.
TEST(FilletCircle, TouchesTipAndFlankFromInsideForAnyFlankAngle)
{
    const Vec3 axis = MakePoint(0, 0);
    const Vec3 corner = MakePoint(10, 0);
    for (double degrees : {-60.0, -30.0, -5.0, 0.0, 5.0, 20.0, 45.0, 80.0}) {
        for (double r : {0.0, 0.5, 2.0, 5.0}) {
            SCOPED_TRACE(testing::Message() << "theta " << degrees << ", R " << r);
            const double theta = Radians(degrees);
            const Vec3 up = MakePoint(10 + std::sin(theta), std::cos(theta));
            const Vec3 tip = Line(axis, corner);
            const Vec3 flank = Line(corner, up);
            Fillet f;

            ASSERT_EQ(FilletCircle(axis, corner, corner, up, r, f), GeoOk);

            EXPECT_NEAR(DistanceFrom(tip, f.centre), r, Tol) << "inside, R from the tip";
            EXPECT_NEAR(DistanceFrom(flank, f.centre), r, Tol) << "inside, R from the flank";
            EXPECT_NEAR(DistanceFrom(tip, f.touch1), 0.0, Tol);
            EXPECT_NEAR(DistanceFrom(flank, f.touch2), 0.0, Tol);
            EXPECT_NEAR(Length(f.centre, f.touch1), r, Tol);
            EXPECT_NEAR(Length(f.centre, f.touch2), r, Tol);
            if (r == 0.0) {
                EXPECT_POINT_NEAR(f.centre, 10.0, 0.0); // the sharp corner
                continue;
            }
            // Drawn counter-clockwise from straight down to 2π − θ; the arc's middle lies towards
            // the corner, so it is the arc that rounds the corner off.
            EXPECT_NEAR(AngleBetween(f.startAngle, 1.5 * Pi), 0.0, Tol);
            EXPECT_NEAR(AngleBetween(f.endAngle, 2 * Pi - theta), 0.0, Tol);
            const double sweep = std::fmod(f.endAngle - f.startAngle + 2 * Pi, 2 * Pi);
            EXPECT_NEAR(sweep, Pi / 2 - theta, Tol);
            const double middle = f.startAngle + sweep / 2;
            const Vec3 onArc =
                MakePoint(f.centre[0] + r * std::cos(middle), f.centre[1] + r * std::sin(middle));
            EXPECT_LT(Length(onArc, corner), Length(f.centre, corner));
        }
    }
}

TEST(FilletCircle, RefusesParallelLinesBadRadiiAndMissingLinesWithoutWriting)
{
    const Vec3 a = MakePoint(0, 0);
    const Vec3 b = MakePoint(5, 0);
    Fillet f;
    f.centre = Untouched;

    EXPECT_EQ(FilletCircle(a, b, MakePoint(0, 3), MakePoint(5, 3), 1.0, f), GeoParallel);
    EXPECT_EQ(FilletCircle(a, b, MakePoint(5, 3), MakePoint(0, 3), 1.5, f), GeoParallel);
    for (double r : {-1.0, NaN, Inf}) {
        EXPECT_EQ(FilletCircle(a, b, b, MakePoint(5, 1), r, f), GeoBadRadius) << r;
    }
    EXPECT_EQ(FilletCircle(a, a, b, MakePoint(5, 1), 1.0, f), GeoDegenerate);

    EXPECT_EQ(f.centre, Untouched);
}

TEST(TaperDiameter, IsWhereTheFlankTouchesTheTipBallAndRefusesDegenerateInput)
{
    // R, θ in degrees, and the diameter 2 R cos θ where the flank touches the ball of radius R.
    for (const auto &[r, degrees, expected] : {std::tuple{1.0, 5.0, 1.9923894f},
                                               {2.5, 0.0, 5.0f},
                                               {1.0, -30.0, 1.7320508f},
                                               {0.0, 5.0, 0.0f}}) {
        float d = -1.0f;
        ASSERT_EQ(TaperDiameter(r, degrees, d), GeoOk) << degrees;
        EXPECT_FLOAT_EQ(d, expected) << r << " " << degrees;
    }
    float kept = 42.0f;
    for (double degrees : {90.0, -90.0, NaN, Inf}) {
        EXPECT_EQ(TaperDiameter(2.0, degrees, kept), GeoDegenerate) << degrees;
    }
    EXPECT_EQ(TaperDiameter(-2.0, 10.0, kept), GeoBadRadius);
    EXPECT_EQ(TaperDiameter(Inf, 10.0, kept), GeoBadRadius);
    EXPECT_EQ(kept, 42.0f);
}

} // namespace
} // namespace qor
