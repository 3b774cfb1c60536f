#pragma once

#include <memory>
#include <string>
#include <utility>

#include "ui/control.h"
#include "ui/desktop.h"
#include "ui/layout.h"

namespace ui {

/// Numbered as the platform numbers a window's border.
enum class BorderStyle {
  None = 0,
  FixedSingle = 1,
  Sizable = 2,
  FixedDialog = 3,
  FixedToolWindow = 4,
  SizableToolWindow = 5
};
enum class WindowState { Normal = 0, Minimized = 1, Maximized = 2 };

/// Who asks a window to close.
enum class CloseReason { User, Code, SystemShutdown };

/// A window of the program without its Windows part: it owns its controls and handles their events.
///
/// Life: made, loaded (its window exists, hidden), shown and hidden any number of times, unloaded. Positions
/// and sizes are in twips of the outer window; the window keeps whole pixels. A pixel has as many twips on
/// every screen.
class Form : public HasWindow {
 public:
  Form(Desktop& desktop, std::string name, BorderStyle border);
  virtual ~Form();
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  const std::string& name() const { return name_; }
  BorderStyle border_style() const { return border_; }

  /// Makes the window if there is none yet. Other members that need the window load it by themselves.
  void Load();
  bool Loaded() const { return window_ != nullptr; }
  std::uintptr_t hwnd() const override { return window_ ? window_->hwnd() : 0; }
  /// Closes the window from the program: the form may not refuse.
  void Unload();

  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string caption);
  const std::string& Tag() const { return tag_; }
  void SetTag(std::string tag) { tag_ = std::move(tag); }

  bool Visible() const { return visible_; }
  void SetVisible(bool visible);
  void Show() { SetVisible(true); }
  void Hide() { SetVisible(false); }
  /// Shows the window in front of all others, also one that is covered or minimised.
  void BringToFront();

  WindowState State() const { return state_; }
  void SetState(WindowState state);

  double Left() const { return left_; }
  double Top() const { return top_; }
  double Width() const { return width_; }
  double Height() const { return height_; }
  /// One rectangle for all four, so that a window is moved once.
  void SetBounds(double left, double top, double width, double height);

  void Repaint();

  /// The control with the focus, or null. The window keeps it up to date.
  Control* ActiveControl() const { return active_control_; }
  /// The control that had the focus before, or null.
  Control* FormerControl() const { return former_control_; }

  // What the window reports.
  void WindowMoved(double left, double top, double width, double height);
  void WindowStateChanged(WindowState state) { state_ = state; }
  void WindowActivated() { OnActivate(); }
  void FocusMoved(Control* control) { former_control_ = std::exchange(active_control_, control); }
  /// The window is asked to close. False refuses.
  bool CloseRequested(CloseReason reason);
  void HelpRequested() { OnHelp(); }
  /// Escape, if no button answers to it: true if the form has dealt with it.
  bool EscapePressed() { return OnEscape(); }
  /// A key with Alt: true when the form has dealt with it (accelerators that the controls cannot know).
  virtual bool HandleAccelerator(char32_t character);

  const Box& layout() const { return layout_; }
  /// The button that Enter, and the one that Escape presses; null for none.
  Control* default_button = nullptr;
  Control* cancel_button = nullptr;
  bool always_on_top = false;

 protected:
  Desktop& desktop() { return desktop_; }
  void SetLayout(Box layout) { layout_ = std::move(layout); }

  /// The size in which the window opens, in the middle of the screen, in twips at the window's own
  /// resolution; it becomes no larger than the screen.
  virtual FormWindow::Size FirstSize(FormWindow::Size best) { return best; }

  /// A form that comes and goes often: the system's window stays when the form is unloaded, hidden and
  /// without a caption, for the next time that it is loaded.
  void KeepWindow() { keeps_window_ = true; }

  virtual void OnLoad() {}
  virtual void OnActivate() {}
  virtual void OnResize() {}
  /// The user or the system asks to close; false refuses.
  virtual bool OnQueryUnload(CloseReason) { return true; }
  virtual void OnUnload() {}
  /// The user pressed F1.
  virtual void OnHelp() {}
  /// The user pressed Escape, and there is no cancel button.
  virtual bool OnEscape() { return false; }

  /// Opens the help file at a topic; a message says if it cannot be shown.
  void ShowHelp(const std::string& file, int context, const std::string& title);

 private:
  void Centre(FormWindow::Size size);

  Desktop& desktop_;
  std::string name_;
  BorderStyle border_;
  std::string caption_;
  std::string tag_;
  bool visible_ = false;
  WindowState state_ = WindowState::Normal;
  double left_ = 0, top_ = 0, width_ = 0, height_ = 0;
  Control* active_control_ = nullptr;
  Control* former_control_ = nullptr;
  Box layout_;
  std::unique_ptr<FormWindow> window_, kept_;
  bool keeps_window_ = false;
};

}  // namespace ui
