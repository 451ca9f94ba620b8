#pragma once

#include <cstdint>

namespace qor {

struct Rgb
{
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    friend bool operator==(const Rgb &, const Rgb &) = default;
};

inline constexpr Rgb RgbBlack{0, 0, 0};
inline constexpr Rgb RgbWhite{255, 255, 255};
inline constexpr Rgb RgbRed{255, 0, 0};
inline constexpr Rgb DefaultForeColour = RgbBlack;
inline constexpr Rgb DefaultBackColour = RgbWhite;

// One arc as the drawing asked for it and as an implementation draws it: the points
// (cx + rx·cos t, cy + ry·sin t) in logical coordinates for t running counter-clockwise from
// startAngle over sweep.
struct SurfaceArc
{
    double cx = 0.0;
    double cy = 0.0;
    double radius = 0.0;
    double startAngle = 0.0;
    double endAngle = 0.0;
    double aspect = 1.0;
    double rx = 0.0;    // horizontal semi-axis
    double ry = 0.0;    // vertical semi-axis
    double sweep = 0.0; // 0 < sweep <= 2π
};

// The immediate-mode picture the tool drawing paints on, after the classic picture box: a surface
// with a fixed extent in its own physical unit (see the implementation) and a logical coordinate
// system laid over it by SetScale. Nothing is retained; each redraw clears and paints again.
//
// Calls with non-finite numbers, SetScale with a zero extent, negative radii and non-positive
// aspects are ignored and counted in RefusedCalls(), so that a bad value never reaches a paint
// engine and a test can still see that it happened.
class PictureSurface
{
public:
    virtual ~PictureSurface() = default;
    PictureSurface(const PictureSurface &) = delete;
    PictureSurface &operator=(const PictureSurface &) = delete;

    // Fills the whole surface with the back colour. The scale is kept.
    void Clear();

    // The logical coordinate system: (x1, y1) is the top-left corner of the surface and (x2, y2)
    // its bottom-right corner. (−W/2, H/2)-(W/2, −H/2) puts the origin in the centre, x to the
    // right and y up. Until the first call, the origin is top-left, y grows downwards and the unit
    // is the surface's own.
    void SetScale(double x1, double y1, double x2, double y2);

    // A straight line in the fore colour, DrawWidth wide.
    void Line(double x1, double y1, double x2, double y2);

    // A dot of the given colour, small but always visible.
    void PSet(double x, double y, Rgb colour);

    // An arc of a circle or ellipse in the fore colour, drawn counter-clockwise from startAngle to
    // endAngle (radians, counter-clockwise from +x when the logical y axis points up). An end
    // below the start wraps round (from 3π/2 to 0 is a quarter); angles a whole number of turns
    // apart draw the full circle; equal angles draw nothing. Negative angles are plain angles.
    // aspect is the vertical / horizontal radius ratio: below 1 the radius is the horizontal
    // semi-axis, above 1 the vertical one. A radius of 0 draws nothing.
    void Circle(double cx, double cy, double radius, double startAngle, double endAngle,
                double aspect = 1.0);

    // Pen width in pixels (device-independent); values below 1 become 1.
    void SetDrawWidth(int width);
    int DrawWidth() const { return m_drawWidth; }

    // The logical extent: x2 − x1 and y2 − y1 of the current scale; ScaleHeight is negative when
    // y points up.
    double ScaleWidth() const { return m_scaleWidth; }
    double ScaleHeight() const { return m_scaleHeight; }
    double ScaleLeft() const { return m_scaleLeft; }
    double ScaleTop() const { return m_scaleTop; }

    void SetForeColour(Rgb colour) { m_foreColour = colour; }
    Rgb ForeColour() const { return m_foreColour; }
    void SetBackColour(Rgb colour) { m_backColour = colour; }
    Rgb BackColour() const { return m_backColour; }

    int RefusedCalls() const { return m_refusedCalls; }

    // The surface's extent in its own unit, and a logical point in that unit measured from the
    // top-left corner, y down.
    double SurfaceWidth() const { return m_surfaceWidth; }
    double SurfaceHeight() const { return m_surfaceHeight; }
    double ToSurfaceX(double x) const;
    double ToSurfaceY(double y) const;

protected:
    // width and height: the extent in the surface's own unit (0 or more).
    PictureSurface(double width, double height);

    // Called with valid, finite logical values only.
    virtual void DoClear() = 0;
    virtual void DoLine(double x1, double y1, double x2, double y2) = 0;
    virtual void DoPSet(double x, double y, Rgb colour) = 0;
    virtual void DoArc(const SurfaceArc &arc) = 0;

private:
    bool HasArea() const;
    void Refuse() { ++m_refusedCalls; }

    double m_surfaceWidth;
    double m_surfaceHeight;
    double m_scaleLeft = 0.0;
    double m_scaleTop = 0.0;
    double m_scaleWidth;
    double m_scaleHeight;
    int m_drawWidth = 1;
    Rgb m_foreColour = DefaultForeColour;
    Rgb m_backColour = DefaultBackColour;
    int m_refusedCalls = 0;
};

} // namespace qor
