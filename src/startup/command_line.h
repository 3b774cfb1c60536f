#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace startup {

/// The request in the command line of a program started by hand.
struct CommandLine {
  enum class Role { RegisterPlugIn, DeregisterPlugIn, RegistrationWindow };
  Role role = Role::RegistrationWindow;
  /// The deregistration mode: -1 minimal, 0 complete, 1 exhaustive.
  std::int32_t deregistration_mode = -1;
  /// The registration window acts at once and shows its messages. The window starts a second copy of the
  /// program with this, with administrator rights.
  bool in_window = false;
};

/// In that case the first switch.
inline constexpr std::string_view kInWindow = "/window ";

/// Trims the arguments and compares them as one text without letter case. A known switch followed by anything
/// else, an unknown mode or a second blank opens the registration window.
CommandLine ParseCommandLine(std::string_view arguments);

}  // namespace startup
