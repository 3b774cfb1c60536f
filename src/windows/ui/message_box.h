#pragma once

#include "ui/desktop.h"

namespace windows {

class UiThread;

/// Shows a message box over the program's active window; none of its windows can be used meanwhile.
ui::Answer ShowMessageBox(const ui::Message& message, const UiThread& ui_thread);

}  // namespace windows
