#include "plugin/object_server_events.h"

#include "automation/convert.h"
#include "lns/members.h"
#include "platform/error.h"

namespace plugin {

void ObjectServerEvents::Handle(std::int32_t event, platform::Arguments arguments) {
  switch (event) {
    case lns::members::kPeriodicEvent:
      return desktop_.RepaintActiveWindow();
    case lns::members::kMonitorUpdateEvent:
      return ShowUpdate(arguments);
    case lns::members::kMonitorErrorEvent:
      return LogUpdateError(arguments);
    default:
      return;
  }
}

void ObjectServerEvents::ShowUpdate(platform::Arguments arguments) {
  platform::IgnoreFailure([&] {
    if (arguments.size() < 2) return;
    const std::int32_t tag = automation::ToInteger(arguments[0]);
    const model::BindingList& bindings = device_->bindings();
    if (tag < 1 || static_cast<std::size_t>(tag) > bindings.size()) return;
    ui::Control* control = bindings[static_cast<std::size_t>(tag) - 1].TheControl;
    if (control && control->kind() == ui::Control::Kind::TextField)
      control->SetText(automation::ToText(arguments[1]));
  });
}

/// Deliberately logs a text without a line break: the row shows only its time and the red mark.
void ObjectServerEvents::LogUpdateError(platform::Arguments arguments) {
  if (arguments.empty()) return;
  const std::int32_t tag = automation::ToInteger(arguments[0]);
  for (const model::CNvCtrlTable& binding : device_->bindings()) {
    if (binding.MonitorTag != tag) continue;
    device_->LogError("Nv update error: " + binding.Name);
    return;
  }
}

}  // namespace plugin
