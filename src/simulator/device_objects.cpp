#include "simulator/device_objects.h"

#include <algorithm>

#include "simulator/app_devices.h"
#include "simulator/component_apps.h"
#include "simulator/errors.h"
#include "simulator/network_variable.h"
#include "simulator/template_objects.h"

namespace simulator {
namespace {

constexpr int kNoCommunication = 1;
constexpr int kOnline = 4;
constexpr int kSoftOffline = 12;
constexpr int kHighestMode = 6;
constexpr int kHighestRequest = 17;

/// The item of a collection of variables of the device.
LateBoundPtr MakeVariable(Collection& self, const model::DeviceKey& key, const std::string& name) {
  const std::string device = DevicePath(self.session(), key);
  return self.Make<NetworkVariable>(Place{device + "/" + name, device, name}, key, name);
}

std::vector<std::string> DeviceVariables(model::Installation& installation, const model::DeviceKey& key) {
  const model::Device& device = model::DeviceOf(installation, key);
  return model::VariableNames(model::TemplateOf(installation, key.network, device.template_name), device);
}

std::vector<std::string> ObjectVariables(model::Installation& installation, const model::DeviceKey& key,
                                         const std::string& object_name) {
  std::vector<std::string> names = DeviceVariables(installation, key);
  const auto* object = model::FindByName(model::DeviceOf(installation, key).objects, object_name);
  if (!object || !object->variables) return names;
  std::erase_if(names, [&](const std::string& name) {
    return std::find(object->variables->begin(), object->variables->end(), name) == object->variables->end();
  });
  return names;
}

}  // namespace

bool IsPredefined(const model::Chain& chain) {
  return chain == model::Chain{model::kAllDevices} || chain == model::Chain{model::kDiscovered};
}

std::string DevicePath(Session& session, const model::DeviceKey& key) {
  return model::PathOf(model::NetworkOf(session.installation(), key.network), key);
}

bool Answers(Session& session, const model::DeviceKey& key) {
  const model::Device& device = model::DeviceOf(session.installation(), key);
  return session.IsAttached(key.network) && device.powered && device.attachment == 0 &&
         !session.simulation().HasVanished(DevicePath(session, key));
}

Collection::Names SubsystemNames(const std::string& network, const model::Chain& chain) {
  return [network, chain](Collection& self) {
    std::vector<std::string> names;
    if (IsPredefined(chain)) return names;
    for (const auto& each : model::SubsystemsOf(model::NetworkOf(self.installation(), network).system, chain))
      names.push_back(each.name);
    if (chain.empty()) names.insert(names.end(), {model::kAllDevices, model::kDiscovered});
    return names;
  };
}

Collection::MakeItem MakeSubsystem(const std::string& network, const model::Chain& chain) {
  return [network, chain](Collection& self, std::size_t index) {
    model::Chain below = chain;
    below.push_back(SubsystemNames(network, chain)(self)[index]);
    const std::string path = model::PathOf(model::NetworkOf(self.installation(), network), below);
    return self.Make<Subsystem>(Place{path, "", below.back()}, below);
  };
}

Value Subsystem::Subsystems() {
  return Make<Collection>(PartPlace("Subsystems"), 6, SubsystemNames(network(), chain_),
                          MakeSubsystem(network(), chain_));
}

Value Subsystem::Devices() { return Make<AppDevices>(PartPlace("AppDevices"), chain_); }

std::span<const MemberRow<Subsystem>> Subsystem::Members() {
  using Self = Subsystem;
  static const MemberRow<Self> kRows[] = {
      {0, "Name", [](Self& self, Arguments) -> Value { return self.chain_.back(); }},
      {1, "Subsystems", [](Self& self, Arguments) { return self.Subsystems(); }},
      {2, "AppDevices", [](Self& self, Arguments) { return self.Devices(); }},
      ClassRow<5>(3),
      ParentRow(4),
  };
  return kRows;
}

Value AppDevice::Template() {
  const std::string name = Data().template_name;
  const std::string system = model::PathOf(model::NetworkOf(installation(), key_.network), model::Chain());
  return Make<DeviceTemplate>(Place{system + "/LcaDeviceTemplate:" + name, "", name}, name);
}

Value AppDevice::MainInterface() {
  Data();
  return Make<Interface>(PartPlace("Interface"), key_);
}

Value AppDevice::Subsystems() {
  Data();
  const auto names = [chain = key_.chain](Collection&) { return std::vector<std::string>{chain.back()}; };
  return Make<Collection>(
      PartPlace("Subsystems"), 6, names, [chain = key_.chain](Collection& self, std::size_t) {
        const std::string path = model::PathOf(model::NetworkOf(self.installation(), self.network()), chain);
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
  using Self = AppDevice;
  static const MemberRow<Self> kRows[] = {
      {0, "Name", [](Self& self, Arguments) -> Value { return self.Data().name; }},
      {1, "State", [](Self& self, Arguments) -> Value { return self.Data().state; },
       [](Self& self, const Value& value) { self.SetState(value); }},
      {2, "AttachmentStatus", [](Self& self, Arguments) -> Value { return self.Data().attachment; }, nullptr,
       nullptr, 0, 0, 300},
      {3, "CommissionStatus", [](Self& self, Arguments) -> Value { return self.Data().commission_status; }},
      {4, "HasBeenCommissioned", [](Self& self, Arguments) -> Value { return self.Data().commissioned; }},
      {5, "ConfigurationState",
       [](Self& self, Arguments) -> Value { return self.Data().configuration_state; }},
      {6, "NeuronId", [](Self& self, Arguments) -> Value { return self.Data().neuron_id; }},
      {7, "ProgramId", [](Self& self, Arguments) -> Value { return self.Data().program_id; }},
      {8, "Handle", [](Self& self, Arguments) -> Value { return self.Data().handle; }},
      {9, "DeviceTemplate", [](Self& self, Arguments) { return self.Template(); }},
      {10, "Interface", [](Self& self, Arguments) { return self.MainInterface(); }},
      {11, "Subsystems", [](Self& self, Arguments) { return self.Subsystems(); }},
      {12, "Test", nullptr, nullptr, [](Self& self, Arguments) { return self.Test(); }},
      ClassRow<7>(13),
      ParentRow(14),
  };
  return kRows;
}

Value Interface::Variables() {
  const std::string device = place().device;
  const auto names = [key = key_](Collection& self) { return DeviceVariables(self.installation(), key); };
  return Make<Collection>(Place{device + ":NetworkVariables", device, ""}, 23, names,
                          [names, key = key_](Collection& self, std::size_t index) {
                            return MakeVariable(self, key, names(self)[index]);
                          });
}

Value Interface::Objects() {
  const std::string device = place().device;
  const auto names = [key = key_](Collection& self) {
    std::vector<std::string> result;
    for (const auto& object : model::DeviceOf(self.installation(), key).objects)
      result.push_back(object.name);
    return result;
  };
  return Make<Collection>(
      Place{device + ":LonMarkObjects", device, ""}, 29, names,
      [names, key = key_, device](Collection& self, std::size_t index) {
        const std::string name = names(self)[index];
        return self.Make<LonMarkObject>(Place{device + "/" + name, device, name}, key, name);
      });
}

/// What the network database holds goes to the device.
Value Interface::Download() {
  model::Device& device = Answering();
  for (const auto& [name, bytes] : std::exchange(device.database, {})) device.values[name] = bytes;
  return {};
}

/// What the device holds goes to the network database.
Value Interface::Upload() {
  Answering().database.clear();
  return {};
}

model::Device& Interface::Answering() {
  if (!Answers(session(), key_))
    Fail(Code::NoCommunication, "The device \"" + key_.name + "\" does not answer.");
  session().simulation().MarkChanged();
  return model::DeviceOf(installation(), key_);
}

std::span<const MemberRow<Interface>> Interface::Members() {
  using Self = Interface;
  static const MemberRow<Self> kRows[] = {
      {0, "Name", [](Self&, Arguments) -> Value { return std::string(); }},
      {1, "NetworkVariables", [](Self& self, Arguments) { return self.Variables(); }},
      {2, "LonMarkObjects", [](Self& self, Arguments) { return self.Objects(); }},
      ClassRow<19>(3),
      ParentRow(4),
      // Their options choose which properties; here they mean all of them.
      {5, "UploadConfigProperties", nullptr, nullptr, [](Self& self, Arguments) { return self.Upload(); }, 0,
       1},
      {6, "DownloadConfigProperties", nullptr, nullptr, [](Self& self, Arguments) { return self.Download(); },
       0, 1},
  };
  return kRows;
}

model::LonMarkObject& LonMarkObject::Data() {
  auto* found = model::FindByName(model::DeviceOf(installation(), key_).objects, name_);
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
  return Make<Collection>(PartPlace("NetworkVariables"), 23, names,
                          [names, key = key_](Collection& self, std::size_t index) {
                            return MakeVariable(self, key, names(self)[index]);
                          });
}

Value LonMarkObject::Apps() {
  Data();
  // The collection keeps this object alive.
  const auto find = [this](model::Installation& all) {
    const std::string& type = model::DeviceOf(all, key_).template_name;
    AppLists lists{&Data().component_apps};
    if (auto* shared = model::SharedApps(model::TemplateOf(all, key_.network, type), Data()))
      lists.insert(lists.begin(), shared);
    return lists;
  };
  return Make<ComponentApps>(PartPlace("ComponentApps"), FindApps(find));
}

std::span<const MemberRow<LonMarkObject>> LonMarkObject::Members() {
  using Self = LonMarkObject;
  static const MemberRow<Self> kRows[] = {
      {0, "Name", [](Self& self, Arguments) -> Value { return self.Data().name; }},
      {1, "ProgrammaticName", [](Self& self, Arguments) -> Value { return self.Data().programmatic_name; }},
      {2, "Index", [](Self& self, Arguments) -> Value { return self.Data().index; }},
      {3, "TypeIndex", [](Self& self, Arguments) -> Value { return self.Data().type_index; }},
      {4, "Mode", [](Self& self, Arguments) -> Value { return self.Data().mode; },
       [](Self& self, const Value& value) { self.SetMode(value); }},
      {5, "Request", nullptr, [](Self& self, const Value& value) { self.Request(value); }},
      {6, "NetworkVariables", [](Self& self, Arguments) { return self.Variables(); }},
      {7, "ComponentApps", [](Self& self, Arguments) { return self.Apps(); }},
      ClassRow<28>(8),
      ParentRow(9),
  };
  return kRows;
}

}  // namespace simulator
