#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "lns/object_model.h"

/// What plug-ins leave on the networks when they register: their commands, and the templates they create.
namespace director {

/// One command a line, with tabs between: the address of the object that offers it, the command's name, its
/// number, the class of the objects it is for, the plug-in, its version, and "default" for a default action.
///
/// For an empty place those of the object server and of all networks: systems, templates and their LonMark
/// objects; for a network's name of that network alone; for the path of a device those that the device and
/// its LonMark objects are offered. Throws 20005 for a path that names no device.
void PrintCommands(const lns::ObjectServer& server, const std::string& place, std::ostream& out);

/// One template a line: its address, program ID, and how many devices use it.
void PrintTemplates(const lns::ObjectServer& server, const std::string& network_name, std::ostream& out);

/// Where a system stands with a plug-in.
struct Registration {
  /// The system's address.
  std::string system;
  /// The version that registered there, perhaps empty; nothing where the plug-in has not registered.
  std::optional<std::string> version;
};
Registration RegistrationOf(const lns::ObjectServer& server, const std::string& network_name,
                            const std::string& plug_in);

/// The network interface of a network's system, empty in engineered mode. It can be set while nobody has the
/// system open, to nothing with an empty name.
std::string InterfaceOf(const lns::ObjectServer& server, const std::string& network_name);
void SetInterface(const lns::ObjectServer& server, const std::string& network_name,
                  const std::string& interface_name);

}  // namespace director
