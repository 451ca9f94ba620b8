#include "picture_surface.h"

#include <cmath>
#include <initializer_list>
#include <numbers>

namespace qor {
namespace {

constexpr double FullTurn = 2.0 * std::numbers::pi;

bool AllFinite(std::initializer_list<double> values)
{
    for (double v : values) {
        if (!std::isfinite(v)) {
            return false;
        }
    }
    return true;
}

} // namespace

PictureSurface::PictureSurface(double width, double height)
    : m_surfaceWidth(std::isfinite(width) && width > 0.0 ? width : 0.0),
      m_surfaceHeight(std::isfinite(height) && height > 0.0 ? height : 0.0),
      m_scaleWidth(m_surfaceWidth), m_scaleHeight(m_surfaceHeight)
{}

bool PictureSurface::HasArea() const
{
    return m_surfaceWidth > 0.0 && m_surfaceHeight > 0.0 && m_scaleWidth != 0.0 &&
           m_scaleHeight != 0.0;
}

double PictureSurface::ToSurfaceX(double x) const
{
    return m_scaleWidth == 0.0 ? 0.0 : (x - m_scaleLeft) * (m_surfaceWidth / m_scaleWidth);
}

double PictureSurface::ToSurfaceY(double y) const
{
    return m_scaleHeight == 0.0 ? 0.0 : (y - m_scaleTop) * (m_surfaceHeight / m_scaleHeight);
}

void PictureSurface::Clear()
{
    DoClear();
}

void PictureSurface::SetScale(double x1, double y1, double x2, double y2)
{
    const double width = x2 - x1;
    const double height = y2 - y1;
    if (!AllFinite({x1, y1, x2, y2, width, height}) || width == 0.0 || height == 0.0) {
        Refuse();
        return;
    }
    m_scaleLeft = x1;
    m_scaleTop = y1;
    m_scaleWidth = width;
    m_scaleHeight = height;
}

void PictureSurface::Line(double x1, double y1, double x2, double y2)
{
    if (!AllFinite({x1, y1, x2, y2})) {
        Refuse();
        return;
    }
    if (HasArea()) {
        DoLine(x1, y1, x2, y2);
    }
}

void PictureSurface::PSet(double x, double y, Rgb colour)
{
    if (!AllFinite({x, y})) {
        Refuse();
        return;
    }
    if (HasArea()) {
        DoPSet(x, y, colour);
    }
}

void PictureSurface::Circle(double cx, double cy, double radius, double startAngle, double endAngle,
                            double aspect)
{
    if (!AllFinite({cx, cy, radius, startAngle, endAngle, aspect}) || radius < 0.0 ||
        aspect <= 0.0) {
        Refuse();
        return;
    }
    const double turn = endAngle - startAngle;
    if (radius == 0.0 || turn == 0.0 || !HasArea()) {
        return;
    }
    double sweep = turn;
    if (sweep >= FullTurn) {
        sweep = FullTurn;
    } else if (sweep < 0.0) {
        sweep = std::fmod(sweep, FullTurn) + FullTurn; // in (0, 2π]
    }
    SurfaceArc arc;
    arc.cx = cx;
    arc.cy = cy;
    arc.radius = radius;
    arc.startAngle = startAngle;
    arc.endAngle = endAngle;
    arc.aspect = aspect;
    arc.rx = aspect > 1.0 ? radius / aspect : radius;
    arc.ry = aspect > 1.0 ? radius : radius * aspect;
    arc.sweep = sweep;
    DoArc(arc);
}

void PictureSurface::SetDrawWidth(int width)
{
    m_drawWidth = width < 1 ? 1 : width;
}

} // namespace qor
