#include "auxiliary_tool_window.h"

#include "field_entry.h"
#include "numeric_box.h"
#include "settings_fonts.h"
#include "window_look.h"

#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QPushButton>
#include <QTimer>

namespace qor {

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
    return false;
}

void AuxiliaryToolWindow::Dismiss()
{
    m_checker->DropPending();
    hide();
}

void AuxiliaryToolWindow::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && !isActiveWindow()) {
        // Decided once the activation has settled: a message of this window
        // takes the activation too, and must not close it.
        QTimer::singleShot(0, this, &AuxiliaryToolWindow::HideUnlessActive);
    }
}

void AuxiliaryToolWindow::HideUnlessActive()
{
    if (isVisible() && !m_checker->Busy() && AnotherWindowTookOver(*this)) {
        hide();
    }
}

void AuxiliaryToolWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        Dismiss();
        return;
    }
    QWidget::keyPressEvent(event);
}

} // namespace qor
