#pragma once

#include <optional>
#include <string>

#include "lns/object_model.h"

namespace registration {

/// An object that has commands, as the activity log calls it. Its name is read once, when it is asked for,
/// and need not be readable: nothing fails for want of a name.
class Place {
 public:
  explicit Place(const lns::DeviceTemplate& device_template) : Place("Device Template", device_template) {}
  explicit Place(const lns::AppDevice& device) : Place("Application Device", device) {}
  explicit Place(const lns::System& system) : Place("System", system) {}
  /// There is one only, which has no name.
  explicit Place(const lns::ObjectServer&) : kind_("Object Server"), name_("") {}
  /// The owner, a template or a device, outlives this.
  Place(const lns::LonMarkObject& object, const Place& owner) : Place("LonMark Object", object) {
    owner_ = &owner;
  }

  /// "?" where it cannot be read.
  const std::string& Name() const;
  /// "LonMark Object Node Object of Application Device Thermostat 101".
  std::string Text() const;

 private:
  Place(const char* kind, const lns::Object& object) : kind_(kind), object_(object) {}

  const char* kind_;
  lns::Object object_;
  const Place* owner_ = nullptr;
  mutable std::optional<std::string> name_;
};

/// "?" where it cannot be read.
std::string NameOf(const lns::Object& object);

}  // namespace registration
