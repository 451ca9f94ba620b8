#pragma once

#include <QObject>
#include <QPointer>
#include <functional>
#include <map>
#include <set>

class QAbstractButton;
class QWidget;

namespace qor {

// Runs a box's check when the focus leaves it for another control of the
// same window, and puts the focus back when the check refuses. The check
// shows its own message.
//
// Never a loop of messages: a check runs after the focus change has
// finished, never while another check's message is open, and the focus
// changes that a refusal makes are not checked themselves. Leaving for
// another window checks nothing; the box is checked when it is left inside
// its window. A box that is hidden or disabled by the time its check would
// run is not checked.
//
// A click on a "deciding" button (store, cancel, a box's own switch) is not
// spoiled by a message that pops up under the mouse: while the mouse button
// is down on such a button the check waits, and the button's handler calls
// CommitFocused() or DropPending(). Without either, the check runs once the
// button is released.
class LeaveChecker : public QObject
{
    Q_OBJECT

public:
    // True when the box may keep its text; false after a refusal message.
    using Check = std::function<bool()>;

    explicit LeaveChecker(QWidget *window);

    void Watch(QWidget *box, Check check);
    void DeferFor(QAbstractButton *button);

    // Runs the pending check and the check of the box that has the focus, as
    // leaving it would; false when one refused (the focus is then back in the
    // box).
    bool CommitFocused();

    // Forgets the pending check (cancel, or a switch that clears the box).
    void DropPending();
    // The box waiting for its check, if any.
    QWidget *Pending() const { return m_pending; }

    // A check (and so possibly its message) is running.
    bool Busy() const { return m_running; }

private:
    void OnFocusChanged(QWidget *old, QWidget *now);
    void RunPending();
    void QueueRun();
    bool RunCheck(QWidget *box);
    bool Ours(const QWidget *widget) const;

    QWidget *m_window;
    std::map<QWidget *, Check> m_checks;
    std::set<QAbstractButton *> m_deferring;
    QPointer<QWidget> m_pending;
    bool m_running = false;
    bool m_restoring = false;
};

} // namespace qor
