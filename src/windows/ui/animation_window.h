#pragma once

#include <windows.h>

#include <memory>

#include "ui/desktop.h"

namespace windows {

/// Makes an animation control in a window; null where the system has none.
std::unique_ptr<ui::AnimationWindow> MakeAnimationWindow(HWND area, const ui::AnimationStyle& style);

}  // namespace windows
