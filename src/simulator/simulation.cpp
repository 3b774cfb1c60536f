#include "simulator/simulation.h"

#include <fstream>
#include <sstream>
#include <system_error>

#include "simulator/errors.h"
#include "simulator/network_file.h"
#include "simulator/object_server.h"
#include "simulator/session.h"

namespace simulator {
namespace {

std::string Utf8(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  if (file) text << file.rdbuf();
  if (!file || text.fail()) throw FileError(Utf8(path) + ": cannot be read");
  return text.str();
}

/// The old file stays whole until the new one is.
void ReplaceFile(const std::filesystem::path& path, const std::string& text) {
  std::filesystem::path fresh = path;
  fresh += ".new";
  std::ofstream file(fresh, std::ios::binary | std::ios::trunc);
  file << text;
  file.close();
  std::error_code error;
  if (file) std::filesystem::rename(fresh, path, error);
  if (file && !error) return;
  std::error_code ignored;
  std::filesystem::remove(fresh, ignored);
  throw FileError(Utf8(path) + ": cannot be written");
}

}  // namespace

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
  const auto session = std::make_shared<Session>(shared_from_this());
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

std::vector<std::shared_ptr<Session>> Simulation::Sessions() const {
  std::vector<std::shared_ptr<Session>> live;
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
  Take(ReadInstallation(ReadFile(path_), Utf8(path_.filename())));
}

void Simulation::Take(model::Installation installation) {
  installation_ = std::move(installation);
  latency_ = installation_.latency;
  faults_ = Faults(installation_.faults);
  vanished_.clear();
  changed_ = false;
  save_error_.clear();
}

std::vector<std::string> Simulation::DevicePaths(const std::string& device) {
  std::vector<std::string> paths;
  for (model::Network& network : installation_.networks) {
    for (const model::DeviceKey& key : model::DeviceKeys(network, {model::kAllDevices})) {
      const std::string path = model::PathOf(network, key);
      if (device == key.name || device == path) paths.push_back(path);
    }
  }
  if (paths.empty()) Fail(Code::NotFound, "There is no device \"" + device + "\".");
  return paths;
}

}  // namespace simulator
