#pragma once

class QPoint;
class QWidget;

namespace qor {

// Moves a top-level window so that all of it, frame included, lies on the
// screen it is on (the screen under its centre), shrinking it first where it
// is larger than that screen's free area. A window that is already wholly
// on its screen stays where it is.
void KeepOnScreen(QWidget &window);

// Puts a window's top-left corner at `wanted` on the screen that holds that
// point, then keeps it on that screen.
void PlaceOnScreen(QWidget &window, const QPoint &wanted);

} // namespace qor
