#include "windows/ui/surface.h"

#include <commctrl.h>

#include <algorithm>

#include "platform/error.h"
#include "windows/ui/native_peer.h"
#include "windows/ui/theme.h"

namespace windows {

void ScrollBars::Fit(HWND window, ui::Extent content, ui::Extent room, int line) {
  line_ = line;
  const int bar_width = SystemMetric(SM_CXVSCROLL, window), bar_height = SystemMetric(SM_CYHSCROLL, window);
  bool vertical = room.height < content.height;
  const bool horizontal = room.width - (vertical ? bar_width : 0) < content.width;
  vertical = vertical || room.height - (horizontal ? bar_height : 0) < content.height;
  Show(window, SB_HORZ, content.width, horizontal ? room.width - (vertical ? bar_width : 0) : content.width);
  Show(window, SB_VERT, content.height,
       vertical ? room.height - (horizontal ? bar_height : 0) : content.height);
}

void ScrollBars::Show(HWND window, int bar, int content, int page) {
  Axis& axis = axes_[static_cast<std::size_t>(bar)];
  axis.content = content;
  axis.page = std::max(1, page);
  axis.position = std::clamp(axis.position, 0, std::max(0, content - axis.page));
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
  info.nMax = std::max(0, content - 1);
  info.nPage = static_cast<UINT>(axis.page);
  info.nPos = axis.position;
  SetScrollInfo(window, bar, &info, TRUE);  // a page as long as the content hides the bar
}

bool ScrollBars::MoveTo(HWND window, int bar, int position) {
  Axis& axis = axes_[static_cast<std::size_t>(bar)];
  position = std::clamp(position, 0, std::max(0, axis.content - axis.page));
  if (position == axis.position) return false;
  axis.position = position;
  SetScrollPos(window, bar, position, TRUE);
  return true;
}

bool ScrollBars::Request(HWND window, int bar, WORD request) {
  const Axis& axis = axes_[static_cast<std::size_t>(bar)];
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_TRACKPOS;
  switch (request) {
    case SB_LINEUP:
      return MoveTo(window, bar, axis.position - line_);
    case SB_LINEDOWN:
      return MoveTo(window, bar, axis.position + line_);
    case SB_PAGEUP:
      return MoveTo(window, bar, axis.position - axis.page);
    case SB_PAGEDOWN:
      return MoveTo(window, bar, axis.position + axis.page);
    case SB_TOP:
      return MoveTo(window, bar, 0);
    case SB_BOTTOM:
      return MoveTo(window, bar, axis.content);
    case SB_THUMBTRACK:
      return GetScrollInfo(window, bar, &info) && MoveTo(window, bar, info.nTrackPos);
    default:
      return false;
  }
}

bool ScrollBars::Turn(HWND window, int wheel_delta) {
  constexpr int kLinesPerNotch = 3;
  return MoveTo(window, SB_VERT,
                axes_[SB_VERT].position - MulDiv(wheel_delta, kLinesPerNotch * line_, WHEEL_DELTA));
}

bool ScrollBars::RevealSpan(HWND window, int bar, int from, int to) {
  const Axis& axis = axes_[static_cast<std::size_t>(bar)];
  if (axis.page >= axis.content) return false;
  if (from < 0) return MoveTo(window, bar, axis.position + from);
  // For a place longer than the window, show its beginning.
  return to > axis.page && MoveTo(window, bar, axis.position + std::min(from, to - axis.page));
}

bool ScrollBars::Reveal(HWND window, const ui::Rectangle& place) {
  const bool across = RevealSpan(window, SB_HORZ, place.left - line_, place.right() + line_);
  const bool down = RevealSpan(window, SB_VERT, place.top - line_, place.bottom() + line_);
  return across || down;
}

namespace {

constexpr wchar_t kClass[] = L"FormSurface";

HICON ProgramIcon(HINSTANCE instance, int width_metric, int height_metric) {
  return static_cast<HICON>(LoadImageW(instance, L"WINDOW", IMAGE_ICON, GetSystemMetrics(width_metric),
                                       GetSystemMetrics(height_metric), LR_DEFAULTCOLOR | LR_SHARED));
}

void RegisterOnce(HINSTANCE instance, WNDPROC procedure) {
  WNDCLASSEXW known{};
  known.cbSize = sizeof known;
  if (GetClassInfoExW(instance, kClass, &known)) return;
  WNDCLASSEXW window{};
  window.cbSize = sizeof window;
  window.lpfnWndProc = procedure;
  window.hInstance = instance;
  window.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  window.hIcon = ProgramIcon(instance, SM_CXICON, SM_CYICON);
  window.hIconSm = ProgramIcon(instance, SM_CXSMICON, SM_CYSMICON);
  window.lpszClassName = kClass;
  RegisterClassExW(&window);
}

}  // namespace

Surface::~Surface() { Destroy(); }

void Surface::Create(const wchar_t* caption, DWORD style, DWORD extended_style, HWND parent) {
  RegisterOnce(ui_thread_.instance(), Procedure);
  CreateWindowExW(extended_style, kClass, caption, style | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, 0, 0, 0, 0,
                  parent, nullptr, ui_thread_.instance(), this);
  if (!handle_)
    throw platform::Error(static_cast<std::int32_t>(GetLastError()), "Windows",
                          "No window can be created; is there a display?");
}

void Surface::Destroy() {
  if (handle_) DestroyWindow(handle_);
  handle_ = nullptr;
}

LRESULT CALLBACK Surface::Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  auto* self = reinterpret_cast<Surface*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (message == WM_NCCREATE) {
    self = static_cast<Surface*>(reinterpret_cast<CREATESTRUCTW*>(lparam)->lpCreateParams);
    self->handle_ = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
  }
  if (!self) return DefWindowProcW(window, message, wparam, lparam);
  if (message == WM_NCDESTROY) {
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    self->handle_ = nullptr;
    return DefWindowProcW(window, message, wparam, lparam);
  }
  return self->ui_thread_.Dispatch([&] { return self->Handle(message, wparam, lparam); });
}

LRESULT Surface::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_ERASEBKGND: {
      RECT area;
      GetClientRect(handle_, &area);
      FillRect(reinterpret_cast<HDC>(wparam), &area, GetSysColorBrush(color_));
      return 1;
    }
    case WM_COMMAND:
    case WM_NOTIFY:
    case WM_DRAWITEM:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORLISTBOX:
      return Reflect(message, wparam, lparam);
    default:
      return DefWindowProcW(handle_, message, wparam, lparam);
  }
}

LRESULT Surface::Reflect(UINT message, WPARAM wparam, LPARAM lparam) {
  HWND from = reinterpret_cast<HWND>(lparam);
  if (message == WM_NOTIFY) from = reinterpret_cast<NMHDR*>(lparam)->hwndFrom;
  if (message == WM_DRAWITEM) from = reinterpret_cast<DRAWITEMSTRUCT*>(lparam)->hwndItem;
  NativePeer* const peer = NativePeer::Of(from);
  if (peer && peer->alive()) {
    switch (message) {
      case WM_COMMAND:
        peer->Command(HIWORD(wparam));
        return 0;
      case WM_NOTIFY:
        return peer->Notify(*reinterpret_cast<NMHDR*>(lparam));
      case WM_DRAWITEM:
        peer->Draw(*reinterpret_cast<DRAWITEMSTRUCT*>(lparam));
        return TRUE;
      default:
        if (const HBRUSH brush = peer->Colors(reinterpret_cast<HDC>(wparam)))
          return reinterpret_cast<LRESULT>(brush);
    }
  }
  return DefWindowProcW(handle_, message, wparam, lparam);
}

void WindowIcons::Take(HWND window, HINSTANCE instance) {
  const auto take = [&](OwnedIcon& icon, WPARAM which, int metric) {
    const int edge = SystemMetric(metric, window);
    OwnedIcon drawn(
        static_cast<HICON>(LoadImageW(instance, L"WINDOW", IMAGE_ICON, edge, edge, LR_DEFAULTCOLOR)));
    SendMessageW(window, WM_SETICON, which, reinterpret_cast<LPARAM>(drawn.get()));
    icon = std::move(drawn);
  };
  take(big_, ICON_BIG, SM_CXICON);
  take(small_, ICON_SMALL, SM_CXSMICON);
}

}  // namespace windows
