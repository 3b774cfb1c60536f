#pragma once

#include <functional>

#include "lns/object_model.h"
#include "session/services.h"

namespace registration {

/// Takes all of the plug-in's commands off the open system; off the object server too, which is shared by all
/// networks, where this is the first of them. What fails is skipped. The activity log tells what was removed
/// and what failed.
///
/// Exhaustive removes unused device templates as well: with `Interactive` each after a question, else
/// only those that the plug-in has made.
void RemoveCommandsAndTemplates(const session::Services& services, bool exhaustive, bool first_network);

/// Takes the plug-in's commands off every network of the object server, one network after the other: each is
/// opened in engineered mode, and where that fails through its own network interface. Networks that do not
/// open are left out without a word. Nothing stays open.
///
/// A system that opened in engineered mode stays without a network interface; where it did not, the one that
/// it had is put back.
void RemovePlugInFromNetworks(const session::Services& services, bool exhaustive,
                              const std::function<lns::ObjectServer()>& object_server);

}  // namespace registration
