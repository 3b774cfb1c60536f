#include <nlohmann/json.hpp>

#include "simulator/files.h"
#include "simulator/thermostat.h"

namespace simulator {
namespace {

using namespace stored;
using Json = nlohmann::ordered_json;

/// Writes a member unless it has the reader's default.
template <class T>
void Put(Json& json, const char* key, const T& value, const T& otherwise) {
  if (value != otherwise) json[key] = value;
}

void Put(Json& json, const char* key, const std::string& value) { Put(json, key, value, std::string()); }

template <class Items, class Write>
void PutList(Json& json, const char* key, const Items& items, Write write) {
  if (items.empty()) return;
  Json list = Json::array();
  for (const auto& item : items) list.push_back(write(item));
  json[key] = std::move(list);
}

Json WriteApp(const ComponentApp& app) {
  Json json = {{"name", app.name}, {"server", app.server}, {"classId", app.class_id}};
  Put(json, "commandId", app.command_id, 0);
  Put(json, "defaultApp", app.is_default, false);
  Put(json, "description", app.description);
  Put(json, "manufacturerId", app.manufacturer_id);
  Put(json, "version", app.version);
  return json;
}

Json WriteObject(const LonMarkObject& object) {
  Json json = {{"name", object.name}};
  Put(json, "programmaticName", object.programmatic_name, object.name);
  json["index"] = object.index;
  Put(json, "typeIndex", object.type_index, 0);
  Put(json, "mode", object.mode, 0);
  Put(json, "modeLocked", object.mode_locked, false);
  if (object.variables) json["variables"] = *object.variables;
  PutList(json, "componentApps", object.component_apps, WriteApp);
  return json;
}

/// Also writes an empty list if it is not the reader's default.
void PutObjects(Json& json, const std::vector<LonMarkObject>& objects,
                const std::vector<LonMarkObject>& otherwise) {
  if (objects == otherwise) return;
  json["lonMarkObjects"] = Json::array();
  PutList(json, "lonMarkObjects", objects, WriteObject);
}

Json WriteVariable(const Variable& variable) {
  Json json = {{"name", variable.name}, {"format", variable.format}};
  if (variable.is_output) json["direction"] = "output";
  json["value"] = ToHex(variable.value);
  return json;
}

Json WriteTemplate(const DeviceTemplate& type) {
  Json json = {{"name", type.name}};
  Put(json, "programId", type.program_id);
  Put(json, "xifPath", type.xif_path);
  Put(json, "description", type.description);
  if (type.own_variables) json["variables"] = Json::array();
  if (type.own_variables) PutList(json, "variables", type.variables, WriteVariable);
  PutObjects(json, type.objects, BuiltInObjects(type));
  PutList(json, "componentApps", type.component_apps, WriteApp);
  return json;
}

Json WriteDevice(const Device& device, const System& system) {
  const DeviceTemplate* const type = FindByName(system.templates, device.template_name);
  Json json = {{"name", device.name}, {"template", device.template_name}};
  json["handle"] = device.handle;
  json["neuronId"] = device.neuron_id;
  if (!type || device.program_id != type->program_id) json["programId"] = device.program_id;
  Put(json, "state", device.state, 4);
  Put(json, "attachment", device.attachment, 0);
  Put(json, "commissioned", device.commissioned, true);
  Put(json, "commissionStatus", device.commission_status, 0);
  Put(json, "configurationState", device.configuration_state, 0);
  Put(json, "powered", device.powered, true);
  Put(json, "testResult", device.test_result, 0);
  for (const auto& [name, bytes] : device.values) json["values"][name] = ToHex(bytes);
  for (const auto& [name, bytes] : device.database) json["database"][name] = ToHex(bytes);
  Put(json, "missing", device.missing, {});
  Put(json, "refuses", device.refuses, {});
  PutObjects(json, device.objects, type ? ObjectsOfDevices(*type) : std::vector<LonMarkObject>());
  return json;
}

void PutDevices(Json& json, const char* key, const NamedList<Device>& devices, const System& system) {
  for (const Device& device : devices) json[key].push_back(WriteDevice(device, system));
}

void PutSubsystems(Json& json, const std::vector<Subsystem>& subsystems, const System& system) {
  for (const Subsystem& subsystem : subsystems) {
    Json row = {{"name", subsystem.name}};
    PutDevices(row, "devices", subsystem.devices, system);
    PutSubsystems(row, subsystem.subsystems, system);
    json["subsystems"].push_back(std::move(row));
  }
}

Json WriteSystem(const System& system) {
  Json json = {{"name", system.name}};
  Put(json, "interface", system.interface);
  Put(json, "opensEngineered", system.opens_engineered, true);
  Put(json, "opensAttached", system.opens_attached, true);
  Put(json, "lockedBy", system.locked_by);
  Put(json, "managementMode", system.management_mode, 0);
  Put(json, "discoveryInterval", system.discovery_interval, 180);
  Put(json, "updateInterval", system.update_interval, 120);
  Put(json, "launchServer", system.launch_server, false);
  Put(json, "catalogPath", system.catalog_path);
  PutList(json, "componentApps", system.component_apps, WriteApp);
  PutList(json, "templates", system.templates, WriteTemplate);
  PutSubsystems(json, system.subsystems, system);
  PutDevices(json, "discovered", system.discovered, system);
  return json;
}

Json WriteNetwork(const Network& network) {
  Json json = {{"name", network.name}};
  Put(json, "opens", network.opens, true);
  Put(json, "local", network.local, true);
  Put(json, "internet", network.internet, false);
  Put(json, "remoteInterfaces", network.remote_interfaces, {});
  json["system"] = WriteSystem(network.system);
  return json;
}

Json WriteInterface(const Interface& interface) {
  Json json = {{"name", interface.name}};
  Put(json, "inUse", interface.in_use, false);
  return json;
}

Json WriteLatency(const Latency& latency) {
  Json json = Json::object();
  for (const auto& [kind, milliseconds] : kLatencies) Put(json, kind, latency.*milliseconds, 0);
  return json;
}

Json WriteStrictness(const Strictness& strict) {
  Json json = Json::object();
  for (const auto& [key, flag] : kStrictFlags) Put(json, key, strict.*flag, false);
  Put(json, "demonstration", strict.demonstration, 0);
  Put(json, "release", strict.release, Strictness::kNewest);
  for (const auto& [key, members] : kStrictMembers) Put(json, key, strict.*members, {});
  return json;
}

Json WriteFault(const Fault& fault) {
  Json json = Json::object();
  Put(json, "device", fault.device);
  Put(json, "item", fault.item);
  Put(json, "operation", fault.operation, std::string("any"));
  Put(json, "occurrence", fault.occurrence, 1);
  if (fault.code == 0) json["vanish"] = true;
  if (fault.code != 0) json["code"] = fault.code;
  return json;
}

}  // namespace

std::string WriteInstallation(const stored::Installation& installation) {
  Json json = Json::object();
  Put(json, "autoSave", installation.auto_save, true);
  PutList(json, "interfaces", installation.interfaces, WriteInterface);
  PutList(json, "componentApps", installation.component_apps, WriteApp);
  json["networks"] = Json::array();
  PutList(json, "networks", installation.networks, WriteNetwork);
  if (const Json latency = WriteLatency(installation.latency); !latency.empty()) json["latency"] = latency;
  if (const Json strict = WriteStrictness(installation.strict); !strict.empty()) json["strict"] = strict;
  PutList(json, "faults", installation.faults, WriteFault);
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace simulator
