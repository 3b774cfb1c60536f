#pragma once

#include "model/configuration_screen.h"

namespace model {

/// Explains each field in its tooltip: what it means and, where it takes a number, the range in these display
/// units (0 Celsius, 1 Fahrenheit) with the unit that the screen shows.
void ShowFieldTips(ConfigurationScreen& screen, int display_units);

}  // namespace model
