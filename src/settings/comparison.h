#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "settings/device_settings.h"

/// How devices differ. What is not known is never equal.
namespace settings {

/// One field in which a device is not known to have what the standard wants.
struct Difference {
  const Field* field;
  std::string wanted;
  /// Nothing if the device's value is not known.
  std::optional<std::string> held;
  /// Why it is not known; empty if the file of the device simply has none.
  std::string reason;
};

/// What the comparison of one device with the standard found.
struct Comparison {
  /// In field order. Fields that the standard does not set are not compared; nor are calibrations of another
  /// device, unless they are chosen by name.
  std::vector<Difference> differences;
  std::size_t compared = 0;
  bool Differs() const;
  /// Something was compared, and all of it is known.
  bool IsComplete() const;
};

/// Devices that are only planned have no Neuron ID, or one of zeros, and are not the same.
bool IsSameDevice(const DeviceSettings& a, const DeviceSettings& b);

Comparison Compare(const DeviceSettings& standard, const DeviceSettings& device, const Selection& selection);

/// The fields that are compared although the standard's value is not known, with the reason.
std::vector<Unread> UnknownInStandard(const DeviceSettings& standard, const Selection& selection);

/// Finds the devices that differ from most, without a standard: counts the values of each field, device by
/// device.
class Majority {
 public:
  explicit Majority(const Selection& selection) : selection_(selection), values_(Fields().size()) {}

  void Add(const DeviceSettings& device);

  /// The value that more than half of the devices hold, of those whose value is known. Fields without such a
  /// value have none. Calibrations are counted only if they are chosen by name.
  DeviceSettings Standard() const;

  /// A field of which no value is held by more than half: each value and how many hold it.
  struct Split {
    const Field* field;
    std::vector<std::pair<std::string, std::size_t>> values;
  };
  std::vector<Split> Splits() const;

 private:
  struct Count {
    std::string text;  // of the first device that holds it
    std::size_t devices = 0;
  };
  using Counts = std::map<std::string, Count>;  // by the form in which values are equal
  const Count* MostOf(const Field& field) const;

  Selection selection_;
  std::vector<Counts> values_;
};

}  // namespace settings
