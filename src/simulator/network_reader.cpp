#include <limits>
#include <set>

#include "simulator/errors.h"
#include "simulator/files.h"
#include "simulator/formats.h"
#include "simulator/journal.h"
#include "simulator/json_reader.h"
#include "simulator/thermostat.h"
#include "text/strings.h"

namespace simulator {
namespace {

using namespace stored;

constexpr int kMostInt = std::numeric_limits<int>::max();
constexpr int kMostBytes = 31;  // of a network variable

/// Reads a name that is unique among siblings and valid in an address.
template <class Items>
std::string Name(JsonReader& reader, const Items& earlier, std::string_view forbidden = "/") {
  const std::string name = reader.Text("name");
  if (name.empty()) reader.Refuse("name", "must not be empty");
  if (name.find_first_of(forbidden) != std::string::npos)
    reader.Refuse("name", "must not contain any of the characters " + std::string(forbidden));
  if (FindByName(earlier, name)) reader.Refuse("name", "\"" + name + "\" is already taken");
  return name;
}

std::string HexDigits(JsonReader& reader, std::string_view key, const std::string& otherwise,
                      std::size_t digits) {
  const std::string value = reader.Text(key, otherwise);
  const auto bytes = FromHex(value);
  if (!bytes || bytes->size() * 2 != digits)
    reader.Refuse(key, "expected " + std::to_string(digits) + " hexadecimal digits");
  return text::ToUpper(value);
}

Bytes HexValue(const std::string& value) {
  const auto bytes = FromHex(value);
  if (!bytes || bytes->empty() || bytes->size() > kMostBytes)
    throw FileError("expected 1 to 31 bytes, two hexadecimal digits each");
  return *bytes;
}

ComponentApps ReadApps(JsonReader& owner) {
  ComponentApps apps;
  owner.Each("componentApps", [&](JsonReader& reader) {
    ComponentApp app;
    app.name = Name(reader, apps, "");
    app.server = reader.Text("server");
    app.class_id = reader.Integer("classId", 0, kMostInt);
    app.command_id = reader.Integer("commandId", 0, 0, kMostInt);
    app.is_default = reader.Boolean("defaultApp", false);
    app.description = reader.Text("description", "");
    app.manufacturer_id = reader.Text("manufacturerId", "");
    app.version = reader.Text("version", "");
    apps.push_back(app);
  });
  return apps;
}

Variable ReadVariable(JsonReader& reader, const std::vector<Variable>& earlier) {
  Variable variable;
  variable.name = Name(reader, earlier, "/.,[]");
  variable.format = reader.Text("format");
  const auto format = Format::Find(variable.format);
  if (!format) reader.Refuse("format", "unknown format \"" + variable.format + "\"");
  const std::string direction = reader.Text("direction", "input");
  if (direction != "input" && direction != "output")
    reader.Refuse("direction", "expected \"input\" or \"output\"");
  variable.is_output = direction == "output";
  try {
    variable.value = HexValue(reader.Text("value"));
  } catch (const FileError& reason) {
    if (!reader.Has("value")) throw;
    reader.Refuse("value", reason.what());
  }
  if (!format->Fits(variable.value.size()))
    reader.Refuse("value",
                  std::to_string(variable.value.size()) + " bytes do not fit the format " + variable.format);
  return variable;
}

std::vector<LonMarkObject> ReadObjects(JsonReader& owner, const std::vector<Variable>& variables) {
  std::vector<LonMarkObject> objects;
  owner.Each("lonMarkObjects", [&](JsonReader& reader) {
    LonMarkObject object;
    object.name = Name(reader, objects);
    object.programmatic_name = reader.Text("programmaticName", object.name);
    object.index = reader.Integer("index", static_cast<int>(objects.size()), 0, kMostInt);
    object.type_index = reader.Integer("typeIndex", 0, 0, kMostInt);
    object.mode = reader.Integer("mode", 0, 0, 6);
    object.mode_locked = reader.Boolean("modeLocked", false);
    if (reader.Has("variables")) object.variables = reader.Texts("variables");
    for (const std::string& name : object.variables.value_or(std::vector<std::string>()))
      if (!FindByName(variables, name))
        reader.Refuse("variables", "the template has no variable \"" + name + "\"");
    object.component_apps = ReadApps(reader);
    objects.push_back(object);
  });
  return objects;
}

DeviceTemplate ReadTemplate(JsonReader& reader, const std::vector<DeviceTemplate>& earlier) {
  DeviceTemplate type;
  type.name = Name(reader, earlier);
  if (reader.Has("programId")) type.program_id = HexDigits(reader, "programId", "", 16);
  type.xif_path = reader.Text("xifPath", "");
  type.description = reader.Text("description", "");
  type.own_variables = reader.Has("variables");
  if (!type.own_variables) type.variables = BuiltInVariables(type);
  reader.Each("variables",
              [&](JsonReader& row) { type.variables.push_back(ReadVariable(row, type.variables)); });
  type.objects = reader.Has("lonMarkObjects") ? ReadObjects(reader, type.variables) : BuiltInObjects(type);
  type.component_apps = ReadApps(reader);
  return type;
}

/// Shared by the devices of one network while they are read.
struct DeviceContext {
  const System& system;
  std::set<int> handles;
  int next_handle = 1;
};

void ReadValues(JsonReader& reader, const DeviceTemplate& type, Device& device) {
  const auto find = [&](const std::string& name) -> const Variable& {
    if (const Variable* found = FindByName(type.variables, name)) return *found;
    throw FileError("the template has no variable \"" + name + "\"");
  };
  const auto read_values = [&](const char* key, std::map<std::string, Bytes>& values) {
    reader.EachText(key, [&](const std::string& name, const std::string& hex) {
      const Variable& variable = find(name);
      const Bytes bytes = HexValue(hex);
      if (bytes.size() != variable.value.size())
        throw FileError("expected " + std::to_string(variable.value.size()) + " bytes, found " +
                        std::to_string(bytes.size()));
      values[name] = bytes;
    });
  };
  read_values("values", device.values);
  read_values("database", device.database);
  const auto read_names = [&](std::string_view key) {
    std::vector<std::string> names = reader.Texts(key);
    try {
      for (const std::string& name : names) find(name);
    } catch (const FileError& reason) {
      reader.Refuse(key, reason.what());
    }
    return names;
  };
  device.missing = read_names("missing");
  device.refuses = read_names("refuses");
}

Device ReadDevice(JsonReader& reader, const NamedList<Device>& earlier, DeviceContext& context) {
  Device device;
  device.name = Name(reader, earlier);
  device.template_name = reader.Text("template");
  const DeviceTemplate* const type = FindByName(context.system.templates, device.template_name);
  if (!type) reader.Refuse("template", "unknown template \"" + device.template_name + "\"");
  while (context.handles.contains(context.next_handle)) ++context.next_handle;
  device.handle = reader.Integer("handle", context.next_handle, 1, 32767);
  if (!context.handles.insert(device.handle).second) reader.Refuse("handle", "is already taken");
  Bytes handle;
  AppendInteger(handle, device.handle, 2);
  device.neuron_id = HexDigits(reader, "neuronId", "00DE0000" + ToHex(handle), 12);
  device.program_id = HexDigits(reader, "programId", type->program_id, 16);
  device.state = reader.Integer("state", 4, 0, 255);
  device.attachment = reader.Integer("attachment", 0, 0, 2);
  device.commissioned = reader.Boolean("commissioned", true);
  device.commission_status = reader.Integer("commissionStatus", 0, 0, 2);
  device.configuration_state = reader.Integer("configurationState", 0, 0, 1);
  device.powered = reader.Boolean("powered", true);
  device.test_result = reader.Integer("testResult", 0, 0, 255);
  ReadValues(reader, *type, device);
  device.objects =
      reader.Has("lonMarkObjects") ? ReadObjects(reader, type->variables) : ObjectsOfDevices(*type);
  return device;
}

NamedList<Device> ReadDevices(JsonReader& owner, std::string_view key, DeviceContext& context) {
  NamedList<Device> devices;
  owner.Each(key, [&](JsonReader& reader) { devices.push_back(ReadDevice(reader, devices, context)); });
  return devices;
}

std::vector<Subsystem> ReadSubsystems(JsonReader& owner, DeviceContext& context, bool top_level) {
  std::vector<Subsystem> subsystems;
  owner.Each("subsystems", [&](JsonReader& reader) {
    Subsystem subsystem;
    subsystem.name = Name(reader, subsystems, "/.");
    if (top_level && (subsystem.name == kAllDevices || subsystem.name == kDiscovered))
      reader.Refuse("name", "\"" + subsystem.name + "\" always exists and cannot be listed");
    subsystem.devices = ReadDevices(reader, "devices", context);
    subsystem.subsystems = ReadSubsystems(reader, context, false);
    subsystems.push_back(std::move(subsystem));
  });
  return subsystems;
}

void CheckInterface(const JsonReader& reader, std::string_view key, const std::string& name,
                    const Installation& installation) {
  if (!FindByName(installation.interfaces, name)) reader.Refuse(key, "unknown interface \"" + name + "\"");
}

System ReadSystem(JsonReader& reader, const std::string& network, const Installation& installation) {
  System system;
  system.name = reader.Has("name") ? Name(reader, std::vector<Network>(), "/.") : network;
  system.interface = reader.Text("interface", "");
  if (!system.interface.empty()) CheckInterface(reader, "interface", system.interface, installation);
  system.opens_engineered = reader.Boolean("opensEngineered", true);
  system.opens_attached = reader.Boolean("opensAttached", true);
  system.locked_by = reader.Text("lockedBy", "");
  system.management_mode = reader.Integer("managementMode", 0, 0, 1);
  system.discovery_interval = reader.Integer("discoveryInterval", 180, 0, kMostInt);
  system.update_interval = reader.Integer("updateInterval", 120, 0, kMostInt);
  system.launch_server = reader.Boolean("launchServer", false);
  system.catalog_path = reader.Text("catalogPath", "");
  system.component_apps = ReadApps(reader);
  reader.Each("templates",
              [&](JsonReader& row) { system.templates.push_back(ReadTemplate(row, system.templates)); });
  DeviceContext context{system, {}};
  system.subsystems = ReadSubsystems(reader, context, true);
  system.discovered = ReadDevices(reader, "discovered", context);
  return system;
}

Network ReadNetwork(JsonReader& reader, const Installation& installation) {
  Network network;
  network.name = Name(reader, installation.networks, "/.");
  network.opens = reader.Boolean("opens", true);
  network.local = reader.Boolean("local", true);
  network.internet = reader.Boolean("internet", false);
  network.remote_interfaces = reader.Texts("remoteInterfaces");
  for (const std::string& name : network.remote_interfaces)
    CheckInterface(reader, "remoteInterfaces", name, installation);
  reader.Object("system",
                [&](JsonReader& row) { network.system = ReadSystem(row, network.name, installation); });
  return network;
}

Fault ReadFault(JsonReader& reader, Installation& installation) {
  Fault fault;
  fault.device = reader.Text("device", "");
  fault.item = reader.Text("item", "");
  fault.operation = reader.Text("operation", "any");
  fault.occurrence = reader.Integer("occurrence", 1, 0, kMostInt);
  if (reader.Boolean("vanish", false)) {
    if (reader.Has("code")) reader.Refuse("code", "cannot be given with \"vanish\"");
  } else {
    fault.code = reader.Integer("code", 1, 65535);
  }
  if (const auto mistake = MistakeOf(fault, installation)) reader.Refuse(mistake->key, mistake->reason);
  return fault;
}

Strictness ReadStrictness(JsonReader& reader) {
  Strictness strict = reader.Boolean("all", false) ? Strictness::All() : Strictness();
  for (const auto& [key, flag] : kStrictFlags) strict.*flag = reader.Boolean(key, strict.*flag);
  strict.demonstration = reader.Integer("demonstration", strict.demonstration, 0, 65535);
  strict.release = reader.Integer("release", strict.release, 100, Strictness::kNewest);
  for (const auto& [key, members] : kStrictMembers) {
    if (!reader.Has(key)) continue;
    const std::vector<std::string> names = reader.Texts(key);
    strict.*members = {names.begin(), names.end()};
  }
  return strict;
}

}  // namespace

stored::Installation ReadInstallation(std::string_view text, const std::string& file) {
  const JsonNode document = ParseJson(text, file);
  JsonReader reader(document, "", file);
  Installation installation;
  installation.auto_save = reader.Boolean("autoSave", true);
  reader.Each("interfaces", [&](JsonReader& row) {
    installation.interfaces.push_back({Name(row, installation.interfaces), row.Boolean("inUse", false)});
  });
  installation.component_apps = ReadApps(reader);
  if (!reader.Has("networks")) reader.Refuse("networks", "is required");
  reader.Each("networks",
              [&](JsonReader& row) { installation.networks.push_back(ReadNetwork(row, installation)); });
  if (reader.Has("latency"))
    reader.Object("latency", [&](JsonReader& row) {
      for (const auto& [kind, milliseconds] : kLatencies)
        installation.latency.*milliseconds = row.Integer(kind, 0, 0, Latency::kMost);
    });
  if (reader.Has("strict"))
    reader.Object("strict", [&](JsonReader& row) { installation.strict = ReadStrictness(row); });
  reader.Each("faults",
              [&](JsonReader& row) { installation.faults.push_back(ReadFault(row, installation)); });
  reader.Finish();
  return installation;
}

}  // namespace simulator
