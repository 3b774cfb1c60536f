#include "simulator/object_server.h"

#include <algorithm>

#include "automation/convert.h"
#include "simulator/component_apps.h"
#include "simulator/device_objects.h"
#include "simulator/errors.h"
#include "simulator/network_objects.h"
#include "simulator/network_variable.h"
#include "simulator/template_objects.h"

namespace simulator {

std::string SimulatorControl::Entry(Arguments arguments) {
  const auto count = static_cast<std::int32_t>(simulation_->journal().Count());
  const std::int32_t number = WholeNumber(arguments[0], 1, count);
  return simulation_->journal().At(static_cast<std::size_t>(number) - 1).Text();
}

int& SimulatorControl::LatencyOf(Arguments arguments) {
  const std::string name = automation::ToText(arguments[0]);
  for (const auto& [kind, latency] : stored::kLatencies)
    if (name == kind) return simulation_->latency().*latency;
  Fail(Code::NotFound, "There is no kind of latency \"" + name + "\".");
}

void SimulatorControl::SetLatency(Arguments arguments) {
  const int milliseconds = WholeNumber(arguments[1], 0, stored::Latency::kMost);
  LatencyOf(arguments) = milliseconds;
}

void SimulatorControl::AddFault(Arguments arguments) {
  const stored::Fault fault{automation::ToText(arguments[0]), automation::ToText(arguments[1]),
                            automation::ToText(arguments[2]), WholeNumber(arguments[3], 0),
                            WholeNumber(arguments[4], 0, 65535)};
  if (const auto mistake = MistakeOf(fault, simulation_->installation()))
    Fail(Code::NotFound, mistake->reason);
  simulation_->faults().Add(fault);
}

void SimulatorControl::RaiseEvent(Arguments arguments) {
  const std::int32_t event = automation::ToInteger(arguments[0]);
  const std::int32_t tag = arguments.size() > 1 ? automation::ToInteger(arguments[1]) : 0;
  const Value text = arguments.size() > 2 ? automation::ToText(arguments[2]) : std::string();
  const Value update[] = {tag, text, LateBoundPtr()};
  const std::size_t used = event == kUpdateEvent ? 3 : event == kErrorEvent ? 1 : 0;
  if (event != kIdleEvent && used == 0) Fail(Code::NotFound, "The object server has no such event.");
  simulation_->RaiseEvent(event, Arguments(update, used));
}

void SimulatorControl::DoFile(void (Simulation::*operation)()) {
  try {
    (*simulation_.*operation)();
  } catch (const FileError& error) {
    Fail(Code::Internal, error.what());
  }
}

std::span<const MemberRow<SimulatorControl>> SimulatorControl::Members() {
  using Self = SimulatorControl;
  static const Row kRows[] = {
      Property(1, "Path",
               [](Self& self) {
                 const std::u8string path = self.simulation_->path().u8string();
                 return std::string(path.begin(), path.end());
               }),
      Property(2, "JournalCount",
               [](Self& self) { return static_cast<std::int32_t>(self.simulation_->journal().Count()); }),
      Indexed(3, "JournalEntry", Of<&Self::Entry>),
      Property(4, "Journal", [](Self& self) { return self.simulation_->journal().Text(); }),
      Function(5, "ClearJournal", [](Self& self) { self.simulation_->journal().Clear(); }),
      Indexed(6, "Latency", Of<&Self::LatencyOf>),
      Function(7, "SetLatency", Of<&Self::SetLatency>, 2),
      Function(8, "AddFault", Of<&Self::AddFault>, 5),
      Property(9, "FaultCount",
               [](Self& self) { return static_cast<std::int32_t>(self.simulation_->faults().Count()); }),
      Property(18, "Faults", [](Self& self) { return self.simulation_->faults().Text(); }),
      Function(10, "ClearFaults", [](Self& self) { self.simulation_->faults().Clear(); }),
      Function(
          11, "Vanish",
          [](Self& self, Arguments device) { self.simulation_->Vanish(automation::ToText(device[0])); }, 1),
      Function(
          12, "Restore",
          [](Self& self, Arguments device) { self.simulation_->Restore(automation::ToText(device[0])); }, 1),
      Function(13, "RaiseEvent", Of<&Self::RaiseEvent>, 1, 3),
      Function(14, "Reload", [](Self& self) { self.DoFile(&Simulation::Reload); }),
      Function(15, "Save", [](Self& self) { self.DoFile(&Simulation::Save); }),
      Property(16, "SaveError", [](Self& self) { return self.simulation_->SaveError(); }),
      Function(17, "Stop",
               [](Self& self) {
                 if (self.simulation_->on_stop) self.simulation_->on_stop();
               }),
  };
  return kRows;
}

namespace {

constexpr std::int32_t kSimulator = 18;

class UnusableServer : public automation::Published {
 public:
  explicit UnusableServer(std::string reason) : reason_(std::move(reason)) {}
  std::optional<std::int32_t> MemberNumber(std::string_view) const override { return 1; }
  Value Invoke(const platform::Member&, platform::CallKind, Arguments) override {
    Fail(Code::Internal, reason_);
  }

 private:
  std::string reason_;
};

template <class... T>
bool HaveMember(std::string_view name) {
  const auto has = [name](const auto& row) { return text::EqualIgnoringCase(row.name, name); };
  return (std::ranges::any_of(T::Members(), has) || ...);
}

}  // namespace

std::shared_ptr<automation::Published> MakeUnusableServer(std::string reason) {
  return std::make_shared<UnusableServer>(std::move(reason));
}

bool IsMember(std::string_view name) {
  return HaveMember<ObjectServer, Collection, Network, System, NetworkServiceDevice, NetworkInterface,
                    Subsystem, AppDevices, AppDevice, Interface, LonMarkObject, NetworkVariable,
                    TemplateLibrary, DeviceTemplates, DeviceTemplate, TemplateInterface, ComponentApps,
                    ComponentApp>(name);
}

Value ObjectServer::Invoke(const platform::Member& member, platform::CallKind kind, Arguments arguments) {
  const Row* const row = Find(member);
  if (row && row->number == kSimulator) return PublishedTable::Invoke(row, member, kind, arguments);
  return Simulated::Invoke(member, kind, arguments);
}

std::unique_ptr<platform::Subscription> ObjectServer::Advise(platform::EventHandler handler) {
  return session().Advise(std::move(handler));
}

Value ObjectServer::Networks() {
  session().ReachableNetworks();  // throws here if none can be listed
  return Make<Collection>(
      PartPlace("Networks"), Class::Networks,
      [](Collection& self) { return self.session().ReachableNetworks(); },
      [](Collection& self, const std::string& name) {
        return self.Make<Network>(Place{name, "", name}, name);
      });
}

Value ObjectServer::Interfaces(const std::string& part) {
  const auto names = [](Collection& self) { return stored::NamesOf(self.installation().interfaces); };
  return Make<Collection>(
      PartPlace(part), Class::NetworkInterfaces, names, [](Collection& self, const std::string& name) {
        return self.Make<NetworkInterface>(Place{"LcaNetworkInterface:" + name, "", name}, name);
      });
}

Value ObjectServer::ActiveRemoteInterface() {
  const std::string& name = session().active_interface();
  if (name.empty()) return LateBoundPtr();
  return Make<NetworkInterface>(Place{"LcaNetworkInterface:" + name, "", name}, name);
}

void ObjectServer::SetActiveRemoteInterface(const Value& value) {
  session().SetActiveInterface(InterfaceName(installation(), automation::ToObject(value)));
}

void ObjectServer::SetFlags(const Value& value) {
  const int flags = automation::ToInteger(value);
  const int both = ClientSession::kUseTcp | ClientSession::kUseNsi;
  if ((flags & both) == both) Fail(Code::OutOfRange, "The flags 16 and 32 exclude each other.");
  session().ChangeSettings().flags = flags;
}

Value ObjectServer::Apps() {
  session().RequireOpen();
  return Make<ComponentApps>(PartPlace("ComponentApps"), FindApps([](auto& installation) {
                               return AppLists{&installation.component_apps};
                             }));
}

Value ObjectServer::Control() {
  if (!control_) control_ = std::make_shared<SimulatorControl>(session().simulation().shared_from_this());
  return control_;
}

std::span<const MemberRow<ObjectServer>> ObjectServer::Members() {
  using Self = ObjectServer;
  static const Row kRows[] = {
      Property(1, "Networks", Of<&Self::Networks>),
      Property(
          5, "SingleUserFlag", [](Self& self) { return self.session().settings().single_user; },
          [](Self& self, const Value& value) {
            self.session().ChangeSettings().single_user = automation::ToBoolean(value);
          }),
      Property(6, "RemoteNetworkInterfaces",
               [](Self& self) { return self.Interfaces("RemoteNetworkInterfaces"); }),
      Property(8, "IsOpen", [](Self& self) { return self.session().IsOpen(); }),
      Property(
          9, "RemoteFlag", [](Self& self) { return self.session().settings().remote; },
          [](Self& self, const Value& value) {
            self.session().ChangeSettings().remote = automation::ToBoolean(value);
          }),
      Property(10, "ActiveRemoteNI", Of<&Self::ActiveRemoteInterface>).Set<&Self::SetActiveRemoteInterface>(),
      Property(11, "Flags", [](Self& self) { return self.session().settings().flags; })
          .Set<&Self::SetFlags>(),
      Function(12, "Close", [](Self& self) { self.session().Close(); }),
      Function(13, "Open", [](Self& self) { self.session().Open(); }),
      Property(14, "NetworkInterfaces", [](Self& self) { return self.Interfaces("NetworkInterfaces"); }),
      Property(15, "ComponentApps", Of<&Self::Apps>),
      Property(16, "Name", [](Self&) { return std::string("LcaObjectServer"); }),
      ClassRow<Class::ObjectServer>(17),
      Property(kSimulator, "Simulator", Of<&Self::Control>),
  };
  return kRows;
}

}  // namespace simulator
