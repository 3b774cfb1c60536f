// QM5RFcPirConfigure.exe: the LNS plug-in, an out-of-process automation server with the configuration window.

#include <windows.h>

#include <memory>
#include <optional>

#include "plugin/plug_in.h"
#include "registration/main.h"
#include "startup/command_line.h"
#include "startup/identity.h"
#include "windows/com/local_server.h"
#include "windows/com/registration.h"
#include "windows/plugin/plug_in_adapter.h"
#include "windows/system/files.h"
#include "windows/system/program.h"
#include "windows/system/registry.h"
#include "windows/system/shell.h"
#include "windows/ui/desktop.h"

namespace {

using windows::com::ServerStart;

windows::com::ServerRegistration RegistrationOf(const startup::Identity& identity) {
  windows::com::ServerRegistration registration;
  registration.class_id = windows::PlugInClassId();
  registration.prog_id = identity.PlugInProgID;
  registration.description = identity.PlugInName;
  registration.has_type_library = true;
  return registration;
}

struct WindowsComputer {
  explicit WindowsComputer(windows::WindowsDesktop::Settings settings = {}) : desktop(std::move(settings)) {}

  plugin::Computer Of(const platform::Program& program) {
    return {desktop, program, files, shell, registry, [this] { return windows::MakeObjectServer(registry); }};
  }

  windows::WindowsDesktop desktop;
  windows::WindowsFiles files;
  windows::WindowsShell shell;
  windows::WindowsRegistry registry;
};

/// Serves directors until the plug-in ends; docs/architecture.md describes the server's life. Leaves the
/// apartment before the window's state is destroyed: leaving it ends the automation objects that directors
/// still hold, and these use the window. References to the object server are released by then.
int Serve(const platform::Program& program) {
  std::optional<windows::com::LocalServer> server;
  windows::WindowsDesktop::Settings settings;
  settings.end_program = [&] {
    if (server) server->Leave();
  };
  WindowsComputer computer(std::move(settings));
  plugin::PlugIn plug_in(computer.Of(program));
  const windows::com::Apartment apartment;
  const auto make = [&] { return plug_in.CreateApi(); };
  server.emplace(
      windows::com::ServedClass{windows::PlugInClassId(), make, windows::MakePlugInAdapter},
      windows::com::ServerLifetime{.leaves_when_unused = false, .idle_limit = windows::com::kIdleLimit});
  const int exit_code = computer.desktop.Run();
  server.reset();
  return exit_code;
}

/// Registers or removes the plug-in, or lets the user do it.
int RunByHand(const platform::Program& program) {
  const windows::com::Apartment apartment;
  WindowsComputer computer;
  plugin::PlugIn plug_in(computer.Of(program));
  const auto register_class = [&] { windows::com::RegisterServer(RegistrationOf(plug_in.identity)); };
  registration::MMain main(plug_in.services, plug_in.ByHand(register_class));
  const std::optional<int> exit_code = main.Main(windows::CommandLineArguments());
  return exit_code ? *exit_code : computer.desktop.Run();
}

int Run() {
  const windows::WindowsProgram program;
  switch (windows::com::ServerStartOf(windows::CommandLineArguments())) {
    case ServerStart::Register:
      windows::com::RegisterServer(RegistrationOf(startup::LoadIdentity(program)));
      return 0;
    case ServerStart::Unregister:
      windows::com::UnregisterServer(RegistrationOf(startup::LoadIdentity(program)));
      return 0;
    case ServerStart::ByCom:
      return Serve(program);
    case ServerStart::ByHand:
      return RunByHand(program);
  }
  return 0;
}

/// The program's exit code. A program that COM starts, or that registers, shows no message: perhaps nobody
/// sees it, and its starter waits for its end. The director gets COM's error. A program started by hand shows
/// the reason.
int CannotRun(const std::exception& failure) {
  using Role = startup::CommandLine::Role;
  const std::string arguments = windows::CommandLineArguments();
  const auto* const refused = dynamic_cast<const platform::Error*>(&failure);
  if (windows::com::ServerStartOf(arguments) != ServerStart::ByHand)
    return refused && windows::com::IsAccessDenied(refused->number()) ? registration::MMain::kAccessDenied
                                                                      : 1;
  if (startup::ParseCommandLine(arguments).role != Role::RegistrationWindow) return 0;  // these always end
  windows::ShowFatalFailure(startup::kProgramTitle, failure.what());
  return 1;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
  try {
    return Run();
  } catch (const std::exception& failure) {
    return CannotRun(failure);
  }
}
