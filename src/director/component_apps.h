#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "lns/object_model.h"

/// What plug-ins add to the networks when they register: commands and templates.
namespace director {

/// Prints one command per line, separated by tabs: the address of the object that offers it, the command's
/// name and number, the class of the objects it is for, the plug-in, its version, and "default" for a default
/// action.
///
/// An empty place means the object server and all networks, with their templates and LonMark objects.
/// Otherwise the place is a network's name or the path of a device. Throws 20005 if the path names no device.
void PrintCommands(const lns::ObjectServer& server, const std::string& place, std::ostream& out);

/// Prints one template per line: its address, program ID, and the number of devices that use it.
void PrintTemplates(const lns::ObjectServer& server, const std::string& network_name, std::ostream& out);

/// Whether a plug-in is registered on a system.
struct Registration {
  /// The system's address.
  std::string system;
  /// The registered version, which may be empty; nothing if the plug-in is not registered.
  std::optional<std::string> version;
};
Registration RegistrationOf(const lns::ObjectServer& server, const std::string& network_name,
                            const std::string& plug_in);

/// The network interface of a network's system; empty for engineered mode. It can be set only while nobody
/// has the system open.
std::string InterfaceOf(const lns::ObjectServer& server, const std::string& network_name);
void SetInterface(const lns::ObjectServer& server, const std::string& network_name,
                  const std::string& interface_name);

}  // namespace director
