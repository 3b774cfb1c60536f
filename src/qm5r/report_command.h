#pragma once

#include "qm5r/command_line.h"
#include "qm5r/computer.h"

namespace qm5r {

/// Reports on the devices of a place, or on a snapshot: a folder with an index. Returns the exit code; throws
/// as the other commands do.
int MakeReport(const Options& options, Computer& computer);

}  // namespace qm5r
