#pragma once

#include "platform/shell.h"

namespace windows {

/// The other programs of the user's session. Works on any thread.
class WindowsShell : public platform::Shell {
 public:
  std::unique_ptr<platform::StartedProgram> Start(const std::string& program, const std::string& arguments,
                                                  Show show) override;
  bool StartElevated(const std::string& program, const std::string& arguments) override;
  bool WindowExists(const std::string& title) const override;
  void CloseWindow(const std::string& title) override;
  void Pause(std::int32_t milliseconds) override;
};

}  // namespace windows
