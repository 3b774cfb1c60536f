// director.exe: a small command-line network tool.

#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <iostream>
#include <string>
#include <vector>

#include "director/command_line.h"
#include "director/configure.h"
#include "director/networks.h"
#include "director/simulator_knobs.h"
#include "platform/error.h"
#include "session/session.h"
#include "windows/com/dispatch_object.h"
#include "windows/com/local_server.h"
#include "windows/com/wide_text.h"
#include "windows/director/remote_window.h"
#include "windows/director/screen_reader.h"
#include "windows/system/program.h"
#include "windows/system/registry.h"

namespace {

using director::Command;
using director::Options;

/// Exit codes for scripts: 0 done, 1 wrong command line, 2 failure, 3 the plug-in could not read the device.
constexpr int kFailed = 2;
constexpr int kNotRead = 3;

platform::LateBoundPtr ObjectServer() {
  windows::WindowsRegistry registry;
  return windows::MakeObjectServer(registry);
}

void WaitUntilClosed(platform::LateBound& plug_in) {
  constexpr DWORD kPollMilliseconds = 250;
  while (director::IsShown(plug_in)) Sleep(kPollMilliseconds);
}

int RunConfigure(const Options& options) {
  const platform::LateBoundPtr plug_in = windows::com::CreateObject(options.plug_in);
  windows::com::AllowForeground(*plug_in);
  bool read = true;
  {
    const windows::BoxWatch boxes(options.answer);
    try {
      director::Configure(*plug_in, options.configure);
    } catch (const platform::Error&) {
      lns::ObjectServer(ObjectServer()).IsOpen();  // throws the reason if it is unusable
      throw;
    }
    read = !boxes.SawFailure();
  }
  if (!read) std::cerr << "director: the plug-in did not read the device " << options.configure.path << '\n';
  if (options.wait) WaitUntilClosed(*plug_in);
  return read ? 0 : kNotRead;
}

/// "Demo Tower/Demo Tower<tab>QM5RFcPirConfigure.LNSPlugInAPI<tab>registered<tab>1.0.0"
director::Registration PrintRegistration(const Options& options) {
  const auto registration =
      director::RegistrationOf(lns::ObjectServer(ObjectServer()), options.network, options.plug_in);
  std::cout << registration.system << '\t' << options.plug_in << '\t'
            << (registration.version ? "registered\t" + *registration.version : "not registered") << '\n';
  return registration;
}

int RunRegistration(const Options& options, std::int32_t command) {
  const platform::LateBoundPtr plug_in = windows::com::CreateObject(options.plug_in);
  windows::com::AllowForeground(*plug_in);  // it may ask questions
  const std::string& interface_name = options.configure.interface_name;
  // A remote session's system cannot be read from here.
  const bool local = interface_name.empty();
  const std::string system = local ? PrintRegistration(options).system : options.network;
  {
    const windows::BoxWatch boxes(options.answer);
    director::SendToSystem(*plug_in, command, options.network, interface_name, system);
  }
  if (local) PrintRegistration(options);
  return 0;
}

int RunInterface(const Options& options) {
  const lns::ObjectServer server(ObjectServer());
  if (options.interface_name) director::SetInterface(server, options.network, *options.interface_name);
  const std::string name = director::InterfaceOf(server, options.network);
  std::cout << options.network << '\t' << (name.empty() ? "(none)" : name) << '\n';
  return 0;
}

int RunLatency(const Options& options) {
  director::SimulatorKnobs knobs(ObjectServer());
  if (options.latency_milliseconds) knobs.SetLatency(options.latency_kind, *options.latency_milliseconds);
  std::cout << options.latency_kind << '\t' << knobs.Latency(options.latency_kind) << " ms\n";
  return 0;
}

int RunJournal(const Options& options) {
  director::SimulatorKnobs knobs(ObjectServer());
  std::cout << knobs.Journal();
  if (options.clear) knobs.ClearJournal();
  return 0;
}

int NeedsWindow(bool shown) {
  if (!shown) std::cerr << "director: the plug-in shows no window\n";
  return shown ? 0 : kFailed;
}

std::string VersionText() {
  const auto version = windows::WindowsProgram().FileVersion();
  return std::to_string(version.major) + '.' + std::to_string(version.minor) + '.' +
         std::to_string(version.revision);
}

int Run(const Options& options) {
  const auto knobs = [] { return director::SimulatorKnobs(ObjectServer()); };
  switch (options.command) {
    case Command::Networks:
      return director::PrintNetworks(lns::ObjectServer(ObjectServer()), std::cout), 0;
    case Command::Devices:
      return director::PrintDevices(lns::ObjectServer(ObjectServer()), options.network, std::cout), 0;
    case Command::Show:
      return director::PrintDevice(lns::ObjectServer(ObjectServer()), options.path, std::cout), 0;
    case Command::Download:
      return director::DownloadConfiguration(lns::ObjectServer(ObjectServer()), options.path), 0;
    case Command::Upload:
      return director::UploadConfiguration(lns::ObjectServer(ObjectServer()), options.path), 0;
    case Command::Commands:
      return director::PrintCommands(lns::ObjectServer(ObjectServer()), options.place, std::cout), 0;
    case Command::Templates:
      return director::PrintTemplates(lns::ObjectServer(ObjectServer()), options.network, std::cout), 0;
    case Command::Interface:
      return RunInterface(options);
    case Command::Configure:
      return RunConfigure(options);
    case Command::Register:
      return RunRegistration(options, session::kRegisterCommand);
    case Command::Deregister:
      return RunRegistration(options, session::kDeregisterCommand);
    case Command::Screen:
      return NeedsWindow(windows::PrintScreen(std::cout));
    case Command::Close:
      return NeedsWindow(windows::CloseWindow());
    case Command::FaultAdd:
      return knobs().AddFault(options.fault), 0;
    case Command::FaultList:
      return std::cout << knobs().Faults(), 0;
    case Command::FaultClear:
      return knobs().ClearFaults(), 0;
    case Command::FaultVanish:
      return knobs().Vanish(options.device), 0;
    case Command::FaultRestore:
      return knobs().Restore(options.device), 0;
    case Command::Latency:
      return RunLatency(options);
    case Command::Journal:
      return RunJournal(options);
    case Command::Stop:
      return knobs().Stop(), 0;
  }
  return kFailed;
}

}  // namespace

int wmain(int count, wchar_t** words) {
  SetConsoleOutputCP(CP_UTF8);
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(windows::ToUtf8(words[i]));
  const director::ParsedCommandLine parsed = director::ParseCommandLine(std::move(arguments), VersionText());
  if (!parsed.run) {
    (parsed.exit_code == 0 ? std::cout : std::cerr) << parsed.message;
    return parsed.exit_code;
  }
  try {
    const windows::com::Apartment apartment;
    return Run(parsed.options);
  } catch (const platform::Error& error) {
    std::cerr << console::ErrorText("director", error);
  } catch (const std::exception& failure) {
    std::cerr << "director: " << failure.what() << '\n';
  }
  return kFailed;
}
