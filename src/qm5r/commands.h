#pragma once

#include "qm5r/command_line.h"
#include "qm5r/computer.h"

namespace qm5r {

/// Exit codes. Incomplete goes before differences: what is not known may differ as well.
enum ExitCode : int { kDone = 0, kWrongCommandLine = 1, kFailed = 2, kDifferences = 3, kIncomplete = 4 };

/// Does what the options say and returns the exit code. Failures are on the error output; nothing is thrown.
int Run(const Options& options, Computer& computer);

}  // namespace qm5r
