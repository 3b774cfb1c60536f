#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "session/services.h"

namespace registration {

/// Makes a value 1 where it lies outside the bounds; returns it.
std::int16_t ForceInRange(std::int16_t low, std::int16_t high, std::int16_t& value);

/// The user may do what registering and deregistering take: write to the machine's classes and to the
/// plug-in's key.
bool MayRegister(const session::Services& services);

/// Whether the plug-in is registered on this computer, and in which version, as a sentence.
std::string RegisteredAs(const session::Services& services);

/// The plug-in's entry in the catalogue of plug-ins: the COM class and a machine key of ten text values. A
/// step that fails is skipped; only an interactive run ends at a class that is refused. Outcomes are shown
/// only where `interactive` is set.
///
/// `register_class` registers the class from within this process and throws where that is refused; without it
/// a second copy of the program does.
///
/// A newer version that is registered, by major and minor number, stays as it is.
void RegisterPlugIn(const session::Services& services, bool interactive,
                    const std::function<void()>& register_class = {});

/// Removes both. The key stays where the COM removal does not start.
void UnregisterPlugIn(const session::Services& services, bool interactive);

}  // namespace registration
