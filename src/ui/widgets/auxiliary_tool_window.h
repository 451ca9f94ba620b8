#pragma once

#include "leave_checker.h"
#include "message_service.h"
#include "workspace.h"

#include <QWidget>

class QPushButton;

namespace qor {

class NumericBox;

// A small modeless tool window beside the tool editor. It hides on its close
// button, on Escape, or as soon as another window of the program becomes
// active (a message of its own does not count). Its numeric boxes take only
// the characters of a number and are checked when the focus leaves them for
// another control of the window.
class AuxiliaryToolWindow : public QWidget
{
    Q_OBJECT

public:
    // Shows the window, the first time with its top-left corner at `corner`,
    // later where the user left it; always wholly on the screen.
    void ShowAt(const QPoint &corner);

protected:
    AuxiliaryToolWindow(const QString &objectName, Workspace &workspace, MessageService &messages,
                        QWidget *parent);

    // A numeric box of this window; `check` runs when the focus leaves it.
    NumericBox *AddNumericBox(LeaveChecker::Check check);
    // The button that hides the window, dropping any pending check.
    QPushButton *AddCloseButton(const QString &objectName);
    // Tells the user that a box's text is not a number; false, for the box's
    // check to return.
    bool RefuseNumber();

    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void showEvent(QShowEvent *event) override;

    Workspace &m_ws;

private:
    void Dismiss();
    void HideUnlessActive();

    MessageService &m_messages;
    LeaveChecker *m_checker = nullptr;
    bool m_placed = false;
    // Set while the activation settles after a message of this window
    // closed: the window manager may first hand it to another window.
    bool m_settling = false;
};

} // namespace qor
