#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "session/services.h"

namespace registration {

/// Sets a value outside the bounds to 1; returns the value.
std::int16_t ForceInRange(std::int16_t low, std::int16_t high, std::int16_t& value);

/// The user may register and deregister: write to the machine's classes and to the plug-in's key.
bool MayRegister(const session::Services& services);

/// A sentence that says whether the plug-in is registered on this computer, and in which version.
std::string RegisteredAs(const session::Services& services);

/// Makes the plug-in's entry in the catalogue of plug-ins: the COM class and a machine key of ten text
/// values. Skips what fails, except that an interactive run ends if the class is refused. Shows results only
/// if `interactive` is set.
///
/// `register_class` registers the class in this process and throws if that is refused; if it is empty, a
/// second copy of the program does this.
///
/// A registered newer version, by major and minor number, stays.
void RegisterPlugIn(const session::Services& services, bool interactive,
                    const std::function<void()>& register_class = {});

/// Removes both. The key stays if the COM removal does not start.
void UnregisterPlugIn(const session::Services& services, bool interactive);

}  // namespace registration
