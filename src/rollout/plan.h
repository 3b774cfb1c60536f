#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "settings/device_search.h"
#include "settings/file.h"

/// Settings for many thermostats: what would change (a plan), changing it (a run), and what was written (a
/// record). Values are in SI. Nothing here shows anything.
namespace rollout {

/// A field to change. Texts are as the device shows them in SI.
struct Change {
  const settings::Field* field;
  std::string before, after;
};

/// A field that the standard sets and the plan leaves alone.
struct LeftOut {
  const settings::Field* field;
  std::string reason;
};

/// What a plan does with one device.
struct DevicePlan {
  std::string path;
  std::string neuron_id;
  std::vector<Change> changes;
  std::vector<LeftOut> left_out;
  /// The number of fields that have the standard's value already.
  std::size_t same = 0;
  /// Why the device is left alone as a whole; empty if it is not.
  std::string problem;

  /// Nothing is left out but calibrations of another device, which are of no use to this one.
  bool IsComplete() const;
};

/// What a run is to do. It is made by reading alone.
struct Plan {
  /// UTC: "2026-11-23T10:15:00Z".
  std::string made;
  /// "user@computer"
  std::string made_by;
  /// The file of the standard, for people.
  std::string standard;
  std::vector<DevicePlan> devices;
};

/// Plans that the device gets the standard's values, in the form in which Apply would store them. Leaves out
/// values outside the limits, unless they are wanted, and calibrations of another device, unless they are
/// chosen by name. A device on which the values would break a rule between fields is left alone.
DevicePlan PlanFor(const std::string& path, const settings::ReadDevice& device,
                   const settings::DeviceSettings& standard, const settings::Selection& selection,
                   bool out_of_range);

/// The lines of a plan, and the plan of lines. The text form of a plan, in files that end in ".qm5rplan":
///
///   QM5R plan 1.0
///   made = 2026-11-23T10:15:00Z
///   standard = standard.qm5r
///   [device]
///   path = Demo Tower/Demo Tower.Floor 1/Thermostat 101
///   Neuron ID = 00DE00000001
///   HeatMax = 32 C -> 30 C
///   left out = CoolMin: outside the limits, which are 12 to 37.5 C or 54 to 99.5 F
///   same = 36
std::string PlanText(const Plan& plan);

struct PlanFile {
  Plan plan;
  std::vector<settings::Finding> findings;  // all are errors
};
/// Never throws.
PlanFile ParsePlan(std::string_view text);

inline constexpr std::string_view kPlanExtension = ".qm5rplan";

}  // namespace rollout
