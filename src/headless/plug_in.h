#pragma once

#include <functional>
#include <memory>

#include "headless/computer.h"
#include "headless/desktop.h"
#include "plugin/plug_in.h"
#include "simulator/simulation.h"

namespace headless {

/// A computer without COM, registry, files and screen. Its object server is a simulated network.
struct Computer {
  Computer(std::shared_ptr<simulator::Simulation> network, platform::Program::Version version)
      : program(version), simulation(std::move(network)) {}

  Desktop desktop;
  BuiltInProgram program;
  MemoryFiles files;
  ScriptedShell shell;
  MemoryRegistry machine;
  std::shared_ptr<simulator::Simulation> simulation;
  /// No object server can be created.
  bool object_server_missing = false;
  /// Wraps the object server to watch it or make it fail; may be empty.
  std::function<platform::LateBoundPtr(platform::LateBoundPtr)> in_between;

 protected:
  platform::LateBoundPtr MakeObjectServer();
};

/// The plug-in as in the real program, on such a computer: for the preview and for tests.
class PlugIn : public Computer, public plugin::PlugIn {
 public:
  PlugIn(std::shared_ptr<simulator::Simulation> network, platform::Program::Version version);

  /// Installs the device's resource files and their catalogue, as LNS does.
  void InstallResourceFiles();
};

}  // namespace headless
