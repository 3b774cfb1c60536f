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

/// The computer on which the plug-in runs. It outlives the plug-in.
struct Computer {
  ui::Desktop& desktop;
  const platform::Program& program;
  platform::Files& files;
  platform::Shell& shell;
  platform::Registry& registry;
  /// Creates an object server; throws on failure.
  std::function<platform::LateBoundPtr()> make_object_server;
};

/// The whole plug-in, assembled for one computer. The program decides how to start it.
class PlugIn {
 public:
  explicit PlugIn(const Computer& computer);
  PlugIn(const PlugIn&) = delete;
  PlugIn& operator=(const PlugIn&) = delete;

  /// The object for a director that creates the plug-in's class.
  std::shared_ptr<LNSPlugInAPI> CreateApi();

  /// How the registration window and the command-line switches act on this process.
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
