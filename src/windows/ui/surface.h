#pragma once

#include <windows.h>

#include <array>

#include "ui/layout_engine.h"
#include "windows/ui/ui_thread.h"

namespace windows {

/// The scroll bars of a window that is smaller than its content. Sizes and places are in pixels.
class ScrollBars {
 public:
  /// Shows the bars that content of this size needs. `room` is the client area without bars, `line` the step
  /// of an arrow or of a third of a wheel notch.
  void Fit(HWND window, ui::Extent content, ui::Extent room, int line);

  /// How far the content has moved left and up.
  POINT position() const { return {axes_[SB_HORZ].position, axes_[SB_VERT].position}; }

  // These move the content and return true if it has moved.
  /// Handles WM_HSCROLL and WM_VSCROLL; the bar is SB_HORZ or SB_VERT.
  bool Request(HWND window, int bar, WORD request);
  bool Turn(HWND window, int wheel_delta);
  /// Scrolls as far as needed to show a place of the client area.
  bool Reveal(HWND window, const ui::Rectangle& place);

 private:
  struct Axis {
    int content = 0;
    int page = 0;
    int position = 0;
  };
  void Show(HWND window, int bar, int content, int page);
  bool MoveTo(HWND window, int bar, int position);
  bool RevealSpan(HWND window, int bar, int from, int to);

  int line_ = 0;
  std::array<Axis, 2> axes_;
};

/// The icons of a window at its resolution, if it differs from that of its class's icons.
class WindowIcons {
 public:
  void Take(HWND window, HINSTANCE instance);

 private:
  OwnedIcon big_, small_;
};

class NativePeer;

/// A window of our own class that contains controls: a form, a tab page, or the area of an animation. It
/// fills its background with a system colour and passes its controls' notifications to their peers.
class Surface {
 public:
  Surface(UiThread& ui_thread, int system_color) : ui_thread_(ui_thread), color_(system_color) {}
  virtual ~Surface();
  Surface(const Surface&) = delete;
  Surface& operator=(const Surface&) = delete;

  /// Throws if no window can be created, for example without a display.
  void Create(const wchar_t* caption, DWORD style, DWORD extended_style, HWND parent);

  HWND handle() const { return handle_; }
  UiThread& ui_thread() const { return ui_thread_; }
  int color() const { return color_; }

  /// The position of the surface in the client area of the form.
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
