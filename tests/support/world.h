#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "plugin/api.h"
#include "simulator/simulation.h"
#include "support/fake_desktop.h"
#include "support/fake_machine.h"

/// The plug-in on a simulated network, without COM and without a screen: what a director sees of it, and what
/// stands behind it. The demo network is the one that ships.
class World {
 public:
  explicit World(const std::string& network_file = {});
  ~World();

  std::shared_ptr<plugin::LNSPlugInAPI> CreateApi();

  /// Calls a member as a director does, by name.
  static platform::Value Get(platform::LateBound& api, std::string_view property);
  static void Put(platform::LateBound& api, std::string_view property, platform::Value value);
  static void Send(platform::LateBound& api, std::int32_t command, std::int32_t type,
                   const std::string& path);

  /// A director's whole road: an object, the network, a configure command.
  std::shared_ptr<plugin::LNSPlugInAPI> Configure(const std::string& path,
                                                  std::int32_t type = plugin::kAppDeviceType);

  std::string StatusPanel(std::size_t number) const { return main.StatusBar.Panels()[number - 1]; }
  std::string Shown(model::ControlRef control) const { return main.screen.Find(control)->Text(); }
  std::vector<std::string> MessageTexts() const;

  FakeDesktop desktop;
  FakeProgram program;
  FakeRegistry machine;
  registry::CRegistry registry;
  startup::Identity identity;
  plugin::Session session;
  ui::Progress progress;
  activity::fLog log;
  std::shared_ptr<simulator::Simulation> simulation;
  int object_servers_made = 0;
  bool object_server_missing = false;
  plugin::Surroundings surroundings;
  plugin::fMain main;
  std::filesystem::path lonworks_folder;
};

inline constexpr const char* kFirstThermostat = "Demo Tower/Demo Tower.Floor 1/Thermostat 101";
