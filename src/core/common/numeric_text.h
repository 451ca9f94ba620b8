#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qor {

// The one definition of "numeric text" used everywhere in the program:
// optional blanks, an optional sign ("+" or "-"), digits with at most one
// decimal point "." and at least one digit, an optional exponent ("e" or "E",
// an optional sign and at least one digit), optional blanks. The decimal point
// is always "."; thousands separators, currency signs and hexadecimal forms are
// not numeric.
bool IsNumeric(std::string_view text);

// The text as a single-precision number, correctly rounded. Empty when the text
// is not numeric or its value lies outside the single range; values too small
// to represent become zero.
std::optional<float> ToSingle(std::string_view text);

// The text as a double, for callers that round further themselves. Empty when
// the text is not numeric or out of the double range.
std::optional<double> ToDouble(std::string_view text);

// The text as a 16-bit integer, rounded half to even (2.5 gives 2, 3.5 gives
// 4). Empty when the text is not numeric or the rounded value lies outside
// -32768..32767.
std::optional<std::int16_t> ToInt16(std::string_view text);

// A value rounded half to even into the 16-bit range; empty when outside it.
std::optional<std::int16_t> RoundToInt16(double value);

// The shortest general text of a single: at most 7 significant digits, plain
// decimal notation (never an exponent), "." as the decimal point, no trailing
// zeros, no trailing point, no leading blank. 10 gives "10", 0.5 gives "0.5",
// 1/3 gives "0.3333333", -0 gives "0".
std::string SingleToText(float value);

// Appends the text SingleToText gives, without allocating beyond `out`'s own
// growth; for writers that format many numbers.
void AppendSingleText(std::string &out, float value);

// Formats a value with a picture made of "#", "0" and at most one ".":
// "0" is a digit always shown, "#" a digit shown only when significant.
// "####" (no digit for zero), "#00", "##0.0", "##0.00", "##0.0##". Rounds half
// away from zero on the exact value. Never shows a negative zero.
std::string FormatPicture(double value, std::string_view picture);

// Trims blanks (spaces only) at both ends.
std::string_view TrimSpaces(std::string_view text);

} // namespace qor
