#pragma once

#include <cstdint>

namespace ui {

/// A form or a control: what has a window of the system while it is shown.
class HasWindow {
 public:
  /// The window's handle; 0 while there is none.
  virtual std::uintptr_t hwnd() const = 0;

 protected:
  ~HasWindow() = default;
};

}  // namespace ui
