#pragma once

#include <functional>
#include <string>

#include "editing/pending_edits.h"
#include "model/configuration_screen.h"
#include "ui/desktop.h"

namespace editing {

/// What happens while the user edits the numeric fields txtNvi(i): which keys are accepted, how an edit is
/// marked, how an entry that is no number is refused, and the rules between setpoints, dead band and limits,
/// which repair the other field when a field is left.
///
/// Values are compared as the numbers that the texts read as, in whatever units are in force, after rounding
/// to six decimals, so that equality is never a violation. Handlers of a locked field do nothing; the rules
/// run on every field.
class FieldEditing {
 public:
  FieldEditing(model::ConfigurationScreen& screen, ui::Desktop& desktop, PendingEdits& pending);

 private:
  void Connect(int index, ui::TextField& field);
  bool KeyDown(ui::TextField& field, int key, int state);
  bool KeyPress(int index, ui::TextField& field, char32_t character);
  void Validate(ui::TextField& field);

  void LeaveField(int index);
  bool DeadBandViolated(int heat, int cool) const;
  void KeepDeadBandByCooling(int heat, int cool);
  void KeepDeadBandByHeating(int heat, int cool);
  void KeepLimit(int limit, int setpoint, bool is_maximum);
  void Adjust(int index, const std::string& text, const char* sentence);
  double NumberOf(int index) const;

  model::ConfigurationScreen& screen_;
  ui::Desktop& desktop_;
  PendingEdits& pending_;
};

/// The choice lists cbNvi(i): opening one or pressing a key in it marks it, Enter applies all pending edits.
/// Keys that cannot choose do not mark.
void ConnectLists(model::ConfigurationScreen& screen, PendingEdits& pending,
                  const std::function<void()>& apply);

}  // namespace editing
