#pragma once

#include <functional>
#include <memory>

#include "log/log.h"
#include "platform/files.h"
#include "platform/late_bound.h"
#include "platform/program.h"
#include "platform/registry.h"
#include "platform/shell.h"
#include "plugin/api.h"
#include "plugin/main_form.h"
#include "registration/main.h"
#include "registry/registry.h"
#include "session/services.h"
#include "startup/identity.h"
#include "ui/desktop.h"
#include "ui/progress.h"
#include "xif/interface_files.h"

namespace plugin {

/// The computer that the plug-in runs on. It outlives the plug-in.
struct Computer {
  ui::Desktop& desktop;
  const platform::Program& program;
  platform::Files& files;
  platform::Shell& shell;
  platform::Registry& registry;
  /// Makes an object server; throws if none can be had.
  std::function<platform::LateBoundPtr()> make_object_server;
};

/// The whole plug-in, put together for one computer. How it is started is left to the program.
class PlugIn {
 public:
  explicit PlugIn(const Computer& computer);
  PlugIn(const PlugIn&) = delete;
  PlugIn& operator=(const PlugIn&) = delete;

  /// What a director gets when it creates the plug-in's class.
  std::shared_ptr<LNSPlugInAPI> CreateApi();

  /// What the registration window and the switches of the command line do to this process.
  registration::MMain::Process ByHand(std::function<void()> register_class);

  const startup::Identity identity;
  registry::CRegistry registry;
  session::Session session;
  ui::Progress progress;
  xif::InterfaceFiles interface_files;
  activity::fLog log;
  const session::Services services;
  fMain main;
};

}  // namespace plugin
