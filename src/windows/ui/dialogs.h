#pragma once

#include <windows.h>

#include <vector>

#include "ui/desktop.h"

namespace windows {

class UiThread;

/// Disables the program's windows while a system dialog is shown, except its owner: the dialog disables that
/// one itself and returns the focus to it.
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

/// Shows a message box over the program's active window and disables its windows meanwhile.
ui::Answer ShowMessageBox(const ui::Message& message, const UiThread& ui_thread);

}  // namespace windows
