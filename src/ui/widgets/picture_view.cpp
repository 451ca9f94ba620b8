#include "picture_view.h"

#include "qt_picture_surface.h"

#include <QPainter>

namespace qor {

PictureView::PictureView(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void PictureView::SetPaintHook(PaintHook hook)
{
    m_hook = std::move(hook);
    update();
}

void PictureView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    if (m_hook) {
        QtPictureSurface surface(painter);
        m_hook(surface);
    }
}

} // namespace qor
