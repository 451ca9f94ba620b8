#include "matrix_pg.h"

#include <cmath>

namespace qor {

bool IsFinite3(const Vec3 &u)
{
    return std::isfinite(u[0]) && std::isfinite(u[1]) && std::isfinite(u[2]);
}

double Dot3(const Vec3 &a, const Vec3 &b)
{
    double sum = 0.0;
    for (int i = 0; i < 3; ++i) {
        sum += a[i] * b[i];
    }
    return sum;
}

Vec3 Cross3(const Vec3 &a, const Vec3 &b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

double Norm3(const Vec3 &u)
{
    // hypot rather than a plain sum of squares: no overflow for components near the double range.
    return std::hypot(u[0], u[1], u[2]);
}

GeoStatus Normalize3(const Vec3 &u, Vec3 &unit)
{
    const double n = Norm3(u);
    if (!(n > 0.0) || !std::isfinite(n)) {
        return GeoDegenerate;
    }
    unit = {u[0] / n, u[1] / n, u[2] / n};
    return GeoOk;
}

} // namespace qor
