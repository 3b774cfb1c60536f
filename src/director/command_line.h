#pragma once

#include <optional>
#include <string>
#include <vector>

#include "console/command_line.h"
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

/// The options of the director's command line.
struct Options {
  director::Command command = Command::Networks;
  std::string network;
  std::string path;
  /// A network's name or a device's path.
  std::string place;
  /// The interface to set, empty for none; without a value the current one is shown.
  std::optional<std::string> interface_name;
  ConfigureRequest configure;
  /// The ProgID of the plug-in to start.
  std::string plug_in = "QM5RFcPirConfigure.LNSPlugInAPI";
  /// Stay until the user closes the plug-in's window.
  bool wait = false;
  /// The answer to the plug-in's questions; without a value the user answers.
  std::optional<bool> answer;
  SimulatorKnobs::Fault fault;
  std::string device;
  std::string latency_kind = "any";
  /// Without a value the current one is shown.
  std::optional<int> latency_milliseconds;
  bool clear = false;
};

struct ParsedCommandLine : console::Parsed {
  director::Options options;
};

/// Takes the arguments in UTF-8, without the program. --version prints `version`.
ParsedCommandLine ParseCommandLine(std::vector<std::string> arguments, const std::string& version = {});

}  // namespace director
