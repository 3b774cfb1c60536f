#include "support/world.h"

#include <algorithm>
#include <array>
#include <cstdlib>

using platform::CallKind;
using platform::Value;

namespace {

std::shared_ptr<simulator::Simulation> Network(const std::string& network_file) {
  const auto without_waiting = [](std::chrono::milliseconds) {};
  return network_file.empty() ? simulator::Simulation::FromFile(QM5R_DEMO_NETWORK, without_waiting)
                              : simulator::Simulation::FromText(network_file, without_waiting);
}

/// The object server's strictness in this run: "all", or the name of one switch or member.
simulator::Strictness Demanded() {
  const char* demand = std::getenv("QM5R_STRICT");
  const simulator::Strictness all = simulator::Strictness::All();
  simulator::Strictness demanded;
  if (!demand) return demanded;
  if (demand == std::string("all")) return all;
  for (const auto& [key, flag] : simulator::kStrictFlags) demanded.*flag = demand == std::string(key);
  const bool is_flag = std::ranges::count(simulator::kStrictFlags, demand,
                                          [](const auto& flag) { return std::string(flag.first); }) != 0;
  if (!is_flag) (all.read_only.contains(demand) ? demanded.read_only : demanded.missing).insert(demand);
  return demanded;
}

/// Undoes the regional settings.
std::string InPlainSigns(std::string text) {
  std::ranges::replace(text, ',', '.');
  std::ranges::replace(text, ';', ',');
  return text;
}

}  // namespace

World::World(const std::string& network_file) : PlugIn(Network(network_file), {1, 2, 3}) {
  simulation->installation().auto_save = false;
  simulation->installation().strict = Demanded();
  simulation->plug_in_version = [this](const std::string&) { return identity.PlugInVersion; };
  InstallResourceFiles();
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

std::vector<std::string> World::Operations(std::string_view text) const {
  std::vector<std::string> lines;
  for (std::size_t i = 0; i < simulation->journal().Count(); ++i) {
    const auto& [operation, result, error] = simulation->journal().At(i);
    std::string line = operation.place.item + " " + operation.member;
    const bool regional = operation.member == "Value" && simulation->installation().strict.regional;
    if (operation.kind == simulator::OperationKind::Put)
      line += "=" + (regional ? InPlainSigns(operation.value) : operation.value);
    if (error != 0) line += " !";
    if (line.find(text) != std::string::npos) lines.push_back(line);
  }
  return lines;
}
