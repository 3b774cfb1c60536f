#include "windows/ui/surface.h"

#include <windows.h>

#include <commctrl.h>

#include "platform/error.h"
#include "windows/ui/native_peer.h"

namespace windows {
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
                          "No window can be made; is there a display?");
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

}  // namespace windows
