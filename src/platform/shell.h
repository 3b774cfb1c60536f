#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace platform {

/// A started program. It continues after this is destroyed.
class StartedProgram {
 public:
  virtual ~StartedProgram() = default;
  virtual bool Running() const = 0;
  /// It has ended with exit code 0.
  virtual bool Succeeded() const = 0;
};

/// Other programs on this computer: starts them and finds their top-level windows by title. Texts are UTF-8.
class Shell {
 public:
  virtual ~Shell() = default;

  enum class Show { MinimizedWithoutFocus, MinimizedWithFocus };
  /// Starts a program without waiting for it. `program` is a path, or a file name that the system looks up.
  /// It is quoted here; the arguments are passed unchanged. Throws an Error with the system's description if
  /// the program does not start.
  virtual std::unique_ptr<StartedProgram> Start(const std::string& program, const std::string& arguments,
                                                Show show) = 0;

  /// Starts a program with administrator rights, which the system asks the user for. False if the user
  /// declines; throws an Error if it does not start for another reason.
  virtual bool StartElevated(const std::string& program, const std::string& arguments) = 0;

  virtual bool WindowExists(const std::string& title) const = 0;
  /// Posts a close message to the window with that title, if it exists.
  virtual void CloseWindow(const std::string& title) = 0;

  /// Waits without processing messages.
  virtual void Pause(std::int32_t milliseconds) = 0;
};

}  // namespace platform
