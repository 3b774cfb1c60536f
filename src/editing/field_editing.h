#pragma once

#include <functional>
#include <memory>

#include "editing/open_device.h"

namespace editing {

/// What happens while the user edits the numeric fields txtNvi(i): which keys are accepted, how an edit is
/// marked, how an entry that is no number is refused, and the rules between setpoints, dead band and limits,
/// which repair the other field when a field is left. And in the choice lists cbNvi(i): opening one or
/// pressing a key in it marks it, Enter applies all pending edits. A marked field can be put back from its
/// menu, but not during an operation. Handlers of a locked field do nothing.
class FieldEditing {
 public:
  /// `device` is the window's one, which changes with each command.
  FieldEditing(model::ConfigurationScreen& screen, PendingEdits& pending,
               const std::shared_ptr<OpenDevice>& device, std::function<void()> apply,
               std::function<bool()> is_busy);

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

  model::ConfigurationScreen& screen_;
  PendingEdits& pending_;
  const std::shared_ptr<OpenDevice>& device_;
  const std::function<void()> apply_;
  const std::function<bool()> is_busy_;
};

}  // namespace editing
