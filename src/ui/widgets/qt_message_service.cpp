#include "qt_message_service.h"

#include <QApplication>
#include <QMessageBox>

namespace qor {

namespace {

QMessageBox::Icon BoxIcon(MessageIcon icon)
{
    switch (icon) {
    case MessageIcon::Information:
        return QMessageBox::Information;
    case MessageIcon::Exclamation:
        return QMessageBox::Warning;
    case MessageIcon::Critical:
        return QMessageBox::Critical;
    case MessageIcon::Question:
        return QMessageBox::Question;
    case MessageIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

} // namespace

MessageAnswer QtMessageService::Show(const std::string &text, MessageIcon icon,
                                     MessageButtons buttons, const std::string &title)
{
    // An open drop-down list would sit on top of the message and take its keys.
    if (QWidget *popup = QApplication::activePopupWidget()) {
        popup->close();
    }
    QWidget *parent = m_parent ? m_parent.data() : QApplication::activeWindow();
    QMessageBox box(BoxIcon(icon), QString::fromStdString(title.empty() ? "QORTool" : title),
                    QString::fromStdString(text), QMessageBox::NoButton, parent);
    box.setTextFormat(Qt::PlainText);
    switch (buttons) {
    case MessageButtons::Ok:
        box.setStandardButtons(QMessageBox::Ok);
        box.setDefaultButton(QMessageBox::Ok);
        box.setEscapeButton(QMessageBox::Ok);
        break;
    case MessageButtons::OkCancel:
        box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
        box.setDefaultButton(QMessageBox::Ok);
        box.setEscapeButton(QMessageBox::Cancel);
        break;
    case MessageButtons::YesNo:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box.setDefaultButton(QMessageBox::Yes);
        box.setEscapeButton(QMessageBox::No);
        break;
    case MessageButtons::YesNoDefaultNo:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box.setDefaultButton(QMessageBox::No);
        box.setEscapeButton(QMessageBox::No);
        break;
    }
    switch (box.exec()) {
    case QMessageBox::Cancel:
        return MessageAnswer::Cancel;
    case QMessageBox::Yes:
        return MessageAnswer::Yes;
    case QMessageBox::No:
        return MessageAnswer::No;
    default:
        return MessageAnswer::Ok;
    }
}

void QtMessageService::Beep()
{
    QApplication::beep();
}

} // namespace qor
