#include "simulator/network_objects.h"

#include <algorithm>

#include "simulator/component_apps.h"
#include "simulator/device_objects.h"
#include "simulator/errors.h"
#include "simulator/files.h"
#include "simulator/template_objects.h"

namespace simulator {

Value Network::Systems() {
  session().RequireNetwork(name_);
  const std::string network = name_;
  const auto names = [network](Collection& self) {
    return stored::Names{stored::NetworkOf(self.installation(), network).system.name};
  };
  return Make<Collection>(
      PartPlace("Systems"), Class::Systems, names, [network](Collection& self, const std::string&) {
        const std::string path =
            stored::PathOf(stored::NetworkOf(self.installation(), network), stored::Chain());
        return self.Make<System>(Place{path, "", network}, network);
      });
}

std::span<const MemberRow<Network>> Network::Members() {
  using Self = Network;
  static const Row kRows[] = {
      Property(0, "Name", [](Self& self) { return self.name_; }),
      Function(1, "Open", [](Self& self) { self.session().OpenNetwork(self.name_); }),
      Function(2, "Close", [](Self& self) { self.session().CloseNetwork(self.name_); }),
      Property(3, "IsOpen", [](Self& self) { return self.session().IsNetworkOpen(self.name_); }),
      Property(4, "Systems", Of<&Self::Systems>),
      ClassRow<Class::Network>(5),
      ParentRow(6),
  };
  return kRows;
}

stored::System& System::Data() {
  session().RequireNetwork(network_);
  return stored::NetworkOf(installation(), network_).system;
}

Value System::ServiceDevice() {
  Data();
  return Make<NetworkServiceDevice>(PartPlace("NetworkServiceDevice"), network_);
}

Value System::Subsystems() {
  session().RequireSystem(network_);
  return MakeIn<Collection>(network_, PartPlace("Subsystems"), Class::Subsystems,
                            SubsystemNames(network_, {}), MakeSubsystem(network_, {}));
}

Value System::Templates() {
  session().RequireSystem(network_);
  return MakeIn<TemplateLibrary>(network_, PartPlace("TemplateLibrary"));
}

Value System::Apps() {
  session().RequireSystem(network_);
  return MakeIn<ComponentApps>(network_, PartPlace("ComponentApps"),
                               FindApps([network = network_](auto& all) {
                                 return AppLists{&stored::NetworkOf(all, network).system.component_apps};
                               }));
}

void System::Begin(int milliseconds) {
  Data();
  session().SetIdleInterval(milliseconds);
}

std::span<const MemberRow<System>> System::Members() {
  using Self = System;
  static const Row kRows[] = {
      Property(0, "Name",
               [](Self& self) { return stored::NetworkOf(self.installation(), self.network_).system.name; }),
      Function(1, "Open", [](Self& self) { self.session().OpenSystem(self.network_); }),
      Function(2, "Close", [](Self& self) { self.session().CloseSystem(self.network_); }),
      Property(3, "IsOpen", [](Self& self) { return self.session().IsSystemOpen(self.network_); }),
      Property(4, "NetworkServiceDevice", Of<&Self::ServiceDevice>),
      Property(5, "Subsystems", Of<&Self::Subsystems>),
      Property(6, "TemplateLibrary", Of<&Self::Templates>),
      Property(7, "ComponentApps", Of<&Self::Apps>),
      Setting<&stored::System::management_mode, 0, 1>(8, "MgmtMode"),
      Setting<&stored::System::discovery_interval>(9, "DiscoveryInterval"),
      Setting<&stored::System::update_interval>(10, "UpdateInterval"),
      Setting<&stored::System::launch_server>(11, "LaunchLcaServerFlag"),
      Setting<&stored::System::catalog_path>(12, "LdrfCatalogPath").Since(300),
      Function(
          13, "BeginNssIdleEvent",
          [](Self& self, Arguments time) { self.Begin(WholeNumber(time[0], 0, 65535)); }, 1),
      Function(14, "EndNssIdleEvent", [](Self& self) { self.Begin(0); }),
      ClassRow<Class::System>(15),
      ParentRow(16),
      Property(
          17, "DsPause", [](Self& self) { return self.session().IsPaused(self.network_); },
          [](Self& self, const Value& value) {
            self.session().Pause(self.network_, automation::ToBoolean(value));
          }),
      Function(
          18, "GetProgramId",
          [](Self& self, Arguments path) {
            self.Data();
            return ProgramIdOfXif(self.session().simulation().read_file, automation::ToText(path[0]));
          },
          1),
      Property(
          19, "DsMode", [](Self& self) { return self.data_server_mode_; },
          [](Self& self, const Value& value) {
            self.session().RequirePaused(self.network_);
            self.data_server_mode_ = WholeNumber(value, 0);
          }),
  };
  return kRows;
}

Value NetworkServiceDevice::Interface() {
  const std::string& name = stored::NetworkOf(installation(), network_).system.interface;
  if (name.empty()) return LateBoundPtr();
  return Make<NetworkInterface>(Place{"LcaNetworkInterface:" + name, "", name}, name);
}

void NetworkServiceDevice::SetInterface(const Value& value) {
  const std::string name = InterfaceName(installation(), automation::ToObject(value));
  for (const auto& each : session().simulation().Sessions())
    if (each->IsSystemOpen(network_))
      Fail(Code::MustBeClosed, "The interface must be set before the system is opened.");
  stored::System& system = stored::NetworkOf(installation(), network_).system;
  if (!system.locked_by.empty())
    Fail(Code::MustBeClosed, "The system \"" + system.name + "\" is locked by " + system.locked_by + ".");
  system.interface = name;
  session().simulation().MarkChanged();
}

std::span<const MemberRow<NetworkServiceDevice>> NetworkServiceDevice::Members() {
  using Self = NetworkServiceDevice;
  static const Row kRows[] = {
      Property(1, "NetworkInterface", Of<&Self::Interface>).Set<&Self::SetInterface>(),
      ClassRow<Class::NetworkServiceDevice>(2),
      ParentRow(3),
  };
  return kRows;
}

std::span<const MemberRow<NetworkInterface>> NetworkInterface::Members() {
  static const Row kRows[] = {
      Property(0, "Name", Of<&NetworkInterface::name>),
      ClassRow<Class::NetworkInterface>(1),
      ParentRow(2),
  };
  return kRows;
}

std::string InterfaceName(stored::Installation& installation, const LateBoundPtr& object) {
  if (!object) return "";
  const auto* own = dynamic_cast<const NetworkInterface*>(object.get());
  const std::string name =
      own ? own->name() : automation::ToText(object->Invoke({"Name"}, platform::CallKind::Get, {}));
  if (!stored::FindByName(installation.interfaces, name))
    Fail(Code::NotFound, "There is no network interface \"" + name + "\".");
  return name;
}

namespace {

constexpr int kNotAttached = 2;
constexpr int kUnconfigured = 2;
constexpr const char* kNeuronIds = "00DE0000";

}  // namespace

Value AppDevices::Item(Arguments arguments) {
  const auto* name = std::get_if<std::string>(&arguments[0]);
  const auto key = name ? stored::DeviceNamed(Network(), chain_, *name)
                        : stored::DeviceAt(Network(), chain_, PlaceOf(arguments[0]));
  if (!key) FailNoItem(arguments[0]);
  const std::string path = DevicePath(session(), *key);
  return Make<AppDevice>(Place{path, path, ""}, *key);
}

/// Adds a planned device: not commissioned, not on the network, with a made-up Neuron ID. Ignores channel and
/// subnet.
Value AppDevices::Add(Arguments arguments) {
  stored::Network& network_data = stored::NetworkOf(installation(), network());
  const std::string name = automation::ToText(arguments[0]);
  Value type = arguments[1];
  if (std::holds_alternative<LateBoundPtr>(type))
    type = automation::ToObject(type)->Invoke({"Name"}, platform::CallKind::Get, {});
  stored::Device device;
  device.name = name;
  device.template_name = automation::ToText(type);
  device.program_id = stored::TemplateOf(installation(), network(), device.template_name).program_id;
  if (IsPredefined(chain_)) Fail(Code::NotModifiable, "Nothing can be added to \"" + chain_.back() + "\".");
  if (name.empty() || name.find('/') != std::string::npos)
    Fail(Code::OutOfRange, "\"" + name + "\" is not a valid device name.");
  const auto everywhere = stored::DeviceKeys(network_data, {stored::kAllDevices});
  if (strict().demonstration != 0 && everywhere.size() >= Strictness::kDemonstrationDevices)
    FailWith(static_cast<std::uint16_t>(strict().demonstration), "The feature is not available.");
  auto& devices = stored::DevicesOf(network_data.system, chain_);
  if (stored::FindByName(devices, name))
    Fail(Code::DuplicateName, "A device named \"" + name + "\" already exists.");
  for (const stored::DeviceKey& key : everywhere)
    device.handle = std::max(device.handle, stored::DeviceOf(installation(), key).handle);
  Bytes handle;
  AppendInteger(handle, ++device.handle, 2);
  device.neuron_id = kNeuronIds + ToHex(handle);
  device.state = kUnconfigured;
  device.attachment = kNotAttached;
  device.commissioned = false;
  device.objects =
      stored::ObjectsOfDevices(stored::TemplateOf(installation(), network(), device.template_name));
  devices.push_back(std::move(device));
  session().simulation().MarkChanged();
  const Value added = name;
  return Item({&added, 1});
}

std::span<const MemberRow<AppDevices>> AppDevices::Members() {
  using Self = AppDevices;
  static const Row kRows[] = {
      Indexed(0, "Item", Of<&Self::Item>),
      Property(1, "Count",
               [](Self& self) {
                 return static_cast<std::int32_t>(stored::DeviceCount(self.Network(), self.chain_));
               }),
      ClassRow<Class::AppDevices>(2),
      ParentRow(3),
      Function(4, "Add", Of<&Self::Add>, 2, 4),
  };
  return kRows;
}

}  // namespace simulator
