#include "rollout/plan.h"

#include <algorithm>

#include "settings/comparison.h"

namespace rollout {
namespace {

using settings::DeviceSettings;
using settings::Field;

constexpr int kSI = 0, kUS = 1;

/// A value beyond the limit in Celsius may be right in Fahrenheit.
std::string StoredValue(const Field& field, const std::string& text, bool out_of_range) {
  if (IsOutsideLimits(field, text) && out_of_range) return text;
  return StoredForm(field, text, LimitFor(field, text, kSI) ? kUS : kSI);
}

bool Concerns(const settings::BrokenRule& rule, const Field& field) {
  const bool uses_dead_band = rule.relation == model::CrossRule::Relation::DeadBandAbove ||
                              rule.relation == model::CrossRule::Relation::DeadBandBelow;
  return &field == rule.field || &field == rule.against ||
         (uses_dead_band && field.row->control == model::txtNvi(model::kDeadBandField));
}

/// A rule that the changed device would break; empty if there is none.
std::string BrokenBy(const std::vector<Change>& changes, DeviceSettings device) {
  for (const Change& change : changes) device.TextOf(*change.field) = change.after;
  for (const settings::BrokenRule& rule : BrokenRules(device))
    if (std::ranges::any_of(changes, [&](const Change& change) { return Concerns(rule, *change.field); }))
      return TextOf(rule);
  return {};
}

}  // namespace

bool DevicePlan::IsComplete() const {
  return problem.empty() &&
         std::ranges::all_of(left_out, [](const LeftOut& each) { return each.field->is_calibration; });
}

DevicePlan PlanFor(const std::string& path, const settings::ReadDevice& device,
                   const DeviceSettings& standard, const settings::Selection& selection, bool out_of_range) {
  DevicePlan plan;
  plan.path = path;
  plan.neuron_id = device.settings.origin.neuron_id;
  plan.problem = device.failure;
  if (device.is_other_type) plan.problem = "another type: " + device.settings.origin.program_id;
  if (plan.problem.empty() && device.settings.HasNone() && !device.settings.unread.empty())
    plan.problem = "not read: " + device.settings.unread.front().reason;
  if (!plan.problem.empty()) return plan;
  const settings::Comparison comparison = Compare(standard, device.settings, selection);
  plan.same = comparison.compared - comparison.differences.size();
  for (const settings::Difference& difference : comparison.differences) {
    const Field& field = *difference.field;
    if (!difference.held)
      plan.left_out.push_back({&field, "not read: " + difference.reason});
    else if (!out_of_range && IsOutsideLimits(field, difference.wanted))
      plan.left_out.push_back({&field, "outside the limits, which are " + LimitsText(field)});
    else
      plan.changes.push_back({&field, *difference.held, StoredValue(field, difference.wanted, out_of_range)});
  }
  if (!IsSameDevice(standard, device.settings) && !selection.MeansCalibrations())
    for (const Field& field : settings::Fields())
      if (field.is_calibration && standard.TextOf(field) && selection.Has(field))
        plan.left_out.push_back({&field, "corrects the sensor of another device"});
  if (std::string rule = BrokenBy(plan.changes, device.settings); !rule.empty()) {
    plan.problem = "would break a rule: " + std::move(rule);
    plan.changes.clear();
  }
  return plan;
}

}  // namespace rollout
