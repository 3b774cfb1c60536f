#include "simulator/template_objects.h"

#include <algorithm>

#include "simulator/component_apps.h"
#include "simulator/errors.h"
#include "simulator/thermostat.h"

namespace simulator {
namespace {

void CheckName(stored::System& system, const std::string& name) {
  if (name.empty()) Fail(Code::OutOfRange, "A device template needs a name.");
  if (name.find('/') != std::string::npos)
    Fail(Code::OutOfRange, "The name of a device template must not contain \"/\".");
  if (stored::FindByName(system.templates, name))
    Fail(Code::DuplicateName, "A device template named \"" + name + "\" already exists.");
}

template <class Item>
Collection::NameItems NamesOf(DeviceTemplate* type, std::vector<Item> stored::DeviceTemplate::*items) {
  return [type, items](Collection&) { return stored::NamesOf(type->Data().*items); };
}

template <class Item>
Collection::MakeItem ItemsOf(DeviceTemplate* type) {
  return [type](Collection& self, const std::string& name) {
    return self.Make<Item>(Place{type->place().path + "/" + name, "", name}, type, name);
  };
}

[[noreturn]] Value RefuseValue() {
  Fail(Code::NoDevice, "A network variable of a device template has no value.");
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
      Stored<&stored::DeviceTemplate::name>(0, "Name").Set<&Self::SetName>(),
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

Value TemplateInterface::Variables() {
  const auto names = NamesOf(type_, &stored::DeviceTemplate::variables);
  return Make<Collection>(PartPlace("NetworkVariables"), Class::NetworkVariables, names,
                          ItemsOf<TemplateVariable>(type_));
}

Value TemplateInterface::Objects() {
  const auto names = NamesOf(type_, &stored::DeviceTemplate::objects);
  return Make<Collection>(PartPlace("LonMarkObjects"), Class::LonMarkObjects, names,
                          ItemsOf<TemplateLonMarkObject>(type_));
}

std::span<const MemberRow<TemplateInterface>> TemplateInterface::Members() {
  using Self = TemplateInterface;
  static const Row kRows[] = {
      Property(0, "Name", [](Self&) { return std::string(); }),
      Property(1, "NetworkVariables", Of<&Self::Variables>),
      Property(2, "LonMarkObjects", Of<&Self::Objects>),
      ClassRow<Class::Interface>(3),
      ParentRow(4),
  };
  return kRows;
}

stored::LonMarkObject& TemplateLonMarkObject::Data() {
  auto* found = stored::FindByName(type_->Data().objects, name_);
  if (!found) Fail(Code::ObjectDeleted, "The LonMark object \"" + name_ + "\" was deleted.");
  return *found;
}

Value TemplateLonMarkObject::Variables() {
  const Collection::NameItems names = [this](Collection& self) {
    const auto& listed = Data().variables;
    return listed ? stored::Names(listed->begin(), listed->end())
                  : NamesOf(type_, &stored::DeviceTemplate::variables)(self);
  };
  return Make<Collection>(PartPlace("NetworkVariables"), Class::NetworkVariables, names,
                          ItemsOf<TemplateVariable>(type_));
}

Value TemplateLonMarkObject::Apps() {
  Data();
  return Make<ComponentApps>(PartPlace("ComponentApps"), FindApps([this](stored::Installation&) {
                               return AppLists{&Data().component_apps};
                             }));
}

std::span<const MemberRow<TemplateLonMarkObject>> TemplateLonMarkObject::Members() {
  using Object = stored::LonMarkObject;
  using Self = TemplateLonMarkObject;
  static const Row kRows[] = {
      Stored<&Object::name>(0, "Name"),
      Stored<&Object::programmatic_name>(1, "ProgrammaticName"),
      Stored<&Object::index>(2, "Index"),
      Stored<&Object::type_index>(3, "TypeIndex"),
      Stored<&Object::mode>(4, "Mode"),
      Property(5, "NetworkVariables", Of<&Self::Variables>),
      Property(6, "ComponentApps", Of<&Self::Apps>),
      ClassRow<Class::LonMarkObject>(7),
      ParentRow(8),
  };
  return kRows;
}

const stored::Variable& TemplateVariable::Data() {
  const auto* found = stored::FindByName(type_->Data().variables, name_);
  if (!found) Fail(Code::ObjectDeleted, "The network variable \"" + name_ + "\" was deleted.");
  return *found;
}

std::span<const MemberRow<TemplateVariable>> TemplateVariable::Members() {
  using Self = TemplateVariable;
  static const Row kRows[] = {
      Stored<&stored::Variable::name>(0, "Name"),
      Property(
          1, "Value", [](Self&) { return RefuseValue(); }, [](Self&, const Value&) { RefuseValue(); }),
      Stored<&stored::Variable::format>(2, "DsFormatType"),
      Property(3, "Index",
               [](Self& self) {
                 return static_cast<std::int32_t>(&self.Data() - self.type_->Data().variables.data());
               }),
      Property(4, "Direction", [](Self& self) { return self.Data().is_output ? 1 : 0; }),
      ClassRow<Class::NetworkVariable>(5),
      ParentRow(6),
  };
  return kRows;
}

}  // namespace simulator
