#pragma once

#include <memory>
#include <string>
#include <utility>

#include "ui/control.h"
#include "ui/desktop.h"
#include "ui/layout.h"

namespace ui {

/// In the platform's numbers of window borders.
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

/// The portable part of a window: it owns its controls and handles their events.
///
/// It is constructed, loaded (its window exists, hidden), shown and hidden any number of times, and unloaded.
/// Bounds are in twips and include the border; the window uses whole pixels. A pixel has the same number of
/// twips on every screen.
class Form : public HasWindow {
 public:
  Form(Desktop& desktop, std::string name, BorderStyle border);
  virtual ~Form();
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  const std::string& name() const { return name_; }
  BorderStyle border_style() const { return border_; }

  /// Creates the window if there is none. Members that need the window do this themselves.
  void Load();
  bool Loaded() const { return window_ != nullptr; }
  std::uintptr_t hwnd() const override { return window_ ? window_->hwnd() : 0; }
  /// Closes the window; the form cannot refuse.
  void Unload();

  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string caption);
  const std::string& Tag() const { return tag_; }
  void SetTag(std::string tag) { tag_ = std::move(tag); }

  bool Visible() const { return visible_; }
  void SetVisible(bool visible);
  void Show() { SetVisible(true); }
  void Hide() { SetVisible(false); }
  /// Shows the form over its owner, which takes no input meanwhile, and unloads it once it is hidden.
  /// Messages are processed. If the owner is hidden or unloaded, so is the form.
  void ShowModal(Form& owner);
  /// Hides the form that is shown over this one, if there is one.
  void HideModal();
  /// The form over which this one is shown; null if it is shown alone.
  const Form* Owner() const { return owner_; }
  /// Shows the window in front of all others, even if it was covered or minimised.
  void BringToFront();

  WindowState State() const { return state_; }
  void SetState(WindowState state);

  double Left() const { return left_; }
  double Top() const { return top_; }
  double Width() const { return width_; }
  double Height() const { return height_; }
  /// Sets all four at once, so that the window moves only once.
  void SetBounds(double left, double top, double width, double height);

  void Repaint();

  /// The control with the focus, or null.
  Control* ActiveControl() const { return active_control_; }
  /// The control that had the focus before, or null.
  Control* FormerControl() const { return former_control_; }

  // What the window reports.
  void WindowMoved(double left, double top, double width, double height);
  void WindowStateChanged(WindowState state) { state_ = state; }
  void WindowActivated() { OnActivate(); }
  void FocusMoved(Control* control) { former_control_ = std::exchange(active_control_, control); }
  /// Asks the form to close the window; false refuses.
  bool CloseRequested(CloseReason reason);
  void HelpRequested() { OnHelp(); }
  /// Escape without a cancel button. True if the form used it.
  bool EscapePressed() { return OnEscape(); }
  /// A key with Alt, for accelerators that no control has. True if the form used it.
  virtual bool HandleAccelerator(char32_t character);

  const Box& layout() const { return layout_; }
  /// The buttons that Enter and Escape press; null for none.
  Control* default_button = nullptr;
  Control* cancel_button = nullptr;
  bool always_on_top = false;

 protected:
  Desktop& desktop() { return desktop_; }
  void SetLayout(Box layout) { layout_ = std::move(layout); }

  /// The size of the window when it opens, in the middle of the screen, in twips at the window's own
  /// resolution; at most the size of the screen.
  virtual FormWindow::Size FirstSize(FormWindow::Size best) { return best; }

  /// For a form that is loaded often: unloading hides its window and removes the caption, and the next load
  /// uses it again.
  void KeepWindow() { keeps_window_ = true; }

  virtual void OnLoad() {}
  virtual void OnActivate() {}
  virtual void OnResize() {}
  /// The user or the system asks to close; false refuses.
  virtual bool OnQueryUnload(CloseReason) { return true; }
  virtual void OnUnload() {}
  virtual void OnHelp() {}
  /// The user pressed Escape and there is no cancel button. True if the form used it.
  virtual bool OnEscape() { return false; }

  /// Opens the help file at a topic; shows a message if that fails.
  void ShowHelp(const std::string& file, int context, const std::string& title);

 private:
  /// In the middle of the owner or, without one, of the screen; as large as the screen at most.
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
  Form* owner_ = nullptr;
  Form* modal_ = nullptr;
};

}  // namespace ui
