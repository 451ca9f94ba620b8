#include "window_look.h"

#include <QApplication>
#include <QPalette>
#include <QWidget>

namespace qor {

void UseBoxColours(QWidget &window)
{
    QPalette palette = window.palette();
    palette.setColor(QPalette::Active, QPalette::Base, Qt::white);
    palette.setColor(QPalette::Inactive, QPalette::Base, Qt::white);
    palette.setColor(QPalette::Disabled, QPalette::Base, palette.color(QPalette::Button));
    window.setPalette(palette);
}

bool AnotherWindowTookOver(const QWidget &window)
{
    const QWidget *active = QApplication::activeWindow();
    return active != nullptr && active != &window && !active->isModal() &&
           QApplication::activeModalWidget() == nullptr;
}

} // namespace qor
