#pragma once

#include <string>

#include "platform/shell.h"
#include "registry/registry.h"
#include "ui/desktop.h"

namespace lonworks {

/// A program in the folder "bin" of the LonWorks installation.
struct Tool {
  const char* name;
  // The titles of its window while it works and when it has finished, which it says until it is closed; null
  // for one without a window.
  const char* working_title = nullptr;
  const char* finished_title = nullptr;
};

/// Runs the tools of the LonWorks installation on this computer, one at a time. Used from the user-interface
/// thread, whose message loop runs meanwhile.
class Tools {
 public:
  Tools(ui::Desktop& desktop, platform::Shell& shell, const registry::CRegistry& registry)
      : desktop_(desktop), shell_(shell), registry_(registry) {}

  enum class Outcome {
    NotStarted,  // also where there is no LonWorks installation
    Unfinished,  // it took too long, and was left running
    Failed,      // its exit code says so
    Finished
  };
  /// Starts a tool minimised and waits for it: at most a minute at its work, and ten seconds for its window.
  Outcome Run(const Tool& tool, const std::string& arguments);

  /// Lets about 10 ms pass in which the message loop runs.
  void PassRound();

 private:
  Outcome Await(const Tool& tool, const platform::StartedProgram& started);

  ui::Desktop& desktop_;
  platform::Shell& shell_;
  const registry::CRegistry& registry_;
};

/// A path as an argument on a command line.
std::string Quoted(const std::string& path);

}  // namespace lonworks
