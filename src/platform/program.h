#pragma once

#include <string>

namespace platform {

/// The running program: its file's resources, version and path, its clock and its user.
class Program {
 public:
  virtual ~Program() = default;

  /// A text of the string table; empty for an unknown number.
  virtual std::string StringResource(int number) const = 0;

  struct Version {
    int major = 0;
    int minor = 0;
    int revision = 0;
  };
  virtual Version FileVersion() const = 0;

  /// The program's folder, without a backslash at the end, and its file name without ".exe".
  virtual std::string Directory() const = 0;
  virtual std::string ExecutableName() const = 0;
  std::string Path() const { return Directory() + "\\" + ExecutableName() + ".exe"; }

  /// The time of day in the system's time format.
  virtual std::string TimeOfDay() const = 0;

  /// UTC: "2026-11-23T10:15:00Z".
  virtual std::string Time() const = 0;
  /// "user@computer"
  virtual std::string User() const = 0;
};

}  // namespace platform
