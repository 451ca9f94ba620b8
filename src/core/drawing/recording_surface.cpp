#include "recording_surface.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>

namespace qor {
namespace {

constexpr double MillimetresPerInch = 25.4;

double PixelsPerMillimetre(double dotsPerInch)
{
    return std::isfinite(dotsPerInch) && dotsPerInch > 0.0 ? dotsPerInch / MillimetresPerInch
                                                           : 96.0 / MillimetresPerInch;
}

void Include(Bounds &box, double x, double y)
{
    box.left = std::min(box.left, x);
    box.right = std::max(box.right, x);
    box.bottom = std::min(box.bottom, y);
    box.top = std::max(box.top, y);
}

} // namespace

RecordingSurface::RecordingSurface(int widthPixels, int heightPixels, double dotsPerInch)
    : PictureSurface(std::max(widthPixels, 0) / PixelsPerMillimetre(dotsPerInch),
                     std::max(heightPixels, 0) / PixelsPerMillimetre(dotsPerInch)),
      m_pixelsPerUnit(PixelsPerMillimetre(dotsPerInch))
{}

void RecordingSurface::DoClear()
{
    m_primitives.clear();
    ++m_clearCount;
}

void RecordingSurface::DoLine(double x1, double y1, double x2, double y2)
{
    RecordedPrimitive p;
    p.kind = RecordedPrimitive::Kind::Line;
    p.x1 = x1;
    p.y1 = y1;
    p.x2 = x2;
    p.y2 = y2;
    p.width = DrawWidth();
    p.colour = ForeColour();
    m_primitives.push_back(p);
}

void RecordingSurface::DoPSet(double x, double y, Rgb colour)
{
    RecordedPrimitive p;
    p.kind = RecordedPrimitive::Kind::Point;
    p.x1 = x;
    p.y1 = y;
    p.width = DrawWidth();
    p.colour = colour;
    m_primitives.push_back(p);
}

void RecordingSurface::DoArc(const SurfaceArc &arc)
{
    RecordedPrimitive p;
    p.kind = RecordedPrimitive::Kind::Arc;
    p.arc = arc;
    p.width = DrawWidth();
    p.colour = ForeColour();
    m_primitives.push_back(p);
}

std::vector<LineSegment> RecordingSurface::Lines() const
{
    std::vector<LineSegment> lines;
    for (const RecordedPrimitive &p : m_primitives) {
        if (p.kind == RecordedPrimitive::Kind::Line) {
            lines.push_back({p.x1, p.y1, p.x2, p.y2, p.width});
        }
    }
    return lines;
}

std::vector<RecordedPrimitive> RecordingSurface::Points() const
{
    std::vector<RecordedPrimitive> points;
    std::copy_if(
        m_primitives.begin(), m_primitives.end(), std::back_inserter(points),
        [](const RecordedPrimitive &p) { return p.kind == RecordedPrimitive::Kind::Point; });
    return points;
}

std::vector<SurfaceArc> RecordingSurface::Arcs() const
{
    std::vector<SurfaceArc> arcs;
    for (const RecordedPrimitive &p : m_primitives) {
        if (p.kind == RecordedPrimitive::Kind::Arc) {
            arcs.push_back(p.arc);
        }
    }
    return arcs;
}

void RecordingSurface::ArcEnds(const SurfaceArc &arc, double &startX, double &startY, double &endX,
                               double &endY)
{
    const double end = arc.startAngle + arc.sweep;
    startX = arc.cx + arc.rx * std::cos(arc.startAngle);
    startY = arc.cy + arc.ry * std::sin(arc.startAngle);
    endX = arc.cx + arc.rx * std::cos(end);
    endY = arc.cy + arc.ry * std::sin(end);
}

std::optional<Bounds> RecordingSurface::BoundingBox() const
{
    std::optional<Bounds> box;
    const auto include = [&box](double x, double y) {
        if (!box) {
            box = Bounds{x, y, x, y};
        } else {
            Include(*box, x, y);
        }
    };
    for (const RecordedPrimitive &p : m_primitives) {
        switch (p.kind) {
        case RecordedPrimitive::Kind::Line:
            include(p.x1, p.y1);
            include(p.x2, p.y2);
            break;
        case RecordedPrimitive::Kind::Point:
            include(p.x1, p.y1);
            break;
        case RecordedPrimitive::Kind::Arc: {
            const SurfaceArc &a = p.arc;
            double sx, sy, ex, ey;
            ArcEnds(a, sx, sy, ex, ey);
            include(sx, sy);
            include(ex, ey);
            // The extremes right, up, left and down wherever the arc passes them.
            const double quarter = std::numbers::pi / 2.0;
            const double first = std::ceil(a.startAngle / quarter);
            for (int i = 0; i < 5; ++i) {
                const double t = (first + i) * quarter;
                if (t > a.startAngle + a.sweep) {
                    break;
                }
                include(a.cx + a.rx * std::cos(t), a.cy + a.ry * std::sin(t));
            }
            break;
        }
        }
    }
    return box;
}

double RecordingSurface::PixelX(double x) const
{
    return ToSurfaceX(x) * m_pixelsPerUnit;
}

double RecordingSurface::PixelY(double y) const
{
    return ToSurfaceY(y) * m_pixelsPerUnit;
}

} // namespace qor
