#include "windows/ui/desktop.h"

#include <windows.h>

#include <commctrl.h>

#include <utility>

#include "windows/com/wide_text.h"
#include "windows/ui/animation_window.h"
#include "windows/ui/dialogs.h"
#include "windows/ui/form_shell.h"
#include "windows/ui/shell_services.h"

#undef Yield  // the system's macro

namespace windows {
namespace {

void InitialiseControls() {
  INITCOMMONCONTROLSEX classes{sizeof classes, ICC_ANIMATE_CLASS | ICC_BAR_CLASSES | ICC_LISTVIEW_CLASSES |
                                                   ICC_TAB_CLASSES | ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&classes);
}

}  // namespace

WindowsDesktop::WindowsDesktop() : WindowsDesktop(Settings{}) {}

WindowsDesktop::WindowsDesktop(Settings settings) : end_program_(std::move(settings.end_program)) {
  InitialiseControls();
  // The system would cover a window with a dead picture while its object server takes more than five seconds.
  DisableProcessWindowsGhosting();
  if (!settings.on_failure)
    settings.on_failure = [this](const std::exception& failure) {
      ShowMessage({failure.what(), {}, ui::Icon::Critical});
    };
  ui_thread_ = std::make_unique<UiThread>(settings.dpi, std::move(settings.on_failure));
}

WindowsDesktop::~WindowsDesktop() = default;

int WindowsDesktop::Run() {
  MSG message{};
  ui_thread_->Loop([&] {
    for (;;) {
      ui_thread_->DestroyClosed();
      if (GetMessageW(&message, nullptr, 0, 0) <= 0) return;
      ui_thread_->Deliver(message);
    }
  });
  ui_thread_->DestroyClosed();
  return static_cast<int>(message.wParam);
}

void WindowsDesktop::Yield() {
  MSG message{};
  ui_thread_->Loop([&] {
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
      if (message.message == WM_QUIT) {
        // For the outermost loop.
        PostQuitMessage(static_cast<int>(message.wParam));
        return;
      }
      ui_thread_->Deliver(message);
    }
  });
  ui_thread_->DestroyClosed();
}

void WindowsDesktop::EndProgram() {
  if (end_program_)
    end_program_();
  else
    PostQuitMessage(0);
}

std::unique_ptr<ui::FormWindow> WindowsDesktop::MakeWindow(ui::Form& form) {
  auto made = std::make_unique<FormShell>(*ui_thread_, form);
  made->Create();
  return std::make_unique<FormWindowPeer>(ui_thread_->Adopt(std::move(made)));
}

std::unique_ptr<ui::AnimationWindow> WindowsDesktop::MakeAnimation(std::uintptr_t owner,
                                                                   const ui::AnimationStyle& style) {
  return MakeAnimationWindow(*ui_thread_, reinterpret_cast<HWND>(owner), style);
}

ui::Answer WindowsDesktop::ShowMessage(const ui::Message& message) {
  ++ui_thread_->messages_shown;
  return ShowMessageBox(message, *ui_thread_);
}

void WindowsDesktop::CopyText(const std::string& text) { PutOnClipboard(ToWide(text)); }

bool WindowsDesktop::ShowHelp(const std::string& file, int context) {
  return ui_thread_->help.ShowContext(ToWide(file), static_cast<DWORD>(context));
}

void WindowsDesktop::SetPointer(ui::Pointer pointer) {
  const bool hourglass = pointer == ui::Pointer::Hourglass;
  if (std::exchange(ui_thread_->hourglass, hourglass) == hourglass) return;
  // The system asks for the pointer again only when the mouse moves.
  POINT at;
  GetCursorPos(&at);
  const HWND under = WindowFromPoint(at);
  if (under && GetWindowThreadProcessId(under, nullptr) == GetCurrentThreadId())
    SendMessageW(under, WM_SETCURSOR, reinterpret_cast<WPARAM>(under), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
}

void WindowsDesktop::RepaintActiveWindow() {
  if (const HWND active = GetActiveWindow())
    RedrawWindow(active, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
}

double WindowsDesktop::TwipsPerPixelX() const { return ui_thread_->TwipsPerPixel(); }
double WindowsDesktop::TwipsPerPixelY() const { return TwipsPerPixelX(); }

ui::Desktop::Area WindowsDesktop::WorkArea() const {
  RECT area{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
  const double scale = TwipsPerPixelX();
  return {area.left * scale, area.top * scale, (area.right - area.left) * scale,
          (area.bottom - area.top) * scale};
}

}  // namespace windows
