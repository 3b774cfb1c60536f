#include "editing/applying.h"

#include <utility>
#include <vector>

#include "platform/attempt.h"
#include "platform/error.h"
#include "startup/identity.h"
#include "text/numbers.h"

namespace editing {
namespace {

using Kind = ui::Control::Kind;
using model::CNvCtrlTable;

/// The marked fields as they were collected.
using Collected = std::vector<std::pair<ui::Control*, std::string>>;

// By how much a value on a limit is stored inside it; two constants, not one converted into the other.
// Deliberate.
double OffsetStep(int display_units) { return display_units == 0 ? 0.05 : 0.025; }

bool IsEditable(const ui::Control& control) {
  return control.kind() == Kind::TextField || control.kind() == Kind::ChoiceList;
}

/// An output variable is never written; its field keeps its mark.
bool IsWritable(const CNvCtrlTable& binding) { return binding.Typee == "CP" || binding.Typee == "NVI"; }

/// While the message is shown another device may take the screen; its field is not touched.
void ClampTo(const Passes& passes, const CNvCtrlTable& binding, const char* which, const std::string& limit) {
  passes.desktop.ShowMessage({binding.Description + " out of range\r\n\r\nThe " + which +
                                  " allowed value is: " + limit + "\r\n\r\nThe value has been adjusted",
                              startup::kProgramTitle});
  if (!passes.device->dropped) binding.TheControl->SetText(limit);
}

/// Brings the field's number between the limits. Limits of 0 and 0 are none.
void Clamp(const Passes& passes, const CNvCtrlTable& binding, int units) {
  const std::string highest = binding.MaxLimit(units);
  const std::string lowest = binding.MinLimit(units);
  if (highest == "0" && lowest == "0") return;
  const auto number = [&binding] { return text::LeadingNumber(binding.TheControl->Text()); };
  if (number() > text::LeadingNumber(highest)) ClampTo(passes, binding, "maximum", highest);
  if (!passes.device->dropped && number() < text::LeadingNumber(lowest))
    ClampTo(passes, binding, "minimum", lowest);
}

/// Only a text equal to the limit's text is stored inside it: "32.0" is not "32".
std::string ValueToStore(const CNvCtrlTable& binding, int units) {
  const std::string& shown = binding.TheControl->Text();
  if (!binding.OffsetValue) return shown;
  const std::string highest = binding.MaxLimit(units);
  const std::string lowest = binding.MinLimit(units);
  if (shown == highest) return text::ComputedText(text::LeadingNumber(highest) - OffsetStep(units));
  if (shown == lowest) return text::ComputedText(text::LeadingNumber(lowest) + OffsetStep(units));
  return shown;
}

Collected Collect(const Passes& passes, int units) {
  Collected collected;
  for (CNvCtrlTable& binding : passes.device->bindings) {
    ui::Control* control = binding.TheControl;
    if (!control || !IsEditable(*control) || !PendingEdits::IsMarked(*control) || !IsWritable(binding))
      continue;
    const bool is_list = control->kind() == Kind::ChoiceList;
    if (!is_list) Clamp(passes, binding, units);
    if (passes.device->dropped) break;
    binding.SetValue(is_list ? control->Text() : ValueToStore(binding, units));
    collected.emplace_back(control, control->Text());
  }
  return collected;
}

/// A field edited again while the points were written keeps its mark.
bool IsStillAsCollected(const ui::Control& control, const Collected& collected) {
  for (const auto& [collected_control, text] : collected)
    if (collected_control == &control) return text == control.Text();
  return false;
}

/// True when no field is marked any more.
bool UnmarkWritten(const Passes& passes, const Collected& collected) {
  bool all = true;
  for (const CNvCtrlTable& binding : passes.device->bindings) {
    ui::Control* control = binding.TheControl;
    if (!control || !IsEditable(*control) || !PendingEdits::IsMarked(*control)) continue;
    if (!binding.NvCpTable->ValueAsChanges && IsStillAsCollected(*control, collected))
      PendingEdits::Unmark(*control);
    else
      all = false;
  }
  return all;
}

}  // namespace

void Apply(const Passes& passes, PendingEdits& pending, int display_units) {
  const ui::BusyPointer busy(passes.desktop);
  Collected collected;
  try {
    collected = Collect(passes, display_units);
  } catch (const platform::Error& error) {
    ReportFailure(passes, "Applying the changes", error.description());
    return;
  }
  const bool written = !passes.device->dropped && PropagateChanges(passes);
  if (passes.device->dropped) return;
  const bool nothing_left = UnmarkWritten(passes, collected);
  if (written && nothing_left) pending.Lower();
}

bool PropagateChanges(const Passes& passes) {
  const model::PointList& points = passes.device->points;
  for (std::size_t i = 0; i < points.size() && !passes.device->dropped; ++i) {
    model::CNvCpTable& point = points[i];
    if (!point.ValueAsChanges) continue;
    try {
      point.SendNetworkValue();
    } catch (const platform::Error& error) {
      if (passes.device->dropped) return false;
      ReportFailure(passes, "Error updating " + point.Name, error.description());
      return false;
    }
    if (passes.device->dropped) return false;
    passes.log.LogCommand("Updating " + point.Name, point.NvAsString());
    passes.desktop.Yield();
  }
  return !passes.device->dropped;
}

void Cancel(const Passes& passes, PendingEdits& pending) {
  for (std::size_t i = 0; i < passes.device->points.size(); ++i) passes.device->points[i].DropChanges();
  for (const CNvCtrlTable& binding : passes.device->bindings) {
    ui::Control* control = binding.TheControl;
    if (!control || !IsEditable(*control) || !PendingEdits::IsMarked(*control)) continue;
    // A field of a point that was never read has no value to go back to but none.
    std::string value;
    platform::Attempt([&] { value = binding.Value(); });
    control->SetText(value);
    PendingEdits::Unmark(*control);
  }
  pending.Lower();
}

}  // namespace editing
