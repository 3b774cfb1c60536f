#pragma once

#include <functional>
#include <memory>

#include "headless/desktop.h"
#include "headless/machine.h"
#include "headless/memory_files.h"
#include "headless/scripted_shell.h"
#include "plugin/api.h"
#include "simulator/simulation.h"

namespace headless {

/// The whole plug-in on a simulated network, without COM, registry, files and screen. It behaves as the real
/// program does: the same forms, session and automation object, driven by the same calls. For looking at a
/// network file without Windows, and for the tests.
class PlugIn {
 public:
  PlugIn(std::shared_ptr<simulator::Simulation> network, platform::Program::Version version);

  /// Puts the device's resource files and their catalogue on the computer, as an installation of LNS has
  /// them.
  void InstallResourceFiles();

  /// What a director gets when it creates the plug-in's class.
  std::shared_ptr<plugin::LNSPlugInAPI> CreateApi();

  Desktop desktop;
  BuiltInProgram program;
  MemoryFiles files;
  ScriptedShell shell;
  MemoryRegistry machine;
  startup::Identity identity;
  registry::CRegistry registry;
  session::Session session;
  ui::Progress progress;
  xif::InterfaceFiles interface_files;
  activity::fLog log;
  std::shared_ptr<simulator::Simulation> simulation;
  /// No object server can be had.
  bool object_server_missing = false;
  /// What is put between the plug-in and its object server, for one that watches or fails; nothing at first.
  std::function<platform::LateBoundPtr(platform::LateBoundPtr)> in_between;
  plugin::Surroundings surroundings;
  plugin::fMain main;
};

}  // namespace headless
