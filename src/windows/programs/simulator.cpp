// LnsSimulator.exe: the simulated object server as an out-of-process COM server.

#include <windows.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "registry/registry.h"
#include "simulator/object_server.h"
#include "simulator/simulation.h"
#include "text/strings.h"
#include "windows/com/adapter.h"
#include "windows/com/local_server.h"
#include "windows/com/registration.h"
#include "windows/com/wide_text.h"
#include "windows/system/program.h"
#include "windows/system/registry.h"

namespace {

// {3E262784-4C3E-4FCB-82AF-C50F1F0A3046} and {7F0E19D8-CCED-4AEC-95D9-60669FC214D2}
constexpr CLSID kClassId = {0x3E262784, 0x4C3E, 0x4FCB, {0x82, 0xAF, 0xC5, 0x0F, 0x1F, 0x0A, 0x30, 0x46}};
constexpr IID kEventsId = {0x7F0E19D8, 0xCCED, 0x4AEC, {0x95, 0xD9, 0x60, 0x66, 0x9F, 0xC2, 0x14, 0xD2}};
constexpr const char* kProgId = "LnsSimulator.LcaObjectServer";

constexpr const char* kObjectServerKey = "SOFTWARE\\LonWorks\\LCA";
constexpr const char* kObjectServerValue = "Object Server";

/// How long a simulator that COM started stays after its last client, so that one program's faults still
/// apply to the next program.
constexpr std::chrono::seconds kLinger{5};

constexpr const char* kHelp =
    "Simulates an LNS object server with the networks of a file.\n\n"
    "LnsSimulator.exe /network <file>                          serves until it is stopped\n"
    "LnsSimulator.exe /regserver /network <file>               registers: COM starts it on that file\n"
    "LnsSimulator.exe /regserver /network <file> /makedefault  the same, and plug-ins use it\n"
    "LnsSimulator.exe /unregserver                             undoes both\n"
    "LnsSimulator.exe /version\n";

/// The simulator's own command line, besides the switches of all COM servers.
struct Options {
  std::string network_file;
  /// Make this simulator the object server that plug-ins use.
  bool make_default = false;
  bool help = false;
  bool version = false;
};

std::string SwitchOf(const std::string& word) {
  const bool is_switch = word.size() > 1 && (word[0] == '/' || word[0] == '-');
  return is_switch ? text::ToLower(word.substr(1)) : std::string();
}

bool IsServerSwitch(const std::string& name) {
  return name == "regserver" || name == "unregserver" || name == "embedding" || name == "automation";
}

/// Parses "/network <file>", "/makedefault", "/help" (also "/?") and "/version". Switches begin with "-" or
/// "/", in any letter case. Throws std::invalid_argument for a missing file and for unknown words.
Options ParseOptions(const std::vector<std::string>& words) {
  Options options;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string name = SwitchOf(words[i]);
    if (name == "network") {
      if (++i == words.size()) throw std::invalid_argument("/network needs a file");
      options.network_file = words[i];
    } else if (name == "makedefault") {
      options.make_default = true;
    } else if (name == "help" || name == "-help" || name == "?") {
      options.help = true;
    } else if (name == "version" || name == "-version") {
      options.version = true;
    } else if (!IsServerSwitch(name)) {
      throw std::invalid_argument("'" + words[i] +
                                  "' is not understood; use /network <file>, /makedefault, /regserver, "
                                  "/unregserver, /help, /version");
    }
  }
  return options;
}

std::string VersionText() {
  const auto version = windows::WindowsProgram().FileVersion();
  return "LnsSimulator " + std::to_string(version.major) + '.' + std::to_string(version.minor) + '.' +
         std::to_string(version.revision) + '\n';
}

int Print(const std::string& text) {
  std::fputs(text.c_str(), stdout);
  return 0;
}

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

/// The version in the plug-in's entry on this computer.
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
  if (options.network_file.empty())
    throw std::invalid_argument("no network file is given: use /network <file>");
  auto simulation = simulator::Simulation::FromFile(
      windows::ToWide(options.network_file),
      [](std::chrono::milliseconds time) { std::this_thread::sleep_for(time); });
  simulation->plug_in_version = PlugInVersion;
  return simulation;
}

void Register(const Options& options) {
  LoadNetwork(options);  // reports mistakes in the file now
  windows::com::RegisterServer(RegistrationFor(options));
  if (!options.make_default) return;
  windows::WindowsRegistry machine;
  registry::CRegistry(machine, "").SetMachineSetting(kObjectServerKey, kObjectServerValue, kProgId);
}

void Unregister(const Options& options) {
  windows::WindowsRegistry machine;
  registry::CRegistry settings(machine, "");
  // Removes only our own entry: an empty text names no object server.
  if (settings.MachineSetting(kObjectServerKey, kObjectServerValue) == kProgId)
    settings.SetMachineSetting(kObjectServerKey, kObjectServerValue, "");
  windows::com::UnregisterServer(RegistrationFor(options));
}

int Serve(const Options& options, bool by_com) {
  std::shared_ptr<simulator::Simulation> simulation;
  windows::com::LocalServer* running = nullptr;
  const auto load = [&] {
    simulation = LoadNetwork(options);
    // COM accepts events only from this thread and delivers them on the subscriber's thread.
    simulation->event_thread = [](const std::function<void()>& raise) { raise(); };
    simulation->on_stop = [&running] { running->Leave(); };
  };
  if (!by_com) load();
  const windows::com::Apartment apartment;
  // Nobody sees the output of a program that COM started, so its clients get the error. Each new client tries
  // again.
  const auto make = [&]() -> std::shared_ptr<automation::Published> {
    try {
      if (!simulation) load();
    } catch (const std::exception& failure) {
      return simulator::MakeUnusableServer(failure.what());
    }
    return simulation->CreateObjectServer();
  };
  windows::com::ServedClass served{kClassId, make};
  served.open = [](const std::shared_ptr<automation::Published>& object) {
    return windows::com::ComPtr<IUnknown>(windows::com::DispatchAdapter::For(object, {kEventsId, {}}));
  };
  windows::com::ServerLifetime lifetime;
  if (by_com) {
    lifetime.linger = kLinger;
    lifetime.idle_limit = windows::com::kIdleLimit;
  } else {
    // Started by hand, it runs until it is stopped.
    lifetime.leaves_when_unused = false;
  }
  windows::com::LocalServer server(std::move(served), lifetime);
  running = &server;
  return server.Run();
}

int Run(const std::string& arguments) {
  std::vector<std::string> words;
  for (int i = 1; i < __argc; ++i) words.push_back(windows::ToUtf8(__wargv[i]));
  const Options options = ParseOptions(words);
  if (options.help || options.version) return Print(options.help ? kHelp : VersionText());
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
  // Without its own console it writes to that of its starter, or else shows errors in a message box.
  bool console = GetStdHandle(STD_ERROR_HANDLE) != nullptr;
  if (!console && AttachConsole(ATTACH_PARENT_PROCESS))
    console = freopen("CONOUT$", "w", stderr) && freopen("CONOUT$", "w", stdout);
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
