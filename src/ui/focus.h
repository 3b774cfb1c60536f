#pragma once

#include <functional>
#include <utility>

#include "ui/controls.h"
#include "ui/form.h"

namespace ui {

/// Follows the keyboard focus inside one window and tells its controls in a fixed order: the left one is
/// validated, then told that it lost the focus, then the window's active control changes, then the new one is
/// told.
///
/// Only a move to another control of the window counts; the window system reports nothing when a message box
/// or another program comes to the front. What a handler does to the focus takes effect when the handler has
/// ended, and a control which the focus only passed through hears nothing.
class FocusTracker {
 public:
  /// `prepare` runs before a control is told that it has got the focus.
  FocusTracker(Form& form, std::function<void(Control&)> prepare)
      : form_(form), prepare_(std::move(prepare)) {}

  /// The focus stands on this control.
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

  /// The window goes: nothing more is told.
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

}  // namespace ui
