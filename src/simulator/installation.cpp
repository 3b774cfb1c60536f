#include "simulator/installation.h"

#include <algorithm>

#include "simulator/errors.h"

namespace simulator::stored {
namespace {

template <class T>
T& Required(T* found, const std::string& name) {
  if (!found) Fail(Code::ObjectDeleted, "The object \"" + name + "\" was deleted.");
  return *found;
}

void AddKeys(const std::string& network, const Chain& chain, const std::vector<Device>& devices,
             std::vector<DeviceKey>& keys) {
  for (const Device& device : devices) keys.push_back({network, chain, device.name});
}

void AddKeysBelow(const std::string& network, const Chain& chain, const std::vector<Subsystem>& subsystems,
                  std::vector<DeviceKey>& keys) {
  for (const Subsystem& subsystem : subsystems) {
    Chain below = chain;
    below.push_back(subsystem.name);
    AddKeys(network, below, subsystem.devices, keys);
    AddKeysBelow(network, below, subsystem.subsystems, keys);
  }
}

Subsystem& SubsystemOf(System& system, const Chain& chain) {
  std::vector<Subsystem>* level = &system.subsystems;
  Subsystem* found = nullptr;
  for (const std::string& name : chain) {
    found = &Required(FindByName(*level, name), name);
    level = &found->subsystems;
  }
  return *found;
}

}  // namespace

Network& NetworkOf(Installation& installation, const std::string& network) {
  auto& networks = installation.networks;
  const auto known = installation.network_places.find(network);
  if (known != installation.network_places.end() && known->second < networks.size() &&
      networks[known->second].name == network)
    return networks[known->second];
  Network& found = Required(FindByName(networks, network), network);
  installation.network_places[network] = static_cast<std::size_t>(&found - networks.data());
  return found;
}

std::vector<Subsystem>& SubsystemsOf(System& system, const Chain& chain) {
  return chain.empty() ? system.subsystems : SubsystemOf(system, chain).subsystems;
}

std::vector<Device>& DevicesOf(System& system, const Chain& chain) {
  return chain == Chain{kDiscovered} ? system.discovered : SubsystemOf(system, chain).devices;
}

Device& DeviceOf(Installation& installation, const DeviceKey& key) {
  System& system = NetworkOf(installation, key.network).system;
  return Required(FindByName(DevicesOf(system, key.chain), key.name), key.name);
}

DeviceTemplate& TemplateOf(Installation& installation, const std::string& network, const std::string& name) {
  return Required(FindByName(NetworkOf(installation, network).system.templates, name), name);
}

std::vector<DeviceKey> DeviceKeys(Network& network, const Chain& chain) {
  std::vector<DeviceKey> keys;
  if (chain == Chain{kAllDevices}) {
    AddKeysBelow(network.name, {}, network.system.subsystems, keys);
    AddKeys(network.name, {kDiscovered}, network.system.discovered, keys);
  } else {
    AddKeys(network.name, chain, DevicesOf(network.system, chain), keys);
  }
  return keys;
}

std::vector<LonMarkObject> ObjectsOfDevices(const DeviceTemplate& type) {
  std::vector<LonMarkObject> objects = type.objects;
  for (LonMarkObject& object : objects) object.component_apps.clear();
  return objects;
}

ComponentApps* SharedApps(DeviceTemplate& type, const LonMarkObject& object) {
  for (LonMarkObject& shared : type.objects)
    if (shared.programmatic_name == object.programmatic_name) return &shared.component_apps;
  return nullptr;
}

bool IsUsed(Network& network, const DeviceTemplate& type) {
  const auto keys = DeviceKeys(network, {kAllDevices});
  return std::any_of(keys.begin(), keys.end(), [&](const DeviceKey& key) {
    return FindByName(DevicesOf(network.system, key.chain), key.name)->template_name == type.name;
  });
}

const Bytes& ValueOf(const Device& device, const Variable& variable) {
  const auto own = device.values.find(variable.name);
  return own != device.values.end() ? own->second : variable.value;
}

Names VariableNames(const DeviceTemplate& type, const Device& device) {
  Names names;
  for (const Variable& variable : type.variables)
    if (std::find(device.missing.begin(), device.missing.end(), variable.name) == device.missing.end())
      names.push_back(variable.name);
  return names;
}

std::string PathOf(const Network& network, const Chain& chain) {
  std::string path = network.name + "/" + network.system.name;
  for (const std::string& name : chain) path += "." + name;
  return path;
}

std::string PathOf(const Network& network, const DeviceKey& key) {
  return PathOf(network, key.chain) + "/" + key.name;
}

}  // namespace simulator::stored
