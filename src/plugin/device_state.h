#pragma once

#include <string>

#include "lns/object_model.h"
#include "ui/progress.h"

namespace plugin {

/// What the status bar says of a device, and whether it counts as online.
struct DeviceState {
  std::string text;
  bool online = false;
};

/// The text for a state code as devices report it; "?" for a code that is none.
DeviceState StateOfCode(std::int32_t code);

/// Asks whether the device is attached and commissioned, and only then tests it and reads its state. A test
/// or a state that fails gives "?"; errors of the first two questions reach the caller.
DeviceState ReadDeviceState(const lns::AppDevice& device, ui::Progress& progress);

}  // namespace plugin
