#include "simulator/simulation.h"

#include <thread>

#include "simulator/client_session.h"
#include "simulator/errors.h"
#include "simulator/object_server.h"

namespace simulator {
Simulation::Simulation(Sleeper sleeper)
    : event_thread([](const std::function<void()>& raise) { std::thread(raise).join(); }),
      read_file([](const std::string& path) { return ReadWholeFile(FromUtf8(path)); }),
      sleeper_(std::move(sleeper)) {}

std::shared_ptr<Simulation> Simulation::FromFile(const std::filesystem::path& path, Sleeper sleeper) {
  std::shared_ptr<Simulation> simulation(new Simulation(std::move(sleeper)));
  simulation->path_ = path;
  simulation->Reload();
  return simulation;
}

std::shared_ptr<Simulation> Simulation::FromText(std::string_view text, Sleeper sleeper) {
  std::shared_ptr<Simulation> simulation(new Simulation(std::move(sleeper)));
  simulation->Take(ReadInstallation(text, "network"));
  return simulation;
}

std::shared_ptr<automation::Published> Simulation::CreateObjectServer() {
  const auto session = std::make_shared<ClientSession>(shared_from_this());
  std::erase_if(sessions_, [](const auto& each) { return each.expired(); });
  sessions_.push_back(session);
  return std::make_shared<ObjectServer>(session);
}

void Simulation::Vanish(const std::string& device) {
  for (const std::string& path : DevicePaths(device)) vanished_.insert(path);
}

void Simulation::Restore(const std::string& device) {
  for (const std::string& path : DevicePaths(device)) vanished_.erase(path);
}

void Simulation::RaiseEvent(std::int32_t event, platform::Arguments arguments) {
  for (const auto& session : Sessions()) session->Raise(event, arguments);
}

std::vector<std::shared_ptr<ClientSession>> Simulation::Sessions() const {
  std::vector<std::shared_ptr<ClientSession>> live;
  for (const auto& each : sessions_)
    if (auto session = each.lock()) live.push_back(std::move(session));
  return live;
}

void Simulation::SaveChanges() {
  if (!changed_ || !installation_.auto_save || path_.empty()) return;
  try {
    Save();
  } catch (const FileError& error) {
    save_error_ = error.what();
  }
}

void Simulation::Save() {
  if (path_.empty()) throw FileError("The networks do not come from a file.");
  ReplaceFile(path_, WriteInstallation(installation_));
  changed_ = false;
  save_error_.clear();
}

void Simulation::Reload() {
  if (path_.empty()) throw FileError("The networks do not come from a file.");
  const auto text = ReadWholeFile(path_);
  if (!text) throw FileError(Utf8(path_) + ": cannot be read");
  Take(ReadInstallation(*text, Utf8(path_)));
}

void Simulation::Take(stored::Installation installation) {
  installation_ = std::move(installation);
  latency_ = installation_.latency;
  faults_ = Faults(installation_.faults);
  vanished_.clear();
  changed_ = false;
  save_error_.clear();
}

std::vector<std::string> Simulation::DevicePaths(const std::string& device) {
  std::vector<std::string> paths;
  for (stored::Network& network : installation_.networks) {
    for (const stored::DeviceKey& key : stored::DeviceKeys(network, {stored::kAllDevices})) {
      const std::string path = stored::PathOf(network, key);
      if (device == key.name || device == path) paths.push_back(path);
    }
  }
  if (paths.empty()) Fail(Code::NotFound, "There is no device \"" + device + "\".");
  return paths;
}

}  // namespace simulator
