#include "numeric_box.h"

#include "typed_key_filter.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>

namespace qor {

NumericBox::NumericBox(QWidget *parent) : QLineEdit(parent)
{
    setAcceptDrops(false);
    setAttribute(Qt::WA_InputMethodEnabled, false);
}

void NumericBox::ShowText(const QString &text)
{
    if (this->text() != text) {
        setText(text);
    }
}

void NumericBox::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Paste)) {
        FilteredPaste();
        event->accept();
        return;
    }
    const int key = TypedKey(*event);
    if (key != 0 && m_keyFilter && !m_keyFilter(key)) {
        event->accept();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void NumericBox::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu *menu = createStandardContextMenu();
    for (QAction *action : menu->actions()) {
        if (action->objectName() == QLatin1String("edit-paste")) {
            disconnect(action, &QAction::triggered, nullptr, nullptr);
            connect(action, &QAction::triggered, this, &NumericBox::FilteredPaste);
        }
    }
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(event->globalPos());
    event->accept();
}

void NumericBox::FilteredPaste()
{
    if (isReadOnly()) {
        return;
    }
    const QString text = QApplication::clipboard()->text();
    if (m_pasteFilter && !m_pasteFilter(text)) {
        return;
    }
    insert(text); // emits textEdited like typing
}

} // namespace qor
