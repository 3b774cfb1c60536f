#include "windows/ui/dpi.h"

#include "windows/ui/gdi.h"

namespace windows {
namespace {

// Since Windows 10, version 1607.
using GetWindowDpi = UINT(WINAPI*)(HWND);
using GetMetricAt = int(WINAPI*)(int, UINT);
using AdjustAt = BOOL(WINAPI*)(RECT*, DWORD, BOOL, DWORD, UINT);

template <class Function>
Function Find(const char* name) {
  const FARPROC found = GetProcAddress(GetModuleHandleW(L"user32"), name);
  return reinterpret_cast<Function>(reinterpret_cast<void*>(found));
}

ui::Extent SizeOf(const RECT& area) {
  return {static_cast<int>(area.right - area.left), static_cast<int>(area.bottom - area.top)};
}

}  // namespace

int SystemDpi() {
  const OwnedDc screen(CreateCompatibleDC(nullptr));
  const int dpi = GetDeviceCaps(screen.get(), LOGPIXELSY);
  return dpi > 0 ? dpi : USER_DEFAULT_SCREEN_DPI;
}

int DpiOf(HWND window) {
  static const auto get = Find<GetWindowDpi>("GetDpiForWindow");
  const UINT dpi = get ? get(window) : 0;
  return dpi > 0 ? static_cast<int>(dpi) : SystemDpi();
}

int SystemMetric(int metric, HWND window) {
  static const auto get = Find<GetMetricAt>("GetSystemMetricsForDpi");
  return get ? get(metric, static_cast<UINT>(DpiOf(window))) : GetSystemMetrics(metric);
}

ui::Extent FrameOf(HWND window) {
  static const auto adjust = Find<AdjustAt>("AdjustWindowRectExForDpi");
  const auto style = static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE));
  const auto extended = static_cast<DWORD>(GetWindowLongW(window, GWL_EXSTYLE));
  RECT frame{};
  if (adjust)
    adjust(&frame, style, FALSE, extended, static_cast<UINT>(DpiOf(window)));
  else
    AdjustWindowRectEx(&frame, style, FALSE, extended);
  return SizeOf(frame);
}

ui::Extent WorkAreaAround(HWND window) {
  MONITORINFO screen{};
  screen.cbSize = sizeof screen;
  GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &screen);
  return SizeOf(screen.rcWork);
}

}  // namespace windows
