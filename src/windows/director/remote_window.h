#pragma once

#include <windows.h>

#include <atomic>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace windows {

// Reads windows of another program from outside, as a screen reader does. For lists, tabs and status bars,
// whose messages contain addresses, the other program must have the same bitness.

std::string TextOf(HWND window);
std::wstring ClassOf(HWND window);
bool Is(HWND window, const wchar_t* class_name);
/// The direct child windows, in order.
std::vector<HWND> ChildrenOf(HWND window);

std::vector<std::string> TabCaptions(HWND tab);
std::vector<std::string> StatusTexts(HWND status_bar);
/// The cells of a report list, row by row.
std::vector<std::vector<std::string>> ListRows(HWND list);

/// Watches for the plug-in's message boxes on its own thread during a command, which ends only when they are
/// answered. With an answer it presses their buttons at once. Without one it prints after some seconds what
/// the plug-in waits for, since perhaps nobody sees its display.
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
