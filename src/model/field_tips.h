#pragma once

#include <string>

#include "model/configuration_screen.h"

namespace model {

/// The unit shown beside temperatures. It begins with the masculine ordinal indicator (U+00BA) in place of
/// the degree sign, deliberately.
std::string TemperatureUnit(int units);

/// Explains each field in its tooltip: what it means and, where it takes a number, the range in these display
/// units (0 Celsius, 1 Fahrenheit) with the unit that the screen shows.
void ShowFieldTips(ConfigurationScreen& screen, int display_units);

}  // namespace model
