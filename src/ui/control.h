#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

namespace ui {

/// A form or a control, which has a window of the system while it is shown.
class HasWindow {
 public:
  /// The window's handle; 0 without a window.
  virtual std::uintptr_t hwnd() const = 0;

 protected:
  ~HasWindow() = default;
};

/// A colour: 0x00BBGGRR, or a system colour with the top bit set.
enum class Color : std::uint32_t {
  ModifiedMark = 0x000000FF,  // pure red: the field holds an edit that has not been applied
  ButtonText = 0x80000012,    // the normal text colour
  Window = 0x80000005,
  ButtonFace = 0x8000000F,
};

/// The part of a control that changed, for the window that shows it.
enum class Aspect { Text, Colors, Enabled, Visible, Locked, Items, Selection, ToolTip, Rows, Clip, Marks };

/// Shows one control. The window system creates it; it exists as long as the control's window.
class ControlPeer {
 public:
  virtual ~ControlPeer() = default;
  virtual void Update(Aspect aspect) = 0;
  virtual void TakeFocus() = 0;
  /// May create the window, for a caller that needs it at once.
  virtual std::uintptr_t hwnd() { return 0; }
  /// The control is being destroyed before its window.
  virtual void ControlGone() {}
};

/// The keys held down with another key, in the platform's numbers.
enum KeyState : int { kShift = 1, kCtrl = 2, kAlt = 4 };

/// A control without a window: it holds its state and notifies its peer of changes. The form that owns it
/// sets the handlers; the peer calls them when the user acts.
///
/// Owned by its form, used from the user-interface thread.
class Control : public HasWindow {
 public:
  enum class Kind {
    TextField,
    ChoiceList,
    Label,
    Button,
    OptionButton,
    CheckBox,
    Frame,
    Tabs,
    ListView,
    StatusBar,
    WebView,
    Picture,
    AnimationHost
  };

  Control(Kind kind, std::string name) : kind_(kind), name_(std::move(name)) {}
  virtual ~Control() {
    if (peer_) peer_->ControlGone();
  }
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  Kind kind() const { return kind_; }
  /// The control's name in the program, with its index in a control array: "txtNvi(3)".
  const std::string& name() const { return name_; }

  /// The text, caption or, for a choice list, the chosen text. "&" in a caption marks the accelerator.
  const std::string& Text() const { return text_; }
  void SetText(std::string text) { Set(text_, std::move(text), Aspect::Text); }

  Color ForeColor() const { return fore_color_; }
  void SetForeColor(Color color) { Set(fore_color_, color, Aspect::Colors); }
  Color BackColor() const { return back_color_; }
  void SetBackColor(Color color) { Set(back_color_, color, Aspect::Colors); }

  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled) { Set(enabled_, enabled, Aspect::Enabled); }
  bool Visible() const { return visible_; }
  void SetVisible(bool visible) { Set(visible_, visible, Aspect::Visible); }

  /// A tooltip of one or more lines, separated by CR LF; for screen readers it describes the control.
  const std::string& ToolTip() const { return tool_tip_; }
  void SetToolTip(std::string text) { Set(tool_tip_, std::move(text), Aspect::ToolTip); }
  /// The control's name for screen readers; set before the window is created.
  const std::string& AccessibleName() const { return accessible_name_; }
  void SetAccessibleName(std::string name) { accessible_name_ = std::move(name); }

  /// The help topic of the control; 0 for the window's.
  int help_context = 0;

  const std::string& Tag() const { return tag_; }
  void SetTag(std::string tag) { tag_ = std::move(tag); }

  void SetFocus() {
    if (peer_) peer_->TakeFocus();
  }

  std::uintptr_t hwnd() const override { return peer_ ? peer_->hwnd() : 0; }

  std::function<void()> on_got_focus;
  std::function<void()> on_lost_focus;

  /// The peer is set when the window is created and cleared before it is destroyed.
  void Attach(ControlPeer* peer) { peer_ = peer; }

 protected:
  template <class T>
  void Set(T& field, T value, Aspect aspect) {
    if (field == value) return;
    field = std::move(value);
    Notify(aspect);
  }
  void Notify(Aspect aspect) {
    if (peer_) peer_->Update(aspect);
  }
  /// Stores the text that the user entered, without notifying the window that already shows it.
  void TakeUserText(std::string text) { text_ = std::move(text); }

 private:
  Kind kind_;
  std::string name_;
  std::string text_;
  std::string tool_tip_;
  std::string accessible_name_;
  std::string tag_;
  Color fore_color_ = Color::ButtonText;
  Color back_color_ = Color::Window;
  bool enabled_ = true;
  bool visible_ = true;
  ControlPeer* peer_ = nullptr;
};

}  // namespace ui
