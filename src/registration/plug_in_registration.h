#pragma once

#include <cstdint>

#include "registration/surroundings.h"

namespace registration {

/// Makes a value 1 where it lies outside the bounds; returns it.
std::int16_t ForceInRange(std::int16_t low, std::int16_t high, std::int16_t& value);

/// How the automation class of this process came to its registration with COM.
enum class ComClass {
  ByChild,     // a second copy of the program registers it, as the process has a command line
  Registered,  // the process did it itself at its start
  Refused,     // it tried and was refused
};

/// A newer version than this one is registered; the revision number does not count.
bool NewerIsRegistered(const Surroundings& with);

/// The plug-in's entry in the catalogue of plug-ins: the COM class and a machine key of ten text values. A
/// step that fails is skipped. Outcomes are shown only where `interactive` is set.
///
/// A newer version that is registered stays as it is.
void RegisterPlugIn(const Surroundings& with, bool interactive, ComClass com_class);

/// Removes both. The key stays where the COM removal does not start.
void UnregisterPlugIn(const Surroundings& with, bool interactive);

}  // namespace registration
