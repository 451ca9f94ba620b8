#pragma once

#include <QFont>

class QWidget;

namespace qor {

// `base` at the point size the settings give (a size outside 1..72 keeps the
// base size, so that a mistyped setting cannot make a window unusable), bold
// when asked.
QFont SettingsFont(QFont base, int pointSize, bool bold = false);

// Gives the widget its settings font.
void ApplySettingsFont(QWidget &widget, int pointSize, bool bold = false);

// The system's fixed-width font at the point size the settings give.
QFont FixedSettingsFont(int pointSize);

} // namespace qor
