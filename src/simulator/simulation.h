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
#include "simulator/faults.h"
#include "simulator/files.h"
#include "simulator/installation.h"
#include "simulator/journal.h"

namespace simulator {

class ClientSession;

/// The events of the object server, by their numbers.
inline constexpr std::int32_t kIdleEvent = 9;
inline constexpr std::int32_t kUpdateEvent = 13;
inline constexpr std::int32_t kErrorEvent = 20;

using Sleeper = std::function<void(std::chrono::milliseconds)>;

/// The simulated platform: one installation with its networks, shared by all sessions of the process.
///
/// Used from one thread. Live objects keep it alive. Every change made through the objects is saved at the
/// end of the operation that made it, if the installation came from a file and its "autoSave" is on; a failed
/// save does not fail the operation but is kept in `SaveError` and tried again with the next change.
class Simulation : public std::enable_shared_from_this<Simulation> {
 public:
  /// Both raise a FileError. The sleeper spends the configured latency.
  static std::shared_ptr<Simulation> FromFile(const std::filesystem::path& path, Sleeper sleeper);
  static std::shared_ptr<Simulation> FromText(std::string_view text, Sleeper sleeper);

  /// A new client: the root object with settings and open networks of its own.
  std::shared_ptr<automation::Published> CreateObjectServer();

  Journal& journal() { return journal_; }
  Faults& faults() { return faults_; }
  stored::Latency& latency() { return latency_; }
  stored::Installation& installation() { return installation_; }
  const std::filesystem::path& path() const { return path_; }

  /// Takes a device, named by address or by name alone, off the network until it is restored; 17006 where
  /// there is none of that name. Neither is saved.
  void Vanish(const std::string& device);
  void Restore(const std::string& device);
  bool HasVanished(const std::string& device_path) const { return vanished_.contains(device_path); }

  /// Raises an event of the object server in every session.
  void RaiseEvent(std::int32_t event, platform::Arguments arguments);

  /// What the knob "Stop" does: a program that serves the simulation ends with it. Empty where nothing can
  /// end.
  std::function<void()> on_stop;

  /// Runs what raises events where the installation wants them on another thread; at first a new one each
  /// time.
  std::function<void(const std::function<void()>&)> event_thread;

  /// The version under which the computer knows the plug-in of a server. A command gets it when it is added,
  /// if its version cannot be put; empty where nobody knows.
  std::function<std::string(const std::string& server)> plug_in_version;

  /// Reads the interface files that are imported; at first those of the computer.
  FileReader read_file;

  /// The open sessions, for questions that concern all of them.
  std::vector<std::shared_ptr<ClientSession>> Sessions() const;

  void MarkChanged() { changed_ = true; }
  void SaveChanges();
  const std::string& SaveError() const { return save_error_; }

  /// Both raise a FileError and then leave everything as it was. Reload brings back faults and latency of the
  /// file and restores what has vanished; live objects go on with the data of the same names.
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
