#pragma once

#include "qm5r/command_line.h"
#include "qm5r/computer.h"

namespace qm5r {

/// Reads the devices and shows what would change; may write the plan to a file. Writes to no device.
int MakePlan(const Options& options, Computer& computer);

/// Writes a plan's values to its devices, reads them back, and records every write. Without a plan it makes
/// one, shows it, and asks first.
int ApplyPlan(const Options& options, Computer& computer);

/// Goes on with what a record's run has not done.
int ResumeRun(const Options& options, Computer& computer);

/// Puts back what a record's run wrote, if the devices still hold it.
int UndoRun(const Options& options, Computer& computer);

/// Prints the records' writes.
int ShowHistory(const Options& options, Computer& computer);

}  // namespace qm5r
