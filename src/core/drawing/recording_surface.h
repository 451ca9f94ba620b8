#pragma once

#include "picture_surface.h"

#include <optional>
#include <vector>

namespace qor {

struct RecordedPrimitive
{
    enum class Kind
    {
        Line,
        Point,
        Arc
    };

    Kind kind = Kind::Line;
    double x1 = 0.0; // Line: first end; Point: the point; Arc: unused (see arc)
    double y1 = 0.0;
    double x2 = 0.0; // Line: second end
    double y2 = 0.0;
    SurfaceArc arc; // Arc only
    int width = 1;
    Rgb colour;
};

struct LineSegment
{
    double x1 = 0.0;
    double y1 = 0.0;
    double x2 = 0.0;
    double y2 = 0.0;
    int width = 1;
};

struct Bounds
{
    double left = 0.0;
    double bottom = 0.0;
    double right = 0.0;
    double top = 0.0;
};

// A picture surface that paints nothing and records every primitive in logical coordinates, for
// tests and for checks without a screen. It stands for a picture of a fixed size in pixels at a
// given resolution, and its own unit is the millimetre, as on the screen: a 400 × 300 pixel
// picture at 96 dpi is 105.83 × 79.375 mm, so drawing at scale 1 is true size. Pass 25.4 dpi to
// make one pixel one millimetre.
class RecordingSurface final : public PictureSurface
{
public:
    RecordingSurface(int widthPixels, int heightPixels, double dotsPerInch = 96.0);

    const std::vector<RecordedPrimitive> &Primitives() const { return m_primitives; }
    std::vector<LineSegment> Lines() const;
    std::vector<RecordedPrimitive> Points() const;
    std::vector<SurfaceArc> Arcs() const;

    // Where an arc starts and ends: the points at startAngle and at startAngle + sweep.
    static void ArcEnds(const SurfaceArc &arc, double &startX, double &startY, double &endX,
                        double &endY);

    // The logical box around everything drawn since the last Clear (arcs by their true extent);
    // empty when nothing was drawn.
    std::optional<Bounds> BoundingBox() const;

    // A logical point in pixels of the picture, from the top-left corner.
    double PixelX(double x) const;
    double PixelY(double y) const;

    int ClearCount() const { return m_clearCount; }

private:
    void DoClear() override;
    void DoLine(double x1, double y1, double x2, double y2) override;
    void DoPSet(double x, double y, Rgb colour) override;
    void DoArc(const SurfaceArc &arc) override;

    double m_pixelsPerUnit;
    std::vector<RecordedPrimitive> m_primitives;
    int m_clearCount = 0;
};

} // namespace qor
