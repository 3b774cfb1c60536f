#pragma once

#include <iosfwd>

#include "headless/plug_in.h"

namespace headless {

/// Prints what the user would see: the messages that came up, the pages with their frames, labels and fields,
/// the status bar, and the log.
void PrintScreen(const PlugIn& plug_in, std::ostream& out);

}  // namespace headless
