#pragma once

#include <algorithm>
#include <functional>
#include <set>

#include "model/configuration_screen.h"

namespace editing {

/// The window's flag for pending edits, and its Apply and Cancel buttons. The fields themselves hold the
/// edits: pure red text is an edit that has not been applied.
class PendingEdits {
 public:
  PendingEdits(const model::ConfigurationScreen& screen, ui::Button& apply, ui::Button& cancel)
      : screen_(screen), apply_(apply), cancel_(cancel) {
    Lower();
  }

  /// Called after marks may have changed.
  std::function<void()> on_change;

  static bool IsMarked(const ui::Control& field) { return field.ForeColor() == ui::Color::ModifiedMark; }
  /// The number of marked fields.
  std::ptrdiff_t Count() const {
    return std::ranges::count_if(screen_.EditableFields(),
                                 [](const ui::Field* each) { return IsMarked(*each); });
  }

  /// The pages with marked fields.
  std::set<std::size_t> Pages() const {
    std::set<std::size_t> pages;
    for (const model::FramePlace& frame : model::Frames())
      for (const model::FieldRow& row : frame.fields)
        if (IsMarked(*screen_.Find(row.control))) pages.insert(static_cast<std::size_t>(frame.page));
    return pages;
  }

  void Mark(ui::Control& field) {
    field.SetForeColor(ui::Color::ModifiedMark);
    Set(true);
  }
  void Unmark(ui::Control& field) {
    field.SetForeColor(ui::Color::ButtonText);
    Changed();
  }

  /// Keeps the field's text and mark, to restore them if a later entry is refused.
  void Keep(ui::Control& field) {
    field.SetTag(field.Text());
    if (IsMarked(field))
      kept_with_mark_.insert(&field);
    else
      kept_with_mark_.erase(&field);
  }
  /// Keeps the device's value, unless an edit is kept. The field may already hold another edit.
  void KeepRead(ui::Control& field, const std::string& text) {
    if (!IsMarked(field)) kept_with_mark_.erase(&field);
    if (!kept_with_mark_.contains(&field)) field.SetTag(text);
  }
  /// Restores the kept text and mark.
  void PutBack(ui::Control& field) {
    field.SetText(field.Tag());
    if (!kept_with_mark_.contains(&field)) Unmark(field);
  }

  bool Raised() const { return raised_; }
  void Lower() { Set(false); }
  /// Forgets everything, for another device.
  void Drop() {
    kept_with_mark_.clear();
    Lower();
  }

 private:
  void Set(bool raised) {
    raised_ = raised;
    apply_.SetEnabled(raised);
    cancel_.SetEnabled(raised);
    Changed();
  }
  void Changed() const {
    if (on_change) on_change();
  }

  const model::ConfigurationScreen& screen_;
  ui::Button& apply_;
  ui::Button& cancel_;
  std::set<const ui::Control*> kept_with_mark_;
  bool raised_ = false;
};

}  // namespace editing
