#pragma once

#include <windows.h>

#include <iosfwd>

namespace windows {

/// Prints what the plug-in's windows show: every page of the main window with its frames, labels and fields,
/// the status bar, and the rows of the log. Reads the windows from outside, as a screen reader does. False if
/// the plug-in shows no window.
bool PrintScreen(std::ostream& out);

/// Asks the plug-in's window to close, like its close box. False if it shows no window.
bool CloseWindow();

/// The plug-in's process; 0 if it does not run.
DWORD PlugInProcess();

}  // namespace windows
