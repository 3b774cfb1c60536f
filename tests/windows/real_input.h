#pragma once

#include <windows.h>

#include <cstddef>
#include <vector>

/// Presses keys together and releases the last one first or, as fast typists do, the first one.
inline void PressKeys(const std::vector<WORD>& keys, bool first_key_up_first = false) {
  std::vector<INPUT> inputs(2 * keys.size());
  for (std::size_t i = 0; i < keys.size(); ++i)
    for (INPUT* input : {&inputs[i], &inputs[first_key_up_first ? keys.size() + i : inputs.size() - 1 - i]}) {
      input->type = INPUT_KEYBOARD;
      input->ki.wVk = keys[i];
      input->ki.wScan = static_cast<WORD>(MapVirtualKeyW(keys[i], MAPVK_VK_TO_VSC));
      input->ki.dwFlags = input == &inputs[i] ? 0 : KEYEVENTF_KEYUP;
    }
  SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

inline INPUT MouseAt(LONG x, LONG y) {
  const auto absolute = [](LONG pixel, int screen_metric) {
    return MulDiv(static_cast<int>(pixel), 65536, GetSystemMetrics(screen_metric)) + 32;
  };
  INPUT input{};
  input.type = INPUT_MOUSE;
  input.mi.dx = absolute(x, SM_CXSCREEN);
  input.mi.dy = absolute(y, SM_CYSCREEN);
  input.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
  return input;
}

inline void MoveMouse(LONG x, LONG y) {
  INPUT input = MouseAt(x, y);
  SendInput(1, &input, sizeof input);
}

/// Moves the mouse unless it is already there. The real mouse may later report an older place and move it
/// back, so repeat this until the expected effect appears.
inline void KeepMouseAt(LONG x, LONG y) {
  POINT at{};
  if (!GetCursorPos(&at) || at.x != x || at.y != y) MoveMouse(x, y);
}

/// Clicks the middle of a window. Moves and presses in one call, so that the real mouse cannot interfere.
inline void ClickWindow(HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  const INPUT middle = MouseAt((place.left + place.right) / 2, (place.top + place.bottom) / 2);
  INPUT inputs[3]{middle, middle, middle};
  inputs[1].mi.dwFlags |= MOUSEEVENTF_LEFTDOWN;
  inputs[2].mi.dwFlags |= MOUSEEVENTF_LEFTUP;
  SendInput(3, inputs, sizeof(INPUT));
}
