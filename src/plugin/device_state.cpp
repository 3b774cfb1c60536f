#include "plugin/device_state.h"

#include "lns/members.h"
#include "platform/attempt.h"

namespace plugin {
namespace {

// The program's reading of the attachment value; networks report 0 for an attached device.
constexpr std::int32_t kOffnet = 1;

constexpr const char* kUnknown = "?";

}  // namespace

DeviceState StateOfCode(std::int32_t code) {
  switch (code) {
    case 2:
      return {"Unconfigured", false};
    case 3:
      return {"App'less", false};
    case 4:
      return {"Cnfg Online", true};
    case 6:
      return {"Cnfg Offline", false};
    case 12:
      return {"Soft Offline", false};
    case 140:
      return {"Cnfg Bypass", false};
    default:
      return {kUnknown, false};
  }
}

DeviceState ReadDeviceState(const lns::AppDevice& device, ui::Progress& progress) {
  if (device.AttachmentStatus() == kOffnet) return {"Offnet", false};
  if (!device.HasBeenCommissioned()) return {"Not Commissioned yet", false};
  DeviceState state{kUnknown, false};
  platform::Attempt([&] {
    progress.DisplayStatus("Testing the device...");
    if (device.Test() != lns::members::kTestGood) return;
    progress.DisplayStatus("Reading the device state...");
    state = StateOfCode(device.State());
  });
  return state;
}

}  // namespace plugin
