#pragma once

#include <functional>
#include <memory>

#include "headless/computer.h"
#include "headless/desktop.h"
#include "plugin/plug_in.h"
#include "simulator/simulation.h"

namespace headless {

/// A computer without COM, registry, files and screen, whose object server is a simulated network.
struct Computer {
  Computer(std::shared_ptr<simulator::Simulation> network, platform::Program::Version version)
      : program(version), simulation(std::move(network)) {}

  Desktop desktop;
  BuiltInProgram program;
  MemoryFiles files;
  ScriptedShell shell;
  MemoryRegistry machine;
  std::shared_ptr<simulator::Simulation> simulation;
  /// No object server can be made.
  bool object_server_missing = false;
  /// Wraps the object server, to watch it or to make it fail; empty if nothing does.
  std::function<platform::LateBoundPtr(platform::LateBoundPtr)> in_between;

 protected:
  platform::LateBoundPtr MakeObjectServer();
};

/// The plug-in as the real program runs it, on such a computer: for the preview without Windows and for the
/// tests.
class PlugIn : public Computer, public plugin::PlugIn {
 public:
  PlugIn(std::shared_ptr<simulator::Simulation> network, platform::Program::Version version);

  /// Puts the device's resource files and their catalogue on the computer, as LNS installs them.
  void InstallResourceFiles();
};

}  // namespace headless
