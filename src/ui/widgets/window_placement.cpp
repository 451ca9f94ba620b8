#include "window_placement.h"

#include <QGuiApplication>
#include <QRect>
#include <QScreen>
#include <QWidget>
#include <algorithm>

namespace qor {

namespace {

// Before the window manager has framed a window its frame is unknown; a
// title bar and a thin border are room enough for any common desktop.
QMargins FrameOf(const QWidget &window)
{
    const QRect frame = window.frameGeometry();
    const QRect inner = window.geometry();
    if (frame != inner) {
        return {inner.left() - frame.left(), inner.top() - frame.top(),
                frame.right() - inner.right(), frame.bottom() - inner.bottom()};
    }
    return {8, 32, 8, 8};
}

QScreen *ScreenAt(const QPoint &point, const QWidget &window)
{
    if (QScreen *screen = QGuiApplication::screenAt(point)) {
        return screen;
    }
    return window.screen() != nullptr ? window.screen() : QGuiApplication::primaryScreen();
}

void Fit(QWidget &window, const QRect &room)
{
    const QMargins frame = FrameOf(window);
    const QRect usable = room.marginsRemoved(frame);
    const QSize size = window.size().boundedTo(usable.size()).expandedTo(window.minimumSize());
    if (size != window.size()) {
        window.resize(size);
    }
    // Right and bottom edges first, so that a window still larger than the
    // screen keeps its title bar (and so its move handle) in sight.
    QPoint corner = window.pos(); // the frame's top-left corner
    const QSize outer = window.size().grownBy(frame);
    corner.setX(std::max(std::min(corner.x(), room.right() + 1 - outer.width()), room.left()));
    corner.setY(std::max(std::min(corner.y(), room.bottom() + 1 - outer.height()), room.top()));
    if (corner != window.pos()) {
        window.move(corner);
    }
}

} // namespace

void KeepOnScreen(QWidget &window)
{
    const QScreen *screen = ScreenAt(window.frameGeometry().center(), window);
    if (screen != nullptr) {
        Fit(window, screen->availableGeometry());
    }
}

void PlaceOnScreen(QWidget &window, const QPoint &wanted)
{
    window.move(wanted);
    if (const QScreen *screen = ScreenAt(wanted, window)) {
        Fit(window, screen->availableGeometry());
    }
}

} // namespace qor
