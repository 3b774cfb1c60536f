#pragma once

#include <windows.h>

/// Clicks the middle of a window. Moved and pressed in one go, so that the real mouse cannot come between.
inline void ClickWindow(HWND window, bool right = false) {
  RECT place{};
  GetWindowRect(window, &place);
  const auto absolute = [](LONG pixel, int screen_metric) {
    return MulDiv(static_cast<int>(pixel), 65536, GetSystemMetrics(screen_metric)) + 32;
  };
  INPUT inputs[3]{};
  for (INPUT& input : inputs) {
    input.type = INPUT_MOUSE;
    input.mi.dx = absolute((place.left + place.right) / 2, SM_CXSCREEN);
    input.mi.dy = absolute((place.top + place.bottom) / 2, SM_CYSCREEN);
    input.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
  }
  inputs[1].mi.dwFlags |= static_cast<DWORD>(right ? MOUSEEVENTF_RIGHTDOWN : MOUSEEVENTF_LEFTDOWN);
  inputs[2].mi.dwFlags |= static_cast<DWORD>(right ? MOUSEEVENTF_RIGHTUP : MOUSEEVENTF_LEFTUP);
  SendInput(3, inputs, sizeof(INPUT));
}
