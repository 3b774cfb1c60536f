#include "text/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace text {
namespace {

char decimal_separator = '.';

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// The leading number of a text, rewritten with "." for the library's parser, and where it ended.
struct Scan {
  std::string digits;
  std::size_t end = 0;
  bool any_digit = false;
};

Scan ScanNumber(std::string_view text) {
  Scan scan;
  std::size_t at = 0;
  while (at < text.size() && text[at] == ' ') ++at;
  if (at < text.size() && (text[at] == '-' || text[at] == '+')) {
    if (text[at] == '-') scan.digits += '-';
    ++at;
  }
  bool separator_seen = false;
  for (; at < text.size(); ++at) {
    if (IsDigit(text[at])) {
      scan.any_digit = true;
      scan.digits += text[at];
    } else if (text[at] == decimal_separator && !separator_seen) {
      separator_seen = true;
      scan.digits += '.';
    } else {
      break;
    }
  }
  scan.end = at;
  return scan;
}

double ValueOf(const Scan& scan) {
  double value = 0;
  const auto [end, error] =
      std::from_chars(scan.digits.data(), scan.digits.data() + scan.digits.size(), value);
  if (error == std::errc{}) return value;
  // Out of range: too large for any limit, or so small that it is nothing.
  const bool negative = scan.digits.starts_with('-');
  const std::size_t first = scan.digits.find_first_of("123456789");
  const bool large = first < scan.digits.find('.');
  if (!large) return 0;
  return negative ? -HUGE_VAL : HUGE_VAL;
}

}  // namespace

char DecimalSeparator() { return decimal_separator; }

void SetDecimalSeparator(char of_locale) {
  const bool separates_fields = of_locale == ',' || of_locale == ' ' || of_locale == '\t';
  decimal_separator = separates_fields ? '.' : of_locale;
}

std::optional<double> ParseNumber(std::string_view text) {
  const Scan scan = ScanNumber(text);
  if (!scan.any_digit || text.find_first_not_of(' ', scan.end) != std::string_view::npos) return std::nullopt;
  return ValueOf(scan);
}

bool IsNumeric(std::string_view text) { return ParseNumber(text).has_value(); }

double LeadingNumber(std::string_view text) {
  const Scan scan = ScanNumber(text);
  return scan.any_digit ? ValueOf(scan) : 0;
}

std::string ShortestText(double value) {
  if (value == 0) return "0";
  std::array<char, 400> buffer;  // the longest double without exponent has 309 digits before the point
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed).ptr;
  std::string result(buffer.data(), end);
  if (const auto point = result.find('.'); point != std::string::npos) result[point] = decimal_separator;
  return result;
}

std::string ComputedText(double value) {
  std::array<char, 40> buffer;
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::scientific, 14)
          .ptr;
  double rounded = value;
  std::from_chars(buffer.data(), end, rounded);
  return ShortestText(rounded);
}

double RoundHalfEven(double value) { return std::nearbyint(value); }

std::int32_t LeadingWholeNumber(std::string_view text) {
  using Limits = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(
      std::clamp<double>(RoundHalfEven(LeadingNumber(text)), Limits::min(), Limits::max()));
}

double RoundToDecimals(double value, int decimals) {
  const double scale = std::pow(10.0, decimals);
  return std::nearbyint(value * scale) / scale;
}

}  // namespace text
