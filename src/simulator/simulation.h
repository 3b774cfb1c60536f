#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "automation/published.h"
#include "simulator/files.h"
#include "simulator/installation.h"
#include "simulator/journal.h"

namespace simulator {

class ClientSession;

/// The event numbers of the object server.
inline constexpr std::int32_t kIdleEvent = 9;
inline constexpr std::int32_t kUpdateEvent = 13;
inline constexpr std::int32_t kErrorEvent = 20;

using Sleeper = std::function<void(std::chrono::milliseconds)>;

/// The simulated platform: one installation with its networks, shared by all sessions of the process.
///
/// Used from one thread. Live objects keep it alive. If the installation came from a file with "autoSave" on,
/// each operation that changes it saves it. A failed save does not fail the operation: `SaveError` has the
/// reason, and the next change tries again.
class Simulation : public std::enable_shared_from_this<Simulation> {
 public:
  /// Both throw a FileError. The sleeper waits for the configured latency.
  static std::shared_ptr<Simulation> FromFile(const std::filesystem::path& path, Sleeper sleeper);
  static std::shared_ptr<Simulation> FromText(std::string_view text, Sleeper sleeper);

  /// A root object for a new client, with its own settings and open networks.
  std::shared_ptr<automation::Published> CreateObjectServer();

  Journal& journal() { return journal_; }
  Faults& faults() { return faults_; }
  stored::Latency& latency() { return latency_; }
  stored::Installation& installation() { return installation_; }
  const std::filesystem::path& path() const { return path_; }

  /// Takes a device off the network until it is restored. `device` is an address or a name; throws 17006 if
  /// it is unknown. The state is not saved.
  void Vanish(const std::string& device);
  void Restore(const std::string& device);
  bool HasVanished(const std::string& device_path) const { return vanished_.contains(device_path); }

  /// Raises an event in every session.
  void RaiseEvent(std::int32_t event, platform::Arguments arguments);

  /// Ends the program that serves the simulation, for the knob "Stop"; may be empty.
  std::function<void()> on_stop;

  /// Runs the function that raises events if the installation is strict about threads; by default on a new
  /// thread each time.
  std::function<void(const std::function<void()>&)> event_thread;

  /// The version with which a plug-in is registered on the computer; empty if unknown. A new command gets it
  /// if its version cannot be set.
  std::function<std::string(const std::string& server)> plug_in_version;

  /// Reads imported interface files; by default the computer's.
  FileReader read_file;

  /// The live sessions.
  std::vector<std::shared_ptr<ClientSession>> Sessions() const;

  void MarkChanged() { changed_ = true; }
  void SaveChanges();
  const std::string& SaveError() const { return save_error_; }

  /// Both throw a FileError and then change nothing. Reload restores the file's faults and latency and all
  /// vanished devices; live objects continue with the data of the same names.
  void Save();
  void Reload();

  void Sleep(std::chrono::milliseconds duration) { sleeper_(duration); }

 private:
  explicit Simulation(Sleeper sleeper);
  void Take(stored::Installation installation);
  std::vector<std::string> DevicePaths(const std::string& device);

  Sleeper sleeper_;
  std::filesystem::path path_;
  stored::Installation installation_;
  stored::Latency latency_;
  Journal journal_;
  Faults faults_;
  std::set<std::string> vanished_;
  std::vector<std::weak_ptr<ClientSession>> sessions_;
  bool changed_ = false;
  std::string save_error_;
};

}  // namespace simulator
