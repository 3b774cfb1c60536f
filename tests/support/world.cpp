#include "support/world.h"

#include <unistd.h>

#include <array>
#include <fstream>

using platform::CallKind;
using platform::Value;

namespace {

std::shared_ptr<simulator::Simulation> Network(const std::string& network_file) {
  const auto without_waiting = [](std::chrono::milliseconds) {};
  return network_file.empty() ? simulator::Simulation::FromFile(QM5R_DEMO_NETWORK, without_waiting)
                              : simulator::Simulation::FromText(network_file, without_waiting);
}

}  // namespace

World::World(const std::string& network_file)
    : PlugIn(Network(network_file), {1, 2, 3}),
      // The portable file system takes the backslashes of the folder's resource as part of a name.
      lonworks_folder_(std::filesystem::temp_directory_path() / ("qm5r-" + std::to_string(getpid()))) {
  simulation->installation().auto_save = false;
  const auto types = lonworks_folder_.string() + "\\Types\\User\\Korvell";
  std::filesystem::create_directories(types);
  std::ofstream(types + "/QM5R.typ");
  std::ofstream(types + "/QM5R.fmt");
  registry.SetMachineSetting("SOFTWARE\\LonWorks", "LonWorks Path", lonworks_folder_.string());
  registry.SetMachineSetting(identity.PlugInKey(), "DisplayUnits", "0");
}

World::~World() { std::filesystem::remove_all(lonworks_folder_.string() + "\\Types\\User\\Korvell"); }

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
  Send(*api, session::kConfigureCommand, type, path);
  return api;
}

std::vector<std::string> World::MessageTexts() const {
  std::vector<std::string> texts;
  for (const auto& shown : desktop.messages) texts.push_back(shown.message.text);
  return texts;
}
