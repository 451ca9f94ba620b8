#include "leave_checker.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QTimer>
#include <QWidget>

namespace qor {

LeaveChecker::LeaveChecker(QWidget *window) : QObject(window), m_window(window)
{
    connect(qApp, &QApplication::focusChanged, this, &LeaveChecker::OnFocusChanged);
}

void LeaveChecker::Watch(QWidget *box, Check check)
{
    m_checks[box] = std::move(check);
    connect(box, &QObject::destroyed, this, [this, box] { m_checks.erase(box); });
}

void LeaveChecker::DeferFor(QAbstractButton *button)
{
    m_deferring.insert(button);
    connect(button, &QAbstractButton::released, this, &LeaveChecker::QueueRun);
}

bool LeaveChecker::Ours(const QWidget *widget) const
{
    return widget != nullptr && widget->window() == m_window;
}

void LeaveChecker::OnFocusChanged(QWidget *old, QWidget *now)
{
    if (m_running || m_restoring || old == nullptr || !m_checks.contains(old) || !Ours(now)) {
        return;
    }
    m_pending = old;
    QueueRun();
}

void LeaveChecker::QueueRun()
{
    QTimer::singleShot(0, this, &LeaveChecker::RunPending);
}

void LeaveChecker::RunPending()
{
    if (m_pending.isNull() || m_running) {
        return;
    }
    auto *button = qobject_cast<QAbstractButton *>(QApplication::focusWidget());
    if (button != nullptr && m_deferring.contains(button) &&
        QApplication::mouseButtons() != Qt::NoButton) {
        return; // the button's release runs it, or its handler decides
    }
    QWidget *box = m_pending;
    m_pending = nullptr;
    RunCheck(box);
}

bool LeaveChecker::RunCheck(QWidget *box)
{
    const auto check = m_checks.find(box);
    if (check == m_checks.end() || !box->isVisible() || !box->isEnabled()) {
        return true;
    }
    m_running = true;
    const bool accepted = check->second();
    m_running = false;
    if (!accepted) {
        m_restoring = true;
        // The message took the activation; the user goes on in this window.
        m_window->activateWindow();
        box->setFocus(Qt::OtherFocusReason);
        if (auto *edit = qobject_cast<QLineEdit *>(box)) {
            edit->selectAll();
        }
        m_restoring = false;
    }
    return accepted;
}

bool LeaveChecker::CommitFocused()
{
    if (m_running) {
        return false;
    }
    if (QWidget *box = m_pending) {
        m_pending = nullptr;
        if (!RunCheck(box)) {
            return false;
        }
    }
    QWidget *focus = m_window->focusWidget();
    return focus == nullptr || RunCheck(focus);
}

void LeaveChecker::DropPending()
{
    m_pending = nullptr;
}

} // namespace qor
