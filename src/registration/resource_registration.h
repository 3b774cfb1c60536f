#pragma once

#include "lns/object_model.h"
#include "session/services.h"

namespace registration {

/// The message if it fails.
inline constexpr const char* kResourcesNotAdded =
    "Unable to add the resources listed in the ResourceTable to the catalog";

/// Adds this computer's resource files of the device to the platform's catalogue if it lacks them. Not for a
/// system on another computer. False if that failed. The activity log has the result.
bool AddResources(const session::Services& services, const lns::System& system);

}  // namespace registration
