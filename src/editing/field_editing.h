#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "editing/open_device.h"
#include "model/catalogue.h"

namespace editing {

/// Reacts to the user's edits. In the numeric fields txtNvi(i): filters keys, marks edits, refuses entries
/// that are not numbers and, when a field is left, applies the rules between setpoints, dead band and limits,
/// which adjust the other field. In the choice lists cbNvi(i): opening a list or pressing a key in it marks
/// it, and Enter applies all pending edits. The menu of a marked field resets it, but not during an
/// operation. Handlers of a locked field do nothing.
class FieldEditing {
 public:
  /// `device` refers to the window's pointer, which changes with each command.
  FieldEditing(model::ConfigurationScreen& screen, PendingEdits& pending,
               const std::shared_ptr<OpenDevice>& device, std::function<void()> apply,
               std::function<bool()> is_busy);

  /// A text for the field of a row of the catalogue.
  struct Entry {
    const model::CatalogueRow* row;
    std::string text;
  };
  /// Enters all texts before any field is left, so that no rule sees some of them only. Then the rules of
  /// each of these fields run once, in the order of the catalogue. The focus does not move.
  void Enter(const std::vector<Entry>& entries);

 private:
  void Connect(int index, ui::TextField& field);
  void Connect(ui::ChoiceList& list);
  void OfferPutBack(ui::Field& field);
  bool KeyDown(ui::TextField& field, int key, int state);
  bool KeyDown(ui::ChoiceList& list, int key, int state);
  bool KeyPress(int index, ui::TextField& field, char32_t character);
  void Validate(ui::TextField& field);
  void LeaveField(int index);
  void Keep(const model::CrossRule& rule);
  bool entering_ = false;

  model::ConfigurationScreen& screen_;
  PendingEdits& pending_;
  const std::shared_ptr<OpenDevice>& device_;
  const std::function<void()> apply_;
  const std::function<bool()> is_busy_;
};

}  // namespace editing
