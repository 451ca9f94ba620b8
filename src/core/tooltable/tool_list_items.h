#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// The small readers that the items of a tool list line are made of. Each
// works on the front of the item's remaining text and cuts off what it used.

namespace qor {

// Reads the number at the front of `text`: the longest prefix every prefix of
// which is numeric, where a "-" may always extend the prefix and a "," always
// ends it. The value is that of the longest numeric prefix among them (0 when
// there is none). `text` is then cut behind the first "," or blank, whichever
// comes first, or emptied when it has neither, and trimmed. An empty prefix
// gives 0 and leaves `text` as it is. Empty when the digits do not fit a
// single (the caller refuses the line).
std::optional<float> ReadNumber(std::string_view &text);

// Like ReadNumber, rounded half to even to a byte; empty when the value lies
// outside 0..255.
std::optional<std::uint8_t> ReadByteNumber(std::string_view &text);

// The "a;b" field: the text up to the first "," (cut off with the comma, or
// all of it when there is none). `first` is the part before a ";", `second`
// the part behind it, present only when there is a ";"; a part that is not
// numeric gives 0. Empty when a value does not fit a single.
struct NumberPair
{
    float first = 0;
    std::optional<float> second;
};
std::optional<NumberPair> ReadNumberPair(std::string_view &text);

// The comment when `text` begins with a double quote: the trimmed bytes up to
// the next double quote, or empty when there is no closing quote. Empty
// optional when `text` does not begin with a quote.
std::optional<std::string_view> ReadQuoted(std::string_view text);

// Cuts `text` behind the first `separator` and trims the rest; false (and
// `text` unchanged) when there is no such character.
bool DropThrough(std::string_view &text, char separator);

// The number at the front of `text` as far as the next "," or blank, cut to a
// readable length, for messages.
std::string NumberTextForMessage(std::string_view text);

} // namespace qor
