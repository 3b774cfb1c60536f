#include "rollout/work.h"

#include <algorithm>
#include <map>

#include "text/numbers.h"
#include "text/strings.h"

namespace rollout {
namespace {

using settings::Field;

bool IsTemperature(const Field& field) {
  return field.unit() == model::Unit::Temperature || field.unit() == model::Unit::TemperatureDifference;
}

/// The device holds this text, as an object server shows it that may render temperatures with one decimal.
bool Holds(const Field& field, const std::string& held, const std::string& text) {
  const std::string has = Normalized(field, held), wanted = Normalized(field, text);
  if (has == wanted) return true;
  const auto number = text::ParseNumber(wanted);
  return IsTemperature(field) && number && has == text::ShortestText(text::RoundToDecimals(*number, 1));
}

/// Some fields get the plan's values; the others stay.
class PlannedGoal final : public Goal {
 public:
  PlannedGoal(const model::PointRow& row, const DevicePlan& plan) : Goal(row) {
    for (const Change& change : plan.changes)
      if (change.field->row->point == row.key) changes_.push_back(&change);
  }
  bool IsNothing() const { return changes_.empty(); }

  int units() const override { return 0; }
  bool IsReached(const std::vector<std::string>& fields) const override {
    return std::ranges::all_of(changes_, [&](const Change* change) {
      const auto held = Held(fields, *change->field);
      return held && Holds(*change->field, *held, change->after);
    });
  }
  std::string ChangeIn(const std::vector<std::string>& fields) const override {
    for (const Change* change : changes_) {
      const Field& field = *change->field;
      const auto held = Held(fields, field);
      if (!held) return std::string(field.name()) + " is missing in the value";
      if (Holds(field, *held, change->before) || Holds(field, *held, change->after)) continue;
      return std::string(field.name()) + " is " + TextWithUnit(field, *held) + ", neither " +
             TextWithUnit(field, change->before) + " nor " + TextWithUnit(field, change->after);
    }
    return {};
  }
  std::vector<std::string> Wanted(std::vector<std::string> fields) const override {
    for (const Change* change : changes_)
      fields.at(static_cast<std::size_t>(change->field->row->index)) = change->after;
    return fields;
  }

 private:
  static std::optional<std::string> Held(const std::vector<std::string>& fields, const Field& field) {
    const auto index = static_cast<std::size_t>(field.row->index);
    return index < fields.size() ? std::optional(fields[index]) : std::nullopt;
  }

  std::vector<const Change*> changes_;
};

/// The whole value gets another text.
class WholeGoal final : public Goal {
 public:
  WholeGoal(const model::PointRow& row, std::string format, std::string before, std::string wanted)
      : Goal(row), format_(std::move(format)), before_(std::move(before)), wanted_(std::move(wanted)) {}

  int units() const override { return format_.find("#US") == std::string::npos ? 0 : 1; }
  std::string format() const override { return format_; }
  bool IsReached(const std::vector<std::string>& fields) const override { return TextOf(fields) == wanted_; }
  std::string ChangeIn(const std::vector<std::string>& fields) const override {
    const std::string text = TextOf(fields);
    if (text == before_ || text == wanted_) return {};
    return std::string(row().variable) + " is " + text + ", neither " + before_ + " nor " + wanted_;
  }
  std::vector<std::string> Wanted(std::vector<std::string>) const override {
    return text::Split(wanted_, std::string(row().separator));
  }

 private:
  std::string TextOf(const std::vector<std::string>& fields) const {
    return text::Join(fields, row().separator);
  }

  const std::string format_, before_, wanted_;
};

/// What a run did to one variable: the value before its first write, and after its last.
struct Written {
  Write first;
  std::string last_after;
};

}  // namespace

std::vector<DeviceWork> WorkOf(const Plan& plan) {
  std::vector<DeviceWork> work;
  for (const DevicePlan& device : plan.devices) {
    DeviceWork each{device.path, device.neuron_id, device.problem, {}};
    for (const model::PointRow& row : model::PointRows()) {
      auto goal = std::make_unique<PlannedGoal>(row, device);
      if (!goal->IsNothing()) each.goals.push_back(std::move(goal));
    }
    work.push_back(std::move(each));
  }
  return work;
}

std::vector<DeviceWork> UndoOf(const RecordFile& record, const text::Pattern& path) {
  std::vector<std::string> order;
  std::map<std::string, std::map<std::string, Written>> devices;  // by path, then by variable
  for (const Event& event : record.events) {
    if (event.kind != Event::Kind::Write || !path.Matches(event.write.path)) continue;
    if (!devices.contains(event.write.path)) order.push_back(event.write.path);
    const auto written =
        devices[event.write.path].try_emplace(event.write.variable, Written{event.write, {}});
    written.first->second.last_after = event.write.after;
  }
  std::vector<DeviceWork> work;
  for (const std::string& name : order) {
    const auto& variables = devices.at(name);
    DeviceWork each{name, variables.begin()->second.first.neuron_id, {}, {}};
    for (const model::PointRow& row : model::PointRows()) {
      const auto found = variables.find(std::string(row.variable));
      if (found == variables.end()) continue;
      const auto& [first, last_after] = found->second;
      each.goals.push_back(std::make_unique<WholeGoal>(row, first.format, last_after, first.before));
    }
    work.push_back(std::move(each));
  }
  return work;
}

Plan RestOf(const RecordFile& record) {
  Plan rest = record.plan;
  for (const Event& event : record.events)
    if (event.kind == Event::Kind::Device && (event.state == "same" || event.state == "verified"))
      std::erase_if(rest.devices, [&](const DevicePlan& device) { return device.path == event.write.path; });
  return rest;
}

}  // namespace rollout
