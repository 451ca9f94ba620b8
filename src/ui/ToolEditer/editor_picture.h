#pragma once

#include <QImage>
#include <QWidget>
#include <functional>

namespace qor {

class PictureSurface;

// The editor's tool picture. A change of the tool draws it once, through the
// drawing's redraw entry, into an image that painting only copies to the
// screen; so a repaint never runs the redraw again. A new size draws the
// picture afresh with the pure drawing.
class EditorPicture : public QWidget
{
    Q_OBJECT

public:
    // Draws onto a cleared surface; `afresh` is false for a change of the
    // tool and true for a new size.
    using Painter = std::function<void(PictureSurface &surface, bool afresh)>;

    explicit EditorPicture(QWidget *parent = nullptr);

    void SetPainter(Painter painter) { m_painter = std::move(painter); }

    // Draws the picture for a change of the tool and schedules the repaint.
    void Draw();

    const QImage &Image() const { return m_image; }

    QSize sizeHint() const override { return {420, 520}; }
    QSize minimumSizeHint() const override { return {200, 240}; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void Render(bool afresh);

    Painter m_painter;
    QImage m_image;
};

} // namespace qor
