#include "qt_message_service.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <algorithm>

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

std::size_t QtMessageService::Choose(const std::string &text,
                                     const std::vector<std::string> &answers,
                                     const std::string &title)
{
    if (QWidget *popup = QApplication::activePopupWidget()) {
        popup->close();
    }
    QWidget *parent = m_parent ? m_parent.data() : QApplication::activeWindow();
    QMessageBox box(QMessageBox::Question,
                    QString::fromStdString(title.empty() ? "QORTool" : title),
                    QString::fromStdString(text), QMessageBox::NoButton, parent);
    box.setTextFormat(Qt::PlainText);
    std::vector<QAbstractButton *> buttons;
    for (const std::string &answer : answers) {
        // The button role only places the button; the answer is its index.
        buttons.push_back(box.addButton(QString::fromStdString(answer), QMessageBox::ActionRole));
    }
    if (buttons.empty()) {
        return 0;
    }
    box.setDefaultButton(qobject_cast<QPushButton *>(buttons.front()));
    box.setEscapeButton(buttons.back());
    box.exec();
    const auto chosen = std::find(buttons.begin(), buttons.end(), box.clickedButton());
    return chosen == buttons.end() ? buttons.size() - 1
                                   : static_cast<std::size_t>(chosen - buttons.begin());
}

void QtMessageService::Beep()
{
    QApplication::beep();
}

} // namespace qor
