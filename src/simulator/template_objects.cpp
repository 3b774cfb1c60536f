#include "simulator/template_objects.h"

#include <algorithm>

#include "simulator/collection.h"
#include "simulator/component_apps.h"
#include "simulator/errors.h"
#include "simulator/template_interface.h"
#include "simulator/thermostat.h"

namespace simulator {
namespace {

void CheckName(stored::System& system, const std::string& name) {
  if (name.empty()) Fail(Code::OutOfRange, "A device template needs a name.");
  if (name.find('/') != std::string::npos)
    Fail(Code::OutOfRange, "The name of a device template has no \"/\".");
  if (stored::FindByName(system.templates, name))
    Fail(Code::DuplicateName, "There is a device template named \"" + name + "\" already.");
}

}  // namespace

std::span<const MemberRow<TemplateLibrary>> TemplateLibrary::Members() {
  using Self = TemplateLibrary;
  static const Row kRows[] = {
      Property(1, "DeviceTemplates",
               [](Self& self) { return self.Make<DeviceTemplates>(self.PartPlace("DeviceTemplates")); }),
      ParentRow(2),
  };
  return kRows;
}

stored::Names DeviceTemplates::Names() { return stored::NamesOf(Network().system.templates); }

LateBoundPtr DeviceTemplates::Item(const std::string& name) {
  const std::string system = stored::PathOf(Network(), stored::Chain());
  return Make<DeviceTemplate>(Place{system + "/LcaDeviceTemplate:" + name, "", name}, name);
}

std::string DeviceTemplates::Add(Arguments arguments) {
  stored::DeviceTemplate type;
  type.name = automation::ToText(arguments[0]);
  CheckName(Network().system, type.name);
  Network().system.templates.push_back(type);
  return type.name;
}

void DeviceTemplates::Remove(const std::string& name) {
  auto& templates = Network().system.templates;
  const auto type = std::ranges::find(templates, name, &stored::DeviceTemplate::name);
  if (stored::IsUsed(Network(), *type))
    Fail(Code::InUse, "A device uses the device template \"" + name + "\".");
  templates.erase(type);
}

stored::DeviceTemplate& DeviceTemplate::Change() {
  session().simulation().MarkChanged();
  return Data();
}

void DeviceTemplate::SetName(const Value& value) {
  const std::string name = automation::ToText(value);
  stored::Network& network_data = stored::NetworkOf(installation(), network());
  stored::DeviceTemplate& type = Data();
  if (name == name_) return;
  CheckName(network_data.system, name);
  for (const stored::DeviceKey& key : stored::DeviceKeys(network_data, {stored::kAllDevices})) {
    stored::Device& device = stored::DeviceOf(installation(), key);
    if (device.template_name == name_) device.template_name = name;
  }
  type.name = name_ = name;
  Rename(name);
  session().simulation().MarkChanged();
}

Value DeviceTemplate::MainInterface() {
  Data();
  return Make<TemplateInterface>(PartPlace("Interface"), this);
}

Value DeviceTemplate::Apps() {
  Data();
  // The collection keeps this object alive.
  return Make<ComponentApps>(PartPlace("ComponentApps"), FindApps([this](stored::Installation&) {
                               return AppLists{&Data().component_apps};
                             }));
}

void DeviceTemplate::Import(const std::string& path) {
  const std::string id = ProgramIdOfImport(session().simulation().read_file, path);
  stored::Network& network_data = stored::NetworkOf(installation(), network());
  stored::DeviceTemplate& type = Data();
  for (const stored::DeviceTemplate& other : network_data.system.templates)
    if (&other != &type && other.program_id == id)
      Fail(Code::DuplicateName, "The device template \"" + other.name + "\" has the program ID " + id + ".");
  if (type.program_id != id) {
    if (stored::IsUsed(network_data, type))
      Fail(Code::InUse, "A device uses the device template \"" + name_ + "\" with another program ID.");
    type.program_id = id;
    type.own_variables = false;
    type.variables = BuiltInVariables(type);
    type.objects = BuiltInObjects(type);
  }
  type.xif_path = path;
  session().simulation().MarkChanged();
}

std::span<const MemberRow<DeviceTemplate>> DeviceTemplate::Members() {
  using Self = DeviceTemplate;
  static const Row kRows[] = {
      Property(
          0, "Name", [](Self& self) { return self.Data().name; },
          [](Self& self, const Value& value) { self.SetName(value); }),
      Stored<&stored::DeviceTemplate::program_id>(1, "ProgramId"),
      Setting<&stored::DeviceTemplate::xif_path>(2, "XifPath"),
      Property(3, "ComponentApps", Of<&Self::Apps>),
      ClassRow<Class::DeviceTemplate>(4),
      ParentRow(5),
      Setting<&stored::DeviceTemplate::description>(6, "Description"),
      Property(7, "Interface", Of<&Self::MainInterface>),
      Function(
          8, "Import", [](Self& self, Arguments path) { self.Import(automation::ToText(path[0])); }, 1),
  };
  return kRows;
}

}  // namespace simulator
