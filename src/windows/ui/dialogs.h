#pragma once

#include <windows.h>

#include <vector>

#include "ui/desktop.h"

namespace windows {

class UiThread;

/// Lets none of the program's windows be used while a dialog of the system is up. The dialog itself sees to
/// its owner: it gives it the focus back.
class Modal {
 public:
  explicit Modal(const UiThread& ui_thread);
  ~Modal();
  Modal(const Modal&) = delete;
  Modal& operator=(const Modal&) = delete;

  /// The program's active window; null if another program's is active.
  HWND owner() const { return owner_; }

 private:
  HWND owner_ = nullptr;
  std::vector<HWND> disabled_;
};

class UiThread;

/// Shows a message box over the program's active window; none of its windows can be used meanwhile.
ui::Answer ShowMessageBox(const ui::Message& message, const UiThread& ui_thread);

}  // namespace windows
