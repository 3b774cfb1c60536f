#pragma once

#include <functional>

#include "log/log.h"
#include "platform/files.h"
#include "platform/late_bound.h"
#include "platform/program.h"
#include "platform/shell.h"
#include "registry/registry.h"
#include "session/session.h"
#include "startup/identity.h"
#include "ui/desktop.h"
#include "ui/progress.h"
#include "xif/interface_files.h"

namespace session {

/// What the parts of the plug-in share: one of each per process. All outlive the parts.
struct Services {
  ui::Desktop& desktop;
  const platform::Program& program;
  platform::Files& files;
  platform::Shell& shell;
  registry::CRegistry& registry;
  const startup::Identity& identity;
  Session& session;
  ui::Progress& progress;
  xif::InterfaceFiles& interface_files;
  activity::fLog& log;
  /// Creates an object server; throws on failure.
  std::function<platform::LateBoundPtr()> make_object_server;
};

}  // namespace session
