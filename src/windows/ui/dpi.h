#pragma once

#include <windows.h>

#include "ui/layout_engine.h"

namespace windows {

/// Resolutions, in dots per inch, and what the system itself draws at them. A system that knows no other
/// gives all windows the resolution of the process.

/// That of the process, which stays as it was at its start.
int SystemDpi();
/// That of the screen on which a window stands.
int DpiOf(HWND window);
/// As GetSystemMetrics, for what the system draws in this window.
int SystemMetric(int metric, HWND window);
/// The width of both edges of a window, and the height, without scroll bars, whatever it has now.
ui::Extent FrameOf(HWND window);
/// The part of a window's screen that windows may cover.
ui::Extent WorkAreaAround(HWND window);

}  // namespace windows
