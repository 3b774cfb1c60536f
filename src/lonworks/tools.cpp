#include "lonworks/tools.h"

#include <memory>

#include "platform/error.h"

namespace lonworks {
namespace {

constexpr int kRoundMilliseconds = 10;
constexpr int kMostWorkingRounds = 6000;
constexpr int kMostIdleRounds = 1000;  // while a tool's window is missing

}  // namespace

Tools::Outcome Tools::Run(const Tool& tool, const std::string& arguments) {
  const std::string lonworks = registry::LonWorksFolder(registry_);
  if (lonworks.empty()) return Outcome::NotStarted;
  const auto started = platform::ValueOr(std::unique_ptr<platform::StartedProgram>(), [&] {
    return shell_.Start(lonworks + "\\bin\\" + tool.name, arguments,
                        platform::Shell::Show::MinimizedWithFocus);
  });
  if (!started) return Outcome::NotStarted;
  const Outcome outcome = Await(tool, *started);
  if (tool.finished_title) shell_.CloseWindow(tool.finished_title);
  return outcome;
}

/// Its window may take a moment to appear.
Tools::Outcome Tools::Await(const Tool& tool, const platform::StartedProgram& started) {
  for (int round = 0; started.Running(); ++round) {
    if (tool.finished_title && shell_.WindowExists(tool.finished_title)) return Outcome::Finished;
    const bool works = !tool.working_title || shell_.WindowExists(tool.working_title);
    if (round >= (works ? kMostWorkingRounds : kMostIdleRounds)) return Outcome::Unfinished;
    PassRound();
  }
  return started.Succeeded() ? Outcome::Finished : Outcome::Failed;
}

void Tools::PassRound() {
  desktop_.Yield();
  shell_.Pause(kRoundMilliseconds);
}

std::string Quoted(const std::string& path) { return '"' + path + '"'; }

}  // namespace lonworks
