#pragma once

#include <memory>

#include "editing/open_device.h"
#include "platform/late_bound.h"
#include "ui/desktop.h"

namespace plugin {

/// What the program does with the object server's events, by their numbers: a periodic notification keeps the
/// screen painted, an update shows the new value of a monitored field, an error goes into the log. All others
/// are ignored.
///
/// Events come in whenever the message loop runs, also in the middle of a pass; a binding's tag is its row
/// number, and tag 0 belongs to none.
class ObjectServerEvents {
 public:
  ObjectServerEvents(ui::Desktop& desktop, const std::shared_ptr<editing::OpenDevice>& device)
      : desktop_(desktop), device_(device) {}

  void Handle(std::int32_t event, platform::Arguments arguments);

 private:
  void ShowUpdate(platform::Arguments arguments);
  void LogUpdateError(platform::Arguments arguments);

  ui::Desktop& desktop_;
  /// The one of the window, which changes with each command.
  const std::shared_ptr<editing::OpenDevice>& device_;
};

}  // namespace plugin
