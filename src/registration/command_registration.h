#pragma once

#include "lns/object_model.h"
#include "session/services.h"

namespace registration {

/// Puts the plug-in's commands where directors look for them: on the device templates of the open system and
/// on the LonMark objects of their interfaces and devices. A command of its own on the system tells directors
/// that this version is registered there.
///
/// Registering again changes nothing. False where no network is open, or where a command could not be
/// registered, which has been shown to the user; the others are registered, and the next try does the rest.
/// The activity log tells what was added and updated, and what failed.
bool RegisterCommands(const session::Services& services);

}  // namespace registration
