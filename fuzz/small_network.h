#pragma once

#include <memory>

#include "simulator/simulation.h"

inline constexpr const char* kSmallDevice = "N/N.Floor 1/Thermostat 1";

/// A network with one thermostat, without latency.
inline std::shared_ptr<simulator::Simulation> MakeSmallNetwork() {
  return simulator::Simulation::FromText(
      R"({"interfaces": [{"name": "NI"}], "networks": [{"name": "N", "system": {
      "interface": "NI", "templates": [{"name": "T", "programId": "8000D3550004041D"}],
      "subsystems": [{"name": "Floor 1", "devices": [{"name": "Thermostat 1", "template": "T"}]}]}}]})",
      [](std::chrono::milliseconds) {});
}
