#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "lns/object_model.h"

namespace registration {

/// The name of an object-model class in messages; "Custom ID = " and the code if it has none.
std::string ObjectTypeName(std::int16_t object_type);

/// The name of a command in messages; "Custom command " and the code if it has none.
std::string CommandName(std::int32_t command_id);

/// The two numbers that decide which version is newer; the revision does not matter.
struct Version {
  std::int16_t major = 0;
  std::int16_t minor = 0;
  auto operator<=>(const Version&) const = default;
};

/// Parses a text such as "1.0.0" or "2.5 beta". A part that is not a number counts as 0; a number beyond 16
/// bits becomes the nearest that fits.
Version SplitVersion(std::string_view text);

/// An object that has commands, as the activity log names it. Its name is read on demand, only once.
class Place {
 public:
  explicit Place(const lns::DeviceTemplate& device_template) : Place("Device Template", device_template) {}
  explicit Place(const lns::AppDevice& device) : Place("Application Device", device) {}
  explicit Place(const lns::System& system) : Place("System", system) {}
  /// The only one, without a name.
  explicit Place(const lns::ObjectServer&) : kind_("Object Server"), name_("") {}
  /// `owner`, a template or a device, must outlive this.
  Place(const lns::LonMarkObject& object, const Place& owner) : Place("LonMark Object", object) {
    owner_ = &owner;
  }

  /// "?" if it cannot be read.
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

/// "?" if it cannot be read.
std::string NameOf(const lns::Object& object);

}  // namespace registration
