#pragma once

#include "picture_surface.h"

#include <QWidget>
#include <functional>

namespace qor {

// A white picture area that draws through a paint hook each time it is
// painted (shown, uncovered, resized, or asked to by Redraw). The hook gets a
// surface over the widget in its current size and device pixel ratio; what it
// draws is not kept, so the hook must be able to draw the whole picture from
// the program's state at any time.
class PictureView : public QWidget
{
    Q_OBJECT

public:
    using PaintHook = std::function<void(PictureSurface &)>;

    explicit PictureView(QWidget *parent = nullptr);

    void SetPaintHook(PaintHook hook);

    // Schedules a repaint.
    void Redraw() { update(); }

    QSize sizeHint() const override { return {320, 320}; }
    QSize minimumSizeHint() const override { return {120, 120}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    PaintHook m_hook;
};

} // namespace qor
