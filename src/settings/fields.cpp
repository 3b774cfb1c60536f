#include "settings/fields.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "model/control_binding.h"
#include "model/point_list.h"
#include "model/rules.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace settings {
namespace {

using enum model::Unit;

constexpr double kFahrenheitPerCelsius = 1.8;
constexpr double kFahrenheitZero = 32;

/// No format of the thermostat has more decimals.
constexpr int kMostDecimals = 2;

// The standard types are those of the LonMark master list; SNVT_time_sec, for example, counts tenths of a
// second in 16 bits. The thermostat's own types are not published: these are the simulated ones, whose steps
// fit the limits and display steps of the fields. Reading never fails because of them.
constexpr NumberFormat kHundredths{0.01, -327.68, 327.67};
constexpr NumberFormat kTenthsOfASecond{0.1, 0, 6553.5};
constexpr NumberFormat kHalves{0.5, 0, 127.5};
constexpr NumberFormat kSignedHalves{0.5, -64, 63.5};
constexpr NumberFormat kWhole{1, 0, 255};

NumberFormat FormatOf(const model::CatalogueRow& row, model::Unit unit) {
  switch (unit) {
    case Temperature:
    case TemperatureDifference:
      return kHundredths;
    case Seconds:
      return kTenthsOfASecond;
    case Hours:
      return kWhole;
    case Percent:
      return row.limits && row.limits->si_min < 0 ? kSignedHalves : kHalves;
    case Minutes:
    case None:
      break;
  }
  return kHalves;
}

/// Corrections of sensors, which differ from device to device.
bool IsCalibration(std::string_view name) { return name == "CalibRS" || name == "RHcalib"; }

bool CanBeSet(const model::CatalogueRow& row) {
  return row.control.array == model::ScreenArray::cbNvi ||
         (row.control.array == model::ScreenArray::txtNvi && !model::IsReadOnlyField(row.control.index));
}

Field MakeField(const model::CatalogueRow& row) {
  Field field{&row, *model::FieldOf(row.control), {}, {}, {}, IsCalibration(row.name)};
  for (const model::FramePlace& frame : model::Frames())
    if (std::ranges::count(frame.fields, row.control, &model::FieldRow::control) != 0)
      field.frame = frame.caption;
  if (row.control.array == model::ScreenArray::cbNvi) field.choices = model::ListItems(row.control.index);
  field.format = FormatOf(row, field.unit());
  return field;
}

std::vector<Field> MakeFields() {
  std::vector<Field> fields;
  for (const bool calibrations : {false, true})
    for (const model::PointRow& point : model::PointRows())
      for (const model::CatalogueRow& row : model::Catalogue())
        if (row.point == point.key && CanBeSet(row) && IsCalibration(row.name) == calibrations)
          fields.push_back(MakeField(row));
  return fields;
}

model::Range RangeOf(const Field& field, int units) {
  if (!field.row->limits) return {"0", "0", field.row->offset_value};
  const model::CatalogueLimits& limits = *field.row->limits;
  return {text::ShortestText(units == 0 ? limits.si_min : limits.us_min),
          text::ShortestText(units == 0 ? limits.si_max : limits.us_max), field.row->offset_value};
}

bool IsTemperature(const Field& field) {
  return field.unit() == Temperature || field.unit() == TemperatureDifference;
}

/// Its number on the format's grid, and how far the text is from it in steps.
struct OnGrid {
  double value;
  double distance;
};
OnGrid NearestOnGrid(const NumberFormat& format, double value) {
  const double steps = value / format.step, nearest = std::nearbyint(steps);
  return {text::RoundToDecimals(nearest * format.step, kMostDecimals), std::abs(steps - nearest)};
}

}  // namespace

std::span<const Field> Fields() {
  static const std::vector<Field> kFields = MakeFields();
  return kFields;
}

const Field* FindField(std::string_view name) {
  const auto found = std::ranges::find(Fields(), name, &Field::name);
  return found == Fields().end() ? nullptr : &*found;
}

std::size_t PositionOf(const Field& field) { return static_cast<std::size_t>(&field - Fields().data()); }

std::string PlaceOf(const Field& field) {
  const std::string frame = text::WithoutAccelerator(field.frame), label(field.place.label);
  return frame + (frame.empty() || label.empty() ? "" : ", ") + label;
}

std::string_view UnitName(model::Unit unit) {
  switch (unit) {
    case None:
      return "";
    case Temperature:
      return "C";
    case TemperatureDifference:
      return "K";
    case Percent:
      return "%";
    case Seconds:
      return "s";
    case Minutes:
      return "min";
    case Hours:
      return "h";
  }
  return "";
}

std::optional<std::string> ProblemOf(const Field& field, std::string_view text) {
  if (!field.choices.empty()) {
    if (std::ranges::count(field.choices, text) != 0) return std::nullopt;
    std::string choices;
    for (const std::string_view choice : field.choices)
      choices += (choices.empty() ? "" : ", ") + std::string(choice);
    return "\"" + std::string(text) + "\" is not a choice of " + std::string(field.name()) + ": " + choices;
  }
  const auto number = text::ParseNumber(text);
  if (!number) return "\"" + std::string(text) + "\" is not a number";
  const NumberFormat& format = field.format;
  if (*number < format.least || *number > format.most)
    return std::string(field.name()) + " holds " + text::ShortestText(format.least) + " to " +
           text::ShortestText(format.most) + ", not " + std::string(text);
  constexpr double kNoise = 1e-6;
  if (NearestOnGrid(format, *number).distance > kNoise)
    return std::string(field.name()) + " holds steps of " + text::ShortestText(format.step) + ", not " +
           std::string(text);
  return std::nullopt;
}

std::string Normalized(const Field& field, const std::string& text) {
  const auto number = text::ParseNumber(text);
  if (!number || !field.choices.empty()) return text;
  constexpr double kNoise = 0.01;  // of a step
  const OnGrid nearest = NearestOnGrid(field.format, *number);
  return text::ShortestText(nearest.distance <= kNoise ? nearest.value : *number);
}

std::optional<std::string> LimitFor(const Field& field, const std::string& typed, int units) {
  const model::Range range = RangeOf(field, units);
  const auto exceeded = model::LimitExceeded(typed, range);
  if (!exceeded) return std::nullopt;
  return *exceeded == model::Limit::Maximum ? range.highest : range.lowest;
}

std::string StoredForm(const Field& field, const std::string& text, int units) {
  if (!text::IsNumeric(text)) return text;
  const std::string wanted = Normalized(field, text);
  const std::string typed = InUnits(field, wanted, units);
  const std::string stored =
      model::StoredText(LimitFor(field, typed, units).value_or(typed), RangeOf(field, units), units);
  return units == 0 ? stored : InCelsius(field, stored);
}

std::string ComparableForm(const Field& field, const std::string& text) {
  return model::StoredText(Normalized(field, text), RangeOf(field, 0), 0);
}

bool IsSame(const Field& field, const std::string& standard, const std::string& held, int decimals) {
  const std::string has = ComparableForm(field, held);
  const auto is = [&](const std::string& text) { return ComparableForm(field, text) == has; };
  const auto is_stored_form = [&](int units) {
    const std::string stored = StoredForm(field, standard, units);
    if (is(stored)) return true;
    const auto number = text::ParseNumber(stored);
    return IsTemperature(field) && number && stored != Normalized(field, standard) &&
           is(text::ShortestText(text::RoundToDecimals(*number, decimals)));
  };
  return is(standard) || is_stored_form(0) || is_stored_form(1);
}

std::string LimitsText(const Field& field) {
  if (!field.row->limits) return {};
  const auto in = [&](int units, std::string_view unit) {
    const model::Range range = RangeOf(field, units);
    return range.lowest + " to " + range.highest + (unit.empty() ? "" : " ") + std::string(unit);
  };
  return in(0, UnitName(field.unit())) + (IsTemperature(field) ? " or " + in(1, "F") : "");
}

bool IsOutsideLimits(const Field& field, const std::string& text) {
  return LimitFor(field, text, 0) && LimitFor(field, InFahrenheit(field, text), 1);
}

std::string InFahrenheit(const Field& field, const std::string& text) {
  const auto number = text::ParseNumber(text);
  if (!number || !IsTemperature(field)) return text;
  const double offset = field.unit() == Temperature ? kFahrenheitZero : 0;
  return text::ShortestText(text::RoundToDecimals(*number * kFahrenheitPerCelsius + offset, kMostDecimals));
}

std::string InCelsius(const Field& field, const std::string& text) {
  const auto number = text::ParseNumber(text);
  if (!number || !IsTemperature(field)) return text;
  const double offset = field.unit() == Temperature ? kFahrenheitZero : 0;
  return Normalized(field, text::ShortestText(text::RoundToDecimals(
                               (*number - offset) / kFahrenheitPerCelsius, kMostDecimals)));
}

std::string InUnits(const Field& field, const std::string& text, int units) {
  return units == 0 ? text : InFahrenheit(field, text);
}

std::string Shown(const Field& field, const std::string& text, int units) {
  const std::string in_units = InUnits(field, text, units);
  return field.row->round_step == 0 ? in_units : model::RoundedForDisplay(in_units, field.row->round_step);
}

}  // namespace settings
