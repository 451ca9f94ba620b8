#include "geometry.h"
#include "matrix_pg.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>

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

TEST(MatrixPG, CrossGivesTheLineThroughTwoPointsAndTheMeetingPointOfTwoLines)
{
    EXPECT_EQ(Cross3({0, 0, 1}, {1, 0, 1}), (Vec3{0, 1, 0})); // y = 0

    EXPECT_EQ(Cross3({1, 0, -2}, {0, 1, -3}), (Vec3{2, 3, 1})); // x = 2 meets y = 3
}

TEST(MatrixPG, Normalize3ScalesOverAllThreeComponents)
{
    Vec3 n{};
    Vec3 huge{};

    ASSERT_EQ(Normalize3({3, 4, 12}, n), GeoOk);
    ASSERT_EQ(Normalize3({3e300, 4e300, 0}, huge), GeoOk);

    EXPECT_DOUBLE_EQ(n[0], 3.0 / 13.0);
    EXPECT_DOUBLE_EQ(n[1], 4.0 / 13.0);
    EXPECT_DOUBLE_EQ(n[2], 12.0 / 13.0);
    EXPECT_DOUBLE_EQ(huge[0], 0.6) << "no overflow near the double range";
}

TEST(MatrixPG, Normalize3RefusesZeroAndNonFiniteVectorsAndKeepsItsOutput)
{
    for (const Vec3 &u : {Vec3{0, 0, 0}, Vec3{NaN, 1, 1}, Vec3{Inf, 0, 0}}) {
        Vec3 n = Untouched;

        EXPECT_EQ(Normalize3(u, n), GeoDegenerate);

        EXPECT_EQ(n, Untouched);
    }
}

TEST(OffsetLine, MovesTheLineParallelByTheDistanceToItsLeft)
{
    for (int degrees = 0; degrees < 360; degrees += 25) {
        for (double d : {-2.5, 0.0, 0.75, 40.0}) {
            SCOPED_TRACE(testing::Message() << degrees << " degrees, d = " << d);
            const Vec3 p = MakePoint(3, -1);
            const Vec3 q =
                MakePoint(3 + std::cos(Radians(degrees)), -1 + std::sin(Radians(degrees)));
            const Vec3 farLeft = MakePoint(3 - 10 * std::sin(Radians(degrees)),
                                           -1 + 10 * std::cos(Radians(degrees)));
            Vec3 moved{};

            ASSERT_EQ(OffsetLine(p, q, d, moved), GeoOk);

            EXPECT_NEAR(DistanceFrom(moved, p), -d, Tol);
            EXPECT_NEAR(DistanceFrom(moved, q), -d, Tol);
            EXPECT_NEAR(DistanceFrom(moved, farLeft), 10.0 - d, Tol) << "direction kept";
        }
    }
}

TEST(OffsetLine, RefusesCoincidentPointsAndANonFiniteDistance)
{
    Vec3 line = Untouched;

    EXPECT_EQ(OffsetLine(MakePoint(1, 1), MakePoint(1, 1), 2.0, line), GeoDegenerate);
    EXPECT_EQ(OffsetLine(MakePoint(0, 0), MakePoint(1, 1), Inf, line), GeoDegenerate);
    EXPECT_EQ(OffsetLine(MakePoint(0, 0), MakePoint(1, 1), NaN, line), GeoDegenerate);

    EXPECT_EQ(line, Untouched);
}

TEST(IntersectLines, FindsTheMeetingPointAndRefusesParallelLines)
{
    Vec3 a{};
    Vec3 b{};
    Vec3 nearlyB{};
    ASSERT_EQ(LineThroughPoints(MakePoint(0, 0), MakePoint(2, 1), a), GeoOk);
    ASSERT_EQ(LineThroughPoints(MakePoint(0, 3), MakePoint(2, 4), b), GeoOk);
    ASSERT_EQ(LineThroughPoints(MakePoint(0, 3), MakePoint(2e15, 1e15 + 3.5), nearlyB), GeoOk);
    Vec3 point{};
    Vec3 untouched = Untouched;

    ASSERT_EQ(IntersectLines(a, {1, 0, -4}, point), GeoOk);
    EXPECT_EQ(IntersectLines(a, b, untouched), GeoParallel);
    EXPECT_EQ(IntersectLines(a, nearlyB, untouched), GeoParallel) << "meets 10^16 away";
    EXPECT_EQ(IntersectLines(a, {0, 0, 1}, untouched), GeoDegenerate) << "line at infinity";
    EXPECT_EQ(IntersectLines(a, {NaN, 1, 0}, untouched), GeoDegenerate);

    EXPECT_POINT_NEAR(point, 4.0, 2.0);
    EXPECT_EQ(untouched, Untouched);
}

TEST(IntersectLineWithRay, MeetsTheLineAheadOrBehindTheOrigin)
{
    const Vec3 xAxis = {0, 1, 0};
    Vec3 ahead{};
    Vec3 behind{};
    Vec3 weighted{};
    Vec3 untouched = Untouched;

    ASSERT_EQ(IntersectLineWithRay(xAxis, MakePoint(0, 5), MakeDirection(1, -1), ahead), GeoOk);
    ASSERT_EQ(IntersectLineWithRay(xAxis, MakePoint(0, 5), MakeDirection(-1, 1), behind), GeoOk);
    ASSERT_EQ(IntersectLineWithRay(xAxis, {0, 10, 2}, {1, -1, 7}, weighted), GeoOk);
    EXPECT_EQ(IntersectLineWithRay(xAxis, MakePoint(0, 5), MakeDirection(3, 0), untouched), 1)
        << "the first dot product is 0: parallel";

    EXPECT_POINT_NEAR(ahead, 5.0, 0.0);
    EXPECT_POINT_NEAR(behind, 5.0, 0.0);
    EXPECT_POINT_NEAR(weighted, 5.0, 0.0); // origin (0, 10, 2) is (0, 5); direction weight ignored
    EXPECT_EQ(untouched, Untouched);
}

TEST(CircleLineMeet, GivesBothCrossingsInTheLineDirectionOneWhereItTouchesNoneWhereItMisses)
{
    const Vec3 centre = MakePoint(1, 1);
    Vec3 crossing{};
    Vec3 touching{};
    Vec3 missing{};
    ASSERT_EQ(LineThroughPoints(MakePoint(0, 4), MakePoint(1, 4), crossing), GeoOk);
    ASSERT_EQ(LineThroughPoints(MakePoint(7, 6), MakePoint(-1, 6), touching), GeoOk);
    ASSERT_EQ(LineThroughPoints(MakePoint(0, 6.001), MakePoint(1, 6.001), missing), GeoOk);
    Vec3 first{};
    Vec3 second{};
    Vec3 touchA{};
    Vec3 touchB{};
    Vec3 untouched = Untouched;

    ASSERT_EQ(CircleLineMeet(crossing, centre, 5.0, first, second), GeoOk);
    ASSERT_EQ(CircleLineMeet(touching, centre, 5.0, touchA, touchB), GeoOk);
    EXPECT_EQ(CircleLineMeet(missing, centre, 5.0, untouched, untouched), GeoNoMeet);
    EXPECT_EQ(CircleLineMeet(crossing, centre, -5.0, untouched, untouched), GeoBadRadius);

    EXPECT_POINT_NEAR(first, -3.0, 4.0);
    EXPECT_POINT_NEAR(second, 5.0, 4.0);
    EXPECT_POINT_NEAR(touchA, 1.0, 6.0);
    EXPECT_POINT_NEAR(touchB, 1.0, 6.0);
    EXPECT_EQ(untouched, Untouched);
}

// The corner of a tool's right-hand outline: the tip line outwards along y = 0 to (10, 0), then
// the flank upwards at theta from the axis.
TEST(FilletCircle, TouchesTipAndFlankFromInsideForAnyFlankAngle)
{
    const Vec3 axis = MakePoint(0, 0);
    const Vec3 corner = MakePoint(10, 0);
    for (double degrees : {-60.0, -30.0, -5.0, 0.0, 5.0, 20.0, 45.0, 80.0}) {
        for (double r : {0.5, 2.0, 5.0}) {
            SCOPED_TRACE(testing::Message() << "theta " << degrees << ", R " << r);
            const double theta = Radians(degrees);
            const Vec3 up = MakePoint(10 + std::sin(theta), std::cos(theta));
            Vec3 tip{};
            Vec3 flank{};
            ASSERT_EQ(LineThroughPoints(axis, corner, tip), GeoOk);
            ASSERT_EQ(LineThroughPoints(corner, up, flank), GeoOk);
            Fillet f;

            ASSERT_EQ(FilletCircle(axis, corner, corner, up, r, f), GeoOk);

            EXPECT_NEAR(DistanceFrom(tip, f.centre), r, Tol) << "inside, R from the tip";
            EXPECT_NEAR(DistanceFrom(flank, f.centre), r, Tol) << "inside, R from the flank";
            EXPECT_NEAR(DistanceFrom(tip, f.touch1), 0.0, Tol);
            EXPECT_NEAR(DistanceFrom(flank, f.touch2), 0.0, Tol);
            EXPECT_NEAR(Length(f.centre, f.touch1), r, Tol);
            EXPECT_NEAR(Length(f.centre, f.touch2), r, Tol);
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

TEST(FilletCircle, RoundsAConeTipBetweenItsTwoLines)
{
    const double q5 = Radians(30.0);
    const Vec3 left = MakePoint(-10 * std::cos(q5), 10 * std::sin(q5));
    const Vec3 right = MakePoint(10 * std::cos(q5), 10 * std::sin(q5));
    const Vec3 apex = MakePoint(0, 0);
    Fillet f;

    ASSERT_EQ(FilletCircle(left, apex, apex, right, 2.0, f), GeoOk);

    EXPECT_POINT_NEAR(f.centre, 0.0, 2.0 / std::cos(q5));
    EXPECT_NEAR(AngleBetween(f.startAngle, 1.5 * Pi - q5), 0.0, Tol);
    EXPECT_NEAR(AngleBetween(f.endAngle, 1.5 * Pi + q5), 0.0, Tol);
    EXPECT_POINT_NEAR(f.touch2, 2.0 * std::cos(1.5 * Pi + q5),
                      f.centre[1] + 2.0 * std::sin(1.5 * Pi + q5));
}

TEST(FilletCircle, ZeroRadiusGivesTheSharpCorner)
{
    Fillet f;

    ASSERT_EQ(
        FilletCircle(MakePoint(0, 0), MakePoint(5, 0), MakePoint(5, 0), MakePoint(6, 4), 0.0, f),
        GeoOk);

    EXPECT_POINT_NEAR(f.centre, 5.0, 0.0);
    EXPECT_POINT_NEAR(f.touch1, 5.0, 0.0);
    EXPECT_POINT_NEAR(f.touch2, 5.0, 0.0);
}

TEST(FilletCircle, RefusesParallelLinesBadRadiiAndMissingLinesWithoutWriting)
{
    const Vec3 a = MakePoint(0, 0);
    const Vec3 b = MakePoint(5, 0);
    Fillet f;
    f.centre = Untouched;

    EXPECT_EQ(FilletCircle(a, b, MakePoint(0, 3), MakePoint(5, 3), 1.0, f), GeoParallel);
    EXPECT_EQ(FilletCircle(a, b, MakePoint(5, 3), MakePoint(0, 3), 1.5, f), GeoParallel);
    EXPECT_EQ(FilletCircle(a, b, b, MakePoint(5, 1), -1.0, f), GeoBadRadius);
    EXPECT_EQ(FilletCircle(a, b, b, MakePoint(5, 1), NaN, f), GeoBadRadius);
    EXPECT_EQ(FilletCircle(a, b, b, MakePoint(5, 1), Inf, f), GeoBadRadius);
    EXPECT_EQ(FilletCircle(a, a, b, MakePoint(5, 1), 1.0, f), GeoDegenerate);

    EXPECT_EQ(f.centre, Untouched);
}

TEST(TaperDiameter, IsTwiceTheFlankPositionAtTheFluteLength)
{
    float d1 = 0.0f;
    float cylinder = 0.0f;
    float sharp = 0.0f;

    ASSERT_EQ(TaperDiameter(2.0, 10.0, 30.0, d1), GeoOk);
    ASSERT_EQ(TaperDiameter(2.5, 0.0, 40.0, cylinder), GeoOk);
    ASSERT_EQ(TaperDiameter(0.0, 5.0, 20.0, sharp), GeoOk);

    // Ball of R = 2 centred at (0, 2); the flank touches it at (R cos θ, R − R sin θ) and rises
    // at θ from the axis: x(Lc) = R / cos θ + (Lc − R) tan θ
    //   = 2 / 0.9848078 + 28 × 0.1763270 = 2.0308532 + 4.9371555 = 6.9680087.
    EXPECT_NEAR(d1, 13.936017f, 2e-5f);
    EXPECT_FLOAT_EQ(cylinder, 5.0f) << "a straight flank stands on the ball's equator";
    EXPECT_NEAR(sharp, 3.4995465f, 2e-5f) << "2 × 20 × tan 5°";
}

TEST(TaperDiameter, RefusesDegenerateInputWithoutWriting)
{
    float d = 42.0f;

    EXPECT_EQ(TaperDiameter(2.0, 90.0, 30.0, d), GeoDegenerate);
    EXPECT_EQ(TaperDiameter(2.0, -90.0, 30.0, d), GeoDegenerate);
    EXPECT_EQ(TaperDiameter(2.0, NaN, 30.0, d), GeoDegenerate);
    EXPECT_EQ(TaperDiameter(2.0, 10.0, -1.0, d), GeoDegenerate);
    EXPECT_EQ(TaperDiameter(1.0, -30.0, 50.0, d), GeoDegenerate) << "narrows below zero";
    EXPECT_EQ(TaperDiameter(1.0, 89.9999999, 1e35, d), GeoDegenerate) << "beyond a single";
    EXPECT_EQ(TaperDiameter(-2.0, 10.0, 30.0, d), GeoBadRadius);

    EXPECT_EQ(d, 42.0f);
}

} // namespace
} // namespace qor
