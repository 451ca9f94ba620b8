#include "auxiliary_tool_window.h"

#include "field_entry.h"
#include "numeric_box.h"
#include "settings_fonts.h"
#include "window_look.h"
#include "window_placement.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QPushButton>
#include <QTimer>

namespace qor {

namespace {

// How long a window may wait for the activation to come back after its
// message closed, before another active window counts as the user's choice.
constexpr int SettleMilliseconds = 400;

} // namespace

AuxiliaryToolWindow::AuxiliaryToolWindow(const QString &objectName, Workspace &workspace,
                                         MessageService &messages, QWidget *parent)
    : QWidget(parent, Qt::Tool), m_ws(workspace), m_messages(messages)
{
    setObjectName(objectName);
    UseBoxColours(*this);
    m_checker = new LeaveChecker(this);
    // Activation may reach another window only after passing through none.
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) {
        if (now != nullptr && now->window() != this && isVisible()) {
            QTimer::singleShot(0, this, &AuxiliaryToolWindow::HideUnlessActive);
        }
    });
}

NumericBox *AuxiliaryToolWindow::AddNumericBox(LeaveChecker::Check check)
{
    auto *box = new NumericBox(this);
    box->SetKeyFilter([this](int key) {
        if (NumKey(key) == 0) {
            m_messages.Beep();
            return false;
        }
        return true;
    });
    box->SetPasteFilter([this](const QString &text) {
        for (const QChar c : text) {
            if (NumKey(c.unicode()) == 0 || c.unicode() == KeyBackspace) {
                m_messages.Beep();
                return false;
            }
        }
        return true;
    });
    m_checker->Watch(box, std::move(check));
    return box;
}

QPushButton *AuxiliaryToolWindow::AddCloseButton(const QString &objectName)
{
    auto *button = new QPushButton(this);
    button->setObjectName(objectName);
    button->setAutoDefault(false);
    ApplySettingsFont(*button, m_ws.Globals.ButtonFontSize, m_ws.Globals.ButtonFontBold);
    m_checker->DeferFor(button);
    connect(button, &QPushButton::clicked, this, &AuxiliaryToolWindow::Dismiss);
    return button;
}

bool AuxiliaryToolWindow::RefuseNumber()
{
    m_messages.Show(m_ws.Text("MSG", "MSG1"), MessageIcon::Exclamation, MessageButtons::Ok);
    // When the message closes, the window manager may activate the editor
    // before the focus comes back here; that is not the user leaving.
    m_settling = true;
    QTimer::singleShot(SettleMilliseconds, this, [this] {
        m_settling = false;
        HideUnlessActive();
    });
    return false;
}

void AuxiliaryToolWindow::ShowAt(const QPoint &corner)
{
    if (!m_placed) {
        adjustSize();
        PlaceOnScreen(*this, corner);
        m_placed = true;
    }
    show();
    raise();
    activateWindow();
}

void AuxiliaryToolWindow::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    KeepOnScreen(*this);
    // The frame is known only once the window manager has framed it.
    QTimer::singleShot(0, this, [this] {
        if (isVisible()) {
            KeepOnScreen(*this);
        }
    });
}

void AuxiliaryToolWindow::Dismiss()
{
    m_checker->DropPending();
    hide();
}

void AuxiliaryToolWindow::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        m_settling = false;
    }
    if (event->type() == QEvent::ActivationChange && !isActiveWindow()) {
        // Decided once the activation has settled: a message of this window
        // takes the activation too, and must not close it.
        QTimer::singleShot(0, this, &AuxiliaryToolWindow::HideUnlessActive);
    }
}

void AuxiliaryToolWindow::HideUnlessActive()
{
    if (isVisible() && !m_checker->Busy() && !m_settling && AnotherWindowTookOver(*this)) {
        hide();
    }
}

void AuxiliaryToolWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        Dismiss();
        return;
    }
    // A plain widget window has no default button: Enter presses the
    // focused button, as it does in a dialog.
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (auto *button = qobject_cast<QAbstractButton *>(focusWidget())) {
            button->click();
            return;
        }
    }
    QWidget::keyPressEvent(event);
}

} // namespace qor
