#include "tool_list_items.h"

#include "numeric_text.h"

#include <cmath>

namespace qor {

namespace {

// The numeric test of numeric_text.h as a state machine over a growing
// prefix, so that a number is scanned once instead of testing every prefix
// again. An exponent never survives the scan (its "e" alone makes a prefix
// non-numeric), so it has no states here.
enum class NumberState : unsigned char
{
    Lead,
    Sign,
    Int,
    Point,
    Frac,
    Trail,
    Dead
};

NumberState Step(NumberState state, char c)
{
    const bool digit = c >= '0' && c <= '9';
    switch (state) {
    case NumberState::Lead:
        if (c == ' ') {
            return NumberState::Lead;
        }
        if (c == '+' || c == '-') {
            return NumberState::Sign;
        }
        [[fallthrough]];
    case NumberState::Sign:
        if (digit) {
            return NumberState::Int;
        }
        return c == '.' ? NumberState::Point : NumberState::Dead;
    case NumberState::Int:
        if (digit) {
            return NumberState::Int;
        }
        if (c == '.') {
            return NumberState::Frac;
        }
        return c == ' ' ? NumberState::Trail : NumberState::Dead;
    case NumberState::Point:
        return digit ? NumberState::Frac : NumberState::Dead;
    case NumberState::Frac:
        if (digit) {
            return NumberState::Frac;
        }
        return c == ' ' ? NumberState::Trail : NumberState::Dead;
    case NumberState::Trail:
        return c == ' ' ? NumberState::Trail : NumberState::Dead;
    case NumberState::Dead:
        break;
    }
    return NumberState::Dead;
}

bool Accepting(NumberState state)
{
    return state == NumberState::Int || state == NumberState::Frac || state == NumberState::Trail;
}

// A part of the "a;b" field: 0 when not numeric, empty when out of range.
std::optional<float> PairPart(std::string_view part)
{
    if (!IsNumeric(part)) {
        return 0.0f;
    }
    return ToSingle(part);
}

} // namespace

std::optional<float> ReadNumber(std::string_view &text)
{
    std::size_t prefixEnd = 0;
    std::size_t numericEnd = 0;
    // The digits of the numeric prefix, for the common short numbers.
    std::uint64_t mantissa = 0;
    int mantissaDigits = 0;
    int fractionDigits = 0;
    NumberState state = NumberState::Lead;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == ',') {
            break;
        }
        const NumberState next = Step(state, c);
        const bool accepting = Accepting(next);
        if (!accepting && c != '-') {
            break;
        }
        if (c >= '0' && c <= '9') {
            if (mantissa != 0 || c != '0') {
                ++mantissaDigits;
            }
            mantissa = mantissa * 10 + static_cast<std::uint64_t>(c - '0');
            fractionDigits += next == NumberState::Frac;
        }
        state = next;
        prefixEnd = i + 1;
        if (accepting) {
            numericEnd = i + 1;
        }
    }
    if (prefixEnd == 0) {
        return 0.0f;
    }

    float value = 0;
    // Up to 2^24 and 10^10 both operands are exact, so one division rounds
    // correctly; anything else goes the general way.
    constexpr float powersOfTen[] = {1e0f, 1e1f, 1e2f, 1e3f, 1e4f, 1e5f,
                                     1e6f, 1e7f, 1e8f, 1e9f, 1e10f};
    if (numericEnd > 0 && mantissaDigits <= 8 && mantissa <= (1u << 24) && fractionDigits <= 10) {
        value = static_cast<float>(mantissa) / powersOfTen[fractionDigits];
        if (text.front() == '-') {
            value = -value;
        }
    } else if (numericEnd > 0) {
        auto converted = ToSingle(text.substr(0, numericEnd));
        if (!converted) {
            return std::nullopt;
        }
        value = *converted;
    }

    std::size_t cut = 0;
    while (cut < text.size() && text[cut] != ',' && text[cut] != ' ') {
        ++cut;
    }
    text = cut < text.size() ? TrimSpaces(text.substr(cut + 1)) : std::string_view{};
    return value;
}

std::optional<std::uint8_t> ReadByteNumber(std::string_view &text)
{
    auto value = ReadNumber(text);
    if (!value) {
        return std::nullopt;
    }
    const double rounded = std::nearbyint(static_cast<double>(*value));
    if (!(rounded >= 0.0 && rounded <= 255.0)) {
        return std::nullopt;
    }
    return static_cast<std::uint8_t>(rounded);
}

std::optional<NumberPair> ReadNumberPair(std::string_view &text)
{
    const std::size_t comma = text.find(',');
    const std::string_view field = text.substr(0, comma);
    text =
        comma == std::string_view::npos ? std::string_view{} : TrimSpaces(text.substr(comma + 1));

    NumberPair pair;
    const std::size_t semicolon = field.find(';');
    auto first = PairPart(field.substr(0, semicolon));
    if (!first) {
        return std::nullopt;
    }
    pair.first = *first;
    if (semicolon != std::string_view::npos) {
        pair.second = PairPart(field.substr(semicolon + 1));
        if (!pair.second) {
            return std::nullopt;
        }
    }
    return pair;
}

std::optional<std::string_view> ReadQuoted(std::string_view text)
{
    if (text.empty() || text.front() != '"') {
        return std::nullopt;
    }
    const std::size_t close = text.find('"', 1);
    if (close == std::string_view::npos) {
        return std::string_view{};
    }
    return TrimSpaces(text.substr(1, close - 1));
}

bool DropThrough(std::string_view &text, char separator)
{
    const std::size_t at = text.find(separator);
    if (at == std::string_view::npos) {
        return false;
    }
    text = TrimSpaces(text.substr(at + 1));
    return true;
}

std::string NumberTextForMessage(std::string_view text)
{
    constexpr std::size_t shown = 24;
    std::size_t end = 0;
    while (end < text.size() && text[end] != ',' && text[end] != ' ') {
        ++end;
    }
    if (end <= shown) {
        return std::string(text.substr(0, end));
    }
    return std::string(text.substr(0, shown)) + "...";
}

} // namespace qor
