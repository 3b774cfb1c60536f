#include "simulator/bytes.h"

#include <charconv>

namespace simulator {

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
    const char* const digits = text.data() + i;
    if (std::from_chars(digits, digits + 2, bytes.emplace_back(), 16).ptr != digits + 2) return std::nullopt;
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
