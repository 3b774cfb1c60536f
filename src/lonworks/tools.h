#pragma once

#include <string>

#include "platform/shell.h"
#include "registry/registry.h"
#include "ui/desktop.h"

namespace lonworks {

/// A program in the folder "bin" of the LonWorks installation.
struct Tool {
  const char* name;
  // The titles of its window while it works, and when it has finished and waits to be closed; null for a tool
  // without a window.
  const char* working_title = nullptr;
  const char* finished_title = nullptr;
};

/// Runs the tools of this computer's LonWorks installation, one at a time. Used from the user-interface
/// thread; the message loop runs meanwhile.
class Tools {
 public:
  Tools(ui::Desktop& desktop, platform::Shell& shell, const registry::CRegistry& registry)
      : desktop_(desktop), shell_(shell), registry_(registry) {}

  enum class Outcome {
    NotStarted,  // also if there is no LonWorks installation
    Unfinished,  // it took too long and still runs
    Failed,      // its exit code is not 0
    Finished
  };
  /// Starts a tool minimised and waits for it: at most a minute while it works, and ten seconds while its
  /// window is missing.
  Outcome Run(const Tool& tool, const std::string& arguments);

  /// Runs the message loop and waits about 10 ms.
  void PassRound();

 private:
  Outcome Await(const Tool& tool, const platform::StartedProgram& started);

  ui::Desktop& desktop_;
  platform::Shell& shell_;
  const registry::CRegistry& registry_;
};

/// A path as a command-line argument.
std::string Quoted(const std::string& path);

}  // namespace lonworks
