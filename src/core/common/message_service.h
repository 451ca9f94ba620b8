#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace qor {

enum class MessageIcon
{
    None,
    Information,
    Exclamation,
    Critical,
    Question
};
// YesNoDefaultNo: a question whose safe answer is No, which Enter then gives.
enum class MessageButtons
{
    Ok,
    OkCancel,
    YesNo,
    YesNoDefaultNo
};
enum class MessageAnswer
{
    Ok,
    Cancel,
    Yes,
    No
};

// Every message box of the program goes through one of these, so that tests
// can answer them and nothing blocks. The windows use a Qt message box; the
// command line prints; tests record and answer.
class MessageService
{
public:
    virtual ~MessageService() = default;

    virtual MessageAnswer Show(const std::string &text, MessageIcon icon,
                               MessageButtons buttons = MessageButtons::Ok,
                               const std::string &title = {}) = 0;
    // A question with answers of its own, given by their texts: Enter gives
    // the first, Escape the last, which must be the safe one. Returns the
    // index of the answer. A service that cannot ask gives the last.
    virtual std::size_t Choose(const std::string &text, const std::vector<std::string> &answers,
                               const std::string &title = {})
    {
        (void)text;
        (void)title;
        return answers.empty() ? 0 : answers.size() - 1;
    }
    virtual void Beep() {}
};

// The answer of Enter: Ok for Ok and OkCancel, Yes for YesNo, No for
// YesNoDefaultNo.
constexpr MessageAnswer DefaultAnswer(MessageButtons buttons)
{
    switch (buttons) {
    case MessageButtons::YesNo:
        return MessageAnswer::Yes;
    case MessageButtons::YesNoDefaultNo:
        return MessageAnswer::No;
    case MessageButtons::Ok:
    case MessageButtons::OkCancel:
        break;
    }
    return MessageAnswer::Ok;
}

} // namespace qor
