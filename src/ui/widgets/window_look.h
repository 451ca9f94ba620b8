#pragma once

class QWidget;

namespace qor {

// Input boxes of the editor's windows: white while they take input, the
// button face colour while they are disabled, so that a greyed box reads at
// a glance. Set on the window, inherited by every box in it.
void UseBoxColours(QWidget &window);

// For the small windows that step aside when the user turns to another
// window of the program: true when another top-level window of the program
// is active that is not a message or other modal dialog. While the
// activation is in between (a message closing, another program in front)
// the window stays.
bool AnotherWindowTookOver(const QWidget &window);

} // namespace qor
