#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "simulator/bytes.h"
#include "simulator/format_table.h"

namespace simulator {

/// How numbers and lists look: the regional settings of the computer that formats, and its precision.
struct TextStyle {
  bool regional = false;  // "," is the decimal sign and ";" separates what else "," separates
  bool coarse = false;    // temperatures in tenths
};

/// How raw bytes become text and text becomes raw bytes.
///
/// A name is that of a structure in the table, or INT, RAW, RAW_HEX, RAW_HEX_PACKED; "#SI" or "#US" before or
/// behind it chooses the unit system, SI without one. What was rendered always parses back to the same bytes.
/// A number finer than the field's resolution is rounded to it, ties to even.
class Format {
 public:
  /// Nothing for a name that is not known.
  static std::optional<Format> Find(std::string_view name);

  /// Only the documented forms: "#SI" or "#US" behind the name, and for the types of makers ("UNVT_")
  /// "#<program ID>[<scope>].<name>" with a program ID that agrees with the device's in the digits of the
  /// scope.
  static std::optional<Format> FindDocumented(std::string_view name, std::string_view program_id);

  /// Both raise 18035 where bytes or text do not fit the format.
  std::string Render(const Bytes& bytes, const TextStyle& style = {}) const;
  Bytes Parse(std::string_view text, std::size_t size, const TextStyle& style = {}) const;

  /// Whether a value of that many bytes can have this format.
  bool Fits(std::size_t size) const;

 private:
  enum class Kind { Structured, Integer, Decimal, Hex, PackedHex };
  Format(Kind kind, const Structure* structure, bool us) : kind_(kind), structure_(structure), us_(us) {}

  Kind kind_;
  const Structure* structure_;
  bool us_;
};

}  // namespace simulator
