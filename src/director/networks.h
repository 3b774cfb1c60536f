#pragma once

#include <functional>
#include <iosfwd>
#include <string>

#include "lns/object_model.h"

/// What the director tells of the networks: lists and values, printed as lines for people and scripts.
namespace director {

/// One way into a network: the object server opened for it, and the network's system. Closes all of it again.
class OpenedNetwork {
 public:
  enum class Depth { Network, System };
  /// Throws the platform's error; what was opened before is closed then.
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

/// Opens one network, or for an empty name one after the other. Of several, those that do not open are
/// reported in the list and skipped.
void ForEachNetwork(const lns::ObjectServer& server, const std::string& network_name, std::ostream& out,
                    const std::function<void(const OpenedNetwork&)>& print);

/// Throws 20005 for a path that names no device.
lns::AppDevice DeviceAt(const OpenedNetwork& opened, const std::string& path);

/// The names of all networks, one a line.
void PrintNetworks(const lns::ObjectServer& server, std::ostream& out);

/// The paths of all devices, one a line with state code and template: of one network, or of all for an empty
/// name.
void PrintDevices(const lns::ObjectServer& server, const std::string& network_name, std::ostream& out);

/// Every variable of the device with its value in its own format and as raw bytes. A variable that cannot be
/// read shows the reason. Throws 20005 for a path that names no device.
void PrintDevice(const lns::ObjectServer& server, const std::string& path, std::ostream& out);

/// The device takes the configuration that the network database has of it, or the database takes the
/// device's. Both throw the platform's error, and 20005 for a path that names no device.
void DownloadConfiguration(const lns::ObjectServer& server, const std::string& path);
void UploadConfiguration(const lns::ObjectServer& server, const std::string& path);

/// The network's name in a path: what stands before the first "/".
std::string NetworkOf(const std::string& path);

}  // namespace director
