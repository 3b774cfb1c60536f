// LnsSimulator.exe: the simulated object server as an out-of-process COM server.

#include <windows.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>

#include "registry/registry.h"
#include "simulator/program/options.h"
#include "simulator/simulation.h"
#include "text/strings.h"
#include "windows/com/dispatch_door.h"
#include "windows/com/local_server.h"
#include "windows/com/registration.h"
#include "windows/com/wide_text.h"
#include "windows/system/program.h"
#include "windows/system/registry.h"

namespace {

using simulator::program::Options;

// {3E262784-4C3E-4FCB-82AF-C50F1F0A3046} and {7F0E19D8-CCED-4AEC-95D9-60669FC214D2}
constexpr CLSID kClassId = {0x3E262784, 0x4C3E, 0x4FCB, {0x82, 0xAF, 0xC5, 0x0F, 0x1F, 0x0A, 0x30, 0x46}};
constexpr IID kEventsId = {0x7F0E19D8, 0xCCED, 0x4AEC, {0x95, 0xD9, 0x60, 0x66, 0x9F, 0xC2, 0x14, 0xD2}};
constexpr const char* kProgId = "LnsSimulator.LcaObjectServer";

constexpr const char* kObjectServerKey = "SOFTWARE\\LonWorks\\LCA";
constexpr const char* kObjectServerValue = "Object Server";

/// How long a simulator that COM started stays after its last client, so that faults set by one program meet
/// the next.
constexpr std::chrono::seconds kLinger{5};

windows::com::ServerRegistration RegistrationFor(const Options& options) {
  windows::com::ServerRegistration registration;
  registration.class_id = kClassId;
  registration.prog_id = kProgId;
  registration.description = "Simulated LNS object server";
  registration.events = {{kEventsId, "ObjectServerEvents"}};
  if (!options.network_file.empty()) {
    const auto absolute = std::filesystem::absolute(windows::ToWide(options.network_file));
    registration.switches = "/network \"" + windows::ToUtf8(absolute.wstring()) + "\"";
  }
  return registration;
}

/// By its entry among the plug-ins of the computer.
std::string PlugInVersion(const std::string& server) {
  windows::WindowsRegistry machine;
  registry::CRegistry settings(machine, "");
  const std::string plug_ins = std::string(kObjectServerKey) + "\\Plug-Ins";
  for (std::string name = settings.FindFirstMachineKey(plug_ins); !name.empty();
       name = settings.GetNextMachineKey()) {
    const std::string entry = std::string(plug_ins).append("\\").append(name);
    if (text::EqualIgnoringCase(settings.MachineSetting(entry, ""), server))
      return settings.MachineSetting(entry, "Version");
  }
  return {};
}

std::shared_ptr<simulator::Simulation> LoadNetwork(const Options& options) {
  auto simulation = simulator::Simulation::FromFile(
      windows::ToWide(options.network_file),
      [](std::chrono::milliseconds time) { std::this_thread::sleep_for(time); });
  simulation->plug_in_version = PlugInVersion;
  return simulation;
}

void Register(const Options& options) {
  // COM would not tell anybody what is wrong with the file.
  if (!options.network_file.empty()) LoadNetwork(options);
  windows::com::RegisterServer(RegistrationFor(options));
  if (!options.make_default) return;
  windows::WindowsRegistry machine;
  registry::CRegistry(machine, "").SetMachineSetting(kObjectServerKey, kObjectServerValue, kProgId);
}

void Unregister(const Options& options) {
  windows::WindowsRegistry machine;
  registry::CRegistry settings(machine, "");
  // Only our own entry is taken back: an empty text names no object server.
  if (settings.MachineSetting(kObjectServerKey, kObjectServerValue) == kProgId)
    settings.SetMachineSetting(kObjectServerKey, kObjectServerValue, "");
  windows::com::UnregisterServer(RegistrationFor(options));
}

int Serve(const Options& options, bool by_com) {
  if (options.network_file.empty())
    throw std::invalid_argument("no network file is given: LnsSimulator.exe /network <file>");
  const auto simulation = LoadNetwork(options);
  const windows::com::Apartment apartment;
  windows::com::ServedClass served{kClassId, [&simulation] { return simulation->CreateObjectServer(); }};
  served.open = [](const std::shared_ptr<automation::Published>& object) {
    return windows::com::ComPtr<IUnknown>(windows::com::DispatchDoor::For(object, {kEventsId, {}}));
  };
  windows::com::ServerLifetime lifetime;
  if (by_com) {
    lifetime.linger = kLinger;
    lifetime.idle_limit = windows::com::kIdleLimit;
  } else {
    // Started by hand it stands until it is told to stop.
    lifetime.leaves_when_unused = false;
  }
  windows::com::LocalServer server(std::move(served), lifetime);
  // COM brings events to the thread on which the client has subscribed, and wants them from this one.
  simulation->event_thread = [](const std::function<void()>& raise) { raise(); };
  simulation->on_stop = [&server] { server.Leave(); };
  return server.Run();
}

int Run(const std::string& arguments) {
  const Options options = simulator::program::ParseOptions(arguments);
  switch (windows::com::ServerStartOf(arguments)) {
    case windows::com::ServerStart::Register:
      Register(options);
      return 0;
    case windows::com::ServerStart::Unregister:
      Unregister(options);
      return 0;
    case windows::com::ServerStart::ByCom:
      return Serve(options, true);
    case windows::com::ServerStart::ByHand:
      return Serve(options, false);
  }
  return 0;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
  // A windowless program tells its errors to the console that started it, or to the user who did.
  bool console = GetStdHandle(STD_ERROR_HANDLE) != nullptr;
  if (!console && AttachConsole(ATTACH_PARENT_PROCESS)) console = freopen("CONOUT$", "w", stderr) != nullptr;
  const std::string arguments = windows::CommandLineArguments();
  try {
    return Run(arguments);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "LnsSimulator: %s\n", failure.what());
    if (!console && windows::com::ServerStartOf(arguments) == windows::com::ServerStart::ByHand)
      windows::ShowFatalFailure("LnsSimulator", failure.what());
    return 1;
  }
}
