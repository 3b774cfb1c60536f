#pragma once

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>

#include "platform/files.h"
#include "platform/late_bound.h"

namespace qm5r {

/// What the program uses of its computer.
struct Computer {
  /// Throws the reason if there is none.
  std::function<platform::LateBoundPtr()> make_object_server;
  platform::Files& files;
  std::ostream& out;
  std::ostream& errors;
  /// Somebody watches the error output, so it shows progress.
  bool shows_progress = false;
  /// "user@computer"
  std::string user;
  /// UTC: "2026-11-23T10:15:00Z"
  std::function<std::string()> time;
  /// The same on the user's clock: "2026-11-23 11:15 +01:00".
  std::function<std::string()> local_time;
  /// Asks a question on the error output and returns the answer; nothing if there is nobody to ask.
  std::function<std::optional<std::string>(const std::string& question)> ask;
  /// Where records are kept.
  std::string records;
  /// The user wants the command to end.
  std::function<bool()> is_stopped;
  /// Since any moment.
  std::function<double()> seconds;
};

}  // namespace qm5r
