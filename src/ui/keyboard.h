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

/// Follows the keyboard focus inside one window and notifies its controls in a fixed order: the control that
/// is left is validated, then notified that it lost the focus; then the window's active control changes, then
/// the new one is notified.
///
/// Only a move to another control of the window counts; the window system reports nothing when a message box
/// or another program comes to the front. What a handler does to the focus takes effect when the handler has
/// ended, and a control which the focus only passed through hears nothing.
class FocusTracker {
 public:
  /// `prepare` runs before a control is notified that it has the focus.
  FocusTracker(Form& form, std::function<void(Control&)> prepare)
      : form_(form), prepare_(std::move(prepare)) {}

  /// This control has the focus.
  void Arrived(Control& control) {
    wanted_ = &control;
    Settle();
  }

  /// The user is about to go to another control: validates the present one first, so that a message comes
  /// before the key or button press takes effect, then lets `move` set the focus.
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

  /// The window goes: no more notifications.
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

// How the keyboard walks a window, in the order of the layout: a tab control before its pages. Only controls
// that can be seen and used take part: visible, enabled, and on the page in front.

/// The letter after the single "&" of a caption, in lower case; 0 for none.
char32_t AcceleratorOf(const std::string& caption);

/// The control to which the Tab key leads from another one; from null to the first. Of a group of option
/// buttons only the selected one, or the first if none is selected. Null if there is none.
enum class Direction { Forward, Backward };
Control* NextControl(const Box& layout, const Control* from, Direction direction);

/// The option button before or after one in its frame, going round.
OptionButton* NextOption(const Box& layout, const OptionButton& from, Direction direction);
/// The option buttons in the same frame, itself included.
std::vector<OptionButton*> OptionsAround(const Box& layout, const OptionButton& option);

/// What a letter pressed with Alt leads to.
struct Accelerator {
  /// The control that takes the focus or is pressed. A label and a frame lead to the next control that takes
  /// the focus.
  Control* control = nullptr;
  /// The page to bring to the front, if the control is a tab control.
  std::optional<std::size_t> page;
  /// Nothing else answers to the letter, so that a button is pressed and not just focused.
  bool only_one = true;
};
/// If several captions share a letter, the one after the active control or the page in front.
std::optional<Accelerator> FindAccelerator(const Box& layout, char32_t letter, const Control* active);

/// The pages that must come to the front, outermost first, for a control to be seen.
struct PagePlace {
  Tabs* tabs;
  std::size_t page;
};
std::vector<PagePlace> PagesAround(const Box& layout, const Control& control);

}  // namespace ui
