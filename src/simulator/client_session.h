#pragma once

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/late_bound.h"
#include "simulator/simulation.h"

namespace simulator {

/// One client of the object server: its settings, what it has open, and its event handlers. It ends with its
/// last object, and then closes everything.
class ClientSession : public std::enable_shared_from_this<ClientSession> {
 public:
  /// The bits of the flags word that the session uses.
  static constexpr int kUseTcp = 16;
  static constexpr int kUseNsi = 32;

  struct Settings {
    bool single_user = false;
    bool remote = false;
    int flags = 0;
  };

  explicit ClientSession(std::shared_ptr<Simulation> simulation) : simulation_(std::move(simulation)) {}

  Simulation& simulation() { return *simulation_; }
  stored::Installation& installation() { return simulation_->installation(); }

  /// Runs an operation: journal, latency, faults, the operation itself, saving.
  platform::Value Perform(const Operation& operation, const std::function<platform::Value()>& act);

  const Settings& settings() const { return settings_; }
  /// Throws 17005 while the session is open.
  Settings& ChangeSettings();

  /// The interface of a full remote client; empty if none is set.
  const std::string& active_interface() const { return active_interface_; }
  void SetActiveInterface(const std::string& name) { active_interface_ = name; }

  bool IsOpen() const { return open_; }
  void Open() { open_ = true; }
  void Close();
  void RequireOpen() const;

  /// The networks that this kind of session can reach, by name.
  stored::Names ReachableNetworks();

  /// Has no effect on an open object. Closing a network closes its system.
  void OpenNetwork(const std::string& network);
  void CloseNetwork(const std::string& network);
  bool IsNetworkOpen(const std::string& network) const { return networks_.contains(network); }
  void RequireNetwork(const std::string& network) const;

  void OpenSystem(const std::string& network);
  void CloseSystem(const std::string& network) { systems_.erase(network); }
  bool IsSystemOpen(const std::string& network) const { return systems_.contains(network); }
  void RequireSystem(const std::string& network) const;

  /// Pauses the data server of an open network. If the installation is strict about pausing, values cannot be
  /// read or written meanwhile.
  void Pause(const std::string& network, bool paused);
  bool IsPaused(const std::string& network) const { return paused_.contains(network); }
  void RequirePaused(const std::string& network) const;

  /// The open system can reach its devices; false in engineered mode.
  bool IsAttached(const std::string& network) const;

  /// Raises event 9 at this interval during longer operations; 0 switches it off.
  void SetIdleInterval(int milliseconds) { idle_interval_ = milliseconds; }

  std::unique_ptr<platform::Subscription> Advise(platform::EventHandler handler);
  void Unadvise(int number) { handlers_.erase(number); }
  void Raise(std::int32_t event, platform::Arguments arguments);

  /// The key of an object: its parent, which it keeps alive, and its address.
  using Key = std::pair<const platform::LateBound*, std::string>;

  /// The live object of that key, or else a new one from `make`, so that the same path always leads to the
  /// same object.
  platform::LateBoundPtr Shared(const Key& key, const std::function<platform::LateBoundPtr()>& make);
  void Move(const Key& from, const Key& to);

 private:
  static constexpr std::size_t kObjectsBeforePruning = 1024;
  bool IsLocal() const { return !settings_.remote; }
  bool IsLightweight() const { return settings_.remote && (settings_.flags & kUseTcp) != 0; }
  bool CanReach(const stored::Network& network) const;
  void CheckInterfaceFree(const std::string& interface, const std::string& network);
  void Delay(const Operation& operation);

  std::shared_ptr<Simulation> simulation_;
  Settings settings_;
  std::string active_interface_;
  bool open_ = false;
  std::set<std::string> networks_;
  std::map<std::string, std::string> systems_;  // by network: the interface that a local session uses
  std::set<std::string> paused_;
  int idle_interval_ = 0;
  std::map<int, platform::EventHandler> handlers_;
  int next_handler_ = 0;
  std::map<Key, std::weak_ptr<platform::LateBound>> objects_;
  std::size_t prune_at_ = kObjectsBeforePruning;
};

}  // namespace simulator
