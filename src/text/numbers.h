#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The number rules of the whole program. Only this code parses and prints numbers.
///
/// A numeric text consists of blanks, at most one sign, digits with at most one "." and at least one digit,
/// and blanks. There are no exponents and no digit groups. "." is the decimal separator in every locale, as a
/// comma separates the fields of a device value.
namespace text {

bool IsNumeric(std::string_view text);

/// The value of a numeric text; nothing for any other text. A number too large for a double becomes the
/// largest double.
std::optional<double> ParseNumber(std::string_view text);

/// The number at the start of the text; 0 if there is none ("21 C" is 21, "abc" is 0).
double LeadingNumber(std::string_view text);

/// The shortest decimal text that reads back as the same double, without an exponent; negative zero is "0".
std::string ShortestText(double value);

/// The text of a computed value has at most 15 significant digits, so 21.1 + 2.3 is "23.4"; larger numbers
/// end in zeros.
inline constexpr int kMostComputedDigits = 15;
std::string ComputedText(double value);

/// The nearest whole number, ties to even.
double RoundHalfEven(double value);

/// The number at the start of the text as the nearest whole number, ties to even; beyond 32 bits, the nearest
/// that fits.
std::int32_t LeadingWholeNumber(std::string_view text);

/// The nearest multiple of 10^-decimals, ties to even.
double RoundToDecimals(double value, int decimals);

}  // namespace text
