#pragma once

#include <windows.h>

#include <memory>

#include "ui/desktop.h"
#include "windows/ui/ui_thread.h"

namespace windows {

/// Makes an animation control in a window; null if the system has none. A clip of a program's resources
/// may be there once more, drawn for higher resolutions: that of 201 for 144 dots per inch is named
/// "AT144_201".
std::unique_ptr<ui::AnimationWindow> MakeAnimationWindow(const UiThread& ui_thread, HWND area,
                                                         const ui::AnimationStyle& style);

}  // namespace windows
