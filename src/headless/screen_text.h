#pragma once

#include <iosfwd>

#include "headless/plug_in.h"

namespace headless {

/// Prints what the user would see: the messages, every caption, field and button of the window in the order
/// of its layout, the status bar, and the log.
void PrintScreen(const PlugIn& plug_in, std::ostream& out);

}  // namespace headless
