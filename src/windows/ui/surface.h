#pragma once

#include <windows.h>

#include <array>

#include "ui/layout_engine.h"
#include "windows/ui/ui_thread.h"

namespace windows {

/// The scroll bars of a window that is smaller than its content. Sizes and places are in pixels.
class ScrollBars {
 public:
  /// Shows the bars that content of this size needs; `room` is the client area of the window without bars,
  /// `line` how far an arrow or a part of a wheel's turn moves the content.
  void Fit(HWND window, ui::Extent content, ui::Extent room, int line);

  /// How far the content is moved to the left and up.
  POINT position() const { return {axes_[SB_HORZ].position, axes_[SB_VERT].position}; }

  // These move the content; true when it has moved.
  /// As WM_HSCROLL and WM_VSCROLL ask for: the bar is SB_HORZ or SB_VERT.
  bool Request(HWND window, int bar, WORD request);
  bool Turn(HWND window, int wheel_delta);
  /// As far as needed to show a place of the client area.
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

/// The icons of a window at its resolution, of another size than those of its class.
class WindowIcons {
 public:
  void Take(HWND window, HINSTANCE instance);

 private:
  OwnedIcon big_, small_;
};

class NativePeer;

/// A window of our own class that carries controls: the form itself, a tab page, the area of an animation. It
/// fills its background with a system colour and hands what its controls tell to their peers.
class Surface {
 public:
  Surface(UiThread& ui_thread, int system_color) : ui_thread_(ui_thread), color_(system_color) {}
  virtual ~Surface();
  Surface(const Surface&) = delete;
  Surface& operator=(const Surface&) = delete;

  /// Raises an error if no window can be made, for example without a display.
  void Create(const wchar_t* caption, DWORD style, DWORD extended_style, HWND parent);

  HWND handle() const { return handle_; }
  UiThread& ui_thread() const { return ui_thread_; }
  int color() const { return color_; }

  /// The surface's place in the client area of the form.
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
