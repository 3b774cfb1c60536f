#include "simulator/device_objects.h"

#include <algorithm>

#include "simulator/component_apps.h"
#include "simulator/errors.h"
#include "simulator/network_objects.h"
#include "simulator/network_variable.h"
#include "simulator/template_objects.h"

namespace simulator {
namespace {

constexpr int kNoCommunication = 1;
constexpr int kOnline = 4;
constexpr int kSoftOffline = 12;
constexpr int kHighestMode = 6;
constexpr int kHighestRequest = 17;

/// Makes the items of a collection of the device's variables.
Collection::MakeItem MakeVariable(const stored::DeviceKey& key) {
  return [key](Collection& self, const std::string& name) {
    const std::string device = DevicePath(self.session(), key);
    return self.Make<NetworkVariable>(Place{device + "/" + name, device, name}, key, name);
  };
}

stored::Names DeviceVariables(stored::Installation& installation, const stored::DeviceKey& key) {
  const stored::Device& device = stored::DeviceOf(installation, key);
  return stored::VariableNames(stored::TemplateOf(installation, key.network, device.template_name), device);
}

stored::Names ObjectVariables(stored::Installation& installation, const stored::DeviceKey& key,
                              const std::string& object_name) {
  stored::Names names = DeviceVariables(installation, key);
  const auto* object = stored::FindByName(stored::DeviceOf(installation, key).objects, object_name);
  if (!object || !object->variables) return names;
  std::erase_if(names, [&](std::string_view name) {
    return std::find(object->variables->begin(), object->variables->end(), name) == object->variables->end();
  });
  return names;
}

}  // namespace

bool IsPredefined(const stored::Chain& chain) {
  return chain == stored::Chain{stored::kAllDevices} || chain == stored::Chain{stored::kDiscovered};
}

std::string DevicePath(ClientSession& session, const stored::DeviceKey& key) {
  return stored::PathOf(stored::NetworkOf(session.installation(), key.network), key);
}

bool Answers(ClientSession& session, const stored::DeviceKey& key) {
  const stored::Device& device = stored::DeviceOf(session.installation(), key);
  return session.IsAttached(key.network) && device.powered && device.attachment == 0 &&
         !session.simulation().HasVanished(DevicePath(session, key));
}

Collection::NameItems SubsystemNames(const std::string& network, const stored::Chain& chain) {
  return [network, chain](Collection& self) {
    if (IsPredefined(chain)) return stored::Names();
    stored::System& system = stored::NetworkOf(self.installation(), network).system;
    stored::Names names = stored::NamesOf(stored::SubsystemsOf(system, chain));
    if (chain.empty()) names.insert(names.end(), {stored::kAllDevices, stored::kDiscovered});
    return names;
  };
}

Collection::MakeItem MakeSubsystem(const std::string& network, const stored::Chain& chain) {
  return [network, chain](Collection& self, const std::string& name) {
    stored::Chain below = chain;
    below.push_back(name);
    const std::string path = stored::PathOf(stored::NetworkOf(self.installation(), network), below);
    return self.Make<Subsystem>(Place{path, "", below.back()}, below);
  };
}

Value Subsystem::Subsystems() {
  return Make<Collection>(PartPlace("Subsystems"), Class::Subsystems, SubsystemNames(network(), chain_),
                          MakeSubsystem(network(), chain_));
}

Value Subsystem::Devices() { return Make<AppDevices>(PartPlace("AppDevices"), chain_); }

std::span<const MemberRow<Subsystem>> Subsystem::Members() {
  using Self = Subsystem;
  static const Row kRows[] = {
      Property(0, "Name", [](Self& self) { return self.chain_.back(); }),
      Property(1, "Subsystems", Of<&Self::Subsystems>),
      Property(2, "AppDevices", Of<&Self::Devices>),
      ClassRow<Class::Subsystem>(3),
      ParentRow(4),
  };
  return kRows;
}

Value AppDevice::Template() {
  const std::string name = Data().template_name;
  const std::string system = stored::PathOf(stored::NetworkOf(installation(), key_.network), stored::Chain());
  return Make<DeviceTemplate>(Place{system + "/LcaDeviceTemplate:" + name, "", name}, name);
}

Value AppDevice::MainInterface() {
  Data();
  return Make<Interface>(PartPlace("Interface"), key_);
}

Value AppDevice::Subsystems() {
  Data();
  const auto names = [chain = key_.chain](Collection&) { return stored::Names{chain.back()}; };
  return Make<Collection>(PartPlace("Subsystems"), Class::Subsystems, names,
                          [chain = key_.chain](Collection& self, const std::string&) {
                            const std::string path =
                                stored::PathOf(stored::NetworkOf(self.installation(), self.network()), chain);
                            return self.Make<Subsystem>(Place{path, "", chain.back()}, chain);
                          });
}

Value AppDevice::Test() {
  const int result = Data().test_result;
  return result == 0 && !Answers(session(), key_) ? kNoCommunication : result;
}

void AppDevice::SetState(const Value& value) {
  const int state = automation::ToInteger(value);
  if (state != kOnline && state != kSoftOffline)
    Fail(Code::OutOfRange, "The state " + std::to_string(state) + " cannot be set.");
  if (!Answers(session(), key_)) Fail(Code::NoCommunication, "The device does not answer.");
  Data().state = state;
  session().simulation().MarkChanged();
}

std::span<const MemberRow<AppDevice>> AppDevice::Members() {
  using stored::Device;
  using Self = AppDevice;
  static const Row kRows[] = {
      Stored<&Device::name>(0, "Name"),
      Stored<&Device::state>(1, "State").Set<&Self::SetState>(),
      Stored<&Device::attachment>(2, "AttachmentStatus").Since(300),
      Stored<&Device::commission_status>(3, "CommissionStatus"),
      Stored<&Device::commissioned>(4, "HasBeenCommissioned"),
      Stored<&Device::configuration_state>(5, "ConfigurationState"),
      Stored<&Device::neuron_id>(6, "NeuronId"),
      Stored<&Device::program_id>(7, "ProgramId"),
      Stored<&Device::handle>(8, "Handle"),
      Property(9, "DeviceTemplate", Of<&Self::Template>),
      Property(10, "Interface", Of<&Self::MainInterface>),
      Property(11, "Subsystems", Of<&Self::Subsystems>),
      Function(12, "Test", Of<&Self::Test>),
      ClassRow<Class::AppDevice>(13),
      ParentRow(14),
  };
  return kRows;
}

Value Interface::Variables() {
  const std::string device = place().device;
  const auto names = [key = key_](Collection& self) { return DeviceVariables(self.installation(), key); };
  return Make<Collection>(Place{device + ":NetworkVariables", device, ""}, Class::NetworkVariables, names,
                          MakeVariable(key_));
}

Value Interface::Objects() {
  const std::string device = place().device;
  const auto names = [key = key_](Collection& self) {
    return stored::NamesOf(stored::DeviceOf(self.installation(), key).objects);
  };
  return Make<Collection>(
      Place{device + ":LonMarkObjects", device, ""}, Class::LonMarkObjects, names,
      [key = key_, device](Collection& self, const std::string& name) {
        return self.Make<LonMarkObject>(Place{device + "/" + name, device, name}, key, name);
      });
}

void Interface::Download(Arguments) {
  stored::Device& device = Answering();
  for (const auto& [name, bytes] : std::exchange(device.database, {})) device.values[name] = bytes;
}

void Interface::Upload(Arguments) { Answering().database.clear(); }

stored::Device& Interface::Answering() {
  if (!Answers(session(), key_))
    Fail(Code::NoCommunication, "The device \"" + key_.name + "\" does not answer.");
  session().simulation().MarkChanged();
  return stored::DeviceOf(installation(), key_);
}

std::span<const MemberRow<Interface>> Interface::Members() {
  using Self = Interface;
  static const Row kRows[] = {
      Property(0, "Name", [](Self&) { return std::string(); }),
      Property(1, "NetworkVariables", Of<&Self::Variables>),
      Property(2, "LonMarkObjects", Of<&Self::Objects>),
      ClassRow<Class::Interface>(3),
      ParentRow(4),
      // Their options select properties; here they always mean all.
      Function(5, "UploadConfigProperties", Of<&Self::Upload>, 0, 1),
      Function(6, "DownloadConfigProperties", Of<&Self::Download>, 0, 1),
  };
  return kRows;
}

stored::LonMarkObject& LonMarkObject::Data() {
  auto* found = stored::FindByName(stored::DeviceOf(installation(), key_).objects, name_);
  if (!found) Fail(Code::ObjectDeleted, "The LonMark object \"" + name_ + "\" was deleted.");
  return *found;
}

void LonMarkObject::SetMode(const Value& value) {
  const int mode = WholeNumber(value, 0, kHighestMode);
  if (Data().mode_locked) Fail(Code::NotModifiable, "The mode of \"" + name_ + "\" cannot be changed.");
  if (Data().mode != mode) session().simulation().MarkChanged();
  Data().mode = mode;
}

void LonMarkObject::Request(const Value& value) {
  WholeNumber(value, 0, kHighestRequest);
  if (!Answers(session(), key_)) Fail(Code::NoCommunication, "The device does not answer.");
}

Value LonMarkObject::Variables() {
  Data();
  const auto names = [key = key_, object = name_](Collection& self) {
    return ObjectVariables(self.installation(), key, object);
  };
  return Make<Collection>(PartPlace("NetworkVariables"), Class::NetworkVariables, names, MakeVariable(key_));
}

Value LonMarkObject::Apps() {
  Data();
  // The collection keeps this object alive.
  const auto find = [this](stored::Installation& all) {
    const std::string& type = stored::DeviceOf(all, key_).template_name;
    AppLists lists{&Data().component_apps};
    if (auto* shared = stored::SharedApps(stored::TemplateOf(all, key_.network, type), Data()))
      lists.insert(lists.begin(), shared);
    return lists;
  };
  return Make<ComponentApps>(PartPlace("ComponentApps"), FindApps(find));
}

std::span<const MemberRow<LonMarkObject>> LonMarkObject::Members() {
  using Object = stored::LonMarkObject;
  using Self = LonMarkObject;
  static const Row kRows[] = {
      Stored<&Object::name>(0, "Name"),
      Stored<&Object::programmatic_name>(1, "ProgrammaticName"),
      Stored<&Object::index>(2, "Index"),
      Stored<&Object::type_index>(3, "TypeIndex"),
      Stored<&Object::mode>(4, "Mode").Set<&Self::SetMode>(),
      PutOnly(5, "Request", [](Self& self, const Value& value) { self.Request(value); }),
      Property(6, "NetworkVariables", Of<&Self::Variables>),
      Property(7, "ComponentApps", Of<&Self::Apps>),
      ClassRow<Class::LonMarkObject>(8),
      ParentRow(9),
  };
  return kRows;
}

}  // namespace simulator
