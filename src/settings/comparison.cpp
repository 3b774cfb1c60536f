#include "settings/comparison.h"

#include <algorithm>

namespace settings {
namespace {

bool IsCompared(const Field& field, const Selection& selection, bool is_same_device) {
  if (!selection.Has(field)) return false;
  return !field.is_calibration || is_same_device || selection.MeansCalibrations();
}

/// The decimals that its object server shows in temperatures: those of the text that has most, at least one.
int DecimalsOf(const DeviceSettings& device) {
  for (const Field& field : Fields()) {
    const auto& text = device.TextOf(field);
    if (!text || UnitName(field.unit()).find_first_of("CK") == std::string_view::npos) continue;
    const std::size_t point = text->find('.');
    if (point != std::string::npos && text->size() > point + 2) return 2;
  }
  return 1;
}

}  // namespace

bool Comparison::Differs() const {
  return std::ranges::any_of(differences, [](const Difference& each) { return each.held.has_value(); });
}

bool Comparison::IsComplete() const {
  const auto is_known = [](const Difference& each) { return each.held.has_value(); };
  return compared != 0 && std::ranges::all_of(differences, is_known);
}

bool IsSameDevice(const DeviceSettings& a, const DeviceSettings& b) {
  const std::string& id = a.origin.neuron_id;
  return id.find_first_not_of("0 ") != std::string::npos && id == b.origin.neuron_id;
}

Comparison Compare(const DeviceSettings& standard, const DeviceSettings& device, const Selection& selection) {
  Comparison comparison;
  const int decimals = DecimalsOf(device);
  for (const Field& field : Fields()) {
    const auto& wanted = standard.TextOf(field);
    if (!wanted || !IsCompared(field, selection, IsSameDevice(standard, device))) continue;
    ++comparison.compared;
    const auto& held = device.TextOf(field);
    if (held && IsSame(field, *wanted, *held, decimals)) continue;
    const Unread* unread = held ? nullptr : device.UnreadOf(field);
    comparison.differences.push_back({&field, *wanted, held, unread ? unread->reason : ""});
  }
  return comparison;
}

std::vector<Unread> UnknownInStandard(const DeviceSettings& standard, const Selection& selection) {
  std::vector<Unread> unknown;
  for (const Field& field : Fields()) {
    const Unread* unread = standard.UnreadOf(field);
    if (unread && selection.Has(field) && !standard.TextOf(field) &&
        std::ranges::count(unknown, unread->variable, &Unread::variable) == 0)
      unknown.push_back(*unread);
  }
  return unknown;
}

void Majority::Add(const DeviceSettings& device) {
  for (const Field& field : Fields()) {
    const auto& text = device.TextOf(field);
    if (!text || !IsCompared(field, selection_, false)) continue;
    Count& count = values_[PositionOf(field)][ComparableForm(field, *text)];
    if (++count.devices == 1) count.text = *text;
  }
}

const Majority::Count* Majority::MostOf(const Field& field) const {
  const Counts& counts = values_[PositionOf(field)];
  std::size_t all = 0;
  for (const auto& [form, count] : counts) all += count.devices;
  for (const auto& [form, count] : counts)
    if (count.devices * 2 > all) return &count;
  return nullptr;
}

DeviceSettings Majority::Standard() const {
  DeviceSettings standard;
  for (const Field& field : Fields())
    if (const Count* most = MostOf(field)) standard.TextOf(field) = most->text;
  return standard;
}

std::vector<Majority::Split> Majority::Splits() const {
  std::vector<Split> splits;
  for (const Field& field : Fields()) {
    const Counts& counts = values_[PositionOf(field)];
    if (counts.empty() || MostOf(field)) continue;
    Split split{&field, {}};
    for (const auto& [form, count] : counts) split.values.emplace_back(count.text, count.devices);
    std::ranges::stable_sort(split.values, std::greater<>(), [](const auto& each) { return each.second; });
    splits.push_back(std::move(split));
  }
  return splits;
}

}  // namespace settings
