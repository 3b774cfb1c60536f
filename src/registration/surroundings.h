#pragma once

#include "log/log.h"
#include "platform/files.h"
#include "platform/program.h"
#include "platform/shell.h"
#include "registry/registry.h"
#include "session/session.h"
#include "startup/identity.h"
#include "ui/desktop.h"
#include "ui/progress.h"
#include "xif/interface_files.h"

namespace registration {

/// What registration works with; all of it outlives its procedures.
struct Surroundings {
  ui::Desktop& desktop;
  const platform::Program& program;
  platform::Shell& shell;
  registry::CRegistry& registry;
  const startup::Identity& identity;
  session::Session& session;
  ui::Progress& progress;
  xif::InterfaceFiles& interface_files;
  activity::fLog& log;
  const platform::Files& files;
  /// Deregistration was asked for by a user at a window, who is shown its progress and asked questions.
  bool Interactive = false;
};

}  // namespace registration
