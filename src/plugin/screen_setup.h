#pragma once

#include "model/configuration_screen.h"

namespace plugin {

/// Sets the screen up for a model of the thermostat: enables the fields that the model has. Every known model
/// has all of them, and so has a model that is not known.
void EnableFieldsOfModel(model::ConfigurationScreen& screen, int model_number);

}  // namespace plugin
