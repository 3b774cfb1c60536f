#include "simulator/bytes.h"

namespace simulator {
namespace {

int DigitOf(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

}  // namespace

std::string ToHex(const Bytes& bytes, std::string_view separator) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  for (const std::uint8_t byte : bytes) {
    if (!text.empty()) text += separator;
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return text;
}

std::optional<Bytes> FromHex(std::string_view text) {
  if (text.size() % 2 != 0) return std::nullopt;
  Bytes bytes;
  for (std::size_t i = 0; i < text.size(); i += 2) {
    const int high = DigitOf(text[i]);
    const int low = DigitOf(text[i + 1]);
    if (high < 0 || low < 0) return std::nullopt;
    bytes.push_back(static_cast<std::uint8_t>(high * 16 + low));
  }
  return bytes;
}

std::int64_t ToInteger(const std::uint8_t* bytes, std::size_t size, bool is_signed) {
  std::int64_t value = 0;
  for (std::size_t i = 0; i < size; ++i) value = value * 256 + bytes[i];
  const std::int64_t span = std::int64_t{1} << (8 * size);
  return is_signed && value >= span / 2 ? value - span : value;
}

void AppendInteger(Bytes& bytes, std::int64_t value, std::size_t size) {
  for (std::size_t i = size; i-- > 0;)
    bytes.push_back(static_cast<std::uint8_t>((static_cast<std::uint64_t>(value) >> (8 * i)) & 0xFF));
}

}  // namespace simulator
