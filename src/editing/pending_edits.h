#pragma once

#include "ui/controls.h"

namespace editing {

/// The window's changes-pending flag and the two buttons that go with it. What is pending stands in the
/// fields themselves: a field whose text is pure red holds an edit that has not been applied.
class PendingEdits {
 public:
  PendingEdits(ui::Button& apply, ui::Button& cancel) : apply_(apply), cancel_(cancel) { Lower(); }

  /// Marks the field as edited.
  void Mark(ui::Control& field) {
    field.SetForeColor(ui::Color::ModifiedMark);
    Raise();
  }
  static void Unmark(ui::Control& field) { field.SetForeColor(ui::Color::ButtonText); }
  static bool IsMarked(const ui::Control& field) { return field.ForeColor() == ui::Color::ModifiedMark; }

  bool Raised() const { return raised_; }
  void Lower() { Set(false); }

 private:
  void Raise() { Set(true); }
  void Set(bool raised) {
    raised_ = raised;
    apply_.SetEnabled(raised);
    cancel_.SetEnabled(raised);
  }

  ui::Button& apply_;
  ui::Button& cancel_;
  bool raised_ = false;
};

}  // namespace editing
