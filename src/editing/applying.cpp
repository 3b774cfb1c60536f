// The passes of a device that write or discard edits.

#include "editing/open_device.h"
#include "platform/error.h"
#include "startup/identity.h"
#include "text/numbers.h"

namespace editing {
namespace {

using model::CNvCtrlTable;

bool HoldsEdit(const CNvCtrlTable& binding) {
  return binding.TheControl && PendingEdits::IsMarked(*binding.TheControl);
}

/// An output variable is never written; its field keeps its mark.
bool IsWritable(const CNvCtrlTable& binding) { return binding.Typee == "CP" || binding.Typee == "NVI"; }

}  // namespace

void OpenDevice::Apply() {
  if (context_.pending.Raised() && !IsComplete()) {
    const std::string text =
        "The device has not been read completely. Refresh all values before applying changes.";
    throw Failure{"Applying the changes", text, text};
  }
  const ui::BusyPointer busy(context_.desktop);
  Collect();
  if (PropagateChanges() && context_.pending.Count() == 0) context_.pending.Lower();
}

void OpenDevice::Collect() {
  collected_.clear();
  bool refused = false;
  for (CNvCtrlTable& binding : bindings_) {
    if (!HoldsEdit(binding) || !IsWritable(binding)) continue;
    ui::Control& control = *binding.TheControl;
    if (control.kind() == ui::Control::Kind::ChoiceList) {
      binding.SetValue(control.Text());
    } else if (text::IsNumeric(control.Text())) {
      const model::Range range = binding.Range(context_.DisplayUnits);
      Clamp(binding, range);
      binding.SetValue(model::StoredText(control.Text(), range, context_.DisplayUnits));
    } else {
      if (!std::exchange(refused, true)) SayNotNumerical();
      continue;
    }
    collected_.emplace_back(&control, control.Text());
  }
}

void OpenDevice::Clamp(const CNvCtrlTable& binding, const model::Range& range) {
  const auto exceeded = model::LimitExceeded(binding.TheControl->Text(), range);
  if (!exceeded) return;
  const bool maximum = exceeded == model::Limit::Maximum;
  const std::string& limit = maximum ? range.highest : range.lowest;
  Ask({binding.Description + " out of range\r\n\r\nThe " + (maximum ? "maximum" : "minimum") +
           " allowed value is: " + limit + "\r\n\r\nThe value has been adjusted",
       startup::kProgramTitle});
  binding.TheControl->SetText(limit);
}

bool OpenDevice::PropagateChanges() {
  std::size_t left = 0;
  for (std::size_t i = 0; i < points_.size(); ++i) left += points_[i].ValueAsChanges;
  for (std::size_t i = 0; i < points_.size(); ++i) {
    if (!points_[i].ValueAsChanges) continue;
    SayDoing("Updating " + points_[i].Name, --left);
    if (!Outside([&] { return WritePoint(points_[i]); })) return false;
  }
  return true;
}

/// Logs and reports an attempted write even if the device is no longer the current one.
bool OpenDevice::WritePoint(model::CNvCpTable& point) {
  const bool written = WriteAndReport(point);
  // The device now on the screen may be the same one, read before this write.
  if (standing_ == Standing::Superseded)
    context_.read_again();
  else if (written)
    UnmarkWritten(point);
  return written;
}

bool OpenDevice::WriteAndReport(model::CNvCpTable& point) {
  try {
    point.SendNetworkValue();
  } catch (const platform::Error& error) {
    Report(FailureOf("Error updating " + point.Name, error));
    return false;
  }
  LogCommand("Updating " + point.Name, point.NvAsString());
  return true;
}

/// A field that was edited again during the write of its point keeps its mark.
void OpenDevice::UnmarkWritten(const model::CNvCpTable& point) {
  for (const CNvCtrlTable& binding : bindings_) {
    if (binding.NvCpTable != &point || !HoldsEdit(binding)) continue;
    const std::pair<ui::Control*, std::string> now(binding.TheControl, binding.TheControl->Text());
    if (std::ranges::count(collected_, now)) context_.pending.Unmark(*binding.TheControl);
  }
}

void OpenDevice::Cancel() {
  for (const CNvCtrlTable& binding : bindings_) PutBack(binding);
  context_.pending.Lower();
}

void OpenDevice::PutBack(const ui::Control& field) {
  for (const CNvCtrlTable& binding : bindings_)
    if (binding.TheControl == &field) PutBack(binding);
  if (context_.pending.Count() == 0) context_.pending.Lower();
}

void OpenDevice::PutBack(const CNvCtrlTable& binding) {
  binding.DropChange();
  if (!HoldsEdit(binding)) return;
  // A field of a point that was never read becomes empty.
  binding.TheControl->SetText(platform::ValueOr(std::string(), [&] { return binding.Value(); }));
  context_.pending.Unmark(*binding.TheControl);
  // If the field has the focus, a later refused entry returns to this text.
  context_.pending.Keep(*binding.TheControl);
}

std::string OpenDevice::ChangeOf(const ui::Control& field) const {
  if (!PendingEdits::IsMarked(field)) return {};
  std::string known;
  for (const CNvCtrlTable& binding : bindings_)
    if (binding.TheControl == &field && binding.NvCpTable->IsReadIn(context_.DisplayUnits))
      known = platform::ValueOr(std::string(), [&] { return binding.KnownValue(); });
  return known.empty() ? "changed" : "changed, was " + known;
}

}  // namespace editing
