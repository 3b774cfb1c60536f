#include "simulator/formats.h"

#include <algorithm>
#include <vector>

#include "simulator/errors.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace simulator {
namespace {

constexpr std::size_t kLargestInteger = 4;
constexpr std::size_t kLongestNumber = 32;
constexpr double kFahrenheitPerCelsius = 1.8;
constexpr double kFahrenheitZero = 32;

[[noreturn]] void FailFormat(std::string description) { Fail(Code::FormatFailed, std::move(description)); }

[[noreturn]] void FailField(const Field& field, std::string_view text) {
  FailFormat("\"" + std::string(text) + "\" is not a value of the field " + std::string(field.name) + ".");
}

std::int64_t Least(const Field& field) {
  return field.is_signed ? -(std::int64_t{1} << (8 * field.bytes - 1)) : 0;
}

std::int64_t Most(const Field& field) {
  return (std::int64_t{1} << (8 * field.bytes - (field.is_signed ? 1 : 0))) - 1;
}

bool IsChoice(const Field& field, std::int64_t raw) {
  return raw >= field.first_choice &&
         raw < field.first_choice + static_cast<std::int64_t>(field.choices.size());
}

std::string NumberText(double number, const TextStyle& style) {
  std::string text = text::ShortestText(number);
  if (style.regional) std::ranges::replace(text, '.', ',');
  return text;
}

std::string RenderField(const Field& field, std::int64_t raw, bool us, const TextStyle& style) {
  if (IsChoice(field, raw))
    return std::string(field.choices[static_cast<std::size_t>(raw - field.first_choice)]);
  double value = static_cast<double>(raw) / field.counts_per_unit;
  if (field.quantity == Quantity::Plain) return NumberText(value, style);
  const double offset = field.quantity == Quantity::Temperature ? kFahrenheitZero : 0;
  if (us) value = value * kFahrenheitPerCelsius + offset;
  // Two decimals distinguish every hundredth of a degree Celsius.
  return NumberText(text::RoundToDecimals(value, style.coarse ? 1 : 2), style);
}

std::optional<double> ParseNumber(std::string_view text, const TextStyle& style) {
  if (text.size() > kLongestNumber) return std::nullopt;
  std::string plain(text);
  if (style.regional && plain.find('.') != std::string::npos) return std::nullopt;
  if (style.regional) std::ranges::replace(plain, ',', '.');
  return text::ParseNumber(plain);
}

std::int64_t ParseField(const Field& field, std::string_view text, bool us, const TextStyle& style) {
  const auto choice = std::find(field.choices.begin(), field.choices.end(), text);
  if (choice != field.choices.end()) return field.first_choice + (choice - field.choices.begin());

  const auto number = ParseNumber(text, style);
  if (!number) FailField(field, text);
  double value = *number;
  if (us && field.quantity == Quantity::Temperature) value -= kFahrenheitZero;
  if (us && field.quantity != Quantity::Plain) value /= kFahrenheitPerCelsius;
  // The first rounding removes the errors of binary fractions, so that ties stay ties.
  const double raw = text::RoundHalfEven(text::RoundToDecimals(value * field.counts_per_unit, 6));
  const bool in_range = raw >= static_cast<double>(Least(field)) && raw <= static_cast<double>(Most(field));
  if (!in_range) FailField(field, text);

  // A value that has a name must be written as that name.
  const auto result = static_cast<std::int64_t>(raw);
  const bool whole_other_value = static_cast<double>(result) == *number && !IsChoice(field, result);
  if (!field.choices.empty() && !whole_other_value) FailField(field, text);
  return result;
}

std::size_t SizeOf(const Structure& structure) {
  std::size_t size = 0;
  for (const Field& field : structure.fields) size += field.bytes;
  return size;
}

std::string_view SeparatorOf(const Structure& structure, const TextStyle& style) {
  return style.regional && structure.separator == "," ? ";" : structure.separator;
}

std::string RenderStructure(const Structure& structure, const Bytes& bytes, bool us, const TextStyle& style) {
  std::vector<std::string> pieces;
  std::size_t at = 0;
  for (const Field& field : structure.fields) {
    const std::int64_t raw = ToInteger(bytes.data() + at, field.bytes, field.is_signed);
    pieces.push_back(RenderField(field, raw, us, style));
    at += field.bytes;
  }
  return text::Join(pieces, SeparatorOf(structure, style));
}

Bytes ParseStructure(const Structure& structure, std::string_view value, bool us, const TextStyle& style) {
  const std::vector<std::string> pieces = text::Split(value, SeparatorOf(structure, style));
  if (pieces.size() != structure.fields.size())
    FailFormat("A value of the type " + std::string(structure.name) + " has " +
               std::to_string(structure.fields.size()) + " fields, not " + std::to_string(pieces.size()) +
               ".");
  Bytes bytes;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    const Field& field = structure.fields[i];
    AppendInteger(bytes, ParseField(field, pieces[i], us, style), field.bytes);
  }
  return bytes;
}

Field WholeValue(std::size_t size) { return {"value", size, true, 1}; }

std::string RenderDecimal(const Bytes& bytes) {
  std::vector<std::string> pieces;
  for (const std::uint8_t byte : bytes) pieces.push_back(std::to_string(byte));
  return text::Join(pieces, "\t");
}

std::optional<Bytes> ParseDecimal(std::string_view value) {
  constexpr Field kByte = {"byte", 1, false, 1};
  Bytes bytes;
  for (const std::string& piece : text::Split(value, "\t"))
    AppendInteger(bytes, ParseField(kByte, piece, false, {}), 1);
  return bytes;
}

std::optional<Bytes> ParseHex(std::string_view value) {
  Bytes bytes;
  for (const std::string& piece : text::Split(value, "\t")) {
    const auto byte = FromHex(piece);
    if (!byte || byte->size() != 1) return std::nullopt;
    bytes.push_back(byte->front());
  }
  return bytes;
}

/// How many digits of a program ID the scope of a resource file covers: format and maker, then the class,
/// then usage and channel, then the model.
std::size_t DigitsOfScope(char scope) {
  switch (scope) {
    case '3':
      return 6;
    case '4':
      return 10;
    case '5':
      return 14;
    case '6':
      return 16;
    default:
      return 0;
  }
}

/// Removes "#<program ID>[<scope>]." from the name; false if it does not match the device.
bool TakeOwner(std::string_view& name, std::string_view program_id) {
  constexpr std::size_t kIdEnd = 17, kLength = 21;  // "#8000D3550004041D[3]."
  if (name.size() <= kLength || program_id.size() != kIdEnd - 1 || name.front() != '#' ||
      name[kIdEnd] != '[' || name.substr(kIdEnd + 2, 2) != "].")
    return false;
  const std::size_t digits = DigitsOfScope(name[kIdEnd + 1]);
  const bool fits =
      digits != 0 && text::EqualIgnoringCase(name.substr(1, digits), program_id.substr(0, digits));
  name.remove_prefix(kLength);
  return fits;
}

/// Removes "#SI" or "#US" from either end of the name; true for US.
bool TakeUnits(std::string_view& name) {
  for (const std::string_view units : {"#SI", "#US"}) {
    if (name.starts_with(units)) {
      name.remove_prefix(units.size());
    } else if (name.ends_with(units)) {
      name.remove_suffix(units.size());
    } else {
      continue;
    }
    return units == "#US";
  }
  return false;
}

}  // namespace

std::optional<Format> Format::Find(std::string_view name) {
  const bool us = TakeUnits(name);
  for (const Structure& structure : Structures())
    if (structure.name == name) return Format(Kind::Structured, &structure, us);
  if (name == "INT") return Format(Kind::Integer, nullptr, us);
  if (name == "RAW") return Format(Kind::Decimal, nullptr, us);
  if (name == "RAW_HEX") return Format(Kind::Hex, nullptr, us);
  if (name == "RAW_HEX_PACKED") return Format(Kind::PackedHex, nullptr, us);
  return std::nullopt;
}

std::optional<Format> Format::FindDocumented(std::string_view name, std::string_view program_id) {
  const bool qualified = name.starts_with("#");
  if (qualified && !TakeOwner(name, program_id)) return std::nullopt;
  const bool user_type = name.starts_with("UNVT_");
  return qualified == user_type ? Find(name) : std::nullopt;
}

bool Format::Fits(std::size_t size) const {
  if (kind_ == Kind::Structured) return size == SizeOf(*structure_);
  if (kind_ == Kind::Integer) return size >= 1 && size <= kLargestInteger;
  return true;
}

std::string Format::Render(const Bytes& bytes, const TextStyle& style) const {
  if (!Fits(bytes.size()))
    FailFormat("The format does not fit a value of " + std::to_string(bytes.size()) + " bytes.");
  switch (kind_) {
    case Kind::Structured:
      return RenderStructure(*structure_, bytes, us_, style);
    case Kind::Integer:
      return std::to_string(ToInteger(bytes.data(), bytes.size(), true));
    case Kind::Decimal:
      return RenderDecimal(bytes);
    case Kind::Hex:
      return ToHex(bytes, "\t");
    case Kind::PackedHex:
      break;
  }
  return ToHex(bytes);
}

Bytes Format::Parse(std::string_view value, std::size_t size, const TextStyle& style) const {
  if (!Fits(size)) FailFormat("The format does not fit a value of " + std::to_string(size) + " bytes.");
  if (kind_ == Kind::Structured) return ParseStructure(*structure_, value, us_, style);
  if (kind_ == Kind::Integer) {
    Bytes bytes;
    AppendInteger(bytes, ParseField(WholeValue(size), value, false, {}), size);
    return bytes;
  }
  const auto bytes = kind_ == Kind::Decimal ? ParseDecimal(value)
                     : kind_ == Kind::Hex   ? ParseHex(value)
                                            : FromHex(value);
  if (!bytes || bytes->size() != size)
    FailFormat("The text does not describe " + std::to_string(size) + " bytes.");
  return *bytes;
}

}  // namespace simulator
