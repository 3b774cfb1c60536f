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
  /// No object server can be had.
  bool object_server_missing = false;
  /// What is put between the plug-in and its object server, for one that watches or fails; nothing at first.
  std::function<platform::LateBoundPtr(platform::LateBoundPtr)> in_between;

 protected:
  platform::LateBoundPtr MakeObjectServer();
};

/// The plug-in as the real program runs it, on such a computer: for looking at a network file without
/// Windows, and for the tests.
class PlugIn : public Computer, public plugin::PlugIn {
 public:
  PlugIn(std::shared_ptr<simulator::Simulation> network, platform::Program::Version version);

  /// Puts the device's resource files and their catalogue on the computer, as an installation of LNS has
  /// them.
  void InstallResourceFiles();
};

}  // namespace headless
