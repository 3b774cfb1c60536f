#pragma once

#include <string>
#include <vector>

#include "simulator/object.h"

namespace simulator {

class TemplateLibrary : public Simulated<TemplateLibrary> {
 public:
  using Simulated::Simulated;
  static std::span<const MemberRow<TemplateLibrary>> Members();
};

/// The templates of a system, with Add(name) and Remove(name or ordinal).
class DeviceTemplates : public EditableCollection<DeviceTemplates> {
 public:
  static constexpr Class kClass = Class::DeviceTemplates;
  static constexpr std::size_t kAddArguments = 1;

  using EditableCollection::EditableCollection;

  stored::Names Names();
  LateBoundPtr Item(const std::string& name);
  std::string Add(Arguments arguments);
  void Remove(const std::string& name);

 private:
  stored::Network& Network() { return stored::NetworkOf(installation(), network()); }
};

class DeviceTemplate : public Simulated<DeviceTemplate> {
 public:
  DeviceTemplate(Origin origin, std::string name) : Simulated(std::move(origin)), name_(std::move(name)) {}
  static std::span<const MemberRow<DeviceTemplate>> Members();

  /// Throws 17096 if the template was removed.
  stored::DeviceTemplate& Data() { return stored::TemplateOf(installation(), network(), name_); }

 private:
  void SetName(const Value& value);
  Value MainInterface();
  Value Apps();
  void Import(const std::string& path);
  std::string name_;
};

/// The interface of a device type: variables without values, and LonMark objects whose commands all devices
/// of the type share. These objects keep the template object alive.
class TemplateInterface : public Simulated<TemplateInterface> {
 public:
  TemplateInterface(Origin origin, DeviceTemplate* type) : Simulated(std::move(origin)), type_(type) {}
  static std::span<const MemberRow<TemplateInterface>> Members();

 private:
  Value Variables();
  Value Objects();
  DeviceTemplate* type_;
};

class TemplateLonMarkObject : public Simulated<TemplateLonMarkObject> {
 public:
  TemplateLonMarkObject(Origin origin, DeviceTemplate* type, std::string name)
      : Simulated(std::move(origin)), type_(type), name_(std::move(name)) {}
  static std::span<const MemberRow<TemplateLonMarkObject>> Members();

  /// Throws 17096 if the object was removed.
  stored::LonMarkObject& Data();

 private:
  Value Variables();
  Value Apps();
  DeviceTemplate* type_;
  std::string name_;
};

class TemplateVariable : public Simulated<TemplateVariable> {
 public:
  TemplateVariable(Origin origin, DeviceTemplate* type, std::string name)
      : Simulated(std::move(origin)), type_(type), name_(std::move(name)) {}
  static std::span<const MemberRow<TemplateVariable>> Members();

  const stored::Variable& Data();

 private:
  DeviceTemplate* type_;
  std::string name_;
};

}  // namespace simulator
