#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "ui/desktop.h"
#include "ui/has_window.h"

namespace ui {

/// Plays a silent clip in an area of a window, from a resource of a program file or from a file.
///
/// StartPlay raises 45001 where the control cannot be made, 45002 where the clip cannot be opened, 45003
/// where the module that holds it cannot be loaded; the source is the program's executable name and
/// ".cAnimControl".
class cAnimControl {
 public:
  cAnimControl(Desktop& desktop, std::string executable_name)
      : desktop_(desktop), source_(std::move(executable_name) + ".cAnimControl") {}

  /// The clip's file; used when no resource is given.
  std::string Filename;
  /// 0 is none.
  std::int32_t ResourceId = 0;
  /// The program file that holds the resource; empty for this program.
  std::string ResourceFileName;
  bool Transparent = false;
  bool Centre = false;
  bool AutoPlay = false;

  /// In whose window the control is made; it has to outlive the playing.
  const HasWindow* Owner() const { return owner_; }
  /// An owner without a window is ignored.
  void SetOwner(const HasWindow& owner) {
    if (owner.hwnd() != 0) owner_ = &owner;
  }
  /// The control's window; 0 while there is none.
  std::uintptr_t hwnd() const { return window_ ? window_->hwnd() : 0; }
  std::int32_t Width() const { return window_ ? window_->Width() : 0; }
  std::int32_t Height() const { return window_ ? window_->Height() : 0; }

  void StartPlay();
  void StopPlay();

 private:
  void Open();

  Desktop& desktop_;
  std::string source_;
  const HasWindow* owner_ = nullptr;
  std::unique_ptr<AnimationWindow> window_;
};

}  // namespace ui
