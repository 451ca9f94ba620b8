#include "tool_profiles.h"

#include "geometry.h"
#include "tool_kinds.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace qor {
namespace {

constexpr double Pi = std::numbers::pi;
constexpr double HalfPi = Pi / 2.0;
constexpr double Down = 1.5 * Pi; // straight down, where a tip arc touches the axis

// Shorter than this (in tool units, relative to the tool's size) a segment is not drawn.
double Tiny(double size)
{
    return 1e-9 * std::max(1.0, std::abs(size));
}

double Normalised(double angle)
{
    angle = std::fmod(angle, 2.0 * Pi);
    if (angle < 0.0) {
        angle += 2.0 * Pi;
    }
    return angle >= 2.0 * Pi ? 0.0 : angle;
}

// An angle usable as a slope from the axis or the tip face: inside (-90°, 90°).
bool IsSlopeAngle(double angle)
{
    return std::isfinite(angle) && std::abs(angle) < HalfPi && std::isfinite(std::tan(angle));
}

// Draws in tool units; every segment and arc of the right half together with its mirror image.
// A segment that continues the one before it in the same direction is drawn as one line with it,
// so that joins along a straight wall leave no mark. Flush() draws what is pending; call it
// before the pen width changes.
class Outline
{
public:
    Outline(PictureSurface &surface, const ViewTransform &view) : m_surface(surface), m_view(view)
    {}
    ~Outline() { Flush(); }
    Outline(const Outline &) = delete;
    Outline &operator=(const Outline &) = delete;

    void Pair(double x1, double y1, double x2, double y2)
    {
        if (x1 == x2 && y1 == y2) {
            return;
        }
        if (m_hasPending && m_pending.x2 == x1 && m_pending.y2 == y1 &&
            SameDirection(m_pending, x2 - x1, y2 - y1)) {
            m_pending.x2 = x2;
            m_pending.y2 = y2;
            return;
        }
        Flush();
        m_pending = {x1, y1, x2, y2};
        m_hasPending = true;
    }

    void Pair(const Vec3 &a, const Vec3 &b) { Pair(a[0], a[1], b[0], b[1]); }

    // One line across the axis, from −x to x.
    void Across(double x, double y)
    {
        Flush();
        if (x > 0.0) {
            m_surface.Line(X(-x), Y(y), X(x), Y(y));
        }
    }

    // The arc counter-clockwise from `start` to `end` about (cx, cy), and its mirror image, which
    // runs from π − end to π − start about (−cx, cy).
    void ArcPair(double cx, double cy, double r, double start, double end)
    {
        Flush();
        if (!(r > 0.0)) {
            return;
        }
        const double radius = r * m_view.s;
        m_surface.Circle(X(cx), Y(cy), radius, Normalised(start), Normalised(end));
        m_surface.Circle(X(-cx), Y(cy), radius, Normalised(Pi - end), Normalised(Pi - start));
    }

    void ArcPair(const Fillet &f, double r)
    {
        ArcPair(f.centre[0], f.centre[1], r, f.startAngle, f.endAngle);
    }

    void Flush()
    {
        if (m_hasPending) {
            const Segment &p = m_pending;
            m_surface.Line(X(p.x1), Y(p.y1), X(p.x2), Y(p.y2));
            m_surface.Line(X(-p.x1), Y(p.y1), X(-p.x2), Y(p.y2));
            m_hasPending = false;
        }
    }

    void SetWidth(int width)
    {
        Flush();
        m_surface.SetDrawWidth(width);
    }

    double X(double x) const { return x * m_view.s + m_view.ox; }
    double Y(double y) const { return y * m_view.s + m_view.oy; }

private:
    struct Segment
    {
        double x1 = 0.0;
        double y1 = 0.0;
        double x2 = 0.0;
        double y2 = 0.0;
    };

    static bool SameDirection(const Segment &p, double dx, double dy)
    {
        const double px = p.x2 - p.x1;
        const double py = p.y2 - p.y1;
        const double cross = px * dy - py * dx;
        return px * dx + py * dy > 0.0 &&
               std::abs(cross) <= 1e-12 * std::hypot(px, py) * std::hypot(dx, dy);
    }

    PictureSurface &m_surface;
    const ViewTransform &m_view;
    Segment m_pending;
    bool m_hasPending = false;
};

// The arc of radius r that rounds the corner where the line through p1 along d1 turns left into
// the line through p2 along d2.
bool Round(const Vec3 &p1, const Vec3 &d1, const Vec3 &p2, const Vec3 &d2, double r, Fillet &f)
{
    return FilletCircle(p1, MakePoint(p1[0] + d1[0], p1[1] + d1[1]), p2,
                        MakePoint(p2[0] + d2[0], p2[1] + d2[1]), r, f) == GeoOk;
}

// How far from the corner a fillet of radius 1 touches the lines, for a turn of `turn` radians.
double TangentLength(double turn)
{
    return turn > 0.0 && turn < Pi ? std::tan(turn / 2.0) : 0.0;
}

void OutlineWidth(Outline &out, const DrawInputs &in)
{
    if (!in.ArborOnly) {
        out.SetWidth(2);
    }
}

double FlankAngle(const DrawInputs &in)
{
    return IsSlopeAngle(in.Theta) ? in.Theta : 0.0;
}

// A flank that narrows as it rises (a back taper, a dovetail, a lollipop cutter) cannot run on
// through the axis: a real tool of that shape narrows to a neck that carries the head and goes
// straight up from there. The neck is taken as half the tool's diameter, about what such
// cutters stand on.
double NarrowestRadius(const DrawInputs &in)
{
    return std::max(0.0, in.DrawDia / 4.0);
}

// The largest corner radius whose touch point on a narrowing flank still lies outside the neck:
// the flank starts from its corner at `x` and the rounding touches it `perRadius` · r further on.
double RoomOnNarrowingFlank(double x, double theta, double neck, double perRadius)
{
    if (theta >= 0.0) {
        return std::numeric_limits<double>::infinity();
    }
    const double inwards = perRadius * std::sin(-theta);
    return x > neck && inwards > 0.0 ? (x - neck) / inwards : 0.0;
}

// From `from` at `slope` up to `top`. Narrowing, it stops at the neck (or where it starts, when
// that is narrower still) and goes straight up from there.
ProfileEnd Rise(Outline &out, ProfileEnd from, double top, double slope, double neck)
{
    if (!(top > from.y)) {
        return from;
    }
    const double x = from.x + (top - from.y) * slope;
    const double narrowest = std::min(neck, from.x);
    if (slope < 0.0 && x < narrowest) {
        const double y = from.y + (from.x - narrowest) / -slope;
        out.Pair(from.x, from.y, narrowest, y);
        out.Pair(narrowest, y, narrowest, top);
        return {narrowest, top};
    }
    out.Pair(from.x, from.y, x, top);
    return {x, top};
}

ProfileEnd Shank(Outline &out, const DrawInputs &in, ProfileEnd from, double slope);

// The flank from (x, y) at the slope up to the flute length (never downwards), then the shank.
ProfileEnd FlankAndShank(Outline &out, const DrawInputs &in, double x, double y, double slope)
{
    const double top = std::max<double>(in.Lc, y);
    return Shank(out, in, Rise(out, {x, y}, top, slope, NarrowestRadius(in)), slope);
}

// The tip cone: lines from the axis at `cone` from the tip face up to the full diameter, where the
// flank begins; R rounds the point and the shoulder.
ProfileEnd ConeTip(Outline &out, const DrawInputs &in, double cone)
{
    const double c = in.DrawDia / 2.0;
    const double theta = FlankAngle(in);
    const Vec3 along = MakeDirection(std::cos(cone), std::sin(cone));
    const Vec3 up = MakeDirection(std::sin(theta), std::cos(theta));
    const Vec3 apex = MakePoint(0.0, 0.0);
    const Vec3 shoulder = MakePoint(c, c * std::tan(cone));

    // Both roundings share the cone line; a radius too large for it shrinks until they meet, or
    // until the shoulder's rounding would reach past the neck of a narrowing flank.
    double r = std::max(0.0, static_cast<double>(in.DrawRad));
    const double shoulderTurn = HalfPi - theta - cone;
    const double perRadius = TangentLength(2.0 * cone) + TangentLength(shoulderTurn);
    const double coneLength = c / std::cos(cone);
    if (r * perRadius > coneLength) {
        r = coneLength / perRadius;
    }
    r = std::min(r,
                 RoomOnNarrowingFlank(c, theta, NarrowestRadius(in), TangentLength(shoulderTurn)));

    Vec3 coneStart = apex;
    Fillet tip;
    if (r > 0.0 && Round(MakePoint(-along[0], along[1]), MakeDirection(along[0], -along[1]), apex,
                         along, r, tip)) {
        out.ArcPair(0.0, tip.centre[1], r, Down, tip.endAngle);
        coneStart = tip.touch2;
    }
    Vec3 coneEnd = shoulder;
    Vec3 flankStart = shoulder;
    Fillet round;
    if (r > 0.0 && shoulderTurn > 0.0 && Round(apex, along, shoulder, up, r, round)) {
        coneEnd = round.touch1;
        flankStart = round.touch2;
    }
    out.Pair(coneStart, coneEnd);
    if (coneEnd != flankStart) {
        out.ArcPair(round, r);
    }
    return FlankAndShank(out, in, flankStart[0], flankStart[1], std::tan(theta));
}

ProfileEnd Shank(Outline &out, const DrawInputs &in, ProfileEnd from, double slope)
{
    double x = from.x;
    double y = from.y;
    const double length = in.DrawLength;
    // Without a neck of its own (length modes 0 and 1) the body goes straight up from where the
    // flutes end, as a taper tool's does.
    if (!std::isfinite(slope) || in.LengthMode < 2) {
        slope = 0.0;
    }
    if (!(y < length)) {
        return from;
    }
    const auto to = [&](double nx, double ny) {
        out.Pair(x, y, nx, ny);
        x = nx;
        y = ny;
    };
    const double shank = in.ShankDia > 0.0f ? in.ShankDia / 2.0 : x;
    const double tolerance = Tiny(shank);
    const double neck = NarrowestRadius(in);
    // Rises at `grow` (x per y) to `top`; a rise that reaches the shank radius on its way runs
    // into the shank there, and a narrowing one stops at the neck.
    const auto rise = [&](double top, double grow) {
        top = std::min(top, length);
        if (!(top > y)) {
            return;
        }
        const double nx = x + (top - y) * grow;
        const bool intoShank =
            grow > 0.0 ? x <= shank + tolerance && nx > shank
                       : grow < 0.0 && shank >= neck && x >= shank - tolerance && nx < shank;
        if (intoShank) {
            to(shank, y + std::abs(shank - x) / std::abs(grow));
            return;
        }
        const ProfileEnd end = Rise(out, {x, y}, top, grow, neck);
        x = end.x;
        y = end.y;
    };

    if (in.LengthMode == 3) {
        rise(in.NeckLength2, slope);
        rise(static_cast<double>(in.NeckLength2) + in.TaperLength,
             std::abs(std::tan(in.NeckTaper)));
    } else {
        rise(in.NeckLength, slope);
    }
    if (y < length && std::abs(shank - x) > tolerance) {
        const double angle = in.ShoulderAngle;
        if (angle > 0.0f && IsSlopeAngle(angle)) {
            const double height = std::abs(shank - x) / std::tan(angle);
            const double part = std::min(1.0, (length - y) / height);
            to(x + (shank - x) * part, y + height * part);
        } else {
            to(shank, y);
        }
    }
    if (y < length) {
        to(x, length);
    }
    return {x, y};
}

} // namespace

ProfileEnd DrawGeneralProfile(PictureSurface &surface, const DrawInputs &in,
                              const ViewTransform &view)
{
    Outline out(surface, view);
    OutlineWidth(out, in);
    const double c = in.DrawDia / 2.0;
    if (in.Q5 > 0.0f && IsSlopeAngle(in.Q5) && c > 0.0) {
        return ConeTip(out, in, in.Q5);
    }

    const double theta = FlankAngle(in);
    const double slope = std::tan(theta);
    const Vec3 up = MakeDirection(std::sin(theta), std::cos(theta));
    // Where the flank meets the tip face. A taper tool's diameter is where its flank touches the
    // tip ball, at c from the axis; the ball's radius is then c / cos θ, the flank touches it
    // (c / cos θ)(1 − sin θ) above the tip and so meets the tip face at c / (1 + sin θ).
    const double flankFoot = in.Kind == KindTap ? c / (1.0 + std::sin(theta)) : c;
    const Vec3 corner = MakePoint(std::max(flankFoot, 0.0), 0.0);

    double r = std::max(0.0, static_cast<double>(in.DrawRad));
    const double perRadius = TangentLength(HalfPi - theta);
    if (r * perRadius > corner[0]) {
        r = perRadius > 0.0 ? corner[0] / perRadius : 0.0;
    }
    r = std::min(r, RoomOnNarrowingFlank(corner[0], theta, NarrowestRadius(in), perRadius));
    Fillet round;
    if (r <= 0.0 || !Round(MakePoint(0.0, 0.0), MakeDirection(1.0, 0.0), corner, up, r, round)) {
        out.Across(corner[0], 0.0);
        return FlankAndShank(out, in, corner[0], 0.0, slope);
    }
    if (round.touch1[0] > Tiny(c)) {
        out.Across(round.touch1[0], 0.0);
    }
    out.ArcPair(round, r);
    return FlankAndShank(out, in, round.touch2[0], round.touch2[1], slope);
}

ProfileEnd DrawConcaveProfile(PictureSurface &surface, const DrawInputs &in,
                              const ViewTransform &view)
{
    Outline out(surface, view);
    OutlineWidth(out, in);
    const double c = std::max(0.0, in.DrawDia / 2.0);
    const double r = std::max(0.0, -static_cast<double>(in.DrawRad));
    const double slope = std::tan(FlankAngle(in));
    if (r >= c) {
        // A hollow as wide as the tool's radius or wider leaves nothing of the tip face and the
        // step under it: the hollows of both sides meet in a point on the axis at the tip. The
        // round keeps its radius and runs from that point up to the side, about a centre below
        // the tip face.
        const double below = std::sqrt(r * r - c * c);
        out.ArcPair(c, -below, r, HalfPi, std::atan2(below, -c));
        return FlankAndShank(out, in, c, r > 0.0 ? c * c / (r + below) : 0.0, slope);
    }
    const double inner = c - r;
    const double step = std::max(0.0, static_cast<double>(in.Q4) - r);

    out.Across(inner, 0.0);
    out.Pair(inner, 0.0, inner, step);
    out.ArcPair(c, step, r, HalfPi, Pi);
    return FlankAndShank(out, in, c, step + r, slope);
}

ProfileEnd DrawVerProfile(PictureSurface &surface, const DrawInputs &in, const ViewTransform &view)
{
    Outline out(surface, view);
    OutlineWidth(out, in);
    const double c = in.DrawDia / 2.0;
    const double inner = c - in.P;
    const bool hollow = in.P > 0.0f && inner > 0.0;
    if (hollow) {
        out.Pair(inner, 0.0, c, 0.0);
    } else {
        out.Across(c, 0.0);
    }
    const double top = std::max(0.0f, in.Lc);
    out.Pair(c, 0.0, c, top);
    OutlineWidth(out, in);
    const ProfileEnd end = Shank(out, in, {c, top}, 0.0);

    if (hollow) {
        // The hollow is hidden behind the ring in a side view: thin lines.
        const int width = surface.DrawWidth();
        out.SetWidth(1);
        const double depth = inner / 3.0;
        out.Pair(inner, 0.0, inner, depth);
        out.Across(inner, depth);
        out.SetWidth(width);
    }
    return end;
}

ProfileEnd DrawOvalProfile(PictureSurface &surface, const DrawInputs &in, const ViewTransform &view)
{
    Outline out(surface, view);
    const double c = in.DrawDia / 2.0;
    const double halfWidth = in.P;
    const double halfHeight = std::max(0.0f, in.DrawRad);
    if (halfWidth > 0.0 && halfHeight > 0.0) {
        surface.Circle(out.X(0.0), out.Y(halfHeight), std::max(halfHeight, halfWidth) * view.s,
                       3.14159265358979, 6.28318530717958, halfHeight / halfWidth);
        out.Pair(halfWidth, halfHeight, c, halfHeight);
    } else if (halfWidth > 0.0) {
        out.Across(halfWidth, 0.0);
        out.Pair(halfWidth, 0.0, c, 0.0);
    } else {
        out.Across(c, halfHeight);
    }
    const double top = std::max<double>(in.Lc, halfHeight);
    out.Pair(c, halfHeight, c, top);
    out.SetWidth(1);
    return Shank(out, in, {c, top}, 0.0);
}

ProfileEnd DrawRadiusProfile(PictureSurface &surface, const DrawInputs &in,
                             const ViewTransform &view)
{
    Outline out(surface, view);
    OutlineWidth(out, in);
    const double c = in.DrawDia / 2.0;
    const double p = in.P;
    // The pilot cannot be thinner than nothing.
    const double r = std::min<double>(in.DrawRad, c / 2.0);
    if (!(r > 0.0) || !(p > 0.0)) {
        out.Across(c, 0.0);
        return FlankAndShank(out, in, c, 0.0, 0.0);
    }
    // The round's centre lies d below the tip face when d >= 0.
    const double d = r - p;
    const double cx = c - r;
    const double cy = -d;
    if (d >= 0.0) {
        const double half = std::sqrt(std::max(0.0, r * r - d * d));
        out.Across(cx - half, 0.0);
        out.ArcPair(cx, cy, r, HalfPi, std::atan2(d, -half));
    } else {
        const double x = c - 2.0 * r;
        out.Across(x, 0.0);
        out.Pair(x, 0.0, x, cy);
        out.ArcPair(cx, cy, r, HalfPi, Pi);
    }
    out.Pair(cx, p, c, p);
    return FlankAndShank(out, in, c, p, 0.0);
}

ProfileEnd DrawTTProfile(PictureSurface &surface, const DrawInputs &in, const ViewTransform &view)
{
    Outline out(surface, view);
    OutlineWidth(out, in);
    const double c = in.DrawDia / 2.0;
    const double height = std::max(0.0f, in.P);
    const double edge = in.Q5 > 0.0f && IsSlopeAngle(in.Q5) ? static_cast<double>(in.Q5) : 0.0;

    // The lead edge rises at the edge angle over the disc's height, or from the axis when the
    // disc is too wide for that.
    double foot = c;
    double rise = 0.0;
    if (edge > 0.0 && height > 0.0) {
        foot = std::max(0.0, c - height / std::tan(edge));
        rise = (c - foot) * std::tan(edge);
    }
    double neck = c / 2.0;
    if (in.ShankDia > 0.0f) {
        neck = std::min(neck, in.ShankDia / 2.0);
    }
    const bool necked = in.Lc > height && neck < c;
    // Without a neck the side goes on above the disc, as far as the neck of the shank.
    const double sideTop =
        necked ? height
               : std::max(height,
                          static_cast<double>(in.LengthMode == 3 ? in.NeckLength2 : in.NeckLength));

    // The insert's corners are rounded with R: where the tip face turns into the lead edge (at
    // the axis the two lead edges meet in a point) and where the edge turns into the side; with
    // no lead edge the two are the one corner at the bottom of the side.
    const Vec3 footPoint = MakePoint(foot, 0.0);
    const Vec3 corner = MakePoint(c, rise);
    const Vec3 along = MakeDirection(std::cos(edge), std::sin(edge));
    const Vec3 up = MakeDirection(0.0, 1.0);
    const double radius = std::max(0.0f, in.DrawRad);
    const double edgeLength = std::hypot(c - foot, rise);
    const bool point = edge > 0.0 && foot <= 0.0;
    const double footTurn = point ? 2.0 * edge : edge;
    const double perFoot = TangentLength(footTurn);
    const double perCorner = TangentLength(HalfPi - edge);

    Vec3 edgeStart = footPoint;
    if (edge > 0.0) {
        double r = std::min(radius, edgeLength / (perFoot + perCorner));
        if (!point) {
            r = std::min(r, foot / perFoot);
        }
        Fillet nose;
        if (point && r > 0.0 &&
            Round(MakePoint(-along[0], along[1]), MakeDirection(along[0], -along[1]), footPoint,
                  along, r, nose)) {
            out.ArcPair(0.0, nose.centre[1], r, Down, nose.endAngle);
            edgeStart = nose.touch2;
        } else if (!point && r > 0.0 &&
                   Round(MakePoint(0.0, 0.0), MakeDirection(1.0, 0.0), footPoint, along, r, nose)) {
            out.Across(nose.touch1[0], 0.0);
            out.ArcPair(nose, r);
            edgeStart = nose.touch2;
        } else {
            out.Across(foot, 0.0);
        }
    }
    const double edgeLeft = std::hypot(c - edgeStart[0], rise - edgeStart[1]);
    const double r =
        std::min({radius, (edge > 0.0 ? edgeLeft : c) / perCorner, (sideTop - rise) / perCorner});
    Vec3 sideStart = corner;
    Fillet round;
    if (r > 0.0 &&
        Round(edge > 0.0 ? footPoint : MakePoint(0.0, 0.0), along, corner, up, r, round)) {
        if (edge > 0.0) {
            out.Pair(edgeStart, round.touch1);
        } else {
            out.Across(round.touch1[0], 0.0);
        }
        out.ArcPair(round, r);
        sideStart = round.touch2;
    } else if (edge > 0.0) {
        out.Pair(edgeStart, corner);
    } else {
        out.Across(c, 0.0);
    }
    if (!necked) {
        return Shank(out, in, {sideStart[0], sideStart[1]}, 0.0);
    }
    out.Pair(sideStart[0], sideStart[1], c, height);
    out.Pair(c, height, neck, height);
    out.Pair(neck, height, neck, in.Lc);
    return Shank(out, in, {neck, in.Lc}, 0.0);
}

ProfileEnd DrawShank(PictureSurface &surface, const DrawInputs &in, const ViewTransform &view,
                     ProfileEnd from, double slope)
{
    Outline out(surface, view);
    return Shank(out, in, from, slope);
}

} // namespace qor
