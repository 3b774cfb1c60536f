#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace simulator {

/// How a number changes between the unit systems: a temperature with the offset of 32 degrees, a difference
/// without it.
enum class Quantity { Plain, Temperature, Difference };

/// One field of a structured value. A field with choices shows its value's name; the first name is that of
/// `first_choice`.
struct Field {
  std::string_view name;
  std::size_t bytes;
  bool is_signed;
  int counts_per_unit;
  Quantity quantity = Quantity::Plain;
  std::span<const std::string_view> choices = {};
  int first_choice = 0;
};

/// A named type. Its fields are in the order of the bytes and of the text.
struct Structure {
  std::string_view name;
  std::string_view separator;
  std::span<const Field> fields;
};

std::span<const Structure> Structures();

}  // namespace simulator
