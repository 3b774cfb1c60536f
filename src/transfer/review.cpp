#include "transfer/review.h"

#include <algorithm>

#include "text/csv.h"
#include "text/strings.h"

namespace transfer {
namespace {

using settings::DeviceSettings;
using settings::Field;

std::string PageOf(const model::FramePlace& frame) {
  return text::WithoutAccelerator(model::kPageCaptions[static_cast<std::size_t>(frame.page)]);
}

std::string UnitOf(const Field& field, int units) {
  return field.unit() == model::Unit::TemperatureDifference && units == 0
             ? std::string(settings::UnitName(field.unit()))
             : model::UnitText(field.unit(), units);
}

ReviewRow RowOf(const Field& field, const DeviceSettings& device, const DeviceSettings& other,
                const settings::Comparison& comparison, int units) {
  const auto& held = device.TextOf(field);
  const auto& wanted = other.TextOf(field);
  const auto in_units = [&](const auto& text) { return text ? InUnits(field, *text, units) : std::string(); };
  ReviewRow row{&field, {}, PlaceOf(field), in_units(held), in_units(wanted), UnitOf(field, units), {}, {}};
  const settings::Unread* const unread = held ? other.UnreadOf(field) : device.UnreadOf(field);
  if (!held || !wanted) {
    row.result = "not known";
    row.remark = unread ? unread->reason : "";
    return row;
  }
  row.matters = std::ranges::count(comparison.differences, &field, &settings::Difference::field) != 0;
  row.result = row.matters ? "different" : "same";
  if (!row.matters && row.held != row.other) row.remark = "Apply stores it like this";
  return row;
}

template <class Use>
void ForEachOnScreen(const Use& use) {
  for (const model::FramePlace& frame : model::Frames())
    for (const model::FieldRow& place : frame.fields)
      for (const Field& field : settings::Fields())
        if (field.place.control == place.control) use(frame, field);
}

void Warn(ReviewRow& row, const std::string& text) {
  row.remark += (row.remark.empty() ? "Warning: " : "; ") + text;
  row.matters = true;
}

/// How a field breaks a rule with another one; `reversed` if the rule is about the other one.
std::string TextOf(model::CrossRule::Relation relation, bool reversed, const Field& other) {
  using enum model::CrossRule::Relation;
  const std::string name = '"' + PlaceOf(other) + '"';
  switch (relation) {
    case DeadBandAbove:
    case DeadBandBelow:
      return "less than the deadband " +
             std::string((relation == DeadBandAbove) != reversed ? "above " : "below ") + name;
    case AtMost:
    case AtLeast:
      return ((relation == AtMost) != reversed ? "above " : "below ") + name;
  }
  return {};
}

/// What the rules will see: the ticked texts, and what the other fields show.
void WarnOfRules(std::vector<ReviewRow>& rows, const DeviceSettings& device, int units) {
  const auto ticked = [&](const Field& field) -> ReviewRow* {
    const auto row = std::ranges::find(rows, &field, &ReviewRow::field);
    return row != rows.end() && row->tick.value_or(false) ? &*row : nullptr;
  };
  const auto shown = [&](const Field& field) -> std::optional<std::string> {
    if (const ReviewRow* row = ticked(field)) return row->other;
    const auto& held = device.TextOf(field);
    return held ? std::optional(Shown(field, *held, units)) : std::nullopt;
  };
  for (const settings::BrokenRule& rule : settings::BrokenRules(shown)) {
    if (ReviewRow* row = ticked(*rule.field))
      Warn(*row, TextOf(rule.relation, false, *rule.against));
    else if (ReviewRow* other = ticked(*rule.against))
      Warn(*other, TextOf(rule.relation, true, *rule.field));
  }
}

void AddOrigins(std::vector<ReviewRow>& rows, const settings::Origin& device, const settings::Origin& file) {
  const auto add = [&](const char* name, std::string settings::Origin::*text) {
    if (device.*text == file.*text || (file.*text).empty()) return;
    ReviewRow row{nullptr, "File", name, device.*text, file.*text, {}, "different", {}};
    Warn(row, "the file is of another one");
    rows.push_back(std::move(row));
  };
  add("Model", &settings::Origin::model);
  add("Software version", &settings::Origin::software_version);
  add("HVAC type", &settings::Origin::hvac_type);
  add("Module version", &settings::Origin::module_version);
}

}  // namespace

std::vector<ReviewRow> Compare(const DeviceSettings& device, const DeviceSettings& other, int units) {
  // Calibrations are compared, too.
  const settings::Comparison comparison = Compare(other, device, settings::Selection("*", ""));
  std::vector<ReviewRow> rows;
  ForEachOnScreen([&](const model::FramePlace& frame, const Field& field) {
    if (!device.TextOf(field) && !other.TextOf(field)) return;
    rows.push_back(RowOf(field, device, other, comparison, units));
    rows.back().page = PageOf(frame);
  });
  return rows;
}

std::vector<ReviewRow> ReviewOf(const DeviceSettings& device, const settings::SettingsFile& file, int units) {
  std::vector<ReviewRow> rows = Compare(device, file.settings, units);
  // What the file does not set stays as it is.
  std::erase_if(rows, [](const ReviewRow& row) { return row.other.empty(); });
  for (ReviewRow& row : rows) {
    row.is_of_another = row.field->is_calibration && !IsSameDevice(device, file.settings);
    row.tick = row.matters && !row.is_of_another;
    if (row.is_of_another) row.remark = "Corrects the sensor of another thermostat";
    if (const auto limit = LimitFor(*row.field, row.other, units); limit && row.matters)
      Warn(row, "beyond the limit, " + *limit);
  }
  WarnOfRules(rows, device, units);

  std::vector<ReviewRow> all;
  AddOrigins(all, device.origin, file.settings.origin);
  for (const settings::Finding& finding : file.findings) {
    if (finding.field) continue;
    ReviewRow row{nullptr, "File", "Line " + std::to_string(finding.line), {}, {}, {}, {}, {}};
    Warn(row, finding.text);
    all.push_back(std::move(row));
  }
  std::ranges::move(rows, std::back_inserter(all));
  return all;
}

std::string CountsOf(const std::vector<ReviewRow>& rows) {
  const auto count = [&](const auto& is) { return std::to_string(std::ranges::count_if(rows, is)); };
  const auto is_field = [](const ReviewRow& row) { return row.field != nullptr; };
  const auto differs = [&](const ReviewRow& row) { return row.field && row.result == "different"; };
  const bool has_ticks = std::ranges::any_of(rows, [](const ReviewRow& row) { return row.tick.has_value(); });
  return count(differs) + " of " + count(is_field) + " fields differ" +
         (has_ticks ? ", " + count([](const ReviewRow& row) { return row.tick.value_or(false); }) + " ticked"
                    : "");
}

std::vector<std::string> CellsOf(const ReviewRow& row) {
  return {row.page, row.name, row.held, row.other, row.unit, row.result, row.remark};
}

std::string CsvOf(const std::vector<std::string>& headers, const std::vector<ReviewRow>& rows) {
  std::string csv = "\xEF\xBB\xBF";
  csv += text::CsvLine(headers);
  for (const ReviewRow& row : rows) csv += text::CsvLine(CellsOf(row));
  return csv;
}

}  // namespace transfer
