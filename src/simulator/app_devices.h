#pragma once

#include <string>
#include <vector>

#include "simulator/object.h"

namespace simulator {

/// The devices of a subsystem; all of the network's for "ALL".
class AppDevices : public Simulated<AppDevices> {
 public:
  AppDevices(Origin origin, stored::Chain chain) : Simulated(std::move(origin)), chain_(std::move(chain)) {}
  static std::span<const MemberRow<AppDevices>> Members();

 private:
  std::vector<stored::DeviceKey> Keys();
  Value Item(Arguments arguments);
  Value Add(Arguments arguments);
  stored::Chain chain_;
};

}  // namespace simulator
