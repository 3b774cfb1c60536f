#include "settings/device_settings.h"

#include <algorithm>
#include <stdexcept>

#include "lns/members.h"
#include "startup/identity.h"
#include "text/pattern.h"
#include "text/strings.h"

namespace settings {
namespace {

/// Values that say what the device is.
struct VersionRow {
  std::string_view point;
  std::size_t index;
  std::string Origin::*text;
};
constexpr VersionRow kVersions[] = {
    {"nciSccModel", 0, &Origin::model},        {"nciSccModel", 1, &Origin::software_version},
    {"nciHvacType", 0, &Origin::hvac_type},    {"nciMajVer", 0, &Origin::module_version},
    {"nciMinVer", 0, &Origin::module_version},
};

bool IsWanted(const model::PointRow& point, const Selection& selection, Versions versions) {
  if (versions == Versions::Read && std::ranges::count(kVersions, point.key, &VersionRow::point) != 0)
    return true;
  return std::ranges::any_of(
      Fields(), [&](const Field& field) { return field.row->point == point.key && selection.Has(field); });
}

void Take(DeviceSettings& settings, const model::PointRow& point, const std::vector<std::string>& values,
          const Selection& selection) {
  for (const VersionRow& row : kVersions) {
    if (row.point != point.key || row.index >= values.size()) continue;
    std::string& text = settings.origin.*row.text;
    text += (text.empty() ? "" : ".") + values[row.index];
  }
  bool complete = true;
  for (const Field& field : Fields()) {
    if (field.row->point != point.key || !selection.Has(field)) continue;
    const auto index = static_cast<std::size_t>(field.row->index);
    complete = complete && index < values.size();
    if (index < values.size()) settings.TextOf(field) = Normalized(field, values[index]);
  }
  if (!complete)
    settings.unread.push_back(
        {std::string(point.variable), "The value has only " + std::to_string(values.size()) + " fields."});
}

}  // namespace

Selection::Selection(std::string_view chosen, std::string_view excepted)
    : has_(Fields().size(), chosen.empty()), chosen_(!chosen.empty()) {
  Set(chosen, true);
  Set(excepted, false);
  if (std::ranges::count(has_, true) == 0) throw std::invalid_argument("no field is left");
}

void Selection::Set(std::string_view names, bool has) {
  for (const std::string& each : text::Split(names, ",")) {
    const std::string name = text::Trim(each);
    const text::Pattern pattern(name);
    bool found = false;
    for (const Field& field : Fields()) {
      if (!pattern.Matches(field.name())) continue;
      has_[PositionOf(field)] = has;
      found = true;
    }
    if (!found) throw std::invalid_argument("there is no field \"" + name + "\"");
  }
}

bool DeviceSettings::HasNone() const {
  return std::ranges::none_of(texts, [](const auto& text) { return text.has_value(); });
}

const Unread* DeviceSettings::UnreadOf(const Field& field) const {
  const auto found = std::ranges::find(unread, field.row->point, &Unread::variable);
  return found == unread.end() ? nullptr : &*found;
}

DeviceSettings ReadSettings(const ReadPoint& read, Origin origin, const Selection& selection,
                            Versions versions) {
  DeviceSettings settings;
  settings.origin = std::move(origin);
  std::string silent;
  for (const model::PointRow& point : model::PointRows()) {
    if (!IsWanted(point, selection, versions)) continue;
    if (!silent.empty()) {
      settings.unread.push_back({std::string(point.variable), silent});
      continue;
    }
    try {
      Take(settings, point, read(point), selection);
    } catch (const platform::Error& error) {
      settings.unread.push_back({std::string(point.variable), ReasonOf(error)});
      if (error.number() == platform::ObjectServerError(lns::members::kNoCommunication))
        silent = settings.unread.back().reason;
    }
  }
  return settings;
}

ReadPoint VariablesOf(const lns::Interface& interface, const std::shared_ptr<lns::Dialect>& dialect) {
  constexpr int kSI = 0;
  return [variables = interface.NetworkVariables(), dialect](const model::PointRow& row) {
    const auto point = model::MakePoint(row, variables.Item(std::string(row.variable)), dialect);
    point->GetNetworkValue(kSI);
    return point->NvAsArray;
  };
}

std::string_view ThermostatProgramId() { return startup::BuiltInText(startup::kFirstProgramIdText); }

bool IsThermostat(std::string_view program_id) {
  std::string plain(program_id);
  std::erase(plain, ' ');
  return text::EqualIgnoringCase(plain, ThermostatProgramId());
}

std::string ReasonOf(const platform::Error& error) {
  const std::string& text = error.cause().empty() ? error.description() : error.cause();
  const std::size_t line_end = text.find("\r\n");
  return line_end == std::string::npos ? text : text.substr(line_end + 2);
}

}  // namespace settings
