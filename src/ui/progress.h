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
/// StartPlay raises 45001 if the control cannot be made, 45002 if the clip cannot be opened, 45003
/// if the module that holds it cannot be loaded; the source is the program's executable name and
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

/// The progress window: one line of status text under a playing animation, while a long operation runs.
class fProgress : public Form {
 public:
  /// The caption is the plug-in's name.
  fProgress(Desktop& desktop, const platform::Program& program, std::string plug_in_name);

  AnimationHost picResAnim{"picResAnim"};
  Label Status{"Status"};
  /// What Escape does; false if nothing.
  std::function<bool()> on_escape;
  /// While the operation runs this may be the program's only window, and the user may not close it.
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

/// The process's one progress window, loaded when it is first needed and unloaded when the operation ends.
class Progress {
 public:
  Progress(Desktop& desktop, const platform::Program& program, std::string plug_in_name)
      : desktop_(desktop), program_(program), plug_in_name_(std::move(plug_in_name)) {}

  void Show();
  /// Shows the window if it is not, and the text in it at once.
  void DisplayStatus(const std::string& status);
  /// The window exists.
  bool Shown() const { return window_ && window_->Loaded(); }
  /// What the window says; empty while there is none.
  std::string Status() const { return Shown() ? window_->Status.Text() : ""; }
  /// The operation has ended and leaves its last status on the screen, for the user to close.
  void LeaveToUser();
  void Close();

  /// What Escape does in the window; false if nothing.
  std::function<bool()> on_escape;

 private:
  fProgress& Open();

  Desktop& desktop_;
  const platform::Program& program_;
  std::string plug_in_name_;
  std::unique_ptr<fProgress> window_;
};

}  // namespace ui
