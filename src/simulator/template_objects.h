#pragma once

#include <string>

#include "simulator/object.h"

namespace simulator {

class TemplateLibrary : public Simulated<TemplateLibrary> {
 public:
  using Simulated::Simulated;
  static std::span<const MemberRow<TemplateLibrary>> Members();

 private:
  Value Templates();
};

class DeviceTemplate : public Simulated<DeviceTemplate> {
 public:
  DeviceTemplate(Origin origin, std::string name) : Simulated(std::move(origin)), name_(std::move(name)) {}
  static std::span<const MemberRow<DeviceTemplate>> Members();

 private:
  model::DeviceTemplate& Data() { return model::TemplateOf(installation(), network(), name_); }
  void SetXifPath(const Value& value);
  Value Apps();
  std::string name_;
};

}  // namespace simulator
