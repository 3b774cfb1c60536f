#pragma once

#include <string_view>
#include <vector>

#include "simulator/installation.h"

/// The room thermostat that the simulator knows by heart, so that a network file need not list its variables.
namespace simulator {

inline constexpr std::string_view kThermostatProgramId = "8000D3550004041D";

std::vector<model::Variable> ThermostatVariables();
std::vector<model::LonMarkObject> ThermostatObjects();

}  // namespace simulator
