#include <algorithm>

#include "settings/file.h"
#include "text/quoted.h"

namespace settings {
namespace {

constexpr OriginRow kOriginRows[] = {
    {"path", &Origin::path},
    {"program ID", &Origin::program_id},
    {"Neuron ID", &Origin::neuron_id},
    {"model", &Origin::model},
    {"software version", &Origin::software_version},
    {"type", &Origin::hvac_type},
    {"network module", &Origin::module_version},
    {"saved", &Origin::saved},
    {"saved by", &Origin::saved_by},
};

// As Windows writes texts.
constexpr const char* kLineEnd = "\r\n";

std::string LineOf(const Field& field, const std::string& text) {
  const std::string name(field.name());
  if (const auto problem = ProblemOf(field, text))
    return "# " + name + " is left out: " + text::Visible(*problem) + kLineEnd;
  return name + " = " + TextWithUnit(field, text) + kLineEnd;
}

/// Under a comment with the name of their variable.
std::string Lines(const DeviceSettings& settings, bool calibrations) {
  std::string lines;
  std::string_view variable;
  for (const Field& field : Fields()) {
    const auto& text = settings.TextOf(field);
    if (!text || field.is_calibration != calibrations) continue;
    if (!calibrations && std::exchange(variable, field.row->point) != field.row->point)
      lines += "# " + std::string(variable) + kLineEnd;
    lines += LineOf(field, *text);
  }
  return lines;
}

std::string Section(std::string_view name, const std::string& lines) {
  return lines.empty() ? "" : kLineEnd + std::string(name) + kLineEnd + lines;
}

}  // namespace

std::span<const OriginRow> OriginRows() { return kOriginRows; }

std::string TextWithUnit(const Field& field, const std::string& text) {
  const std::string_view unit = UnitName(field.unit());
  return text + (unit.empty() ? "" : " ") + std::string(unit);
}

std::string SettingsText(const DeviceSettings& settings) {
  std::string text(kFirstWords);
  text += std::to_string(kMajorVersion) + '.' + std::to_string(kMinorVersion) + kLineEnd;
  for (const OriginRow& row : kOriginRows)
    if (const std::string& value = settings.origin.*row.text; !value.empty())
      text += std::string(row.key) + " = " + text::Quoted(value) + kLineEnd;
  for (const Unread& unread : settings.unread)
    text +=
        std::string(kNotReadKey) + " = " + text::Quoted(unread.variable + ": " + unread.reason) + kLineEnd;
  return text + Section(kSettingsSection, Lines(settings, false)) +
         Section(kCalibrationSection, Lines(settings, true));
}

}  // namespace settings
