#pragma once

#include "message_service.h"

#include <deque>
#include <string>
#include <vector>

namespace qor::test {

// Records every message and answers from a queue (the default answer when
// empty).
class RecordingMessageService : public MessageService
{
public:
    struct Shown
    {
        std::string text;
        MessageIcon icon;
        MessageButtons buttons;
        std::string title;
        std::vector<std::string> choices; // the answers offered by Choose
    };

    MessageAnswer Show(const std::string &text, MessageIcon icon, MessageButtons buttons,
                       const std::string &title) override;
    // Answers from `chosen` (the last answer when empty).
    std::size_t Choose(const std::string &text, const std::vector<std::string> &answers,
                       const std::string &title) override;
    void Beep() override { ++beeps; }

    std::vector<Shown> shown;
    std::deque<MessageAnswer> answers;
    std::deque<std::size_t> chosen;
    int beeps = 0;
};

} // namespace qor::test
