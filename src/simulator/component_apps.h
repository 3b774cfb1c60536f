#pragma once

#include <functional>
#include <string>
#include <vector>

#include "simulator/object.h"

namespace simulator {

/// The lists that make up the commands of an object. What is added goes into the first one; of two commands
/// of one name only the first is seen.
using AppLists = std::vector<model::ComponentApps*>;

/// Finds the commands of the object they belong to; raises 17096 where that is gone.
using FindApps = std::function<AppLists(model::Installation&)>;

/// The plug-in commands of an object, with Add(name, server, classId) and Remove(name or ordinal).
class ComponentApps : public Simulated<ComponentApps> {
 public:
  ComponentApps(Origin origin, FindApps find) : Simulated(std::move(origin)), find_(std::move(find)) {}

  static std::span<const MemberRow<ComponentApps>> Members();

 private:
  std::vector<std::string> Names();
  Value Item(const std::string& name);
  Value Add(Arguments arguments);
  Value Remove(Arguments arguments);

  FindApps find_;
};

class ComponentApp : public Simulated<ComponentApp> {
 public:
  ComponentApp(Origin origin, FindApps find, std::string name)
      : Simulated(std::move(origin)), find_(std::move(find)), name_(std::move(name)) {}

  static std::span<const MemberRow<ComponentApp>> Members();

 private:
  model::ComponentApp& app();
  model::ComponentApp& Change();
  void SetName(const Value& value);

  FindApps find_;
  std::string name_;
};

}  // namespace simulator
