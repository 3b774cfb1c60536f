#include "windows/ui/desktop.h"

#include <windows.h>

#include <commctrl.h>

#include <utility>

#include "windows/com/wide_text.h"
#include "windows/ui/dialogs.h"
#include "windows/ui/form_shell.h"
#include "windows/ui/shell_services.h"

#undef Yield  // the system's macro

namespace windows {
namespace {

struct ModuleFree {
  void operator()(HMODULE module) const noexcept { FreeLibrary(module); }
};
using OwnedModule = std::unique_ptr<std::remove_pointer_t<HMODULE>, ModuleFree>;

bool SameFile(const std::wstring& path, HMODULE module) {
  wchar_t own[MAX_PATH];
  GetModuleFileNameW(module, own, MAX_PATH);
  return lstrcmpiW(path.c_str(), own) == 0;
}

class SystemAnimation final : public ui::AnimationWindow {
 public:
  SystemAnimation(const UiThread& ui_thread, HWND window) : ui_thread_(ui_thread), window_(window) {
    SetWindowSubclass(window, Procedure, 0, reinterpret_cast<DWORD_PTR>(this));
  }
  ~SystemAnimation() override {
    // The window may have been destroyed with the one around it.
    if (IsWindow(window_)) DestroyWindow(window_);
  }

  Opened OpenResource(const std::string& module_path, std::int32_t resource) override {
    module_ = GetModuleHandleW(nullptr);
    const std::wstring path = ToWide(module_path);
    if (!path.empty() && !SameFile(path, module_)) {
      library_.reset(LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE));
      if (!library_) return Opened::ModuleMissing;
      module_ = library_.get();
    }
    resource_ = resource;
    return Open();
  }
  Opened OpenFile(const std::string& path) override {
    module_ = nullptr;
    file_ = ToWide(path);
    return Open();
  }

  void Show() override {
    // A centred clip needs a control of the area's size.
    RECT area;
    GetClientRect(GetParent(window_), &area);
    MoveWindow(window_, 0, 0, static_cast<int>(area.right), static_cast<int>(area.bottom), FALSE);
    ShowWindow(window_, SW_SHOWNA);
    UpdateWindow(window_);
  }
  void Play() override {
    playing_ = true;
    SendMessageW(window_, ACM_PLAY, static_cast<WPARAM>(-1), MAKELPARAM(0, -1));
  }
  void Close() override {
    playing_ = false;
    SendMessageW(window_, ACM_OPENW, 0, 0);
    ShowWindow(window_, SW_HIDE);
  }

  std::int32_t Width() const override { return Size().cx; }
  std::int32_t Height() const override { return Size().cy; }
  std::uintptr_t hwnd() const override {
    return IsWindow(window_) ? reinterpret_cast<std::uintptr_t>(window_) : 0;
  }

 private:
  Opened Open() {
    dpi_ = ui_thread_.ShownDpi(window_);
    const std::wstring drawn = DrawnFor(dpi_);
    const wchar_t* const clip = !module_        ? file_.c_str()
                                : drawn.empty() ? MAKEINTRESOURCEW(resource_)
                                                : drawn.c_str();
    const LRESULT opened =
        SendMessageW(window_, ACM_OPENW, reinterpret_cast<WPARAM>(module_), reinterpret_cast<LPARAM>(clip));
    return opened ? Opened::Yes : Opened::ClipMissing;
  }
  /// The name of the clip for this resolution or the next lower one; empty for the clip itself.
  std::wstring DrawnFor(int dpi) const {
    for (const int drawn : {192, 144}) {
      std::wstring name = L"AT" + std::to_wstring(drawn) + L"_" + std::to_wstring(resource_);
      if (drawn <= dpi && module_ && FindResourceW(module_, name.c_str(), L"AVI")) return name;
    }
    return {};
  }
  /// Opens the clip again, because the control never scales it and keeps the first background.
  void OpenAgain() {
    if (Open() == Opened::Yes) Play();
  }
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR id,
                                    DWORD_PTR data) {
    auto& self = *reinterpret_cast<SystemAnimation*>(data);
    const LRESULT result = DefSubclassProc(window, message, wparam, lparam);
    if (message == WM_NCDESTROY) RemoveWindowSubclass(window, Procedure, id);
    const bool resized = message == WM_SIZE && self.dpi_ != self.ui_thread_.ShownDpi(window);
    if (self.playing_ && (resized || message == WM_SYSCOLORCHANGE)) self.OpenAgain();
    return result;
  }
  SIZE Size() const {
    RECT area{};
    GetClientRect(window_, &area);
    return {area.right, area.bottom};
  }

  const UiThread& ui_thread_;
  HWND window_;
  OwnedModule library_;
  HMODULE module_ = nullptr;
  std::int32_t resource_ = 0;
  std::wstring file_;
  int dpi_ = 0;
  bool playing_ = false;
};

/// Null if the system has no such control. The resources may also contain the clip for higher resolutions,
/// for example "AT144_201" for clip 201 at 144 dots per inch.
std::unique_ptr<ui::AnimationWindow> MakeAnimationWindow(const UiThread& ui_thread, HWND area,
                                                         const ui::AnimationStyle& style) {
  const DWORD flags = WS_CHILD | WS_VISIBLE | (style.auto_play ? static_cast<DWORD>(ACS_AUTOPLAY) : 0) |
                      (style.transparent ? static_cast<DWORD>(ACS_TRANSPARENT) : 0) |
                      (style.centre ? static_cast<DWORD>(ACS_CENTER) : 0);
  const HWND window = CreateWindowExW(0, ANIMATE_CLASSW, nullptr, flags, 0, 0, 0, 0, area, nullptr,
                                      GetModuleHandleW(nullptr), nullptr);
  if (!window) return nullptr;
  // A transparent clip shows what its parent paints below it.
  if (style.transparent)
    SetWindowLongW(area, GWL_STYLE, GetWindowLongW(area, GWL_STYLE) & ~static_cast<LONG>(WS_CLIPCHILDREN));
  return std::make_unique<SystemAnimation>(ui_thread, window);
}

}  // namespace

WindowsDesktop::WindowsDesktop() : WindowsDesktop(Settings{}) {}

WindowsDesktop::WindowsDesktop(Settings settings) : end_program_(std::move(settings.end_program)) {
  const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_ANIMATE_CLASS | ICC_BAR_CLASSES |
                                                         ICC_LISTVIEW_CLASSES | ICC_TAB_CLASSES |
                                                         ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&classes);
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

void WindowsDesktop::RunWhileVisible(ui::Form& form) {
  MSG message{};
  ui_thread_->Loop([&] {
    while (form.Visible()) {
      if (GetMessageW(&message, nullptr, 0, 0) <= 0) return PostQuitMessage(static_cast<int>(message.wParam));
      ui_thread_->Deliver(message);
    }
  });
  ui_thread_->DestroyClosed();
}

std::optional<std::size_t> WindowsDesktop::ChooseFromMenu(ui::HasWindow& button,
                                                          const std::vector<std::string>& captions) {
  std::vector<MenuItem> items;
  for (const std::string& caption : captions) items.push_back({ToWide(caption)});
  return windows::ChooseFromMenu(reinterpret_cast<HWND>(button.hwnd()), -1, items);
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
