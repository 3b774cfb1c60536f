#pragma once

#include <windows.h>

#include "windows/ui/ui_thread.h"

namespace windows {

class NativePeer;

/// A window of our own class that carries controls: the form itself, a tab page, the area of an animation. It
/// fills its background with a system colour and hands what its controls tell to their peers.
class Surface {
 public:
  Surface(UiThread& ui_thread, int system_color) : ui_thread_(ui_thread), color_(system_color) {}
  virtual ~Surface();
  Surface(const Surface&) = delete;
  Surface& operator=(const Surface&) = delete;

  /// Raises an error when no window can be made, as where there is no display.
  void Create(const wchar_t* caption, DWORD style, DWORD extended_style, HWND parent);

  HWND handle() const { return handle_; }
  UiThread& ui_thread() const { return ui_thread_; }
  int color() const { return color_; }

  /// Where the surface stands in the client area of the form.
  POINT origin{};

 protected:
  virtual LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam);
  void Destroy();

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  LRESULT Reflect(UINT message, WPARAM wparam, LPARAM lparam);

  UiThread& ui_thread_;
  int color_;
  HWND handle_ = nullptr;
};

}  // namespace windows
