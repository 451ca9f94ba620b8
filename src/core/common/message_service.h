#pragma once

#include <string>

namespace qor {

enum class MessageIcon { None, Information, Exclamation, Critical, Question };
enum class MessageButtons { Ok, OkCancel, YesNo };
enum class MessageAnswer { Ok, Cancel, Yes, No };

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
    virtual void Beep() {}
};

} // namespace qor
