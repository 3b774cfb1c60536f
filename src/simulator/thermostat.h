#pragma once

#include <vector>

#include "simulator/installation.h"

/// The room thermostat that the simulator knows by heart, so that a network file need not list its variables.
namespace simulator {

/// What a template has that lists none: those of the thermostat for its program ID, otherwise nothing.
std::vector<stored::Variable> BuiltInVariables(const stored::DeviceTemplate& type);
std::vector<stored::LonMarkObject> BuiltInObjects(const stored::DeviceTemplate& type);

}  // namespace simulator
