#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The number rules of the whole program. Nothing else parses or prints numbers.
///
/// A numeric text is: blanks, at most one sign, digits with at most one "." and at least one digit, blanks.
/// There are no exponents and no digit groups. "." is the decimal separator in every locale, as a comma
/// separates the fields of a device value.
namespace text {

bool IsNumeric(std::string_view text);

/// The value of a numeric text; nothing for any other text. A number too large for a double becomes the
/// largest double.
std::optional<double> ParseNumber(std::string_view text);

/// The number that the text starts with; 0 if it starts with none ("21 C" is 21, "abc" is 0).
double LeadingNumber(std::string_view text);

/// The shortest decimal text that reads back as the same double, never with an exponent; negative zero is
/// "0".
std::string ShortestText(double value);

/// The text of a computed value: at most 15 significant digits, so that 21.1 + 2.3 is "23.4"; larger numbers
/// end in zeros.
inline constexpr int kMostComputedDigits = 15;
std::string ComputedText(double value);

/// Nearest whole number, ties to the even neighbour.
double RoundHalfEven(double value);

/// The number that the text starts with, rounded to a whole number, ties to the even neighbour; beyond 32
/// bits, the nearest that fits.
std::int32_t LeadingWholeNumber(std::string_view text);

/// Nearest multiple of 10^-decimals, ties to the even neighbour.
double RoundToDecimals(double value, int decimals);

}  // namespace text
