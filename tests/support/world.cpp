#include "support/world.h"

#include <array>

using platform::CallKind;
using platform::Value;

namespace {

std::shared_ptr<simulator::Simulation> Network(const std::string& network_file) {
  const auto without_waiting = [](std::chrono::milliseconds) {};
  return network_file.empty() ? simulator::Simulation::FromFile(QM5R_DEMO_NETWORK, without_waiting)
                              : simulator::Simulation::FromText(network_file, without_waiting);
}

}  // namespace

World::World(const std::string& network_file) : PlugIn(Network(network_file), {1, 2, 3}) {
  simulation->installation().auto_save = false;
  files.Write("C:\\LonWorks\\Types\\User\\Korvell\\QM5R.typ", "");
  files.Write("C:\\LonWorks\\Types\\User\\Korvell\\QM5R.fmt", "");
  registry.SetMachineSetting("SOFTWARE\\LonWorks", "LonWorks Path", "C:\\LonWorks");
  registry.SetMachineSetting(identity.PlugInKey(), "DisplayUnits", "0");
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
  Send(*api, session::kConfigureCommand, type, path);
  return api;
}

std::vector<std::string> World::MessageTexts() const {
  std::vector<std::string> texts;
  for (const auto& shown : desktop.messages) texts.push_back(shown.message.text);
  return texts;
}
