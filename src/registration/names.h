#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

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

}  // namespace registration
