#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The configuration screen as data: its pages, frames, labels, fields and list items, in the order in which
/// they are shown and Tab visits them. Captions, labels and list items are the product's own, letter for
/// letter.
namespace model {

enum class ScreenArray { None, txtNvi, cbNvi, txtMajorVersion, txtMinorVersion, lbModel, lbHvacType };

/// Names one control of the screen: an element of a control array, or a single control.
struct ControlRef {
  ScreenArray array = ScreenArray::None;
  int index = 0;
  friend bool operator==(const ControlRef&, const ControlRef&) = default;
};
constexpr ControlRef txtNvi(int index) { return {ScreenArray::txtNvi, index}; }
constexpr ControlRef cbNvi(int index) { return {ScreenArray::cbNvi, index}; }

/// What a number measures. A temperature difference has its own unit: 1 K is 1.8 \u00BAF.
enum class Unit { None, Temperature, TemperatureDifference, Percent, Seconds, Minutes, Hours };

/// Everything about one field.
struct FieldRow {
  std::string_view label;
  ControlRef control;
  /// The unit beside the field on the screen, which is not always the unit of its value.
  Unit unit_label;
  /// The unit of the value; None also if it is not known.
  Unit unit;
  /// The field's meaning for a commissioning engineer: one sentence, without the range.
  std::string_view meaning;

  consteval FieldRow(std::string_view field_label, ControlRef field_control, Unit shown, Unit meant,
                     std::string_view sentence)
      : label(field_label), control(field_control), unit_label(shown), unit(meant), meaning(sentence) {
    if (meaning.empty()) throw "a field without a meaning";
  }
};

struct FramePlace {
  int page;
  /// The caption of the frame around this one; empty for a frame on the page itself.
  std::string_view inside;
  std::string_view caption;
  /// A heading over the fields; empty for none.
  std::string_view heading;
  std::span<const FieldRow> fields;
};

inline constexpr std::array<std::string_view, 8> kPageCaptions = {
    "&Heating - Cooling", "&General", "&Hardware", "RH &Options",
    "&PIR Options",       "&Network", "C&ontact",  "A&bout"};

/// The help topic of each page; the last one has none.
inline constexpr std::array kPageTopics = {1004, 1002, 1003, 1006, 1005, 1001, 1000, 0};
static_assert(kPageTopics.size() == kPageCaptions.size());

/// The help topic of a control; each control of the screen has its own. Shipped numbers never change.
constexpr int HelpContextOf(ControlRef control) {
  switch (control.array) {
    case ScreenArray::None:
      return 0;
    case ScreenArray::txtNvi:
      return 1100 + control.index;
    case ScreenArray::cbNvi:
      return 1150 + control.index;
    default:
      return 1180 + static_cast<int>(control.array);
  }
}

/// The page that shows the contact page, and the page with its own heading.
inline constexpr int kContactPage = 6;
inline constexpr int kHardwarePage = 2;
inline constexpr std::string_view kHardwarePageHeading = "Configuration";

/// Frames on a page fill two columns, row by row; frames in a frame are below each other.
inline constexpr int kFrameColumns = 2;
std::span<const FramePlace> Frames();

/// All fields: those above the tabs, then those of the frames.
std::vector<FieldRow> Fields();
/// Nothing for a control that is not a field.
std::optional<FieldRow> FieldOf(ControlRef control);

/// A unit as the screen shows it, in these display units (0 Celsius, 1 Fahrenheit); empty for none.
std::string UnitText(Unit unit, int display_units);
/// The unit beside temperatures. Deliberately begins with the masculine ordinal indicator (U+00BA) instead of
/// the degree sign.
std::string TemperatureUnit(int units);

/// The items of cbNvi(index), in list order.
std::span<const std::string_view> ListItems(int index);

inline constexpr int kChoiceListCount = 17;

/// Text fields that only show what the device reports.
constexpr bool IsReadOnlyField(int txt_nvi_index) {
  return (txt_nvi_index >= 11 && txt_nvi_index <= 13) || txt_nvi_index == 15;
}

}  // namespace model
