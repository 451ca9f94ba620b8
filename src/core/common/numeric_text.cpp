#include "numeric_text.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace qor {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Strips blanks and a leading "+", which std::from_chars does not take.
// Returns the text from_chars should parse, or nullopt when not numeric.
std::optional<std::string_view> NumericCore(std::string_view text)
{
    if (!IsNumeric(text)) {
        return std::nullopt;
    }
    std::string_view t = TrimSpaces(text);
    if (!t.empty() && t.front() == '+') {
        t.remove_prefix(1);
    }
    return t;
}

// Exact decimal digits of a double in fixed notation (to_chars gives the exact
// expansion when asked for enough digits; 1100 covers every double).
std::string ExactFixed(double value)
{
    std::string buffer(1500, '\0');
    auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                std::chars_format::fixed, 1100);
    buffer.resize(static_cast<std::size_t>(result.ptr - buffer.data()));
    return buffer;
}

// Adds one to the decimal digit string (no sign, may hold one '.').
void IncrementDigits(std::string &digits)
{
    for (std::size_t i = digits.size(); i-- > 0;) {
        if (digits[i] == '.') {
            continue;
        }
        if (digits[i] == '9') {
            digits[i] = '0';
        } else {
            ++digits[i];
            return;
        }
    }
    digits.insert(digits.begin(), '1');
}

} // namespace

std::string_view TrimSpaces(std::string_view text)
{
    while (!text.empty() && text.front() == ' ') {
        text.remove_prefix(1);
    }
    while (!text.empty() && text.back() == ' ') {
        text.remove_suffix(1);
    }
    return text;
}

bool IsNumeric(std::string_view text)
{
    std::string_view t = TrimSpaces(text);
    std::size_t i = 0;
    if (i < t.size() && (t[i] == '+' || t[i] == '-')) {
        ++i;
    }
    int digits = 0;
    bool point = false;
    for (; i < t.size(); ++i) {
        if (IsDigit(t[i])) {
            ++digits;
        } else if (t[i] == '.' && !point) {
            point = true;
        } else {
            break;
        }
    }
    if (digits == 0) {
        return false;
    }
    if (i < t.size() && (t[i] == 'e' || t[i] == 'E')) {
        ++i;
        if (i < t.size() && (t[i] == '+' || t[i] == '-')) {
            ++i;
        }
        int exponentDigits = 0;
        for (; i < t.size() && IsDigit(t[i]); ++i) {
            ++exponentDigits;
        }
        if (exponentDigits == 0) {
            return false;
        }
    }
    return i == t.size();
}

std::optional<double> ToDouble(std::string_view text)
{
    auto core = NumericCore(text);
    if (!core) {
        return std::nullopt;
    }
    double value = 0;
    auto [ptr, ec] = std::from_chars(core->data(), core->data() + core->size(), value);
    if (ec == std::errc::result_out_of_range) {
        // Out of range towards zero is an underflow: the value is zero.
        auto e = core->find_first_of("eE");
        if (e != std::string_view::npos && e + 1 < core->size() && (*core)[e + 1] == '-') {
            return core->front() == '-' ? -0.0 : 0.0;
        }
        return std::nullopt;
    }
    if (ec != std::errc() || ptr != core->data() + core->size()) {
        return std::nullopt;
    }
    return value;
}

std::optional<float> ToSingle(std::string_view text)
{
    auto core = NumericCore(text);
    if (!core) {
        return std::nullopt;
    }
    float value = 0;
    auto [ptr, ec] = std::from_chars(core->data(), core->data() + core->size(), value);
    if (ec == std::errc::result_out_of_range) {
        // from_chars reports both overflow and underflow; the double tells which.
        auto wide = ToDouble(text);
        if (wide && std::fabs(*wide) < 1.0) {
            return std::signbit(*wide) ? -0.0f : 0.0f;
        }
        return std::nullopt;
    }
    if (ec != std::errc() || ptr != core->data() + core->size()) {
        return std::nullopt;
    }
    return value;
}

std::optional<std::int16_t> RoundToInt16(double value)
{
    if (!std::isfinite(value)) {
        return std::nullopt;
    }
    // nearbyint rounds half to even in the default rounding mode.
    double rounded = std::nearbyint(value);
    if (rounded < -32768.0 || rounded > 32767.0) {
        return std::nullopt;
    }
    return static_cast<std::int16_t>(rounded);
}

std::optional<std::int16_t> ToInt16(std::string_view text)
{
    auto value = ToDouble(text);
    if (!value) {
        return std::nullopt;
    }
    return RoundToInt16(*value);
}

std::string SingleToText(float value)
{
    if (value == 0.0f || !std::isfinite(value)) {
        return "0";
    }
    // Seven significant digits in scientific form give the digits and the
    // exponent; they are then laid out in plain decimal notation.
    char buffer[32];
    auto result = std::to_chars(buffer, buffer + sizeof buffer, static_cast<double>(value),
                                std::chars_format::scientific, 6);
    std::string_view sci(buffer, static_cast<std::size_t>(result.ptr - buffer));
    bool negative = sci.front() == '-';
    if (negative) {
        sci.remove_prefix(1);
    }
    auto e = sci.find('e');
    int exponent = 0;
    std::from_chars(sci.data() + e + 1 + (sci[e + 1] == '+' ? 1 : 0), sci.data() + sci.size(),
                    exponent);
    std::string digits;
    for (char c : sci.substr(0, e)) {
        if (c != '.') {
            digits += c;
        }
    }
    while (digits.size() > 1 && digits.back() == '0') {
        digits.pop_back();
    }
    std::string text;
    if (exponent < 0) {
        text = "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + digits;
    } else if (static_cast<std::size_t>(exponent) + 1 >= digits.size()) {
        text = digits + std::string(static_cast<std::size_t>(exponent) + 1 - digits.size(), '0');
    } else {
        auto split = static_cast<std::size_t>(exponent) + 1;
        text = digits.substr(0, split) + "." + digits.substr(split);
    }
    return negative ? "-" + text : text;
}

std::string FormatPicture(double value, std::string_view picture)
{
    if (!std::isfinite(value)) {
        value = 0;
    }
    auto point = picture.find('.');
    std::string_view integerPart = picture.substr(0, point);
    std::string_view fractionPart =
        point == std::string_view::npos ? std::string_view() : picture.substr(point + 1);
    std::size_t minIntegerDigits = 0;
    for (char c : integerPart) {
        minIntegerDigits += c == '0';
    }
    std::size_t minDecimals = 0;
    for (char c : fractionPart) {
        minDecimals += c == '0';
    }
    std::size_t maxDecimals = fractionPart.size();

    bool negative = std::signbit(value);
    std::string exact = ExactFixed(std::fabs(value));
    auto dot = exact.find('.');
    std::string kept = exact.substr(0, dot + 1 + maxDecimals);
    if (maxDecimals == 0) {
        kept.pop_back(); // the '.'
    }
    char firstDropped = exact[dot + 1 + maxDecimals];
    if (firstDropped >= '5') {
        IncrementDigits(kept);
    }
    std::string integerDigits = kept.substr(0, kept.find('.'));
    std::string decimals = maxDecimals == 0 ? std::string() : kept.substr(kept.find('.') + 1);
    while (decimals.size() > minDecimals && decimals.back() == '0') {
        decimals.pop_back();
    }
    std::size_t firstNonZero = integerDigits.find_first_not_of('0');
    integerDigits = firstNonZero == std::string::npos ? std::string() : integerDigits.substr(firstNonZero);
    if (integerDigits.size() < minIntegerDigits) {
        integerDigits.insert(0, minIntegerDigits - integerDigits.size(), '0');
    }
    std::string text = integerDigits;
    if (!decimals.empty()) {
        text += "." + decimals;
    }
    bool allZero = text.find_first_not_of("0.") == std::string::npos;
    if (negative && !allZero) {
        text.insert(text.begin(), '-');
    }
    return text;
}

} // namespace qor
