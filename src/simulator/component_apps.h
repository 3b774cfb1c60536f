#pragma once

#include <functional>
#include <string>
#include <vector>

#include "simulator/object.h"

namespace simulator {

/// The lists that make up the commands of an object. New commands go into the first list; a command hides
/// later ones of the same name.
using AppLists = std::vector<stored::ComponentApps*>;

/// Finds the command lists of an object; throws 17096 if the object was removed.
using FindApps = std::function<AppLists(stored::Installation&)>;

/// The plug-in commands of an object, with Add(name, server, classId) and Remove(name or ordinal).
class ComponentApps : public EditableCollection<ComponentApps> {
 public:
  static constexpr Class kClass = Class::ComponentApps;
  static constexpr std::size_t kAddArguments = 3;

  ComponentApps(Origin origin, FindApps find)
      : EditableCollection(std::move(origin)), find_(std::move(find)) {}

  stored::Names Names();
  LateBoundPtr Item(const std::string& name);
  std::string Add(Arguments arguments);
  void Remove(const std::string& name);

 private:
  FindApps find_;
};

class ComponentApp : public Simulated<ComponentApp> {
 public:
  ComponentApp(Origin origin, FindApps find, std::string name)
      : Simulated(std::move(origin)), find_(std::move(find)), name_(std::move(name)) {}

  static std::span<const MemberRow<ComponentApp>> Members();

  /// Throws 17096 if the command was removed.
  stored::ComponentApp& Data();

 private:
  void SetName(const Value& value);

  FindApps find_;
  std::string name_;
};

}  // namespace simulator
