#pragma once

#include <functional>
#include <set>
#include <vector>

#include "platform/error.h"
#include "platform/shell.h"

namespace headless {

/// A computer whose other programs follow a script: what would start is written down, and the hooks play the
/// started program by opening and closing windows and ending it.
class ScriptedShell : public platform::Shell {
 public:
  struct Launch {
    std::string program;
    std::string arguments;
    Show show;
  };
  std::vector<Launch> launches;  // refused ones as well
  std::vector<Launch> elevated;
  /// The user refuses an administrator's rights.
  bool declines = false;
  bool refuses = false;
  /// Asked before each start; true refuses it.
  std::function<bool()> fails;
  /// The programs that were started still run.
  bool running = false;
  /// How those that have ended did.
  bool succeeded = true;
  std::set<std::string> windows;    // by title
  std::vector<std::string> closed;  // titles of windows that got a close message; they close at once
  int pauses = 0;
  std::function<void()> on_start;
  std::function<void()> on_pause;

  std::unique_ptr<platform::StartedProgram> Start(const std::string& program, const std::string& arguments,
                                                  Show show) override {
    struct Started : platform::StartedProgram {
      explicit Started(const ScriptedShell& shell) : on(shell) {}
      bool Running() const override { return on.running; }
      bool Succeeded() const override { return !on.running && on.succeeded; }
      const ScriptedShell& on;
    };
    launches.push_back({program, arguments, show});
    if (refuses || (fails && fails())) throw platform::Error(53, "Headless", "File not found");
    running = true;
    if (on_start) on_start();
    return std::make_unique<Started>(*this);
  }
  bool StartElevated(const std::string& program, const std::string& arguments) override {
    elevated.push_back({program, arguments, {}});
    return !declines;
  }
  bool WindowExists(const std::string& title) const override { return windows.contains(title); }
  void CloseWindow(const std::string& title) override {
    if (windows.erase(title) != 0) closed.push_back(title);
  }
  void Pause(std::int32_t) override {
    ++pauses;
    if (on_pause) on_pause();
  }
};

}  // namespace headless
