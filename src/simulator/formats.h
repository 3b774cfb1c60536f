#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "simulator/bytes.h"
#include "simulator/format_table.h"

namespace simulator {

/// How numbers and lists are formatted: the regional settings of the computer, and the precision.
struct TextStyle {
  bool regional = false;  // decimal "," and, instead of ",", the separator ";"
  bool coarse = false;    // temperatures in tenths
};

/// Converts raw bytes to text and back.
///
/// A name is a structure's from the table, INT, RAW, RAW_HEX or RAW_HEX_PACKED; "#SI" or "#US" before or
/// after it selects the unit system, by default SI. Rendered text always parses back to the same bytes. A
/// number finer than the field's resolution is rounded, ties to even.
class Format {
 public:
  /// Nothing for an unknown name.
  static std::optional<Format> Find(std::string_view name);

  /// Only the documented forms: "#SI" or "#US" after the name; manufacturers' types ("UNVT_") as "#<program
  /// ID>[<scope>].<name>", whose program ID has the device's digits as far as the scope covers them.
  static std::optional<Format> FindDocumented(std::string_view name, std::string_view program_id);

  /// Both throw 18035 if bytes or text do not match the format.
  std::string Render(const Bytes& bytes, const TextStyle& style = {}) const;
  Bytes Parse(std::string_view text, std::size_t size, const TextStyle& style = {}) const;

  /// A value of that many bytes can have this format.
  bool Fits(std::size_t size) const;

 private:
  enum class Kind { Structured, Integer, Decimal, Hex, PackedHex };
  Format(Kind kind, const Structure* structure, bool us) : kind_(kind), structure_(structure), us_(us) {}

  Kind kind_;
  const Structure* structure_;
  bool us_;
};

}  // namespace simulator
