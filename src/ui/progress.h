#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "platform/program.h"
#include "ui/control.h"
#include "ui/controls.h"
#include "ui/desktop.h"
#include "ui/form.h"

namespace ui {

/// Plays a silent clip in an area of a window, from a resource of a program file or from a file.
///
/// StartPlay raises 45001 if the control cannot be created, 45002 if the clip cannot be opened, 45003 if the
/// module with the clip cannot be loaded; the source is the program's executable name and ".cAnimControl".
class cAnimControl {
 public:
  cAnimControl(Desktop& desktop, std::string executable_name)
      : desktop_(desktop), source_(std::move(executable_name) + ".cAnimControl") {}

  /// The clip's file; used if there is no resource.
  std::string Filename;
  /// 0 is none.
  std::int32_t ResourceId = 0;
  /// The program file with the resource; empty for this program.
  std::string ResourceFileName;
  bool Transparent = false;
  bool Centre = false;
  bool AutoPlay = false;

  /// The window in which the control is created; it must outlive the playing.
  const HasWindow* Owner() const { return owner_; }
  /// An owner without a window is ignored.
  void SetOwner(const HasWindow& owner) {
    if (owner.hwnd() != 0) owner_ = &owner;
  }
  /// The control's window; 0 without one.
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

/// The progress window: a line of status text below an animation, shown during a long operation.
class fProgress : public Form {
 public:
  /// The caption is the plug-in's name.
  fProgress(Desktop& desktop, const platform::Program& program, std::string plug_in_name);

  AnimationHost picResAnim{"picResAnim"};
  Label Status{"Status"};
  /// Handles Escape; false if it has no effect.
  std::function<bool()> on_escape;
  /// While an operation runs, the user cannot close the window: it may be the program's only one.
  bool operation_runs = true;

 protected:
  void OnLoad() override;
  bool OnQueryUnload(CloseReason reason) override { return reason != CloseReason::User || !operation_runs; }
  void OnUnload() override;
  bool OnEscape() override { return on_escape && on_escape(); }

 private:
  std::string plug_in_name_;
  cAnimControl animation_;
};

/// The process's only progress window, loaded when first needed and unloaded at the end of the operation.
class Progress {
 public:
  Progress(Desktop& desktop, const platform::Program& program, std::string plug_in_name)
      : desktop_(desktop), program_(program), plug_in_name_(std::move(plug_in_name)) {}

  void Show();
  /// Shows the window if necessary, and the text at once.
  void DisplayStatus(const std::string& status);
  bool Shown() const { return window_ && window_->Loaded(); }
  /// The window's text; empty without a window.
  std::string Status() const { return Shown() ? window_->Status.Text() : ""; }
  /// The operation has ended; leaves the window with its last status for the user to close.
  void LeaveToUser();
  void Close();

  /// Handles Escape in the window; false if it has no effect.
  std::function<bool()> on_escape;

 private:
  fProgress& Open();

  Desktop& desktop_;
  const platform::Program& program_;
  std::string plug_in_name_;
  std::unique_ptr<fProgress> window_;
};

}  // namespace ui
