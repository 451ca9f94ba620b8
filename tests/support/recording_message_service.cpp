#include "recording_message_service.h"

namespace qor::test {

MessageAnswer RecordingMessageService::Show(const std::string &text, MessageIcon icon,
                                            MessageButtons buttons, const std::string &title)
{
    shown.push_back({text, icon, buttons, title, {}});
    if (!answers.empty()) {
        MessageAnswer answer = answers.front();
        answers.pop_front();
        return answer;
    }
    return DefaultAnswer(buttons);
}

std::size_t RecordingMessageService::Choose(const std::string &text,
                                            const std::vector<std::string> &offered,
                                            const std::string &title)
{
    shown.push_back({text, MessageIcon::Question, MessageButtons::OkCancel, title, offered});
    if (!chosen.empty()) {
        const std::size_t answer = chosen.front();
        chosen.pop_front();
        return answer;
    }
    return offered.empty() ? 0 : offered.size() - 1;
}

} // namespace qor::test
