#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "ui/desktop.h"

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

  void SetOwner(AnimationHost& owner) { owner_ = &owner; }
  std::int32_t Width() const { return window_ ? window_->Width() : 0; }
  std::int32_t Height() const { return window_ ? window_->Height() : 0; }

  void StartPlay();
  void StopPlay();

 private:
  void Open();

  Desktop& desktop_;
  std::string source_;
  AnimationHost* owner_ = nullptr;
  std::unique_ptr<AnimationWindow> window_;
};

}  // namespace ui
