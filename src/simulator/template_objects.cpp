#include "simulator/template_objects.h"

#include "simulator/collection.h"
#include "simulator/component_apps.h"
#include "simulator/errors.h"
#include "simulator/template_interface.h"
#include "simulator/thermostat.h"

namespace simulator {
namespace {

void CheckName(model::System& system, const std::string& name) {
  if (name.empty()) Fail(Code::OutOfRange, "A device template needs a name.");
  if (name.find('/') != std::string::npos)
    Fail(Code::OutOfRange, "The name of a device template has no \"/\".");
  if (model::FindByName(system.templates, name))
    Fail(Code::DuplicateName, "There is a device template named \"" + name + "\" already.");
}

}  // namespace

std::span<const MemberRow<TemplateLibrary>> TemplateLibrary::Members() {
  using Self = TemplateLibrary;
  static const MemberRow<Self> kRows[] = {
      {1, "DeviceTemplates",
       [](Self& self, Arguments) -> Value {
         return self.Make<DeviceTemplates>(self.PartPlace("DeviceTemplates"));
       }},
      ParentRow(2),
  };
  return kRows;
}

std::vector<std::string> DeviceTemplates::Names() {
  std::vector<std::string> names;
  for (const auto& type : Network().system.templates) names.push_back(type.name);
  return names;
}

Value DeviceTemplates::Item(const std::string& name) {
  const std::string system = model::PathOf(Network(), model::Chain());
  return Make<DeviceTemplate>(Place{system + "/LcaDeviceTemplate:" + name, "", name}, name);
}

Value DeviceTemplates::Add(const Value& name) {
  model::DeviceTemplate type;
  type.name = automation::ToText(name);
  CheckName(Network().system, type.name);
  Network().system.templates.push_back(type);
  session().simulation().MarkChanged();
  return Item(type.name);
}

Value DeviceTemplates::Remove(Arguments arguments) {
  auto& templates = Network().system.templates;
  const auto type = templates.begin() + static_cast<std::ptrdiff_t>(FindItem(Names(), arguments));
  if (model::IsUsed(Network(), *type))
    Fail(Code::InUse, "A device uses the device template \"" + type->name + "\".");
  templates.erase(type);
  session().simulation().MarkChanged();
  return {};
}

std::span<const MemberRow<DeviceTemplates>> DeviceTemplates::Members() {
  using Self = DeviceTemplates;
  static const MemberRow<Self> kRows[] = {
      {0, "Item",
       [](Self& self, Arguments arguments) -> Value {
         const auto names = self.Names();
         return self.Item(names[FindItem(names, arguments)]);
       },
       nullptr, nullptr, 1},
      {1, "Count",
       [](Self& self, Arguments) -> Value { return static_cast<std::int32_t>(self.Names().size()); }},
      ClassRow<37>(2),
      ParentRow(3),
      {4, "Add", nullptr, nullptr, [](Self& self, Arguments arguments) { return self.Add(arguments[0]); }, 1},
      {5, "Remove", nullptr, nullptr, [](Self& self, Arguments arguments) { return self.Remove(arguments); },
       1},
  };
  return kRows;
}

model::DeviceTemplate& DeviceTemplate::Change() {
  session().simulation().MarkChanged();
  return Data();
}

void DeviceTemplate::SetName(const Value& value) {
  const std::string name = automation::ToText(value);
  model::Network& network_data = model::NetworkOf(installation(), network());
  model::DeviceTemplate& type = Data();
  if (name == name_) return;
  CheckName(network_data.system, name);
  for (const model::DeviceKey& key : model::DeviceKeys(network_data, {model::kAllDevices})) {
    model::Device& device = model::DeviceOf(installation(), key);
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
  return Make<ComponentApps>(PartPlace("ComponentApps"), FindApps([this](model::Installation&) {
                               return AppLists{&Data().component_apps};
                             }));
}

void DeviceTemplate::Import(const std::string& path) {
  const std::string id = ProgramIdOfImport(session().simulation().read_file, path);
  model::Network& network_data = model::NetworkOf(installation(), network());
  model::DeviceTemplate& type = Data();
  for (const model::DeviceTemplate& other : network_data.system.templates)
    if (&other != &type && other.program_id == id)
      Fail(Code::DuplicateName, "The device template \"" + other.name + "\" has the program ID " + id + ".");
  if (type.program_id != id) {
    if (model::IsUsed(network_data, type))
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
  static const MemberRow<Self> kRows[] = {
      {0, "Name", [](Self& self, Arguments) -> Value { return self.Data().name; },
       [](Self& self, const Value& value) { self.SetName(value); }},
      {1, "ProgramId", [](Self& self, Arguments) -> Value { return self.Data().program_id; }},
      {2, "XifPath", [](Self& self, Arguments) -> Value { return self.Data().xif_path; },
       [](Self& self, const Value& value) { self.Change().xif_path = automation::ToText(value); }},
      {3, "ComponentApps", [](Self& self, Arguments) { return self.Apps(); }},
      ClassRow<36>(4),
      ParentRow(5),
      {6, "Description", [](Self& self, Arguments) -> Value { return self.Data().description; },
       [](Self& self, const Value& value) { self.Change().description = automation::ToText(value); }},
      {7, "Interface", [](Self& self, Arguments) { return self.MainInterface(); }},
      {8, "Import", nullptr, nullptr,
       [](Self& self, Arguments arguments) -> Value {
         return self.Import(automation::ToText(arguments[0])), Value();
       },
       1},
  };
  return kRows;
}

}  // namespace simulator
