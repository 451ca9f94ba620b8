#include "tool_kinds.h"

namespace qor {

std::optional<std::int16_t> KindOfWord(std::string_view word)
{
    for (std::size_t i = 0; i < KindWords.size(); ++i) {
        if (KindWords[i] == word) {
            return static_cast<std::int16_t>(i);
        }
    }
    return std::nullopt;
}

} // namespace qor
