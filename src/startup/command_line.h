#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace startup {

/// What the command line asks for when the program is started by hand.
struct CommandLine {
  enum class Role { RegisterPlugIn, DeregisterPlugIn, RegistrationWindow };
  Role role = Role::RegistrationWindow;
  /// The deregistration mode: -1 minimal, 0 complete, 1 exhaustive.
  std::int32_t deregistration_mode = -1;
  /// The registration window does it at once and shows its messages. The window asks this of a second copy of
  /// the program that has an administrator's rights.
  bool in_window = false;
};

/// The switch before the others in that case.
inline constexpr std::string_view kInWindow = "/window ";

/// Trims the arguments and compares them as one text without letter case: a known switch with anything more,
/// an unknown mode or a second blank opens the registration window.
CommandLine ParseCommandLine(std::string_view arguments);

}  // namespace startup
