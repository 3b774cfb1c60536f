#pragma once

#include "lns/object_model.h"
#include "session/services.h"

namespace registration {

/// Adds the plug-in's commands where directors look for them: to the device templates of the open system and
/// to the LonMark objects of their interfaces and devices. A "register" command on the system shows directors
/// that this version is registered.
///
/// Registering again changes nothing. False if no network is open or if a command could not be registered. In
/// the latter case the user has seen the failure, the other commands are registered, and the next try does
/// the rest. The activity log lists what was added and updated, and what failed.
bool RegisterCommands(const session::Services& services);

}  // namespace registration
