#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "lns/object_model.h"
#include "registration/registration_form.h"
#include "session/services.h"
#include "startup/command_line.h"

namespace registration {

/// Sets a value outside the bounds to 1; returns the value.
std::int16_t ForceInRange(std::int16_t low, std::int16_t high, std::int16_t& value);

/// The user may register and deregister: write to the machine's classes and to the plug-in's key.
bool MayRegister(const session::Services& services);

/// A sentence that says whether the plug-in is registered on this computer, and in which version.
std::string RegisteredAs(const session::Services& services);

/// Creates the plug-in's entry in the catalogue of plug-ins: the COM class and a machine key with ten text
/// values. Skips failing steps, but an interactive run ends if the class is refused. Shows results only if
/// `interactive` is set.
///
/// `register_class` registers the class in this process and throws on refusal; if it is empty, a second copy
/// of the program does this.
///
/// Keeps a registered newer version, by major and minor number.
void RegisterPlugIn(const session::Services& services, bool interactive,
                    const std::function<void()>& register_class = {});

/// Removes both. Keeps the key if the COM removal does not start.
void UnregisterPlugIn(const session::Services& services, bool interactive);

/// The program's work if it is started by hand: registers or removes itself silently, or opens the
/// registration window.
class MMain {
 public:
  struct Process {
    /// The object server of the process; throws if none can be created.
    std::function<lns::ObjectServer()> object_server;
    /// Closes everything and ends the program.
    std::function<void()> end_plug_in;
    /// Registers the automation class in this process; throws on refusal.
    std::function<void()> register_class;
  };
  MMain(const session::Services& services, Process process)
      : services_(services), process_(std::move(process)) {}

  /// The exit code without the rights to register: the system's number for denied access.
  static constexpr int kAccessDenied = 5;

  /// The program's exit code, or nothing while the registration window is open; the program then runs until
  /// the user closes it. Failures are silent, but it throws if the window cannot be created.
  std::optional<int> Main(std::string_view command_line);

  /// Modes 0 and 1 visit every network first; any other only removes the plug-in from this computer.
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
