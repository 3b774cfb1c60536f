#pragma once

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "simulator/bytes.h"
#include "simulator/named_list.h"
#include "simulator/strictness.h"

/// The contents of a network file: plain values that the objects change in place and the file writer writes.
/// Names are unique among siblings. Objects find their data by name at each call, so a reload never leaves a
/// dangling reference.
namespace simulator::stored {

struct ComponentApp {
  std::string name;
  std::string server;
  int class_id = 0;
  int command_id = 0;
  bool is_default = false;
  std::string description;
  std::string manufacturer_id;
  std::string version;
  bool operator==(const ComponentApp&) const = default;
};
using ComponentApps = std::vector<ComponentApp>;

struct LonMarkObject {
  std::string name;
  std::string programmatic_name;
  int index = 0;
  int type_index = 0;
  int mode = 0;
  bool mode_locked = false;
  std::optional<std::vector<std::string>> variables;  // if missing, all of the device's
  ComponentApps component_apps;
  bool operator==(const LonMarkObject&) const = default;
};

struct Variable {
  std::string name;
  std::string format;
  bool is_output = false;
  Bytes value;
};

struct DeviceTemplate {
  std::string name;
  std::string program_id;  // empty until an interface file is imported
  std::string xif_path;
  std::string description;
  std::vector<Variable> variables;
  std::vector<LonMarkObject> objects;  // all devices of this type share their commands
  bool own_variables = false;          // listed in the file, not built in
  ComponentApps component_apps;
};

struct Device {
  std::string name;
  std::string template_name;
  int handle = 0;
  std::string neuron_id;
  std::string program_id;
  int state = 4;
  int attachment = 0;
  bool commissioned = true;
  int commission_status = 0;
  int configuration_state = 0;
  bool powered = true;
  int test_result = 0;
  std::map<std::string, Bytes> values;  // those that differ from the template's
  /// The network database's values that differ from the device's.
  std::map<std::string, Bytes> database;
  std::vector<std::string> missing;
  std::vector<std::string> refuses;
  std::vector<LonMarkObject> objects;  // with this device's own commands
};

struct Subsystem {
  std::string name;
  std::vector<Subsystem> subsystems;
  NamedList<Device> devices;
};

struct System {
  std::string name;
  std::string interface;  // empty in engineered mode
  bool opens_engineered = true;
  bool opens_attached = true;
  std::string locked_by;  // another client; empty for none
  int management_mode = 0;
  int discovery_interval = 180;
  int update_interval = 120;
  bool launch_server = false;
  std::string catalog_path;
  ComponentApps component_apps;
  std::vector<DeviceTemplate> templates;
  std::vector<Subsystem> subsystems;
  NamedList<Device> discovered;
};

struct Network {
  std::string name;
  bool opens = true;
  bool local = true;
  bool internet = false;
  std::vector<std::string> remote_interfaces;
  System system;
};

struct Interface {
  std::string name;
  bool in_use = false;
};

struct Latency {
  static constexpr int kMost = 600000;
  int any = 0;
  int read = 0;
  int write = 0;
  int open = 0;
  int test = 0;
};
inline constexpr std::pair<const char*, int Latency::*> kLatencies[] = {
    {"any", &Latency::any},   {"read", &Latency::read}, {"write", &Latency::write},
    {"open", &Latency::open}, {"test", &Latency::test},
};

/// A fault. Empty texts match everything; occurrence 0 means every time; code 0 makes the device vanish.
struct Fault {
  std::string device;
  std::string item;
  std::string operation;
  int occurrence = 1;
  int code = 0;
};

struct Installation {
  bool auto_save = true;
  std::vector<Interface> interfaces;
  ComponentApps component_apps;
  NamedList<Network> networks;
  Latency latency;
  Strictness strict;
  std::vector<Fault> faults;
};

inline constexpr const char* kAllDevices = "ALL";
inline constexpr const char* kDiscovered = "Discovered";

/// Names of nested subsystems from the top level down.
using Chain = std::vector<std::string>;

struct DeviceKey {
  std::string network;
  Chain chain;
  std::string name;
};

/// The item with that name, or null.
template <class Items>
auto* FindByName(Items& items, std::string_view name) {
  const auto found = std::ranges::find_if(items, [name](const auto& item) { return item.name == name; });
  return found != items.end() ? &*found : nullptr;
}

/// The names of the items, valid only while the items exist.
using Names = std::vector<std::string_view>;
template <class Items>
Names NamesOf(const Items& items) {
  Names names;
  for (const auto& item : items) names.push_back(item.name);
  return names;
}

/// Each throws 17096 (the object was deleted) if the installation no longer has it.
Network& NetworkOf(Installation& installation, const std::string& network);
std::vector<Subsystem>& SubsystemsOf(System& system, const Chain& chain);
NamedList<Device>& DevicesOf(System& system, const Chain& chain);
Device& DeviceOf(Installation& installation, const DeviceKey& key);
DeviceTemplate& TemplateOf(Installation& installation, const std::string& network, const std::string& name);

/// The devices of a subsystem in order; for the chain "ALL", of the network.
std::vector<DeviceKey> DeviceKeys(Network& network, const Chain& chain);
std::size_t DeviceCount(Network& network, const Chain& chain);
/// One of them, by its position from 0 or its name; nothing if there is none.
std::optional<DeviceKey> DeviceAt(Network& network, const Chain& chain, std::size_t place);
std::optional<DeviceKey> DeviceNamed(Network& network, const Chain& chain, std::string_view name);

/// The LonMark objects of a device that lists none: the template's, without their commands.
std::vector<LonMarkObject> ObjectsOfDevices(const DeviceTemplate& type);

/// The template's list of commands for a device's object, from the template's object with the same
/// programmatic name. Null if there is none.
ComponentApps* SharedApps(DeviceTemplate& type, const LonMarkObject& object);

/// A device of the network has that type.
bool IsUsed(Network& network, const DeviceTemplate& type);

/// The device's value.
const Bytes& ValueOf(const Device& device, const Variable& variable);

/// The template's variables except those that the device lacks, in the order of their indices.
Names VariableNames(const DeviceTemplate& type, const Device& device);

/// The platform's address of an object: network/system.subsystem.subsystem/device.
std::string PathOf(const Network& network, const Chain& chain);
std::string PathOf(const Network& network, const DeviceKey& key);

}  // namespace simulator::stored
