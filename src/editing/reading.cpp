#include "editing/reading.h"

#include "editing/pending_edits.h"
#include "platform/error.h"

namespace editing {
namespace {

using Kind = ui::Control::Kind;

void ReadPoint(const Passes& passes, model::CNvCpTable& point, int display_units) {
  point.GetNetworkValue(display_units);
  passes.log.LogCommand("Reading " + point.Name, point.NvAsString());
}

void LogFailure(const Passes& passes, const std::string& action, const std::string& description) {
  const bool names_action = description.find("\r\n") != std::string::npos;
  passes.log.LogError(names_action ? description : action + "\r\n" + description);
}

}  // namespace

void ReportFailure(const Passes& passes, const std::string& action, const std::string& description) {
  LogFailure(passes, action, description);
  passes.desktop.ShowMessage({description, passes.plug_in_name, ui::Icon::Critical});
}

bool ReadAllPoints(const Passes& passes, int display_units) {
  std::string failed_action;
  std::string failure;
  {
    const ui::BusyPointer busy(passes.desktop);
    const model::PointList& points = passes.device->points;
    for (std::size_t i = 0; i < points.size() && failure.empty() && !passes.device->dropped; ++i) {
      try {
        ReadPoint(passes, points[i], display_units);
        passes.desktop.Yield();
      } catch (const platform::Error& error) {
        failed_action = "Error reading " + points[i].Name;
        failure =
            error.description().empty() ? "Error " + std::to_string(error.number()) : error.description();
      }
    }
    passes.progress.Close();
  }
  if (passes.device->dropped) return false;
  if (failure.empty()) return true;
  ReportFailure(passes, failed_action, failure);
  return false;
}

bool ReadBackIn(const Passes& passes, int display_units) {
  const ui::BusyPointer busy(passes.desktop);
  for (std::size_t i = 0; i < passes.device->points.size(); ++i) {
    model::CNvCpTable& point = passes.device->points[i];
    if (point.IsReadIn(display_units)) continue;
    try {
      ReadPoint(passes, point, display_units);
    } catch (const platform::Error& error) {
      LogFailure(passes, "Error reading " + point.Name, error.description());
      return false;
    }
  }
  return true;
}

bool InitializeAllBindings(const Passes& passes) {
  const ui::BusyPointer busy(passes.desktop);
  for (model::CNvCtrlTable& binding : passes.device->bindings) binding.Initialize();
  return true;
}

void ShowAllValues(const Passes& passes) {
  for (const model::CNvCtrlTable& binding : passes.device->bindings) {
    ui::Control* control = binding.TheControl;
    if (!control) continue;
    const bool editable = control->kind() == Kind::TextField || control->kind() == Kind::ChoiceList;
    if (!editable && control->kind() != Kind::Label) continue;
    if (editable && PendingEdits::IsMarked(*control)) continue;
    control->SetText(binding.Value());
    // What a refused entry goes back to, where the focus stands in the field already.
    control->SetTag(control->Text());
  }
}

}  // namespace editing
