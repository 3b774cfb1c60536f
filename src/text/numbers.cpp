#include "text/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace text {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// The leading number of a text, without blanks and "+" as the library's parser requires, and its end.
struct Scan {
  std::string_view digits;
  std::size_t end = 0;
  bool any_digit = false;
};

Scan ScanNumber(std::string_view text) {
  Scan scan;
  std::size_t at = 0;
  while (at < text.size() && text[at] == ' ') ++at;
  const bool negative = at < text.size() && text[at] == '-';
  const bool positive = at < text.size() && text[at] == '+';
  const std::size_t begin = positive ? at + 1 : at;
  at += negative || positive ? 1 : 0;
  bool point_seen = false;
  for (; at < text.size(); ++at) {
    if (IsDigit(text[at]))
      scan.any_digit = true;
    else if (text[at] == '.' && !point_seen)
      point_seen = true;
    else
      break;
  }
  scan.digits = text.substr(begin, at - begin);
  scan.end = at;
  return scan;
}

double ValueOf(const Scan& scan) {
  double value = 0;
  const auto [end, error] =
      std::from_chars(scan.digits.data(), scan.digits.data() + scan.digits.size(), value);
  if (error == std::errc{}) return value;
  // Out of range: a large number becomes the largest that can be shown and computed with, a small one 0.
  const bool negative = scan.digits.starts_with('-');
  const std::size_t first = scan.digits.find_first_of("123456789");
  const bool large = first < scan.digits.find('.');
  if (!large) return 0;
  constexpr double kLargest = std::numeric_limits<double>::max();
  return negative ? -kLargest : kLargest;
}

/// Writes a number in the library's scientific form ("-2.34e+01") without its exponent ("-23.4").
std::string WrittenOut(std::string_view scientific) {
  const std::size_t mark = scientific.find('e');
  int exponent = 0;
  std::from_chars(scientific.data() + mark + (scientific[mark + 1] == '+' ? 2 : 1),
                  scientific.data() + scientific.size(), exponent);
  const bool negative = scientific.front() == '-';
  std::string digits(scientific.substr(negative, mark - negative));
  std::erase(digits, '.');
  digits.resize(std::max<std::size_t>(digits.find_last_not_of('0') + 1, 1));
  if (exponent < 0) digits.insert(0, static_cast<std::size_t>(-exponent), '0');
  const auto whole = static_cast<std::size_t>(std::max(exponent, 0)) + 1;
  if (digits.size() < whole) digits.resize(whole, '0');
  if (digits.size() > whole) digits.insert(whole, 1, '.');
  return (negative ? "-" : "") + digits;
}

}  // namespace

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
  std::array<char, 40> buffer;
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::scientific).ptr;
  return WrittenOut({buffer.data(), end});
}

std::string ComputedText(double value) {
  if (value == 0) return "0";
  std::array<char, 40> buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                 std::chars_format::scientific, kMostComputedDigits - 1)
                       .ptr;
  return WrittenOut({buffer.data(), end});
}

double RoundHalfEven(double value) { return std::nearbyint(value); }

std::int32_t LeadingWholeNumber(std::string_view text) {
  using Limits = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(
      std::clamp<double>(RoundHalfEven(LeadingNumber(text)), Limits::min(), Limits::max()));
}

double RoundToDecimals(double value, int decimals) {
  const double scale = std::pow(10.0, decimals);
  // Larger doubles have no decimals, and the product could overflow.
  if (std::abs(value) > 1e15) return value;
  return std::nearbyint(value * scale) / scale;
}

}  // namespace text
