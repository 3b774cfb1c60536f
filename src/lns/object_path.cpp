#include "lns/object_path.h"

#include "platform/error.h"
#include "text/strings.h"

namespace lns {
namespace {

enum Component : std::size_t { kNetwork, kSystemAndSubsystems, kDevice, kLonMarkObject };

/// The name without its class prefix. Other prefixes are part of the name, as names may contain colons.
std::string WithoutPrefix(const std::string& component, std::string_view class_name) {
  const std::string prefix = "Lca" + std::string(class_name) + ":";
  const bool has_prefix = text::EqualIgnoringCase(component.substr(0, prefix.size()), prefix);
  return has_prefix ? component.substr(prefix.size()) : component;
}

/// The item with the name; nothing for an empty name.
template <class T>
T Find(const Collection<T>& collection, const std::string& name) {
  return name.empty() ? T{} : collection.Item(name);
}

Subsystem FindSubsystem(const System& system, const std::vector<std::string>& chain) {
  Subsystem subsystem = Find(system.Subsystems(), WithoutPrefix(chain[1], "Subsystem"));
  for (std::size_t level = 2; level < chain.size() && subsystem; ++level)
    subsystem = Find(subsystem.Subsystems(), WithoutPrefix(chain[level], "Subsystem"));
  return subsystem;
}

/// Nothing for a path that names another network or system.
Subsystem SubsystemOf(const std::vector<std::string>& components, const Network& network,
                      const System& system) {
  if (WithoutPrefix(components[kNetwork], "Network") != network.Name()) return {};
  const auto chain = text::Split(components[kSystemAndSubsystems], ".");
  if (chain.size() < 2 || WithoutPrefix(chain[0], "System") != system.Name()) return {};
  return FindSubsystem(system, chain);
}

AppDevice FindDevice(const std::vector<std::string>& components, const Network& network,
                     const System& system) {
  const Subsystem subsystem = SubsystemOf(components, network, system);
  if (!subsystem) return {};
  return Find(subsystem.AppDevices(), WithoutPrefix(components[kDevice], "AppDevice"));
}

}  // namespace

std::vector<std::string> SplitObjectPath(std::string_view path) { return text::Split(path, "/"); }

std::string DevicePath(std::string_view path) {
  std::vector<std::string> components = SplitObjectPath(path);
  components.resize(kDevice + 1);
  std::string systems;
  for (const std::string& name : text::Split(components[kSystemAndSubsystems], "."))
    systems += systems.empty() ? WithoutPrefix(name, "System") : '.' + WithoutPrefix(name, "Subsystem");
  return WithoutPrefix(components[kNetwork], "Network") + '/' + systems + '/' +
         WithoutPrefix(components[kDevice], "AppDevice");
}

Collection<AppDevice> DevicesBeside(std::string_view path, const Network& network, const System& system) {
  std::vector<std::string> components = SplitObjectPath(path);
  components.resize(kDevice + 1);
  const Subsystem subsystem = SubsystemOf(components, network, system);
  if (!subsystem)
    throw platform::Error(5, "lns",
                          "The open network has no subsystem " + components[kSystemAndSubsystems] + ".");
  return subsystem.AppDevices();
}

Object ResolveObject(std::int32_t object_type, const std::vector<std::string>& components,
                     const Network network, const System system) {
  const bool is_object = object_type == members::kClassLonMarkObject;
  const std::size_t wanted = is_object ? kLonMarkObject + 1 : kDevice + 1;
  if (components.size() != wanted || !network || !system) return {};
  return platform::ValueOr(Object(), [&]() -> Object {
    const AppDevice device = FindDevice(components, network, system);
    if (!is_object || !device) return device;
    return Find(device.Interface().LonMarkObjects(),
                WithoutPrefix(components[kLonMarkObject], "LonMarkObject"));
  });
}

}  // namespace lns
