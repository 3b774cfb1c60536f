#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace startup {

/// What a command line asks of a program that was started by hand.
struct CommandLine {
  enum class Role { RegisterPlugIn, DeregisterPlugIn, RegistrationWindow };
  Role role = Role::RegistrationWindow;
  /// The deregistration mode: -1 minimal, 0 complete, 1 exhaustive.
  std::int32_t deregistration_mode = -1;
  /// To be done by the registration window at once, with its messages: what the window asks of a second copy
  /// of the program that has an administrator's rights.
  bool in_window = false;
};

/// What comes before the other switches in that case.
inline constexpr std::string_view kInWindow = "/window ";

/// Takes the arguments as one text, trims it, ignores letter case and compares the whole of it: a switch with
/// anything more, an unknown mode or a second blank opens the registration window.
CommandLine ParseCommandLine(std::string_view arguments);

}  // namespace startup
