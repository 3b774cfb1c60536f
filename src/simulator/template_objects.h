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
class DeviceTemplates : public Simulated<DeviceTemplates> {
 public:
  using Simulated::Simulated;
  static std::span<const MemberRow<DeviceTemplates>> Members();

 private:
  model::Network& Network() { return model::NetworkOf(installation(), network()); }
  std::vector<std::string> Names();
  Value Item(const std::string& name);
  Value Add(const Value& name);
  Value Remove(Arguments arguments);
};

class DeviceTemplate : public Simulated<DeviceTemplate> {
 public:
  DeviceTemplate(Origin origin, std::string name) : Simulated(std::move(origin)), name_(std::move(name)) {}
  static std::span<const MemberRow<DeviceTemplate>> Members();

  /// 17096 where the template was removed.
  model::DeviceTemplate& Data() { return model::TemplateOf(installation(), network(), name_); }

 private:
  model::DeviceTemplate& Change();
  void SetName(const Value& value);
  Value MainInterface();
  Value Apps();
  void Import(const std::string& path);
  std::string name_;
};

}  // namespace simulator
