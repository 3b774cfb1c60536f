#pragma once

#include <string_view>

#include "platform/program.h"

namespace windows {

/// The running executable: its string table, version resource and path, and the user's clock.
class WindowsProgram : public platform::Program {
 public:
  std::string StringResource(int number) const override;
  Version FileVersion() const override;
  std::string Directory() const override;
  std::string ExecutableName() const override;
  std::string TimeOfDay() const override;
};

/// Tells the user why the program cannot go on; returns when the message has been closed. Needs nothing of
/// the program that could have failed.
void ShowFatalFailure(std::string_view title, std::string_view reason);

/// The command line without the program, as UTF-8.
std::string CommandLineArguments();

}  // namespace windows
