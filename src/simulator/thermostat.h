#pragma once

#include <vector>

#include "simulator/installation.h"

/// The built-in room thermostat, so that a network file need not list its variables.
namespace simulator {

/// The default variables of a template: the thermostat's for its program ID, otherwise none.
std::vector<stored::Variable> BuiltInVariables(const stored::DeviceTemplate& type);
std::vector<stored::LonMarkObject> BuiltInObjects(const stored::DeviceTemplate& type);

}  // namespace simulator
