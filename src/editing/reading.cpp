#include "editing/reading.h"

#include "platform/error.h"

namespace editing {
namespace {

/// The hourglass for as long as a pass runs.
class BusyPointer {
 public:
  explicit BusyPointer(ui::Desktop& desktop) : desktop_(desktop) {
    desktop_.SetPointer(ui::Pointer::Hourglass);
  }
  ~BusyPointer() { desktop_.SetPointer(ui::Pointer::Default); }
  BusyPointer(const BusyPointer&) = delete;
  BusyPointer& operator=(const BusyPointer&) = delete;

 private:
  ui::Desktop& desktop_;
};

void ReadPoint(const Passes& passes, model::CNvCpTable& point, int display_units) {
  point.GetNetworkValue(display_units);
  passes.log.LogCommand("Reading " + point.Name, point.NvAsString());
}

}  // namespace

bool IsMarked(const ui::Control& control) { return control.ForeColor() == ui::Color::ModifiedMark; }

void ReportFailure(const Passes& passes, const std::string& action, const std::string& description) {
  const bool names_action = description.find("\r\n") != std::string::npos;
  passes.log.LogError(names_action ? description : action + "\r\n" + description);
  passes.desktop.ShowMessage({description, passes.plug_in_name, ui::Icon::Critical});
}

bool ReadAllPoints(const Passes& passes, int display_units) {
  std::string failed_action;
  std::string failure;
  {
    const BusyPointer busy(passes.desktop);
    for (std::size_t i = 0; i < passes.points.size() && failure.empty(); ++i) {
      model::CNvCpTable& point = passes.points[i];
      try {
        ReadPoint(passes, point, display_units);
        passes.desktop.Yield();
      } catch (const platform::Error& error) {
        failed_action = "Error reading " + point.Name;
        failure =
            error.description().empty() ? "Error " + std::to_string(error.number()) : error.description();
      }
    }
    passes.progress.Close();
  }
  if (failure.empty()) return true;
  ReportFailure(passes, failed_action, failure);
  return false;
}

bool InitializeAllBindings(const Passes& passes) {
  const BusyPointer busy(passes.desktop);
  for (model::CNvCtrlTable& binding : passes.bindings) binding.Initialize();
  return true;
}

void ShowAllValues(const Passes& passes) {
  using Kind = ui::Control::Kind;
  for (const model::CNvCtrlTable& binding : passes.bindings) {
    ui::Control* control = binding.TheControl;
    if (!control) continue;
    const bool editable = control->kind() == Kind::TextField || control->kind() == Kind::ChoiceList;
    if (!editable && control->kind() != Kind::Label) continue;
    if (editable && IsMarked(*control)) continue;
    control->SetText(binding.Value());
  }
}

}  // namespace editing
