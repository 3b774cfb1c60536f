#include "simulator/template_interface.h"

#include "simulator/collection.h"
#include "simulator/component_apps.h"
#include "simulator/errors.h"

namespace simulator {
namespace {

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
