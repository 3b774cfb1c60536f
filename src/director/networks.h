#pragma once

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>

#include "lns/object_model.h"

namespace director {

/// Opens the object server, a network and its system, and closes them again.
class OpenedNetwork {
 public:
  enum class Depth { Network, System };
  /// Throws the platform's error and closes what it opened.
  OpenedNetwork(const lns::ObjectServer& server, const std::string& network_name,
                Depth depth = Depth::System);
  ~OpenedNetwork();
  OpenedNetwork(const OpenedNetwork&) = delete;
  OpenedNetwork& operator=(const OpenedNetwork&) = delete;

  const lns::Network& network() const { return network_; }
  const lns::System& system() const { return system_; }

 private:
  void Close();

  lns::ObjectServer server_;
  lns::Network network_;
  lns::System system_;
};

/// The address of the network's system.
std::string SystemPath(const OpenedNetwork& opened);

/// Opens one network or, for an empty name, each in turn. If one of several does not open, prints the reason.
void ForEachNetwork(const lns::ObjectServer& server, const std::string& network_name, std::ostream& out,
                    const std::function<void(const OpenedNetwork&)>& print);

/// Throws 20005 if the path names no device.
lns::AppDevice DeviceAt(const OpenedNetwork& opened, const std::string& path);

/// Prints the names of all networks, one per line.
void PrintNetworks(const lns::ObjectServer& server, std::ostream& out);

/// Prints each device's path, state code and template: of one network or, for an empty name, of all.
void PrintDevices(const lns::ObjectServer& server, const std::string& network_name, std::ostream& out);

/// Prints every variable of the device, formatted and as raw bytes, or the reason if it cannot be read.
/// Throws 20005 if the path names no device.
void PrintDevice(const lns::ObjectServer& server, const std::string& path, std::ostream& out);

/// Download sends the network database's configuration to the device, upload the device's to the database.
/// Both throw the platform's error, and 20005 if the path names no device.
void DownloadConfiguration(const lns::ObjectServer& server, const std::string& path);
void UploadConfiguration(const lns::ObjectServer& server, const std::string& path);

/// The network's name in a path: the part before the first "/".
std::string NetworkOf(const std::string& path);

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

/// The network interface of a network's system; empty for engineered mode. It can be set only while no client
/// has the system open.
std::string InterfaceOf(const lns::ObjectServer& server, const std::string& network_name);
void SetInterface(const lns::ObjectServer& server, const std::string& network_name,
                  const std::string& interface_name);

}  // namespace director
