#pragma once

#include <windows.h>

#include <vector>

#include "ui/desktop.h"

namespace windows {

/// Shows a message box over the active one of the windows and lets none of them be used meanwhile.
ui::Answer ShowMessageBox(const ui::Message& message, const std::vector<HWND>& windows);

}  // namespace windows
