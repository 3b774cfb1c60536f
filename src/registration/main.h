#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

#include "lns/object_model.h"
#include "registration/plug_in_registration.h"
#include "registration/registration_form.h"
#include "session/services.h"
#include "startup/command_line.h"

namespace registration {

/// What the program does when it is started by hand: registers or removes itself without a word, or opens the
/// registration window.
class MMain {
 public:
  struct Process {
    /// The object server of the process; throws where none can be had.
    std::function<lns::ObjectServer()> object_server;
    /// Closes what is open and ends the program.
    std::function<void()> end_plug_in;
    /// Registers the automation class from within this process; throws where that is refused.
    std::function<void()> register_class;
  };
  MMain(const session::Services& services, Process process)
      : services_(services), process_(std::move(process)) {}

  /// What a command line of a user who may not register ends with: the system's number of a denied access.
  static constexpr int kAccessDenied = 5;

  /// The exit code of the program when all is done; nothing when the registration window is open and the
  /// program goes on until it is closed. Failures end it quietly, but for a window that cannot be made: it
  /// throws then.
  std::optional<int> Main(std::string_view command_line);

  /// Modes 0 and 1 visit every network first, any other goes straight to the removal.
  void DeregisterPlugIn(std::int32_t mode, bool interactive);

  fRegisterPlugIn* window() { return window_.get(); }

 private:
  using Asked = startup::CommandLine;
  void OpenWindow(const Asked& asked, bool registers_class);

  const session::Services& services_;
  Process process_;
  std::unique_ptr<fRegisterPlugIn> window_;
};

}  // namespace registration
