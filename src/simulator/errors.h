#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace simulator {

/// The error codes of the simulated object server, without platform::kObjectServerErrorBase. NotOpen,
/// MustBeClosed, InUse, CannotOpen and InterfaceBusy are the simulator's own choice within the platform's
/// ranges.
enum class Code : std::uint16_t {
  InterfaceBusy = 16501,
  DuplicateName = 17003,
  NotOpen = 17004,
  MustBeClosed = 17005,
  NotFound = 17006,
  Internal = 17008,
  InUse = 17011,
  CannotOpen = 17012,
  NoDevice = 17038,
  OutOfRange = 17090,
  Paused = 17091,
  MustBePaused = 17094,
  ObjectDeleted = 17096,
  NotModifiable = 17119,
  WriteRefused = 18034,
  FormatFailed = 18035,
  NoCommunication = 18200,
};

/// Throws a platform::Error with the source "LNS Simulator".
[[noreturn]] void Fail(Code code, std::string description);
[[noreturn]] void FailWith(std::uint16_t code, std::string description);

/// A mistake in a network file; the text names file, line and field.
class FileError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace simulator
