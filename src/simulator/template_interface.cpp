#include "simulator/template_interface.h"

#include "simulator/collection.h"
#include "simulator/component_apps.h"
#include "simulator/errors.h"

namespace simulator {
namespace {

template <class Item>
Collection::Names NamesOf(DeviceTemplate* type, std::vector<Item> model::DeviceTemplate::*items) {
  return [type, items](Collection&) {
    std::vector<std::string> names;
    for (const Item& item : type->Data().*items) names.push_back(item.name);
    return names;
  };
}

template <class Item>
Collection::MakeItem ItemsOf(DeviceTemplate* type, Collection::Names names) {
  return [type, names = std::move(names)](Collection& self, std::size_t index) {
    const std::string name = names(self)[index];
    return self.Make<Item>(Place{type->place().path + "/" + name, "", name}, type, name);
  };
}

[[noreturn]] Value RefuseValue() {
  Fail(Code::NoDevice, "A network variable of a device template has no value.");
}

}  // namespace

Value TemplateInterface::Variables() {
  const auto names = NamesOf(type_, &model::DeviceTemplate::variables);
  return Make<Collection>(PartPlace("NetworkVariables"), 23, names, ItemsOf<TemplateVariable>(type_, names));
}

Value TemplateInterface::Objects() {
  const auto names = NamesOf(type_, &model::DeviceTemplate::objects);
  return Make<Collection>(PartPlace("LonMarkObjects"), 29, names,
                          ItemsOf<TemplateLonMarkObject>(type_, names));
}

std::span<const MemberRow<TemplateInterface>> TemplateInterface::Members() {
  using Self = TemplateInterface;
  static const MemberRow<Self> kRows[] = {
      {0, "Name", [](Self&, Arguments) -> Value { return std::string(); }},
      {1, "NetworkVariables", [](Self& self, Arguments) { return self.Variables(); }},
      {2, "LonMarkObjects", [](Self& self, Arguments) { return self.Objects(); }},
      ClassRow<19>(3),
      ParentRow(4),
  };
  return kRows;
}

model::LonMarkObject& TemplateLonMarkObject::Data() {
  auto* found = model::FindByName(type_->Data().objects, name_);
  if (!found) Fail(Code::ObjectDeleted, "The LonMark object \"" + name_ + "\" was deleted.");
  return *found;
}

Value TemplateLonMarkObject::Variables() {
  const Collection::Names names = [this](Collection& self) {
    const auto& listed = Data().variables;
    return listed ? *listed : NamesOf(type_, &model::DeviceTemplate::variables)(self);
  };
  return Make<Collection>(PartPlace("NetworkVariables"), 23, names, ItemsOf<TemplateVariable>(type_, names));
}

Value TemplateLonMarkObject::Apps() {
  Data();
  return Make<ComponentApps>(PartPlace("ComponentApps"), FindApps([this](model::Installation&) {
                               return AppLists{&Data().component_apps};
                             }));
}

std::span<const MemberRow<TemplateLonMarkObject>> TemplateLonMarkObject::Members() {
  using Self = TemplateLonMarkObject;
  static const MemberRow<Self> kRows[] = {
      {0, "Name", [](Self& self, Arguments) -> Value { return self.Data().name; }},
      {1, "ProgrammaticName", [](Self& self, Arguments) -> Value { return self.Data().programmatic_name; }},
      {2, "Index", [](Self& self, Arguments) -> Value { return self.Data().index; }},
      {3, "TypeIndex", [](Self& self, Arguments) -> Value { return self.Data().type_index; }},
      {4, "Mode", [](Self& self, Arguments) -> Value { return self.Data().mode; }},
      {5, "NetworkVariables", [](Self& self, Arguments) { return self.Variables(); }},
      {6, "ComponentApps", [](Self& self, Arguments) { return self.Apps(); }},
      ClassRow<28>(7),
      ParentRow(8),
  };
  return kRows;
}

const model::Variable& TemplateVariable::Data() {
  const auto* found = model::FindByName(type_->Data().variables, name_);
  if (!found) Fail(Code::ObjectDeleted, "The network variable \"" + name_ + "\" was deleted.");
  return *found;
}

std::span<const MemberRow<TemplateVariable>> TemplateVariable::Members() {
  using Self = TemplateVariable;
  static const MemberRow<Self> kRows[] = {
      {0, "Name", [](Self& self, Arguments) -> Value { return self.Data().name; }},
      {1, "Value", [](Self&, Arguments) { return RefuseValue(); },
       [](Self&, const Value&) { RefuseValue(); }},
      {2, "DsFormatType", [](Self& self, Arguments) -> Value { return self.Data().format; }},
      {3, "Index",
       [](Self& self, Arguments) -> Value {
         return static_cast<std::int32_t>(&self.Data() - self.type_->Data().variables.data());
       }},
      {4, "Direction", [](Self& self, Arguments) -> Value { return self.Data().is_output ? 1 : 0; }},
      ClassRow<22>(5),
      ParentRow(6),
  };
  return kRows;
}

}  // namespace simulator
