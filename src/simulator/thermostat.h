#pragma once

#include <vector>

#include "simulator/installation.h"

/// The built-in room thermostat, so that a network file need not list its variables.
namespace simulator {

/// The defaults of a template that lists none: the thermostat's for its program ID, otherwise nothing.
std::vector<stored::Variable> BuiltInVariables(const stored::DeviceTemplate& type);
std::vector<stored::LonMarkObject> BuiltInObjects(const stored::DeviceTemplate& type);

}  // namespace simulator
