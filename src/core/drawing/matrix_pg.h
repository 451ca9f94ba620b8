#pragma once

#include <array>
#include <cstdint>

namespace qor {

// A homogeneous plane vector, stored 0-based. A point (x, y) is (x, y, 1): [0] x, [1] y, [2] the
// weight w (components 1, 2, 3 in one-based notation). A line a·x + b·y + c = 0 is (a, b, c).
// Points and lines being the same kind of value lets one cross product serve both as "the line
// through two points" and "the meeting point of two lines".
using Vec3 = std::array<double, 3>;

// The status every geometry routine returns. On anything but GeoOk the routine has written none
// of its outputs, and no routine ever writes a NaN or an infinity.
using GeoStatus = std::int16_t;
inline constexpr GeoStatus GeoOk = 0;
inline constexpr GeoStatus GeoParallel = 1;   // the lines (or line and ray) never meet
inline constexpr GeoStatus GeoDegenerate = 2; // zero vector, coincident points, non-finite input
inline constexpr GeoStatus GeoBadRadius = 3;  // a radius that is negative or not finite
inline constexpr GeoStatus GeoNoMeet = 4;     // a circle and a line that do not meet

inline constexpr Vec3 MakePoint(double x, double y)
{
    return {x, y, 1.0};
}
inline constexpr Vec3 MakeDirection(double dx, double dy)
{
    return {dx, dy, 0.0};
}

bool IsFinite3(const Vec3 &u);

// a·b, summed in component order.
double Dot3(const Vec3 &a, const Vec3 &b);

// a × b: the line through two points, or the (not yet divided) meeting point of two lines.
Vec3 Cross3(const Vec3 &a, const Vec3 &b);

// The length over all three components.
double Norm3(const Vec3 &u);

// u scaled to unit length over all three components, also when u is a line: then (a, b) is not
// of unit length, so callers that need distances divide by the length of (a, b) themselves.
// GeoDegenerate, `unit` untouched, when u is zero or not finite.
GeoStatus Normalize3(const Vec3 &u, Vec3 &unit);

} // namespace qor
