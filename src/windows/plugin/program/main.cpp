// QM5RFcPirConfigure.exe: the LNS plug-in, an out-of-process automation server with the configuration window.

#include <windows.h>

#include <cstdio>
#include <memory>

#include "log/log.h"
#include "platform/attempt.h"
#include "plugin/api.h"
#include "plugin/main_form.h"
#include "registry/registry.h"
#include "startup/identity.h"
#include "text/numbers.h"
#include "ui/progress.h"
#include "windows/com/local_server.h"
#include "windows/com/registration.h"
#include "windows/com/server_use.h"
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

/// Serves directors until the plug-in ends itself: the window and the last automation object decide, not the
/// count of clients. The apartment is left before the window's state goes: leaving it takes the automation
/// objects that directors still hold, and these tell the window. References to the object server are gone by
/// then.
int Serve(const startup::Identity& identity, const platform::Program& program) {
  session::Session session;
  windows::com::LocalServer* server = nullptr;
  bool ending = false;
  windows::WindowsDesktop::Settings settings;
  // Where directors still hold objects, the user has decided. Where the last one has just released its
  // object, another one that comes within a moment is served by this process.
  settings.end_program = [&] {
    ending = true;
    if (session.InstanceCount != 0)
      server->Quit();
    else if (windows::com::ServerUse::count() == 0)
      server->QuitUnlessUsed();
  };
  windows::WindowsDesktop desktop(std::move(settings));
  const windows::WindowsFiles files;
  windows::WindowsShell shell;
  windows::WindowsRegistry machine;
  registry::CRegistry registry(machine, identity.PlugInName);
  ui::Progress progress(desktop, program, identity.PlugInName);
  activity::fLog log(desktop, program);
  const plugin::Surroundings surroundings{
      desktop,  program, files,    shell, registry,
      identity, session, progress, log,   [&machine] { return windows::MakeObjectServer(machine); }};
  plugin::fMain main(surroundings);

  const windows::com::Apartment apartment;
  windows::com::ServedClass served{windows::plugin::PlugInClassId(),
                                   [&] {
                                     ending = false;
                                     return std::make_shared<plugin::LNSPlugInAPI>(surroundings, main);
                                   },
                                   windows::plugin::OpenPlugInDoor};
  windows::com::ServerLifetime lifetime;
  lifetime.on_last_object_released = [&] {
    if (ending) server->QuitUnlessUsed();
  };
  lifetime.idle_limit = windows::com::kIdleLimit;
  windows::com::LocalServer local_server(std::move(served), std::move(lifetime));
  server = &local_server;
  return desktop.Run();
}

int Run() {
  const windows::WindowsProgram program;
  const startup::Identity identity = startup::LoadIdentity(program);
  text::SetDecimalSeparator(windows::LocaleDecimalSeparator());
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
      return 0;
  }
  return 0;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
  try {
    return Run();
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s: %s\n", startup::kProgramTitle, failure.what());
    return 1;
  }
}
