#include "typed_key_filter.h"

#include <QKeyEvent>
#include <QWidget>

namespace qor {

int TypedKey(const QKeyEvent &event)
{
    if (event.key() == Qt::Key_Backspace) {
        return 8;
    }
    if (!event.text().isEmpty() && event.text().at(0).isPrint() &&
        !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))) {
        return event.text().at(0).unicode();
    }
    return 0;
}

TypedKeyFilter::TypedKeyFilter(QWidget *box, Filter filter)
    : QObject(box), m_filter(std::move(filter))
{
    box->installEventFilter(this);
}

bool TypedKeyFilter::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && m_filter) {
        const int key = TypedKey(*static_cast<QKeyEvent *>(event));
        if (key != 0 && !m_filter(key)) {
            event->accept();
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace qor
