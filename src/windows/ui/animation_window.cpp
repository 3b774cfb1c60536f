#include "windows/ui/animation_window.h"

#include <windows.h>

#include <commctrl.h>

#include "windows/com/wide_text.h"

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
  explicit SystemAnimation(HWND window) : window_(window) {}
  ~SystemAnimation() override {
    // The window around it may have taken it along.
    if (IsWindow(window_)) DestroyWindow(window_);
  }

  Opened OpenResource(const std::string& module_path, std::int32_t resource) override {
    HMODULE module = GetModuleHandleW(nullptr);
    const std::wstring path = ToWide(module_path);
    if (!path.empty() && !SameFile(path, module)) {
      library_.reset(LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE));
      if (!library_) return Opened::ModuleMissing;
      module = library_.get();
    }
    return Open(module, MAKEINTRESOURCEW(resource));
  }
  Opened OpenFile(const std::string& path) override { return Open(nullptr, ToWide(path).c_str()); }

  void Show() override {
    // A centred clip needs a control of the area's size.
    RECT area;
    GetClientRect(GetParent(window_), &area);
    MoveWindow(window_, 0, 0, static_cast<int>(area.right), static_cast<int>(area.bottom), FALSE);
    ShowWindow(window_, SW_SHOWNA);
    UpdateWindow(window_);
  }
  void Play() override { SendMessageW(window_, ACM_PLAY, static_cast<WPARAM>(-1), MAKELPARAM(0, -1)); }
  void Close() override {
    SendMessageW(window_, ACM_OPENW, 0, 0);
    ShowWindow(window_, SW_HIDE);
  }

  std::int32_t Width() const override { return Size().cx; }
  std::int32_t Height() const override { return Size().cy; }
  std::uintptr_t hwnd() const override {
    return IsWindow(window_) ? reinterpret_cast<std::uintptr_t>(window_) : 0;
  }

 private:
  Opened Open(HMODULE module, const wchar_t* clip) {
    const LRESULT opened =
        SendMessageW(window_, ACM_OPENW, reinterpret_cast<WPARAM>(module), reinterpret_cast<LPARAM>(clip));
    return opened ? Opened::Yes : Opened::ClipMissing;
  }
  SIZE Size() const {
    RECT area{};
    GetClientRect(window_, &area);
    return {area.right, area.bottom};
  }

  HWND window_;
  OwnedModule library_;
};

}  // namespace

std::unique_ptr<ui::AnimationWindow> MakeAnimationWindow(HWND area, const ui::AnimationStyle& style) {
  const DWORD flags = WS_CHILD | WS_VISIBLE | (style.auto_play ? static_cast<DWORD>(ACS_AUTOPLAY) : 0) |
                      (style.transparent ? static_cast<DWORD>(ACS_TRANSPARENT) : 0) |
                      (style.centre ? static_cast<DWORD>(ACS_CENTER) : 0);
  const HWND window = CreateWindowExW(0, ANIMATE_CLASSW, nullptr, flags, 0, 0, 0, 0, area, nullptr,
                                      GetModuleHandleW(nullptr), nullptr);
  if (!window) return nullptr;
  return std::make_unique<SystemAnimation>(window);
}

}  // namespace windows
