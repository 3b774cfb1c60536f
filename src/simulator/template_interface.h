#pragma once

#include <string>

#include "simulator/object.h"
#include "simulator/template_objects.h"

/// What a device template knows of the devices of its type: variables without values, and LonMark objects
/// whose commands all those devices share. The objects keep the template object alive, which they refer to.
namespace simulator {

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

  /// 17096 if the object is gone, as for variables.
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
