#include "message_text.h"

namespace qor {

std::string FillIn(std::string_view pattern, const std::vector<std::string> &args)
{
    std::string text;
    text.reserve(pattern.size() + 64);
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const char next = i + 1 < pattern.size() ? pattern[i + 1] : '\0';
        if (pattern[i] == '%' && next == '%') {
            text += '%';
            ++i;
        } else if (pattern[i] == '%' && next >= '1' && next <= '9') {
            const auto index = static_cast<std::size_t>(next - '1');
            if (index < args.size()) {
                text += args[index];
            }
            ++i;
        } else {
            text += pattern[i];
        }
    }
    return text;
}

std::string ErrorText(const MessageCatalogue &catalogue, const Error &error)
{
    if (error.key.empty()) {
        return error.message;
    }
    const std::string pattern = catalogue.GetText("MSG", error.key);
    return pattern.empty() ? error.message : FillIn(pattern, error.args);
}

std::string MessageText(const MessageCatalogue &catalogue, std::string_view key,
                        const std::vector<std::string> &args)
{
    return FillIn(catalogue.GetText("MSG", key), args);
}

} // namespace qor
