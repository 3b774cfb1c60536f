#pragma once

#include <functional>
#include <iosfwd>
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
  /// Since any moment.
  std::function<double()> seconds;
};

}  // namespace qm5r
