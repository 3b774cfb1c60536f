#pragma once

#include <atomic>
#include <optional>
#include <thread>

namespace windows {

/// Watches for the plug-in's message boxes on its own thread while a command runs: the command ends only when
/// they are answered. With an answer it presses their buttons at once. Without one it prints after some
/// seconds what the plug-in waits for, since perhaps nobody sees its display.
class BoxWatch {
 public:
  explicit BoxWatch(std::optional<bool> answer);
  BoxWatch(const BoxWatch&) = delete;
  BoxWatch& operator=(const BoxWatch&) = delete;
  ~BoxWatch();

  /// The plug-in has shown a failure or was answered no.
  bool SawFailure() const { return saw_failure_; }

 private:
  void Watch();

  const std::optional<bool> answer_;
  std::atomic<bool> ended_ = false;
  std::atomic<bool> saw_failure_ = false;
  std::thread thread_;
};

}  // namespace windows
