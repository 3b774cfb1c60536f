#include "qm5r/output.h"

#include <algorithm>

#include "text/numbers.h"
#include "text/strings.h"

namespace qm5r {
namespace {

using settings::Field;

constexpr std::size_t kNameWidth = 24;
constexpr std::size_t kValueWidth = 20;

/// Padded to a column.
std::string Cell(const std::string& text, std::size_t width) {
  const std::size_t length = text::CharacterCount(text);
  return text + std::string(length < width ? width - length : 1, ' ');
}

std::string UnitOf(const Field& field, bool fahrenheit) {
  const std::string unit(settings::UnitName(field.unit()));
  return fahrenheit && (unit == "C" || unit == "K") ? "F" : unit;
}

/// A number as a number.
Json JsonValue(const std::string& text) {
  const auto number = text::ParseNumber(text);
  return number ? Json(*number) : Json(text);
}

void AddOrigin(Json& json, const settings::Origin& origin) {
  const auto add = [&](const char* key, const std::string& text) {
    if (!text.empty()) json[key] = text;
  };
  add("path", origin.path);
  add("programId", origin.program_id);
  add("neuronId", origin.neuron_id);
  add("model", origin.model);
  add("softwareVersion", origin.software_version);
  add("type", origin.hvac_type);
  add("networkModule", origin.module_version);
  add("saved", origin.saved);
  add("savedBy", origin.saved_by);
}

Json UnreadJson(const std::vector<settings::Unread>& unread) {
  Json json = Json::array();
  for (const settings::Unread& each : unread)
    json.push_back({{"variable", each.variable}, {"reason", each.reason}});
  return json;
}

std::string OriginLine(const settings::Origin& origin) {
  std::string line;
  const auto add = [&](const char* key, const std::string& text) {
    if (!text.empty()) line += (line.empty() ? "" : ", ") + std::string(key) + ' ' + text;
  };
  add("program ID", origin.program_id);
  add("Neuron ID", origin.neuron_id);
  add("model", origin.model);
  add("software", origin.software_version);
  add("type", origin.hvac_type);
  add("network module", origin.module_version);
  return line.empty() ? "" : line + '\n';
}

/// "Heating, Occupied"

}  // namespace

std::string TextOf(const Json& json) {
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
}

std::string ValueText(const Field& field, const std::string& text, bool fahrenheit) {
  const std::string unit = UnitOf(field, fahrenheit);
  return (fahrenheit ? settings::InFahrenheit(field, text) : text) + (unit.empty() ? "" : " ") + unit;
}

std::string SettingsLines(const Source& source, bool fahrenheit) {
  const settings::DeviceSettings& device = source.device.settings;
  std::string lines = source.name + '\n' + OriginLine(device.origin);
  for (const Field& field : settings::Fields())
    if (const auto& text = device.TextOf(field))
      lines += "  " + Cell(std::string(field.name()), kNameWidth) +
               Cell(ValueText(field, *text, fahrenheit), kValueWidth) + PlaceOf(field) + '\n';
  if (const std::string reason = ReasonOf(source.device); !reason.empty())
    lines += "  " + Cell(StateOf(source.device), kNameWidth) + reason + '\n';
  return lines;
}

Json SettingsJson(const Source& source, bool fahrenheit) {
  const settings::DeviceSettings& device = source.device.settings;
  Json json = {{"name", source.name}, {"state", StateOf(source.device)}};
  AddOrigin(json, device.origin);
  Json& values = json["settings"] = Json::object();
  for (const Field& field : settings::Fields()) {
    const auto& text = device.TextOf(field);
    if (!text) continue;
    Json& value = values[std::string(field.name())];
    value["value"] = JsonValue(fahrenheit ? settings::InFahrenheit(field, *text) : *text);
    if (const std::string unit = UnitOf(field, fahrenheit); !unit.empty()) value["unit"] = unit;
  }
  json["notRead"] = UnreadJson(device.unread);
  if (!source.device.failure.empty()) json["reason"] = source.device.failure;
  return json;
}

std::string StateOf(const settings::ReadDevice& device) {
  if (device.is_other_type) return "another type";
  if (!device.failure.empty() || (device.settings.HasNone() && !device.settings.unread.empty()))
    return "not read";
  return device.settings.unread.empty() ? "read" : "incomplete";
}

std::string ReasonOf(const settings::ReadDevice& device) {
  if (device.is_other_type) return "program ID " + device.settings.origin.program_id;
  if (!device.failure.empty()) return device.failure;
  const std::vector<settings::Unread>& all = device.settings.unread;
  if (device.settings.HasNone() && !all.empty()) return all.front().reason;
  std::string reasons;
  for (const settings::Unread& unread : all) {
    // After a failure to communicate all others have the same reason.
    if (reasons.ends_with(unread.reason)) continue;
    reasons += (reasons.empty() ? "" : "; ") + unread.variable + ": " + unread.reason;
  }
  return reasons;
}

std::string ComparisonLines(const Source& source, const settings::Comparison& comparison,
                            const std::string& wanted_by) {
  std::string lines = source.name + '\n';
  if (comparison.compared == 0) lines += "  nothing to compare\n";
  std::string_view unread;
  for (const settings::Difference& difference : comparison.differences) {
    const Field& field = *difference.field;
    const bool repeats = !difference.held && !difference.reason.empty() && unread == field.row->point;
    if (repeats) continue;
    std::string name(field.name()), text;
    if (difference.held) {
      text =
          ValueText(field, *difference.held) + ", " + wanted_by + ' ' + ValueText(field, difference.wanted);
    } else if (difference.reason.empty()) {
      text = "not in the file, " + wanted_by + ' ' + ValueText(field, difference.wanted);
    } else {
      name = unread = field.row->point;
      text = "not read: " + difference.reason;
    }
    lines += "  " + Cell(name, kNameWidth) + text + '\n';
  }
  return lines;
}

Json DifferencesJson(const settings::Comparison& comparison) {
  Json differences = Json::array();
  for (const settings::Difference& difference : comparison.differences) {
    Json each = {{"field", std::string(difference.field->name())},
                 {"standard", JsonValue(difference.wanted)}};
    if (difference.held)
      each["device"] = JsonValue(*difference.held);
    else
      each["notRead"] = difference.reason.empty() ? "not in the file" : difference.reason;
    if (const auto unit = UnitOf(*difference.field, false); !unit.empty()) each["unit"] = unit;
    differences.push_back(std::move(each));
  }
  return differences;
}

Json ComparisonJson(const Source& source, const settings::Comparison& comparison) {
  Json json = {{"name", source.name}};
  json["compared"] = comparison.compared;
  json["differences"] = DifferencesJson(comparison);
  return json;
}

}  // namespace qm5r
