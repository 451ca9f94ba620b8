#include "numeric_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace qor {

namespace {

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

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

namespace {

constexpr double PowersOfTen[] = {1e0, 1e1, 1e2, 1e3,  1e4,  1e5, 1e6,
                                  1e7, 1e8, 1e9, 1e10, 1e11, 1e12};

// Lays out significant digits (no leading zero, no trailing zero) whose first
// digit has the decimal exponent `exponent`, in plain decimal notation.
char *LayOutDigits(char *out, const char *digits, int count, int exponent)
{
    if (exponent < 0) {
        *out++ = '0';
        *out++ = '.';
        for (int i = -exponent - 1; i > 0; --i) {
            *out++ = '0';
        }
        return std::copy(digits, digits + count, out);
    }
    if (exponent + 1 >= count) {
        out = std::copy(digits, digits + count, out);
        for (int i = exponent + 1 - count; i > 0; --i) {
            *out++ = '0';
        }
        return out;
    }
    out = std::copy(digits, digits + exponent + 1, out);
    *out++ = '.';
    return std::copy(digits + exponent + 1, digits + count, out);
}

// The general way, for any magnitude: to_chars rounds the exact value to seven
// significant digits in scientific form.
char *WriteSingleTextSlowly(char *out, double magnitude)
{
    char buffer[32];
    auto result =
        std::to_chars(buffer, buffer + sizeof buffer, magnitude, std::chars_format::scientific, 6);
    const char *e = std::find(buffer, result.ptr, 'e');
    int exponent = 0;
    const char *exponentText = e + 1;
    if (*exponentText == '+') {
        ++exponentText;
    }
    std::from_chars(exponentText, result.ptr, exponent);
    char digits[8];
    int count = 0;
    for (const char *c = buffer; c != e; ++c) {
        if (*c != '.') {
            digits[count++] = *c;
        }
    }
    while (count > 1 && digits[count - 1] == '0') {
        --count;
    }
    return LayOutDigits(out, digits, count, exponent);
}

// Writes the text of a single into `out` (room for 64 characters), returns
// the end.
char *WriteSingleText(char *out, float value)
{
    if (value == 0.0f || !std::isfinite(value)) {
        *out++ = '0';
        return out;
    }
    if (value < 0) {
        *out++ = '-';
    }
    double magnitude = std::fabs(static_cast<double>(value));

    // Fast way for 1e-6 <= |value| < 1e7: a single times 10^d (d <= 12) is
    // exact in a double, so rounding that product half to even to an integer
    // of seven digits gives exactly the digits to_chars would.
    int places = 6 - static_cast<int>(std::floor(std::ilogb(magnitude) * 0.30102999566398120));
    for (int attempt = 0; attempt < 3 && places >= 0 && places <= 12; ++attempt) {
        double scaled = magnitude * PowersOfTen[places];
        if (scaled >= 1e7) {
            --places;
            continue;
        }
        if (scaled < 1e6) {
            ++places;
            continue;
        }
        auto integer = static_cast<std::uint32_t>(std::nearbyint(scaled));
        if (integer >= 10000000u) {
            integer = 1000000u;
            --places;
        }
        char digits[7];
        for (int i = 6; i >= 0; --i) {
            digits[i] = static_cast<char>('0' + integer % 10);
            integer /= 10;
        }
        int count = 7;
        while (count > 1 && digits[count - 1] == '0') {
            --count;
        }
        return LayOutDigits(out, digits, count, 6 - places);
    }
    return WriteSingleTextSlowly(out, magnitude);
}

} // namespace

void AppendSingleText(std::string &out, float value)
{
    char buffer[64];
    char *end = WriteSingleText(buffer, value);
    out.append(buffer, end);
}

std::string SingleToText(float value)
{
    std::string text;
    AppendSingleText(text, value);
    return text;
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
    integerDigits =
        firstNonZero == std::string::npos ? std::string() : integerDigits.substr(firstNonZero);
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
