#include "editor_picture.h"

#include "qt_picture_surface.h"

#include <QPainter>
#include <QResizeEvent>

namespace qor {

EditorPicture::EditorPicture(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void EditorPicture::Draw()
{
    Render(false);
    update();
}

void EditorPicture::Render(bool afresh)
{
    const qreal ratio = devicePixelRatioF();
    const QSize pixels = (QSizeF(size()) * ratio).toSize().expandedTo(QSize(1, 1));
    if (m_image.size() != pixels || m_image.devicePixelRatio() != ratio) {
        m_image = QImage(pixels, QImage::Format_RGB32);
        m_image.setDevicePixelRatio(ratio);
    }
    m_image.fill(Qt::white);
    if (m_painter) {
        QtPictureSurface surface(m_image);
        m_painter(surface, afresh);
    }
}

void EditorPicture::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (m_image.isNull()) {
        painter.fillRect(rect(), Qt::white);
        return;
    }
    painter.drawImage(QPoint(0, 0), m_image);
}

void EditorPicture::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    Render(true);
}

} // namespace qor
