#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "model/catalogue.h"
#include "model/screen_layout.h"

/// A thermostat's settings as values and as files: what a device holds, files of it, and how they differ.
/// Values are in SI with "." in every locale. Nothing here shows anything.
namespace settings {

/// The numbers that a field's format can hold: multiples of the step within a range.
struct NumberFormat {
  double step = 0;
  double least = 0;
  double most = 0;
};

/// A field of the device that can be set: a row of the catalogue, with its unit, choices and format.
struct Field {
  const model::CatalogueRow* row;
  model::FieldRow place;
  /// The caption of its frame on the screen.
  std::string_view frame;
  /// Empty for a number.
  std::span<const std::string_view> choices;
  NumberFormat format;
  /// A correction of this one device's sensor, of no use to others.
  bool is_calibration = false;

  std::string_view name() const { return row->name; }
  model::Unit unit() const { return place.unit; }
};

/// All fields that can be set: variables in the order of the points, fields in the order of the catalogue.
/// Calibrations come last.
std::span<const Field> Fields();
/// Null if no field has the name.
const Field* FindField(std::string_view name);
/// The position of a field in Fields().
std::size_t PositionOf(const Field& field);

/// Where the field is on its page: "Heating, Occupied".
std::string PlaceOf(const Field& field);

/// "C", "K", "%", "s", "min" or "h"; empty for none.
std::string_view UnitName(model::Unit unit);

/// What is wrong with a text as the field's value: no number, finer than its format, outside its format, or
/// not one of its choices. Nothing if the format holds the text.
std::optional<std::string> ProblemOf(const Field& field, std::string_view text);

/// An object server's text without the noise of binary fractions: "21.499999" and "21.50" are "21.5". Other
/// texts stay.
std::string Normalized(const Field& field, const std::string& text);

/// The limit that Apply puts in place of this text typed in these units (0 SI, 1 US), in the same units;
/// nothing for a text within the limits.
std::optional<std::string> LimitFor(const Field& field, const std::string& typed, int units);

/// What Apply stores for this text if it is typed in these units (0 SI, 1 US): within the limits, and
/// slightly inside a limit where the field demands it.
std::string StoredForm(const Field& field, const std::string& text, int units = 0);

/// The text in which values of one setting are equal: without noise, and for a limit what is stored for it.
std::string ComparableForm(const Field& field, const std::string& text);

/// True if a device that holds `held` has the setting `standard`: the same, or what Apply stores for it in
/// either units, as an object server shows it that renders temperatures with these decimals. A held value
/// outside the limits is only equal to itself, because Apply does not store it.
bool IsSame(const Field& field, const std::string& standard, const std::string& held, int decimals = 2);

/// "4.5 to 32 C or 40 to 90 F"; empty without limits.
std::string LimitsText(const Field& field);

/// The value is outside the limits of both unit systems: 90 \u00BAF is 32.22 \u00BAC, so a value above 32 may
/// be right.
bool IsOutsideLimits(const Field& field, const std::string& text);

/// The same value in Fahrenheit, with two decimals, so that each hundredth of a degree Celsius stays apart; a
/// difference has no offset. Texts of fields without temperatures stay.
std::string InFahrenheit(const Field& field, const std::string& text);

/// The reverse, to the hundredths of a degree that devices hold.
std::string InCelsius(const Field& field, const std::string& text);

/// The text in these units (0 SI, 1 US).
std::string InUnits(const Field& field, const std::string& text, int units);

/// The field's text as the window shows it: rounded to its display step, in these units (0 SI, 1 US).
std::string Shown(const Field& field, const std::string& text, int units);

}  // namespace settings
