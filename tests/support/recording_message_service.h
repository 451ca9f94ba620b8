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
    };

    MessageAnswer Show(const std::string &text, MessageIcon icon, MessageButtons buttons,
                       const std::string &title) override;
    void Beep() override { ++beeps; }

    std::vector<Shown> shown;
    std::deque<MessageAnswer> answers;
    int beeps = 0;
};

} // namespace qor::test
