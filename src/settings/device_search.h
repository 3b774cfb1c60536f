#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "lns/object_model.h"
#include "settings/device_settings.h"
#include "text/pattern.h"

namespace settings {

/// A device of a network, or the reason why it cannot be reached.
struct FoundDevice {
  std::string path;
  lns::AppDevice device;
  std::string failure;
};

/// The devices of an open system whose paths match, in the order of the network; those that are only
/// discovered are not among them. A subsystem that cannot be listed is in their place, with the reason.
std::vector<FoundDevice> FindDevices(const lns::Network& network, const lns::System& system,
                                     const text::Pattern& path);

/// Identifies the device in the settings, and reads them unless it is of another type. Never throws: what
/// cannot be read is listed, and without an identity everything.
struct ReadDevice {
  DeviceSettings settings;
  /// The program ID is not the thermostat's.
  bool is_other_type = false;
  /// Why nothing is known of the device; empty if it could be asked.
  std::string failure;
};
/// `watched` may wrap what reads the variables.
ReadDevice Read(const FoundDevice& found, const std::shared_ptr<lns::Dialect>& dialect,
                const Selection& selection, Versions versions,
                const std::function<ReadPoint(ReadPoint)>& watched = {});

}  // namespace settings
