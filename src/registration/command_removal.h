#pragma once

#include <functional>

#include "lns/object_model.h"
#include "session/services.h"

namespace registration {

/// Removes the plug-in's commands from the open system and, for the first network, from the object server
/// that all networks share. Skips failing steps. The activity log lists what was removed and what failed.
///
/// Exhaustive also removes unused device templates: each after a question if `Interactive` is set, otherwise
/// only those that the plug-in created.
void RemoveCommandsAndTemplates(const session::Services& services, bool exhaustive, bool first_network);

/// Removes the plug-in's commands from every network of the object server in turn: opens it in engineered
/// mode or, if that fails, through its own network interface. Networks that do not open are only logged.
/// Nothing stays open.
///
/// A system that opened in engineered mode stays without a network interface; any other keeps its own.
void RemovePlugInFromNetworks(const session::Services& services, bool exhaustive,
                              const std::function<lns::ObjectServer()>& object_server);

}  // namespace registration
