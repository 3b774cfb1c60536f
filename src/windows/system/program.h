#pragma once

#include <string_view>

#include "platform/program.h"

namespace windows {

/// The running program's string table, version resource and path, the user, and the time in the user's
/// format.
class WindowsProgram : public platform::Program {
 public:
  std::string StringResource(int number) const override;
  Version FileVersion() const override;
  std::string Directory() const override;
  std::string ExecutableName() const override;
  std::string TimeOfDay() const override;
  std::string Time() const override;
  std::string User() const override;
  /// Time() on the user's clock: "2026-11-23 11:15 +01:00".
  std::string LocalTime() const;
};

/// Shows why the program cannot continue; returns when the user closes the message. Uses no part of the
/// program that could have failed.
void ShowFatalFailure(std::string_view title, std::string_view reason);

/// The command line without the program, as UTF-8.
std::string CommandLineArguments();

}  // namespace windows
