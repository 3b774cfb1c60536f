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

Subsystem& SubsystemOf(System& system, const Chain& chain) {
  std::vector<Subsystem>* level = &system.subsystems;
  Subsystem* found = nullptr;
  for (const std::string& name : chain) {
    found = &Required(FindByName(*level, name), name);
    level = &found->subsystems;
  }
  return *found;
}

/// Visits the lists of devices below a chain until a visit returns true, and returns whether one did.
template <class Visit>
bool VisitBelow(const Chain& chain, const std::vector<Subsystem>& subsystems, const Visit& visit) {
  for (const Subsystem& subsystem : subsystems) {
    Chain below = chain;
    below.push_back(subsystem.name);
    if (visit(below, subsystem.devices) || VisitBelow(below, subsystem.subsystems, visit)) return true;
  }
  return false;
}

/// The lists of devices that the chain stands for, likewise.
template <class Visit>
void VisitLists(Network& network, const Chain& chain, const Visit& visit) {
  if (chain != Chain{kAllDevices}) {
    visit(chain, DevicesOf(network.system, chain));
  } else if (!VisitBelow({}, network.system.subsystems, visit)) {
    visit({kDiscovered}, network.system.discovered);
  }
}

}  // namespace

Network& NetworkOf(Installation& installation, const std::string& network) {
  return Required(installation.networks.Find(network), network);
}

std::vector<Subsystem>& SubsystemsOf(System& system, const Chain& chain) {
  return chain.empty() ? system.subsystems : SubsystemOf(system, chain).subsystems;
}

NamedList<Device>& DevicesOf(System& system, const Chain& chain) {
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
  VisitLists(network, chain, [&](const Chain& at, const NamedList<Device>& devices) {
    for (const Device& device : devices) keys.push_back({network.name, at, device.name});
    return false;
  });
  return keys;
}

std::size_t DeviceCount(Network& network, const Chain& chain) {
  std::size_t count = 0;
  VisitLists(network, chain, [&](const Chain&, const NamedList<Device>& devices) {
    count += devices.size();
    return false;
  });
  return count;
}

std::optional<DeviceKey> DeviceAt(Network& network, const Chain& chain, std::size_t place) {
  std::optional<DeviceKey> found;
  VisitLists(network, chain, [&](const Chain& at, const NamedList<Device>& devices) {
    if (place < devices.size()) found = {network.name, at, devices[place].name};
    place -= std::min(place, devices.size());
    return found.has_value();
  });
  return found;
}

std::optional<DeviceKey> DeviceNamed(Network& network, const Chain& chain, std::string_view name) {
  std::optional<DeviceKey> found;
  VisitLists(network, chain, [&](const Chain& at, const NamedList<Device>& devices) {
    if (devices.Find(name)) found = {network.name, at, std::string(name)};
    return found.has_value();
  });
  return found;
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
