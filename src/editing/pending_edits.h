#pragma once

#include <algorithm>
#include <functional>
#include <set>

#include "model/configuration_screen.h"

namespace editing {

/// The window's changes-pending flag and the two buttons that go with it. The pending edits are in the
/// fields themselves: a field whose text is pure red holds an edit that has not been applied.
class PendingEdits {
 public:
  PendingEdits(const model::ConfigurationScreen& screen, ui::Button& apply, ui::Button& cancel)
      : screen_(screen), apply_(apply), cancel_(cancel) {
    Lower();
  }

  /// Called whenever a mark may have come or gone.
  std::function<void()> on_change;

  static bool IsMarked(const ui::Control& field) { return field.ForeColor() == ui::Color::ModifiedMark; }
  /// How many fields hold an edit.
  std::ptrdiff_t Count() const {
    return std::ranges::count_if(screen_.EditableFields(),
                                 [](const ui::Field* each) { return IsMarked(*each); });
  }

  /// The pages that hold them.
  std::set<std::size_t> Pages() const {
    std::set<std::size_t> pages;
    for (const model::FramePlace& frame : model::Frames())
      for (const model::FieldRow& row : frame.fields)
        if (IsMarked(*screen_.Find(row.control))) pages.insert(static_cast<std::size_t>(frame.page));
    return pages;
  }

  /// Marks the field as edited.
  void Mark(ui::Control& field) {
    field.SetForeColor(ui::Color::ModifiedMark);
    Set(true);
  }
  void Unmark(ui::Control& field) {
    field.SetForeColor(ui::Color::ButtonText);
    Changed();
  }

  /// Keeps the field's text, with the mark that belongs to it, for an entry that is refused later.
  void Keep(ui::Control& field) {
    field.SetTag(field.Text());
    if (IsMarked(field))
      kept_with_mark_.insert(&field);
    else
      kept_with_mark_.erase(&field);
  }
  /// Keeps what the device was found to hold, unless an edit is kept. The field may hold another one by now.
  void KeepRead(ui::Control& field, const std::string& text) {
    if (!IsMarked(field)) kept_with_mark_.erase(&field);
    if (!kept_with_mark_.contains(&field)) field.SetTag(text);
  }
  /// Puts back what was kept.
  void PutBack(ui::Control& field) {
    field.SetText(field.Tag());
    if (!kept_with_mark_.contains(&field)) Unmark(field);
  }

  bool Raised() const { return raised_; }
  void Lower() { Set(false); }
  /// Forgets everything: the fields show another device.
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
