#pragma once

#include <optional>
#include <string>
#include <vector>

#include "director/configure.h"
#include "director/simulator_knobs.h"

namespace director {

enum class Command {
  Networks,
  Devices,
  Show,
  Download,
  Upload,
  Commands,
  Templates,
  Interface,
  Configure,
  Register,
  Deregister,
  Screen,
  Close,
  FaultAdd,
  FaultList,
  FaultClear,
  FaultVanish,
  FaultRestore,
  Latency,
  Journal,
  Stop
};

/// What the command line of the director asks for.
struct Options {
  director::Command command = Command::Networks;
  std::string network;
  std::string path;
  /// A network's name or a device's path.
  std::string place;
  /// What to set; nothing to show what it is, empty for none.
  std::optional<std::string> interface_name;
  ConfigureRequest configure;
  /// The ProgID of the plug-in to start.
  std::string plug_in = "QM5RFcPirConfigure.LNSPlugInAPI";
  /// Stay until the user closes the plug-in's window.
  bool wait = false;
  /// What the director answers to the plug-in's questions; nothing to leave them to the user.
  std::optional<bool> answer;
  SimulatorKnobs::Fault fault;
  std::string device;
  std::string latency_kind = "any";
  /// Nothing asks for the present one.
  std::optional<int> latency_milliseconds;
  bool clear = false;
};

/// The result of reading a command line: options, or a text for the user and the exit code that goes with it.
struct ParsedCommandLine {
  bool run = false;
  Options options;
  std::string message;
  int exit_code = 0;
};

/// The arguments without the program, as UTF-8; the version is what --version prints.
ParsedCommandLine ParseCommandLine(std::vector<std::string> arguments, const std::string& version = {});

/// "director: object server error 18200 (LNS Simulator): ..." with the platform's code, the plain number of a
/// plug-in's error, or the system's hexadecimal one.
std::string ErrorText(const platform::Error& error);

}  // namespace director
