#pragma once

#include <windows.h>

#include <iosfwd>

namespace windows {

/// Prints what the plug-in's windows show: every page of the main window with its frames, labels and fields,
/// the status bar, and the rows of the log. Works on the windows from outside, as a screen reader does. False
/// where the plug-in shows no window.
bool PrintScreen(std::ostream& out);

/// Asks the plug-in's window to close, as its close box does. False where it shows no window.
bool CloseWindow();

/// The process that the plug-in runs in; 0 where it does not run.
DWORD PlugInProcess();

}  // namespace windows
