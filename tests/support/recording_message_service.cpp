#include "recording_message_service.h"

namespace qor::test {

MessageAnswer RecordingMessageService::Show(const std::string &text, MessageIcon icon,
                                            MessageButtons buttons, const std::string &title)
{
    shown.push_back({text, icon, buttons, title});
    if (!answers.empty()) {
        MessageAnswer answer = answers.front();
        answers.pop_front();
        return answer;
    }
    return DefaultAnswer(buttons);
}

} // namespace qor::test
