#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "ui/controls.h"
#include "ui/form.h"
#include "ui/layout.h"

namespace ui {

/// Follows the keyboard focus in one window and notifies its controls in a fixed order: validates the control
/// that loses the focus, notifies it of the loss, changes the window's active control, then notifies the new
/// one.
///
/// Only moves to another control of the window count; the window system reports nothing when a message box or
/// another program comes to the front. If a handler moves the focus, the move takes effect when the handler
/// has ended. A control that the focus only passed through is not notified.
class FocusTracker {
 public:
  /// `prepare` runs before a control is notified that it got the focus.
  FocusTracker(Form& form, std::function<void(Control&)> prepare)
      : form_(form), prepare_(std::move(prepare)) {}

  /// The control got the focus.
  void Arrived(Control& control) {
    wanted_ = &control;
    Settle();
  }

  /// The user is about to go to another control: validates the current one first, so that its message appears
  /// before the key or button press takes effect, then calls `move` to set the focus.
  template <class Move>
  void LeaveFor(Control& target, Move move) {
    if (!busy_ && current_ && current_ != &target) {
      Busy busy(*this);
      Validate();
      validated_ = current_;
    }
    if (stopped_) return;
    move();
    validated_ = nullptr;
  }

  Control* current() const { return current_; }

  /// The window closes: no more notifications.
  void Stop() {
    stopped_ = true;
    current_ = wanted_ = nullptr;
  }

 private:
  struct Busy {
    explicit Busy(FocusTracker& owner) : tracker(owner) { tracker.busy_ = true; }
    ~Busy() { tracker.busy_ = false; }
    FocusTracker& tracker;
  };

  void Settle() {
    if (busy_ || stopped_) return;
    Busy busy(*this);
    while (current_ != wanted_) {
      if (current_ != validated_) Validate();
      if (stopped_ || current_ == wanted_) return;
      const Control* const left = std::exchange(current_, nullptr);
      if (left && left->on_lost_focus) left->on_lost_focus();
      if (stopped_) return;
      current_ = wanted_;
      form_.FocusMoved(current_);
      prepare_(*current_);
      if (current_->on_got_focus) current_->on_got_focus();
    }
  }

  void Validate() {
    if (!current_ || current_->kind() != Control::Kind::TextField) return;
    const auto& field = static_cast<const TextField&>(*current_);
    if (field.on_validate) field.on_validate();
  }

  Form& form_;
  std::function<void(Control&)> prepare_;
  Control* current_ = nullptr;
  Control* wanted_ = nullptr;
  Control* validated_ = nullptr;
  bool busy_ = false;
  bool stopped_ = false;
};

// The keyboard's order is that of the layout, with a tab control before its pages. Only controls that are
// visible, enabled and on the page in front count.

/// The letter after the single "&" of a caption, in lower case; 0 if there is none.
char32_t AcceleratorOf(const std::string& caption);

/// The control to which Tab leads from another one, or from null to the first. Option buttons of a group
/// count as one: the selected button, or else the first. Null if there is none.
enum class Direction { Forward, Backward };
Control* NextControl(const Box& layout, const Control* from, Direction direction);

/// The next or previous option button in the frame, cyclically.
OptionButton* NextOption(const Box& layout, const OptionButton& from, Direction direction);
/// All option buttons in the same frame.
std::vector<OptionButton*> OptionsAround(const Box& layout, const OptionButton& option);

/// The effect of a letter pressed with Alt.
struct Accelerator {
  /// The control that gets the focus or is pressed. Labels and frames lead to the next control that takes the
  /// focus.
  Control* control = nullptr;
  /// The page to bring to the front if the control is a tab control.
  std::optional<std::size_t> page;
  /// No other control has the letter, so a button is pressed and not just focused.
  bool only_one = true;
};
/// If several captions share a letter, chooses the one after the active control or the page in front.
std::optional<Accelerator> FindAccelerator(const Box& layout, char32_t letter, const Control* active);

/// The pages to bring to the front, outermost first, to show a control.
struct PagePlace {
  Tabs* tabs;
  std::size_t page;
};
std::vector<PagePlace> PagesAround(const Box& layout, const Control& control);

}  // namespace ui
