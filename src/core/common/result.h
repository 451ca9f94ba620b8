#pragma once

#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace qor {

// What went wrong, as a sentence for the user. Readers fill in the line
// (1-based, 0 when not about a line) and the line's text.
struct Error
{
    Error() = default;
    Error(std::string message_, int line_ = 0, std::string lineText_ = {})
        : message(std::move(message_)), line(line_), lineText(std::move(lineText_))
    {}

    std::string message;
    // The catalogue key (section "MSG") of the text a window shows in place of
    // `message`, when there is one, and what takes the places "%1", "%2" ...
    // in that text.
    std::string key;
    std::vector<std::string> args;
    int line = 0;
    std::string lineText;
};

// An error with the catalogue key of its text and the arguments of that text,
// and its English sentence for where no catalogue is at hand.
inline Error KeyedError(std::string key, std::vector<std::string> args, std::string english)
{
    Error error(std::move(english));
    error.key = std::move(key);
    error.args = std::move(args);
    return error;
}

// Either a value or an Error; the core returns these instead of throwing.
template <typename T> class [[nodiscard]] Result
{
public:
    Result(T value) : m_state(std::move(value)) {}
    Result(Error error) : m_state(std::move(error)) {}

    bool ok() const { return std::holds_alternative<T>(m_state); }
    explicit operator bool() const { return ok(); }

    T &value() { return std::get<T>(m_state); }
    const T &value() const { return std::get<T>(m_state); }
    const Error &error() const { return std::get<Error>(m_state); }

private:
    std::variant<T, Error> m_state;
};

// A Result without a value.
struct Done
{};
using Status = Result<Done>;

inline Status Success()
{
    return Done{};
}

} // namespace qor
