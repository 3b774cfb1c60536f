#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/// A value as on the network: high byte first.
using Bytes = std::vector<std::uint8_t>;

/// Two upper-case digits for each byte, with the separator between bytes.
std::string ToHex(const Bytes& bytes, std::string_view separator = "");

/// The bytes of pairs of hexadecimal digits in either case; nothing for any other text.
std::optional<Bytes> FromHex(std::string_view text);

/// The bytes as one whole number; at most 4 bytes.
std::int64_t ToInteger(const std::uint8_t* bytes, std::size_t size, bool is_signed);
void AppendInteger(Bytes& bytes, std::int64_t value, std::size_t size);

}  // namespace simulator
