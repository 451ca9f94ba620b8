#include "geometry.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <numbers>

namespace qor {
namespace {

constexpr double Pi = 3.14159265358979;
constexpr double FullTurn = 2.0 * std::numbers::pi;

// Lines closer to parallel than this (sine of the angle between them) are treated as parallel:
// their meeting point would lie some 10^12 lengths away, far beyond any picture.
constexpr double ParallelSine = 1e-12;

// Rounding may push a touching line a hair outside the circle; accept that as touching.
constexpr double TouchTolerance = 1e-12;

// The point with weight 1; false for a point at infinity or non-finite input.
bool ToCartesian(const Vec3 &h, Vec3 &point)
{
    if (h[2] == 0.0 || !IsFinite3(h)) {
        return false;
    }
    const Vec3 p = {h[0] / h[2], h[1] / h[2], 1.0};
    if (!IsFinite3(p)) {
        return false;
    }
    point = p;
    return true;
}

// Length of the normal (a, b) of a line; 0 for the line at infinity or non-finite input.
double NormalLength(const Vec3 &line)
{
    if (!IsFinite3(line)) {
        return 0.0;
    }
    return std::hypot(line[0], line[1]);
}

double AngleOf(double dx, double dy)
{
    double angle = std::atan2(dy, dx);
    if (angle < 0.0) {
        angle += FullTurn;
    }
    return angle < FullTurn ? angle : 0.0;
}

} // namespace

GeoStatus LineThroughPoints(const Vec3 &p, const Vec3 &q, Vec3 &line)
{
    if (!IsFinite3(p) || !IsFinite3(q)) {
        return GeoDegenerate;
    }
    Vec3 unit;
    if (Normalize3(Cross3(p, q), unit) != GeoOk || NormalLength(unit) == 0.0) {
        return GeoDegenerate;
    }
    line = unit;
    return GeoOk;
}

GeoStatus IntersectLines(const Vec3 &l, const Vec3 &m, Vec3 &point)
{
    const double ln = NormalLength(l);
    const double mn = NormalLength(m);
    if (ln == 0.0 || mn == 0.0) {
        return GeoDegenerate;
    }
    const Vec3 w = Cross3(l, m);
    // w[2] = a1·b2 − a2·b1 is the sine of the angle between the lines times both normals' lengths.
    if (std::abs(w[2]) <= ParallelSine * ln * mn) {
        return GeoParallel;
    }
    Vec3 meet;
    if (!ToCartesian(w, meet)) {
        return GeoParallel;
    }
    point = meet;
    return GeoOk;
}

GeoStatus SignedDistance(const Vec3 &line, const Vec3 &point, double &distance)
{
    const double n = NormalLength(line);
    Vec3 p;
    if (n == 0.0 || !ToCartesian(point, p)) {
        return GeoDegenerate;
    }
    const double d = Dot3(line, p) / n;
    if (!std::isfinite(d)) {
        return GeoDegenerate;
    }
    distance = d;
    return GeoOk;
}

GeoStatus OffsetLine(const Vec3 &p, const Vec3 &q, double d, Vec3 &line)
{
    Vec3 base;
    if (!std::isfinite(d) || LineThroughPoints(p, q, base) != GeoOk) {
        return GeoDegenerate;
    }
    // With a unit normal, Dot3(line, r) is r's signed distance; lowering c by d·|(a, b)| keeps the
    // normal and puts the line where that distance was d.
    const Vec3 shift = {0.0, 0.0, NormalLength(base)};
    Vec3 moved;
    for (int i = 0; i < 3; ++i) {
        moved[i] = base[i] - d * shift[i];
    }
    Vec3 unit;
    if (Normalize3(moved, unit) != GeoOk) {
        return GeoDegenerate;
    }
    line = unit;
    return GeoOk;
}

GeoStatus IntersectLineWithRay(const Vec3 &line, const Vec3 &origin, const Vec3 &direction,
                               Vec3 &meet)
{
    const Vec3 v = MakeDirection(direction[0], direction[1]);
    const double along = Dot3(line, v);
    if (along == 0.0) {
        return GeoParallel;
    }
    Vec3 o;
    if (!IsFinite3(line) || !IsFinite3(v) || !ToCartesian(origin, o)) {
        return GeoDegenerate;
    }
    // o + t·v lies on the line when Dot3(line, o) + t·Dot3(line, v) = 0.
    const double t = -Dot3(line, o) / along;
    Vec3 point;
    for (int i = 0; i < 3; ++i) {
        point[i] = o[i] + t * v[i];
    }
    if (!IsFinite3(point)) {
        return GeoParallel;
    }
    meet = point;
    return GeoOk;
}

GeoStatus FootOfPerpendicular(const Vec3 &line, const Vec3 &p, Vec3 &foot)
{
    Vec3 r;
    if (NormalLength(line) == 0.0 || !ToCartesian(p, r)) {
        return GeoDegenerate;
    }
    const double k = Dot3(line, r) / (std::pow(line[0], 2.0) + std::pow(line[1], 2.0));
    const Vec3 f = {r[0] - k * line[0], r[1] - k * line[1], 1.0};
    if (!IsFinite3(f)) {
        return GeoDegenerate;
    }
    foot = f;
    return GeoOk;
}

GeoStatus PerpendicularThrough(const Vec3 &p, const Vec3 &q, const Vec3 &r, Vec3 &perpendicular,
                               Vec3 &foot)
{
    Vec3 line;
    Vec3 through;
    if (LineThroughPoints(p, q, line) != GeoOk || !ToCartesian(r, through)) {
        return GeoDegenerate;
    }
    // The line through r and the point at infinity in the direction of the normal (a, b).
    Vec3 perp;
    Vec3 f;
    if (Normalize3(Cross3(through, MakeDirection(line[0], line[1])), perp) != GeoOk ||
        FootOfPerpendicular(line, through, f) != GeoOk) {
        return GeoDegenerate;
    }
    perpendicular = perp;
    foot = f;
    return GeoOk;
}

GeoStatus CircleLineMeet(const Vec3 &line, const Vec3 &centre, double radius, Vec3 &first,
                         Vec3 &second)
{
    if (!(radius >= 0.0) || !std::isfinite(radius)) {
        return GeoBadRadius;
    }
    const double n = NormalLength(line);
    Vec3 c;
    if (n == 0.0 || !ToCartesian(centre, c)) {
        return GeoDegenerate;
    }
    const double ua = line[0] / n;
    const double ub = line[1] / n;
    const double dist = Dot3(line, c) / n;
    double h2 = std::pow(radius, 2.0) - std::pow(dist, 2.0);
    if (h2 < 0.0) {
        if (h2 < -TouchTolerance * std::pow(radius, 2.0)) {
            return GeoNoMeet;
        }
        h2 = 0.0;
    }
    const double h = std::sqrt(h2);
    // The foot of the centre, then ±h along the line's direction (b, −a).
    const double fx = c[0] - dist * ua;
    const double fy = c[1] - dist * ub;
    const Vec3 a = {fx - h * ub, fy + h * ua, 1.0};
    const Vec3 b = {fx + h * ub, fy - h * ua, 1.0};
    if (!IsFinite3(a) || !IsFinite3(b)) {
        return GeoDegenerate;
    }
    first = a;
    second = b;
    return GeoOk;
}

namespace {

GeoStatus TouchPoint(const Vec3 &p, const Vec3 &q, const Vec3 &centre, double radius, Vec3 &touch)
{
    Vec3 perp;
    Vec3 foot;
    if (PerpendicularThrough(p, q, centre, perp, foot) != GeoOk) {
        return GeoDegenerate;
    }
    if (radius == 0.0) {
        touch = centre;
        return GeoOk;
    }
    const Vec3 towards = MakeDirection(foot[0] - centre[0], foot[1] - centre[1]);
    const double length = Norm3(towards);
    if (!(length > 0.0)) {
        return GeoDegenerate;
    }
    const double k = radius / length;
    const Vec3 t = {centre[0] + k * towards[0], centre[1] + k * towards[1], 1.0};
    if (!IsFinite3(t)) {
        return GeoDegenerate;
    }
    touch = t;
    return GeoOk;
}

} // namespace

GeoStatus TangentConstruction(const Vec3 &p1, const Vec3 &q1, const Vec3 &p2, const Vec3 &q2,
                              const Vec3 &centre, double radius, Vec3 &touch1, Vec3 &touch2)
{
    if (!(radius >= 0.0) || !std::isfinite(radius)) {
        return GeoBadRadius;
    }
    Vec3 c;
    if (!ToCartesian(centre, c)) {
        return GeoDegenerate;
    }
    Vec3 t1;
    Vec3 t2;
    if (const GeoStatus s = TouchPoint(p1, q1, c, radius, t1); s != GeoOk) {
        return s;
    }
    if (const GeoStatus s = TouchPoint(p2, q2, c, radius, t2); s != GeoOk) {
        return s;
    }
    touch1 = t1;
    touch2 = t2;
    return GeoOk;
}

GeoStatus FilletCircle(const Vec3 &p1, const Vec3 &q1, const Vec3 &p2, const Vec3 &q2, double r,
                       Fillet &fillet)
{
    if (!(r >= 0.0) || !std::isfinite(r)) {
        return GeoBadRadius;
    }
    Vec3 inner1;
    Vec3 inner2;
    if (OffsetLine(p1, q1, r, inner1) != GeoOk || OffsetLine(p2, q2, r, inner2) != GeoOk) {
        return GeoDegenerate;
    }
    // The centre is r from both lines on their left: where the two moved lines meet.
    Fillet result;
    if (const GeoStatus s = IntersectLines(inner1, inner2, result.centre); s != GeoOk) {
        return s;
    }
    if (const GeoStatus s =
            TangentConstruction(p1, q1, p2, q2, result.centre, r, result.touch1, result.touch2);
        s != GeoOk) {
        return s;
    }
    // Each touch point lies straight to the right of the centre, against the line's left normal;
    // taking the angle from the normal keeps it defined for r = 0.
    result.startAngle = AngleOf(-inner1[0], -inner1[1]);
    result.endAngle = AngleOf(-inner2[0], -inner2[1]);
    fillet = result;
    return GeoOk;
}

GeoStatus TaperDiameter(double cornerRadius, double flankAngleDegrees, float &diameter)
{
    if (!(cornerRadius >= 0.0) || !std::isfinite(cornerRadius)) {
        return GeoBadRadius;
    }
    if (!(std::abs(flankAngleDegrees) < 90.0)) {
        return GeoDegenerate;
    }
    const double theta = flankAngleDegrees * Pi / 180.0;
    // The flank runs at theta from the axis, leaning outwards as it rises. Moved R to the right of
    // the parallel through the ball's centre (0, R) it touches the ball on the outside, at the
    // foot of the perpendicular from the centre.
    const Vec3 centre = MakePoint(0.0, cornerRadius);
    const Vec3 up = MakePoint(std::sin(theta), cornerRadius + std::cos(theta));
    Vec3 flank;
    Vec3 touch;
    if (OffsetLine(centre, up, -cornerRadius, flank) != GeoOk ||
        FootOfPerpendicular(flank, centre, touch) != GeoOk) {
        return GeoDegenerate;
    }
    // R cos θ is never negative; for R = 0 rounding may leave a trace below 0.
    const double d = std::max(0.0, 2.0 * touch[0]);
    if (!(d <= FLT_MAX)) {
        return GeoDegenerate;
    }
    diameter = static_cast<float>(d);
    return GeoOk;
}

} // namespace qor
