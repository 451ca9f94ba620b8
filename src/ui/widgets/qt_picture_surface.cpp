#include "qt_picture_surface.h"

#include <QImage>
#include <QPaintDevice>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QPixmap>
#include <QTransform>
#include <algorithm>
#include <cmath>
#include <numbers>

namespace qor {

struct QtPictureSurface::DeviceMetrics
{
    QRectF area;
    double pixelsPerMmX = 96.0 / 25.4;
    double pixelsPerMmY = 96.0 / 25.4;
    double devicePixelRatio = 1.0;
};

namespace {

constexpr double MillimetresPerInch = 25.4;

// The device's extent in the coordinates a painter on it uses. Images and pixmaps report their
// size in device pixels and paint in device-independent ones; widgets and the other devices
// report what they paint in.
QSizeF PainterSize(const QPaintDevice &device)
{
    switch (device.devType()) {
    case QInternal::Image:
        return static_cast<const QImage &>(device).deviceIndependentSize();
    case QInternal::Pixmap:
        return static_cast<const QPixmap &>(device).deviceIndependentSize();
    default:
        return QSizeF(device.width(), device.height());
    }
}

double PixelsPerMm(int dotsPerInch)
{
    return (dotsPerInch > 0 ? dotsPerInch : 96) / MillimetresPerInch;
}

QColor ToQColor(Rgb colour)
{
    return QColor(colour.red, colour.green, colour.blue);
}

// Cuts the segment a-b down to the part inside r (Liang-Barsky), so that the far-away ends a
// drawing may use to leave the picture never reach the rasterizer. False when nothing is inside.
bool ClipToRect(QPointF &a, QPointF &b, const QRectF &r)
{
    const double dx = b.x() - a.x();
    const double dy = b.y() - a.y();
    double t0 = 0.0;
    double t1 = 1.0;
    const auto edge = [&](double p, double q) {
        if (p == 0.0) {
            return q >= 0.0;
        }
        const double t = q / p;
        if (p < 0.0) {
            if (t > t1) {
                return false;
            }
            t0 = std::max(t0, t);
        } else {
            if (t < t0) {
                return false;
            }
            t1 = std::min(t1, t);
        }
        return true;
    };
    if (!edge(-dx, a.x() - r.left()) || !edge(dx, r.right() - a.x()) ||
        !edge(-dy, a.y() - r.top()) || !edge(dy, r.bottom() - a.y())) {
        return false;
    }
    const QPointF start = a;
    a = QPointF(start.x() + t0 * dx, start.y() + t0 * dy);
    b = QPointF(start.x() + t1 * dx, start.y() + t1 * dy);
    return true;
}

} // namespace

QtPictureSurface::DeviceMetrics QtPictureSurface::MetricsOf(const QPaintDevice *device)
{
    DeviceMetrics m;
    if (device == nullptr) {
        return m;
    }
    m.area = QRectF(QPointF(0.0, 0.0), PainterSize(*device));
    m.pixelsPerMmX = PixelsPerMm(device->logicalDpiX());
    m.pixelsPerMmY = PixelsPerMm(device->logicalDpiY());
    m.devicePixelRatio = std::max(device->devicePixelRatioF(), 1.0);
    return m;
}

QtPictureSurface::QtPictureSurface(QPaintDevice &device)
    : QtPictureSurface(MetricsOf(&device), std::make_unique<QPainter>(&device), nullptr)
{}

QtPictureSurface::QtPictureSurface(QPainter &painter)
    : QtPictureSurface(MetricsOf(painter.device()), nullptr, &painter)
{}

QtPictureSurface::QtPictureSurface(const DeviceMetrics &metrics, std::unique_ptr<QPainter> own,
                                   QPainter *painter)
    : PictureSurface(metrics.area.width() / metrics.pixelsPerMmX,
                     metrics.area.height() / metrics.pixelsPerMmY),
      m_ownPainter(std::move(own)), m_painter(m_ownPainter ? m_ownPainter.get() : painter),
      m_pixelsPerMmX(metrics.pixelsPerMmX), m_pixelsPerMmY(metrics.pixelsPerMmY),
      m_devicePixelRatio(metrics.devicePixelRatio), m_area(metrics.area),
      m_active(m_painter->isActive())
{
    if (m_active) {
        m_painter->save();
        m_painter->resetTransform();
        m_painter->setRenderHint(QPainter::Antialiasing, true);
    }
}

QtPictureSurface::DeviceMetrics QtPictureSurface::AreaMetrics(const QPaintDevice *device,
                                                              const QRectF &area, double unitMm,
                                                              double penMm)
{
    DeviceMetrics m = MetricsOf(device);
    m.area = area;
    const double unit = unitMm > 0 ? unitMm : 1.0;
    m.pixelsPerMmX *= unit;
    m.pixelsPerMmY *= unit;
    m.devicePixelRatio = std::max(penMm * m.pixelsPerMmX / unit, 0.1);
    return m;
}

QtPictureSurface::QtPictureSurface(QPainter &painter, const QRectF &area, double unitMm,
                                   double penMm)
    : QtPictureSurface(AreaMetrics(painter.device(), area, unitMm, penMm), nullptr, &painter)
{
    m_dotScale = m_devicePixelRatio;
    m_cosmeticPen = false;
    if (m_active) {
        m_painter->setClipRect(area, Qt::IntersectClip);
    }
}

// A painter of our own ends when m_ownPainter goes.
QtPictureSurface::~QtPictureSurface()
{
    if (m_active) {
        m_painter->restore();
    }
}

QPointF QtPictureSurface::ToPainter(double x, double y) const
{
    return QPointF(m_area.left() + ToSurfaceX(x) * m_pixelsPerMmX,
                   m_area.top() + ToSurfaceY(y) * m_pixelsPerMmY);
}

// Cosmetic pens keep their width whatever the mapping, but Qt does not widen them for a device
// pixel ratio above 1, so we do.
void QtPictureSurface::UseLinePen()
{
    QPen pen(ToQColor(ForeColour()));
    pen.setCosmetic(m_cosmeticPen);
    pen.setWidthF(DrawWidth() * m_devicePixelRatio);
    pen.setCapStyle(Qt::RoundCap);
    pen.setJoinStyle(Qt::RoundJoin);
    m_painter->setPen(pen);
    m_painter->setBrush(Qt::NoBrush);
}

void QtPictureSurface::DoClear()
{
    if (m_active) {
        m_painter->fillRect(m_area, ToQColor(BackColour()));
    }
}

void QtPictureSurface::DoLine(double x1, double y1, double x2, double y2)
{
    if (!m_active) {
        return;
    }
    QPointF a = ToPainter(x1, y1);
    QPointF b = ToPainter(x2, y2);
    const double margin = DrawWidth() + 2.0;
    if (!ClipToRect(a, b, m_area.adjusted(-margin, -margin, margin, margin))) {
        return;
    }
    UseLinePen();
    m_painter->drawLine(a, b);
}

void QtPictureSurface::DoPSet(double x, double y, Rgb colour)
{
    if (!m_active) {
        return;
    }
    // A single pixel would vanish, and a dot no wider than the outline hides on it: the
    // marker is a clear disc a little wider than the pen.
    const double radius = std::max(3.0, DrawWidth() + 1.0) * m_dotScale;
    const QPointF centre = ToPainter(x, y);
    if (!m_area.adjusted(-radius, -radius, radius, radius).contains(centre)) {
        return;
    }
    m_painter->setPen(Qt::NoPen);
    m_painter->setBrush(ToQColor(colour));
    m_painter->drawEllipse(centre, radius, radius);
}

void QtPictureSurface::DoArc(const SurfaceArc &arc)
{
    if (!m_active) {
        return;
    }
    // The arc on the unit circle in Qt's terms (degrees, counter-clockwise on the screen, so
    // (cos t, −sin t)), then mapped onto the ellipse in logical coordinates and on to the painter.
    const double sx = (ToSurfaceX(1.0) - ToSurfaceX(0.0)) * m_pixelsPerMmX;
    const double sy = (ToSurfaceY(1.0) - ToSurfaceY(0.0)) * m_pixelsPerMmY;
    const QPointF centre = ToPainter(arc.cx, arc.cy);
    const QTransform toPainter(sx * arc.rx, 0.0, 0.0, -sy * arc.ry, centre.x(), centre.y());

    const QRectF bounds = toPainter.mapRect(QRectF(-1.0, -1.0, 2.0, 2.0));
    const double margin = DrawWidth() + 2.0;
    if (!bounds.intersects(m_area.adjusted(-margin, -margin, margin, margin))) {
        return;
    }
    const QRectF unit(-1.0, -1.0, 2.0, 2.0);
    const double degrees = 180.0 / std::numbers::pi;
    QPainterPath path;
    path.arcMoveTo(unit, arc.startAngle * degrees);
    path.arcTo(unit, arc.startAngle * degrees, arc.sweep * degrees);
    UseLinePen();
    m_painter->drawPath(toPainter.map(path));
}

} // namespace qor
