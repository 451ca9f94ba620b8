#pragma once

#include "message_service.h"

#include <QPointer>
#include <QWidget>

namespace qor {

// The program's message boxes: a modal QMessageBox with the icon and buttons
// asked for, the title "QORTool" unless another is given, and the text shown
// as plain text. Escape answers Cancel or No.
class QtMessageService final : public MessageService
{
public:
    explicit QtMessageService(QWidget *parent = nullptr) : m_parent(parent) {}

    void SetParent(QWidget *parent) { m_parent = parent; }

    MessageAnswer Show(const std::string &text, MessageIcon icon, MessageButtons buttons,
                       const std::string &title) override;
    std::size_t Choose(const std::string &text, const std::vector<std::string> &answers,
                       const std::string &title) override;
    void Beep() override;

private:
    QPointer<QWidget> m_parent;
};

} // namespace qor
