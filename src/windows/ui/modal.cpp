#include "windows/ui/modal.h"

#include "windows/ui/form_shell.h"
#include "windows/ui/ui_thread.h"

namespace windows {

Modal::Modal(const UiThread& ui_thread) {
  const HWND active = GetActiveWindow();
  for (const auto& shell : ui_thread.shells()) {
    const HWND window = shell->handle();
    if (shell->closed() || !IsWindowVisible(window)) continue;
    if (window == active) {
      owner_ = window;
    } else if (IsWindowEnabled(window)) {
      EnableWindow(window, FALSE);
      disabled_.push_back(window);
    }
  }
}

Modal::~Modal() {
  for (const HWND window : disabled_)
    if (IsWindow(window)) EnableWindow(window, TRUE);
}

}  // namespace windows
