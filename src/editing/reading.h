#pragma once

#include <memory>
#include <string>

#include "editing/loaded_device.h"
#include "log/log.h"
#include "ui/desktop.h"
#include "ui/progress.h"

namespace editing {

/// What every pass over a device's points and bindings works with. Points and bindings are the present
/// device's; all of it is owned by the main window and outlives the passes.
struct Passes {
  ui::Desktop& desktop;
  activity::fLog& log;
  ui::Progress& progress;
  const std::string& plug_in_name;
  std::shared_ptr<LoadedDevice> device;
};

/// Logs a failure as action and result, and shows it. A description without a line break gets the action in
/// front.
void ReportFailure(const Passes& passes, const std::string& action, const std::string& description);

/// Reads every point from the device, in list order, and logs each read. The first failure ends the pass: it
/// is logged and shown, and the result is false. The mouse pointer is restored and the progress window closed
/// either way.
bool ReadAllPoints(const Passes& passes, int display_units);

/// Reads the points again whose fields stand in other units than these, after a read in those units failed.
/// The first failure ends the pass; it is logged, and the result is false.
bool ReadBackIn(const Passes& passes, int display_units);

/// Clears the changed flag of every binding's point.
bool InitializeAllBindings(const Passes& passes);

/// Puts every binding's value into its control, but never into one that holds an edit. Errors reach the
/// caller.
void ShowAllValues(const Passes& passes);

}  // namespace editing
