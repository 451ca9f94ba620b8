#pragma once

#include "matrix_pg.h"

namespace qor {

// Plane constructions on homogeneous vectors. Points are passed as (x, y, w) with w > 0 (usually
// MakePoint); points written back always have w = 1. Lines keep a direction: the line through p
// and q runs from p to q, and Dot3(line, r) is positive for points r on its left. Every routine
// returns GeoOk or a failure status with all outputs untouched; see GeoStatus.

// The line through p and q (Cross3, then Normalize3), directed from p to q.
// GeoDegenerate when p and q coincide.
GeoStatus LineThroughPoints(const Vec3 &p, const Vec3 &q, Vec3 &line);

// The meeting point of two lines. GeoParallel when they are parallel (or so nearly that the
// point would lie beyond any drawing), GeoDegenerate for a line without direction.
GeoStatus IntersectLines(const Vec3 &l, const Vec3 &m, Vec3 &point);

// Signed distance of a point from a line: positive on the line's left.
GeoStatus SignedDistance(const Vec3 &line, const Vec3 &point, double &distance);

// The line through p and q moved parallel by d to its LEFT (seen walking from p to q); a negative
// d moves it to the right. Walking a tool's right-hand outline from the tip outwards and then up
// the flank, the tool's body is on the left, so a positive d moves the tip line up and the flank
// line towards the axis: "inwards". GeoDegenerate when p and q coincide.
GeoStatus OffsetLine(const Vec3 &p, const Vec3 &q, double d, Vec3 &line);

// Where the line through `origin` along `direction` (its weight is ignored) meets `line`. The
// parameter is not restricted to the forward half, so a meeting point behind the origin is
// returned too. GeoParallel (1) when Dot3(line, direction) is exactly 0 or the point lies out of
// range; GeoDegenerate for an origin with weight 0.
GeoStatus IntersectLineWithRay(const Vec3 &line, const Vec3 &origin, const Vec3 &direction,
                               Vec3 &meet);

// The foot of the perpendicular from p onto the line: p moved along the line's normal.
GeoStatus FootOfPerpendicular(const Vec3 &line, const Vec3 &p, Vec3 &foot);

// The line through r perpendicular to the line through p and q (directed along that line's left
// normal), and the foot of r on the line through p and q. Works for r on the line as well.
GeoStatus PerpendicularThrough(const Vec3 &p, const Vec3 &q, const Vec3 &r, Vec3 &perpendicular,
                               Vec3 &foot);

// The points where the line meets the circle about `centre`: `first` before `second` in the
// line's direction; equal when the line touches. GeoNoMeet when the line misses the circle,
// GeoBadRadius for a negative radius.
GeoStatus CircleLineMeet(const Vec3 &line, const Vec3 &centre, double radius, Vec3 &first,
                         Vec3 &second);

// The points where a circle of `radius` about `centre` touches the lines p1-q1 and p2-q2: on the
// perpendicular from the centre towards each line, at `radius` from the centre (for a circle that
// touches the lines, that is the foot of the perpendicular). GeoDegenerate when the centre lies on
// a line while the radius is not 0 (no direction to go).
GeoStatus TangentConstruction(const Vec3 &p1, const Vec3 &q1, const Vec3 &p2, const Vec3 &q2,
                              const Vec3 &centre, double radius, Vec3 &touch1, Vec3 &touch2);

struct Fillet
{
    Vec3 centre{};
    Vec3 touch1{}; // on the first line
    Vec3 touch2{}; // on the second line
    // Directions from the centre to touch1 and touch2, in radians in [0, 2π), counter-clockwise
    // from +x (y up).
    double startAngle = 0.0;
    double endAngle = 0.0;
};

// The circle of radius r that touches the lines p1-q1 and p2-q2 and lies on the LEFT of both:
// both lines are moved r to the left (OffsetLine), they meet at the centre, and the touch points
// lie at r from the centre towards each line. For an outline walked along p1→q1 and then along
// p2→q2 turning left at the corner (the right half of a tool from the tip up the flank, or a cone
// tip from the left flank down and up the right one), the arc that rounds the corner runs
// counter-clockwise from startAngle to endAngle. r = 0 gives the sharp corner: centre and touch
// points all at the lines' meeting point. GeoBadRadius for r < 0 or not finite, GeoParallel for
// parallel lines, GeoDegenerate when p1 = q1 or p2 = q2.
GeoStatus FilletCircle(const Vec3 &p1, const Vec3 &q1, const Vec3 &p2, const Vec3 &q2, double r,
                       Fillet &fillet);

// The diameter of a taper tool: a ball of `cornerRadius` at the tip (centre on the axis at that
// height, touching the tip plane) and the flank at `flankAngleDegrees` from the axis touching the
// ball; the diameter where the flank touches it, 2 · cornerRadius · cos θ. That is where the
// ball's edge gives way to the taper's and the tool leaves the tip circle, so it is fixed by the
// tip alone; how wide the tool is at the top of its flutes follows from the angle and the flute
// length. GeoDegenerate for |θ| >= 90° or non-finite input; GeoBadRadius for a negative radius.
GeoStatus TaperDiameter(double cornerRadius, double flankAngleDegrees, float &diameter);

} // namespace qor
