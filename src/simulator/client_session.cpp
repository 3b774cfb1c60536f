#include "simulator/client_session.h"

#include <algorithm>

#include "automation/convert.h"
#include "simulator/errors.h"

namespace simulator {
namespace {

using platform::Value;

std::string JournalText(const Value& value) {
  if (std::holds_alternative<platform::LateBoundPtr>(value)) return "";
  return automation::ToText(value);
}

class Connection : public platform::Subscription {
 public:
  Connection(std::weak_ptr<ClientSession> session, int number)
      : session_(std::move(session)), number_(number) {}
  ~Connection() override {
    if (const auto session = session_.lock()) session->Unadvise(number_);
  }

 private:
  std::weak_ptr<ClientSession> session_;
  int number_;
};

int ExtraLatency(const stored::Latency& latency, OperationClass operation) {
  switch (operation) {
    case OperationClass::Read:
      return latency.read;
    case OperationClass::Write:
      return latency.write;
    case OperationClass::Open:
      return latency.open;
    case OperationClass::Test:
      return latency.test;
    case OperationClass::Other:
      break;
  }
  return 0;
}

}  // namespace

Value ClientSession::Perform(const Operation& operation, const std::function<Value()>& act) {
  const auto alive = shared_from_this();  // an event handler may release the last object
  Journal& journal = simulation_->journal();
  const std::size_t number = journal.Begin(operation);
  try {
    Delay(operation);
    if (const auto code = simulation_->faults().Strike(operation)) {
      if (*code != 0) FailWith(static_cast<std::uint16_t>(*code), "A fault was set for this operation.");
      if (!operation.place.device.empty()) simulation_->Vanish(operation.place.device);
    }
    Value result = act();
    journal.Finish(number, JournalText(result));
    simulation_->SaveChanges();
    return result;
  } catch (const platform::Error& error) {
    journal.Fail(number, error.number());
    throw;
  }
}

void ClientSession::Delay(const Operation& operation) {
  const stored::Latency& latency = simulation_->latency();
  int remaining = latency.any + ExtraLatency(latency, ClassOf(operation));
  while (idle_interval_ > 0 && remaining > idle_interval_) {
    const int slice = idle_interval_;
    simulation_->Sleep(std::chrono::milliseconds(slice));
    remaining -= slice;
    Raise(kIdleEvent, {});
  }
  if (remaining > 0) simulation_->Sleep(std::chrono::milliseconds(remaining));
}

ClientSession::Settings& ClientSession::ChangeSettings() {
  if (open_) Fail(Code::MustBeClosed, "This must be set before the object server is opened.");
  return settings_;
}

void ClientSession::Close() {
  open_ = false;
  networks_.clear();
  systems_.clear();
  paused_.clear();
  idle_interval_ = 0;
}

void ClientSession::RequireOpen() const {
  if (!open_) Fail(Code::NotOpen, "The object server is not open.");
}

bool ClientSession::CanReach(const stored::Network& network) const {
  if (IsLocal()) return network.local;
  if (IsLightweight()) return network.internet;
  const auto& interfaces = network.remote_interfaces;
  return std::find(interfaces.begin(), interfaces.end(), active_interface_) != interfaces.end();
}

stored::Names ClientSession::ReachableNetworks() {
  RequireOpen();
  const bool full_remote = !IsLocal() && !IsLightweight();
  if (full_remote && active_interface_.empty())
    Fail(Code::NotFound, "No network interface is chosen for remote access.");
  stored::Names names;
  for (const stored::Network& network : installation().networks)
    if (CanReach(network)) names.push_back(network.name);
  return names;
}

void ClientSession::OpenNetwork(const std::string& name) {
  RequireOpen();
  const stored::Network& network = stored::NetworkOf(installation(), name);
  if (!CanReach(network)) Fail(Code::NotFound, "The network \"" + name + "\" cannot be reached this way.");
  if (!network.opens) Fail(Code::CannotOpen, "The network \"" + name + "\" cannot be opened.");
  if (!IsLocal() && !IsLightweight()) CheckInterfaceFree(active_interface_, name);
  networks_.insert(name);
}

void ClientSession::CloseNetwork(const std::string& network) {
  CloseSystem(network);
  networks_.erase(network);
  paused_.erase(network);
}

void ClientSession::RequireNetwork(const std::string& network) const {
  RequireOpen();
  if (!IsNetworkOpen(network)) Fail(Code::NotOpen, "The network \"" + network + "\" is not open.");
}

void ClientSession::CheckInterfaceFree(const std::string& interface, const std::string& network) {
  const stored::Interface* found = stored::FindByName(installation().interfaces, interface);
  bool free = found && !found->in_use;
  for (const auto& session : simulation_->Sessions())
    for (const auto& [other, used] : session->systems_)
      if (other != network && used == interface) free = false;
  if (!free) Fail(Code::InterfaceBusy, "The network interface \"" + interface + "\" is in use.");
}

void ClientSession::OpenSystem(const std::string& name) {
  RequireNetwork(name);
  if (IsSystemOpen(name)) return;
  const stored::System& system = stored::NetworkOf(installation(), name).system;
  const std::string interface = IsLocal() ? system.interface : "";
  const bool engineered = IsLocal() && interface.empty();
  if (!system.locked_by.empty())
    Fail(Code::InterfaceBusy, "The system \"" + system.name + "\" is locked by " + system.locked_by + ".");
  if (!(engineered ? system.opens_engineered : system.opens_attached))
    Fail(Code::CannotOpen, "The system \"" + system.name + "\" cannot be opened " +
                               (engineered ? "in engineered mode." : "on the network."));
  if (!interface.empty()) CheckInterfaceFree(interface, name);
  if (engineered)
    for (const auto& session : simulation_->Sessions())
      if (session->IsSystemOpen(name) && session->IsAttached(name))
        Fail(Code::InterfaceBusy, "The system \"" + name + "\" is open on the network elsewhere.");
  systems_[name] = interface;
}

void ClientSession::RequireSystem(const std::string& network) const {
  RequireNetwork(network);
  if (!IsSystemOpen(network))
    Fail(Code::NotOpen, "The system of the network \"" + network + "\" is not open.");
}

void ClientSession::Pause(const std::string& network, bool paused) {
  RequireNetwork(network);
  if (paused)
    paused_.insert(network);
  else
    paused_.erase(network);
}

void ClientSession::RequirePaused(const std::string& network) const {
  const bool strict = simulation_->installation().strict.pausing;
  if (strict && !IsPaused(network)) Fail(Code::MustBePaused, "The data server must be paused for this.");
}

bool ClientSession::IsAttached(const std::string& network) const {
  const auto found = systems_.find(network);
  return found != systems_.end() && (!IsLocal() || !found->second.empty());
}

std::unique_ptr<platform::Subscription> ClientSession::Advise(platform::EventHandler handler) {
  handlers_[++next_handler_] = std::move(handler);
  return std::make_unique<Connection>(weak_from_this(), next_handler_);
}

void ClientSession::Raise(std::int32_t event, platform::Arguments arguments) {
  const auto handlers = handlers_;  // handlers may connect and disconnect
  const auto raise = [&] {
    for (const auto& [number, handler] : handlers)
      if (handlers_.contains(number)) handler(event, arguments);
  };
  if (!simulation_->installation().strict.threads) return raise();
  simulation_->event_thread(raise);
}

platform::LateBoundPtr ClientSession::Shared(const Key& key,
                                             const std::function<platform::LateBoundPtr()>& make) {
  if (auto object = objects_[key].lock()) return object;
  // At most one walk for each object that was added since the last one.
  if (objects_.size() > prune_at_) {
    std::erase_if(objects_, [](const auto& each) { return each.second.expired(); });
    prune_at_ = std::max(kObjectsBeforePruning, 2 * objects_.size());
  }
  auto object = make();
  objects_[key] = object;
  return object;
}

void ClientSession::Move(const Key& from, const Key& to) {
  objects_[to] = objects_[from];
  objects_.erase(from);
}

}  // namespace simulator
