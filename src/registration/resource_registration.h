#pragma once

#include "lns/object_model.h"
#include "session/services.h"

namespace registration {

/// The message on failure.
inline constexpr const char* kResourcesNotAdded =
    "Unable to add the resources listed in the ResourceTable to the catalog";

/// Adds missing resource files of the device on this computer to the platform's catalogue. Does nothing for a
/// system on another computer. False on failure. Logs the result.
bool AddResources(const session::Services& services, const lns::System& system);

}  // namespace registration
