#include "simulator/network_objects.h"

#include "simulator/collection.h"
#include "simulator/component_apps.h"
#include "simulator/device_objects.h"
#include "simulator/errors.h"
#include "simulator/interface_file.h"
#include "simulator/template_objects.h"

namespace simulator {

Value Network::Systems() {
  session().RequireNetwork(name_);
  const std::string network = name_;
  const auto names = [network](Collection& self) {
    return std::vector<std::string>{model::NetworkOf(self.installation(), network).system.name};
  };
  return Make<Collection>(PartPlace("Systems"), 4, names, [network](Collection& self, std::size_t) {
    const std::string path = model::PathOf(model::NetworkOf(self.installation(), network), model::Chain());
    return self.Make<System>(Place{path, "", network}, network);
  });
}

std::span<const MemberRow<Network>> Network::Members() {
  using Self = Network;
  static const MemberRow<Self> kRows[] = {
      {0, "Name", [](Self& self, Arguments) -> Value { return self.name_; }},
      {1, "Open", nullptr, nullptr,
       [](Self& self, Arguments) -> Value { return self.session().OpenNetwork(self.name_), Value(); }},
      {2, "Close", nullptr, nullptr,
       [](Self& self, Arguments) -> Value { return self.session().CloseNetwork(self.name_), Value(); }},
      {3, "IsOpen", [](Self& self, Arguments) -> Value { return self.session().IsNetworkOpen(self.name_); }},
      {4, "Systems", [](Self& self, Arguments) { return self.Systems(); }},
      ClassRow<1>(5),
      ParentRow(6),
  };
  return kRows;
}

model::System& System::Data() {
  session().RequireNetwork(network_);
  return model::NetworkOf(installation(), network_).system;
}

model::System& System::Change() {
  session().simulation().MarkChanged();
  return Data();
}

Value System::ServiceDevice() {
  Data();
  return Make<NetworkServiceDevice>(PartPlace("NetworkServiceDevice"), network_);
}

Value System::Subsystems() {
  session().RequireSystem(network_);
  return MakeIn<Collection>(network_, PartPlace("Subsystems"), 6, SubsystemNames(network_, {}),
                            MakeSubsystem(network_, {}));
}

Value System::Templates() {
  session().RequireSystem(network_);
  return MakeIn<TemplateLibrary>(network_, PartPlace("TemplateLibrary"));
}

Value System::Apps() {
  session().RequireSystem(network_);
  return MakeIn<ComponentApps>(network_, PartPlace("ComponentApps"),
                               FindApps([network = network_](auto& all) {
                                 return AppLists{&model::NetworkOf(all, network).system.component_apps};
                               }));
}

void System::Begin(int milliseconds) {
  Data();
  session().SetIdleInterval(milliseconds);
}

std::span<const MemberRow<System>> System::Members() {
  using Self = System;
  static const MemberRow<Self> kRows[] = {
      {0, "Name",
       [](Self& self, Arguments) -> Value {
         return model::NetworkOf(self.installation(), self.network_).system.name;
       }},
      {1, "Open", nullptr, nullptr,
       [](Self& self, Arguments) -> Value { return self.session().OpenSystem(self.network_), Value(); }},
      {2, "Close", nullptr, nullptr,
       [](Self& self, Arguments) -> Value { return self.session().CloseSystem(self.network_), Value(); }},
      {3, "IsOpen",
       [](Self& self, Arguments) -> Value { return self.session().IsSystemOpen(self.network_); }},
      {4, "NetworkServiceDevice", [](Self& self, Arguments) { return self.ServiceDevice(); }},
      {5, "Subsystems", [](Self& self, Arguments) { return self.Subsystems(); }},
      {6, "TemplateLibrary", [](Self& self, Arguments) { return self.Templates(); }},
      {7, "ComponentApps", [](Self& self, Arguments) { return self.Apps(); }},
      {8, "MgmtMode", [](Self& self, Arguments) -> Value { return self.Data().management_mode; },
       [](Self& self, const Value& value) { self.Change().management_mode = WholeNumber(value, 0, 1); }},
      {9, "DiscoveryInterval", [](Self& self, Arguments) -> Value { return self.Data().discovery_interval; },
       [](Self& self, const Value& value) { self.Change().discovery_interval = WholeNumber(value, 0); }},
      {10, "UpdateInterval", [](Self& self, Arguments) -> Value { return self.Data().update_interval; },
       [](Self& self, const Value& value) { self.Change().update_interval = WholeNumber(value, 0); }},
      {11, "LaunchLcaServerFlag", [](Self& self, Arguments) -> Value { return self.Data().launch_server; },
       [](Self& self, const Value& value) { self.Change().launch_server = automation::ToBoolean(value); }},
      {12, "LdrfCatalogPath", [](Self& self, Arguments) -> Value { return self.Data().catalog_path; },
       [](Self& self, const Value& value) { self.Change().catalog_path = automation::ToText(value); },
       nullptr, 0, 0, 300},
      {13, "BeginNssIdleEvent", nullptr, nullptr,
       [](Self& self, Arguments arguments) -> Value {
         return self.Begin(WholeNumber(arguments[0], 0, 65535)), Value();
       },
       1},
      {14, "EndNssIdleEvent", nullptr, nullptr,
       [](Self& self, Arguments) -> Value { return self.Begin(0), Value(); }},
      ClassRow<3>(15),
      ParentRow(16),
      {18, "GetProgramId", nullptr, nullptr,
       [](Self& self, Arguments arguments) -> Value {
         self.Data();
         return ProgramIdOfXif(self.session().simulation().read_file, automation::ToText(arguments[0]));
       },
       1},
      {17, "DsPause", [](Self& self, Arguments) -> Value { return self.session().IsPaused(self.network_); },
       [](Self& self, const Value& value) {
         self.session().Pause(self.network_, automation::ToBoolean(value));
       }},
      {19, "DsMode", [](Self& self, Arguments) -> Value { return self.data_server_mode_; },
       [](Self& self, const Value& value) {
         self.session().RequirePaused(self.network_);
         self.data_server_mode_ = WholeNumber(value, 0);
       }},
  };
  return kRows;
}

Value NetworkServiceDevice::Interface() {
  const std::string& name = model::NetworkOf(installation(), network_).system.interface;
  if (name.empty()) return LateBoundPtr();
  return Make<NetworkInterface>(Place{"LcaNetworkInterface:" + name, "", name}, name);
}

void NetworkServiceDevice::SetInterface(const Value& value) {
  const std::string name = InterfaceName(installation(), automation::ToObject(value));
  for (const auto& each : session().simulation().Sessions())
    if (each->IsSystemOpen(network_))
      Fail(Code::MustBeClosed, "The interface must be set before the system is opened.");
  model::System& system = model::NetworkOf(installation(), network_).system;
  if (!system.locked_by.empty())
    Fail(Code::MustBeClosed, "The system \"" + system.name + "\" is locked by " + system.locked_by + ".");
  system.interface = name;
  session().simulation().MarkChanged();
}

std::span<const MemberRow<NetworkServiceDevice>> NetworkServiceDevice::Members() {
  using Self = NetworkServiceDevice;
  static const MemberRow<Self> kRows[] = {
      {1, "NetworkInterface", [](Self& self, Arguments) { return self.Interface(); },
       [](Self& self, const Value& value) { self.SetInterface(value); }},
      ClassRow<40>(2),
      ParentRow(3),
  };
  return kRows;
}

std::span<const MemberRow<NetworkInterface>> NetworkInterface::Members() {
  static const MemberRow<NetworkInterface> kRows[] = {
      {0, "Name", [](NetworkInterface& self, Arguments) -> Value { return self.name_; }},
      ClassRow<14>(1),
      ParentRow(2),
  };
  return kRows;
}

std::string InterfaceName(model::Installation& installation, const LateBoundPtr& object) {
  if (!object) return "";
  const auto* own = dynamic_cast<const NetworkInterface*>(object.get());
  const std::string name =
      own ? own->name() : automation::ToText(object->Invoke({"Name"}, platform::CallKind::Get, {}));
  if (!model::FindByName(installation.interfaces, name))
    Fail(Code::NotFound, "There is no network interface \"" + name + "\".");
  return name;
}

}  // namespace simulator
