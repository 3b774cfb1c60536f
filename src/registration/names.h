#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "lns/object_model.h"

namespace registration {

/// What a class of the object model is called in messages; "Custom ID = " and the code for one without a
/// name.
std::string ObjectTypeName(std::int16_t object_type);

/// What a command is called in messages; "Custom command " and the code for one without a name.
std::string CommandName(std::int32_t command_id);

/// The two numbers of a version that decide which one is newer; a revision plays no part.
struct Version {
  std::int16_t major = 0;
  std::int16_t minor = 0;
  auto operator<=>(const Version&) const = default;
};

/// Takes the numbers from a text like "1.0.0" or "2.5 beta". What is no number counts as 0, one beyond 16
/// bits as the nearest that fits.
Version SplitVersion(std::string_view text);

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
