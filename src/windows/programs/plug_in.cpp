// QM5RFcPirConfigure.exe: the LNS plug-in, an out-of-process automation server with the configuration window.

#include <windows.h>

#include <memory>
#include <optional>

#include "log/log.h"
#include "platform/attempt.h"
#include "plugin/api.h"
#include "plugin/main_form.h"
#include "registration/main.h"
#include "registry/registry.h"
#include "startup/command_line.h"
#include "startup/identity.h"
#include "ui/progress.h"
#include "windows/com/local_server.h"
#include "windows/com/registration.h"
#include "windows/plugin/plug_in_door.h"
#include "windows/system/files.h"
#include "windows/system/object_server_source.h"
#include "windows/system/program.h"
#include "windows/system/registry.h"
#include "windows/system/shell.h"
#include "windows/ui/desktop.h"

namespace {

using windows::com::ServerStart;

windows::com::ServerRegistration RegistrationOf(const startup::Identity& identity) {
  windows::com::ServerRegistration registration;
  registration.class_id = windows::plugin::PlugInClassId();
  registration.prog_id = identity.PlugInProgID;
  registration.description = identity.PlugInName;
  registration.has_type_library = true;
  return registration;
}

/// Everything of the program but how it was started.
struct PlugIn {
  PlugIn(const startup::Identity& identity, const platform::Program& program,
         windows::WindowsDesktop::Settings settings)
      : desktop(std::move(settings)),
        registry(machine, identity.PlugInName),
        progress(desktop, program, identity.PlugInName),
        interface_files(desktop, files, shell, registry),
        log(desktop, program, files),
        surroundings{
            {desktop, program, shell, registry, identity, session, progress, interface_files, log, files},
            [this] { return windows::MakeObjectServer(machine); }},
        main(surroundings) {}

  session::Session session;
  windows::WindowsDesktop desktop;
  windows::WindowsFiles files;
  windows::WindowsShell shell;
  windows::WindowsRegistry machine;
  registry::CRegistry registry;
  ui::Progress progress;
  xif::InterfaceFiles interface_files;
  activity::fLog log;
  const plugin::Surroundings surroundings;
  plugin::fMain main;
};

/// Serves directors until the plug-in ends itself; docs/architecture.md has the life of the server. The
/// apartment is left before the window's state goes: leaving it takes the automation objects that directors
/// still hold, and these tell the window. References to the object server are gone by then.
int Serve(const startup::Identity& identity, const platform::Program& program) {
  std::optional<windows::com::LocalServer> server;
  windows::WindowsDesktop::Settings settings;
  settings.end_program = [&] {
    if (server) server->Leave();
  };
  PlugIn plug_in(identity, program, std::move(settings));
  const windows::com::Apartment apartment;
  const auto make = [&] {
    return std::make_shared<plugin::LNSPlugInAPI>(plug_in.surroundings, plug_in.main);
  };
  server.emplace(
      windows::com::ServedClass{windows::plugin::PlugInClassId(), make, windows::plugin::OpenPlugInDoor},
      windows::com::ServerLifetime{.leaves_when_unused = false, .idle_limit = windows::com::kIdleLimit});
  const int exit_code = plug_in.desktop.Run();
  server.reset();
  return exit_code;
}

/// Registers or removes the plug-in, or lets the user do it.
int RunByHand(const startup::Identity& identity, const platform::Program& program) {
  const windows::com::Apartment apartment;
  PlugIn plug_in(identity, program, {});
  registration::MMain::Process process;
  process.object_server = [&] { return plug_in.main.lcaOS(); };
  process.end_plug_in = [&] { plug_in.main.EndPlugIn(); };
  process.register_class = [&] { windows::com::RegisterServer(RegistrationOf(identity)); };
  registration::MMain main(plug_in.surroundings, std::move(process));
  const std::optional<int> exit_code = main.Main(windows::CommandLineArguments());
  return exit_code ? *exit_code : plug_in.desktop.Run();
}

int Run() {
  const windows::WindowsProgram program;
  const startup::Identity identity = startup::LoadIdentity(program);
  switch (windows::com::ServerStartOf(windows::CommandLineArguments())) {
    case ServerStart::Register:
      windows::com::RegisterServer(RegistrationOf(identity));
      return 0;
    case ServerStart::Unregister:
      windows::com::UnregisterServer(RegistrationOf(identity));
      return 0;
    case ServerStart::ByCom:
      return Serve(identity, program);
    case ServerStart::ByHand:
      return RunByHand(identity, program);
  }
  return 0;
}

/// The program's exit code. Nobody may sit before a program that COM has started or that registers, and
/// whoever has started it waits for its end: such a one shows no message. The director gets COM's error;
/// started by hand the program tells the reason.
int CannotRun(const std::exception& failure) {
  using Role = startup::CommandLine::Role;
  const std::string arguments = windows::CommandLineArguments();
  const auto* const refused = dynamic_cast<const platform::Error*>(&failure);
  if (windows::com::ServerStartOf(arguments) != ServerStart::ByHand)
    return refused && windows::com::IsAccessDenied(refused->number()) ? registration::MMain::kAccessDenied
                                                                      : 1;
  if (startup::ParseCommandLine(arguments).role != Role::RegistrationWindow) return 0;  // as these always end
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
