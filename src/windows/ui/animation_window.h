#pragma once

#include <windows.h>

#include <memory>

#include "ui/desktop.h"
#include "windows/ui/ui_thread.h"

namespace windows {

/// Creates an animation control in a window; null if the system has none. The resources may also contain the
/// clip for higher resolutions, for example "AT144_201" for clip 201 at 144 dots per inch.
std::unique_ptr<ui::AnimationWindow> MakeAnimationWindow(const UiThread& ui_thread, HWND area,
                                                         const ui::AnimationStyle& style);

}  // namespace windows
