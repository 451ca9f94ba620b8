#pragma once

#include "picture_surface.h"

#include <QRectF>
#include <memory>

class QPaintDevice;
class QPainter;
class QPointF;

namespace qor {

// The picture surface painted with a QPainter onto any paint device: a widget in its paintEvent,
// a QImage, a QPixmap, a QSvgGenerator. Its own unit is the millimetre, measured with the
// device's logical resolution, so that a tool drawn at scale 1 shows its real size on a correctly
// set up screen. Pen widths and dots count device-independent pixels and grow with the device
// pixel ratio; lines have round caps and everything is antialiased.
class QtPictureSurface final : public PictureSurface
{
public:
    // Opens its own painter on the device and ends it when destroyed.
    explicit QtPictureSurface(QPaintDevice &device);
    // Paints with a painter that is already active; its state is restored when destroyed.
    explicit QtPictureSurface(QPainter &painter);
    // Paints into `area` of an active painter (device coordinates, the painter's transform is
    // not used) and nowhere else, with `unitMm` millimetres of the device to the surface's unit,
    // so that 0.5 draws a tool at scale 1 at half its size. A pen width of 1 is `penMm`
    // millimetres wide whatever the device's resolution (a printer's or a PDF's).
    QtPictureSurface(QPainter &painter, const QRectF &area, double unitMm, double penMm);
    ~QtPictureSurface() override;

private:
    struct DeviceMetrics;
    static DeviceMetrics MetricsOf(const QPaintDevice *device);
    static DeviceMetrics AreaMetrics(const QPaintDevice *device, const QRectF &area, double unitMm,
                                     double penMm);
    QtPictureSurface(const DeviceMetrics &metrics, std::unique_ptr<QPainter> own,
                     QPainter *painter);

    void DoClear() override;
    void DoLine(double x1, double y1, double x2, double y2) override;
    void DoPSet(double x, double y, Rgb colour) override;
    void DoArc(const SurfaceArc &arc) override;

    QPointF ToPainter(double x, double y) const;
    void UseLinePen();

    std::unique_ptr<QPainter> m_ownPainter;
    QPainter *m_painter;
    double m_pixelsPerMmX;
    double m_pixelsPerMmY;
    double m_devicePixelRatio;
    double m_dotScale = 1.0;
    // Pens of a drawing into an area (a printed page) scale with the painter, so that a
    // preview shrinks them with the page; on screen they keep their width in pixels.
    bool m_cosmeticPen = true;
    QRectF m_area; // the whole device in painter coordinates
    bool m_active;
};

} // namespace qor
