#include "windows/director/box_watch.h"

#include <windows.h>

#include <chrono>
#include <iostream>
#include <vector>

#include "director/answers.h"
#include "windows/director/remote_window.h"
#include "windows/director/screen_reader.h"

namespace windows {
namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kPatience = std::chrono::seconds(4);
constexpr auto kPoll = std::chrono::milliseconds(40);

HWND BoxOf(DWORD process) {
  for (HWND box = nullptr; (box = FindWindowExW(nullptr, box, L"#32770", nullptr));) {
    DWORD owner = 0;
    GetWindowThreadProcessId(box, &owner);
    if (owner == process && IsWindowVisible(box)) return box;
  }
  return nullptr;
}

/// One message box while it is open.
class OpenBox {
 public:
  explicit OpenBox(HWND window) : window_(window), title_(TextOf(window)) {
    for (HWND child : ChildrenOf(window)) {
      if (Is(child, L"Button") && IsWindowVisible(child)) buttons_.push_back(GetDlgCtrlID(child));
      if (Is(child, L"Static") && text_.empty()) text_ = TextOf(child);
    }
  }

  HWND window() const { return window_; }
  director::Box box() const { return {title_, text_, buttons_}; }

  void Respond(std::optional<bool> answer) {
    const bool due = answer || Clock::now() - since_ > kPatience;
    if (due && !reported_) std::cerr << director::Report(box(), answer) << std::flush;
    reported_ = reported_ || due;
    if (!answer) return;
    // Each time, as a new box may not listen yet.
    const int button = box().ButtonFor(*answer);
    PostMessageW(window_, WM_COMMAND, static_cast<WPARAM>(button),
                 reinterpret_cast<LPARAM>(GetDlgItem(window_, button)));
  }

 private:
  HWND window_;
  std::string title_, text_;
  std::vector<int> buttons_;
  Clock::time_point since_ = Clock::now();
  bool reported_ = false;
};

}  // namespace

BoxWatch::BoxWatch(std::optional<bool> answer) : answer_(answer), thread_([this] { Watch(); }) {}

BoxWatch::~BoxWatch() {
  ended_ = true;
  thread_.join();
}

void BoxWatch::Watch() {
  std::optional<OpenBox> open;
  for (; !ended_; std::this_thread::sleep_for(kPoll)) {
    const DWORD process = PlugInProcess();
    const HWND box = process ? BoxOf(process) : nullptr;
    if (!box) {
      open.reset();
      continue;
    }
    if (!open || open->window() != box) open.emplace(box);
    if (!open->box().IsQuestion() || answer_ == false) saw_failure_ = true;
    open->Respond(answer_);
  }
}

}  // namespace windows
