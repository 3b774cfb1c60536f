#pragma once

#include "lns/object_model.h"
#include "session/services.h"

namespace registration {

/// What the user is told where it fails.
inline constexpr const char* kResourcesNotAdded =
    "Unable to add the resources listed in the ResourceTable to the catalog";

/// Adds the device's resource files on this computer to the platform's catalogue where that lacks them. Not
/// for a system of another computer. False where that failed; the activity log tells either.
bool AddResources(const session::Services& services, const lns::System& system);

}  // namespace registration
