#pragma once

#include <memory>

#include "automation/convert.h"
#include "editing/open_device.h"
#include "lns/members.h"
#include "platform/error.h"
#include "platform/late_bound.h"
#include "ui/desktop.h"

namespace plugin {

/// Handles the object server's events, by number: a periodic notification repaints the screen, an update
/// shows the new value of a monitored field, an error goes into the log. Ignores all others.
///
/// Events arrive whenever the message loop runs, also during a pass. A binding's tag is its row number; no
/// binding has tag 0.
class ObjectServerEvents {
 public:
  ObjectServerEvents(ui::Desktop& desktop, const std::shared_ptr<editing::OpenDevice>& device)
      : desktop_(desktop), device_(device) {}

  void Handle(std::int32_t event, platform::Arguments arguments) {
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

 private:
  void ShowUpdate(platform::Arguments arguments) {
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
  void LogUpdateError(platform::Arguments arguments) {
    if (arguments.empty()) return;
    const std::int32_t tag = automation::ToInteger(arguments[0]);
    for (const model::CNvCtrlTable& binding : device_->bindings()) {
      if (binding.MonitorTag != tag) continue;
      device_->LogError("Nv update error: " + binding.Name);
      return;
    }
  }

  ui::Desktop& desktop_;
  /// The window's pointer, which changes with each command.
  const std::shared_ptr<editing::OpenDevice>& device_;
};

}  // namespace plugin
