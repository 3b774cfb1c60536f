#pragma once

#include <atomic>
#include <optional>
#include <thread>

namespace windows {

/// Watches for message boxes of the plug-in from a thread of its own while a command runs, which ends only
/// when they are answered. With an answer it presses their buttons at once; without one it says, after some
/// seconds, what the plug-in waits for: perhaps nobody sees its display.
class BoxWatch {
 public:
  explicit BoxWatch(std::optional<bool> answer);
  BoxWatch(const BoxWatch&) = delete;
  BoxWatch& operator=(const BoxWatch&) = delete;
  ~BoxWatch();

  /// Whether the plug-in has told of a failure, or has been answered no, so far.
  bool SawFailure() const { return saw_failure_; }

 private:
  void Watch();

  const std::optional<bool> answer_;
  std::atomic<bool> ended_ = false;
  std::atomic<bool> saw_failure_ = false;
  std::thread thread_;
};

}  // namespace windows
