#include "settings_fonts.h"

#include <QFontDatabase>
#include <QWidget>

namespace qor {

namespace {

constexpr int SmallestSize = 1;
constexpr int LargestSize = 72;

} // namespace

QFont SettingsFont(QFont base, int pointSize, bool bold)
{
    if (pointSize >= SmallestSize && pointSize <= LargestSize) {
        base.setPointSize(pointSize);
    }
    base.setBold(bold);
    return base;
}

void ApplySettingsFont(QWidget &widget, int pointSize, bool bold)
{
    widget.setFont(SettingsFont(widget.font(), pointSize, bold));
}

QFont FixedSettingsFont(int pointSize)
{
    return SettingsFont(QFontDatabase::systemFont(QFontDatabase::FixedFont), pointSize);
}

} // namespace qor
