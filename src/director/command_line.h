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
  SimulatorKnobs::Fault fault;
  std::string device;
  std::string latency_kind = "any";
  /// -1 asks for the present one.
  int latency_milliseconds = -1;
  bool clear = false;
};

/// The result of reading a command line: options, or a text for the user and the exit code that goes with it.
struct ParsedCommandLine {
  bool run = false;
  Options options;
  std::string message;
  int exit_code = 0;
};

/// The arguments without the program, as UTF-8.
ParsedCommandLine ParseCommandLine(std::vector<std::string> arguments);

}  // namespace director
