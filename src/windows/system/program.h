#pragma once

#include "platform/program.h"

namespace windows {

/// The running executable: its string table, version resource and path, and the user's clock and locale.
class WindowsProgram : public platform::Program {
 public:
  std::string StringResource(int number) const override;
  Version FileVersion() const override;
  std::string Directory() const override;
  std::string ExecutableName() const override;
  std::string TimeOfDay() const override;
};

/// The decimal separator of the user's locale; "." where the locale's is longer than one ASCII character.
char LocaleDecimalSeparator();

/// The command line without the program, as UTF-8.
std::string CommandLineArguments();

}  // namespace windows
