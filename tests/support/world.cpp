#include "support/world.h"

#include <unistd.h>

#include <array>
#include <fstream>

using platform::CallKind;
using platform::Value;

World::World(const std::string& network_file)
    : registry(machine, "Korvell QM5R-FC PIR Configure"),
      identity(startup::LoadIdentity(program)),
      progress(desktop, program, identity.PlugInName),
      log(desktop, program),
      simulation(network_file.empty()
                     ? simulator::Simulation::FromFile(QM5R_DEMO_NETWORK, [](std::chrono::milliseconds) {})
                     : simulator::Simulation::FromText(network_file, [](std::chrono::milliseconds) {})),
      surroundings{desktop,
                   program,
                   registry,
                   identity,
                   session,
                   progress,
                   log,
                   [this]() -> platform::LateBoundPtr {
                     if (object_server_missing) throw platform::Error(429, "test", "can't create object");
                     ++object_servers_made;
                     return simulation->CreateObjectServer();
                   }},
      main(surroundings),
      lonworks_folder(std::filesystem::temp_directory_path() / ("qm5r-" + std::to_string(getpid()))) {
  simulation->installation().auto_save = false;
  // The portable file system takes the backslashes of the folder's resource as part of a name.
  const auto types = lonworks_folder.string() + "\\Types\\User\\Korvell";
  std::filesystem::create_directories(types);
  std::ofstream(types + "/QM5R.typ");
  std::ofstream(types + "/QM5R.fmt");
  registry.SetMachineSetting("SOFTWARE\\LonWorks", "LonWorks Path", lonworks_folder.string());
  registry.SetMachineSetting(identity.PlugInKey(), "DisplayUnits", "0");
}

World::~World() { std::filesystem::remove_all(lonworks_folder.string() + "\\Types\\User\\Korvell"); }

std::shared_ptr<plugin::LNSPlugInAPI> World::CreateApi() {
  return std::make_shared<plugin::LNSPlugInAPI>(surroundings, main);
}

Value World::Get(platform::LateBound& api, std::string_view property) {
  return api.Invoke({property}, CallKind::Get, {});
}

void World::Put(platform::LateBound& api, std::string_view property, Value value) {
  api.Invoke({property}, CallKind::Put, {&value, 1});
}

void World::Send(platform::LateBound& api, std::int32_t command, std::int32_t type, const std::string& path) {
  const std::array<Value, 3> arguments = {command, type, path};
  api.Invoke({"SendCommand"}, CallKind::Method, arguments);
}

std::shared_ptr<plugin::LNSPlugInAPI> World::Configure(const std::string& path, std::int32_t type) {
  auto api = CreateApi();
  Put(*api, "networkName", path.substr(0, path.find('/')));
  Send(*api, plugin::kConfigureCommand, type, path);
  return api;
}

std::vector<std::string> World::MessageTexts() const {
  std::vector<std::string> texts;
  for (const auto& shown : desktop.messages) texts.push_back(shown.message.text);
  return texts;
}
