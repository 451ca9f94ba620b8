#pragma once

#include <QObject>
#include <functional>

class QKeyEvent;
class QWidget;

namespace qor {

// The key code a box's key filter gets for a key press: 8 for the backspace,
// the typed character's code for a printable character typed without Ctrl,
// Alt or Meta, 0 for anything else (editing keys, shortcuts).
int TypedKey(const QKeyEvent &event);

// Lets a typed character reach a box of free text only when the filter lets
// it, like NumericBox, but leaves the input method, pasting and dropping
// alone: such a box checks its whole text when it is left. Owned by the box.
class TypedKeyFilter : public QObject
{
    Q_OBJECT

public:
    // Gets the key code (TypedKey); true lets it through. The filter beeps
    // itself when it refuses.
    using Filter = std::function<bool(int key)>;

    TypedKeyFilter(QWidget *box, Filter filter);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    Filter m_filter;
};

} // namespace qor
