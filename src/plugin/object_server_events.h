#pragma once

#include <memory>

#include "editing/open_device.h"
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

  void Handle(std::int32_t event, platform::Arguments arguments);

 private:
  void ShowUpdate(platform::Arguments arguments);
  void LogUpdateError(platform::Arguments arguments);

  ui::Desktop& desktop_;
  /// The window's pointer, which changes with each command.
  const std::shared_ptr<editing::OpenDevice>& device_;
};

}  // namespace plugin
