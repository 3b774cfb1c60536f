#include "windows/ui/ui_thread.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "platform/attempt.h"
#include "windows/ui/dpi.h"
#include "windows/ui/form_shell.h"
#include "windows/ui/native_peer.h"

namespace windows {

UiThread::UiThread(int dpi, FailureHandler on_failure)
    : dpi_(dpi > 0 ? dpi : SystemDpi()), dpi_is_given_(dpi > 0), on_failure_(std::move(on_failure)) {}

UiThread::~UiThread() {
  help.CloseAll();
  for (const auto& shell : shells_) shell->Close();
  shells_.clear();
}

HINSTANCE UiThread::instance() const { return GetModuleHandleW(nullptr); }

int UiThread::FirstDpi(HWND window) const { return dpi_is_given_ ? dpi_ : DpiOf(window); }

int UiThread::ShownDpi(HWND window) const {
  const HWND root = GetAncestor(window, GA_ROOT);
  for (const auto& shell : shells_)
    if (shell->handle() == root) return shell->theme().dpi();
  return FirstDpi(window);
}

std::shared_ptr<const Theme> UiThread::ThemeFor(int dpi) {
  const LOGFONTW font = MessageFont(dpi);
  std::shared_ptr<const Theme>& theme = themes_[dpi];
  if (!theme || !theme->IsIn(font)) theme = std::make_shared<const Theme>(dpi, font);
  return theme;
}

void UiThread::Report(const std::exception& failure) noexcept {
  if (on_failure_) platform::Attempt([&] { on_failure_(failure); });
}

void UiThread::ReportUnknown() noexcept { Report(std::runtime_error("An unknown failure.")); }

void UiThread::Deliver(MSG& message) noexcept {
  if (message.message >= WM_MOUSEFIRST && message.message <= WM_MOUSELAST) {
    for (const auto& shell : shells_)
      if (!shell->closed() && shell->handle() == GetAncestor(message.hwnd, GA_ROOT))
        shell->RelayToToolTips(message);
  } else if (UseKey(message)) {
    return;
  }
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

bool UiThread::UseKey(MSG& message) noexcept {
  if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) return false;
  if (!message.hwnd || NativePeer::Of(message.hwnd)) return false;
  for (HWND window = GetParent(message.hwnd); window; window = GetParent(window)) {
    NativePeer* const peer = NativePeer::Of(window);
    if (peer) return peer->alive() && Dispatch([&] { return peer->UseKey(message) ? 1 : 0; }) != 0;
  }
  return false;
}

FormShell& UiThread::Adopt(std::unique_ptr<FormShell> shell) {
  shells_.push_back(std::move(shell));
  return *shells_.back();
}

void UiThread::DestroyClosed() noexcept {
  if (procedures_ > 0 || loops_ > 1) return;
  for (std::size_t i = 0; i < shells_.size();) {
    if (!shells_[i]->closed()) {
      ++i;
      continue;
    }
    const std::unique_ptr<FormShell> going = std::move(shells_[i]);
    shells_.erase(shells_.begin() + static_cast<std::ptrdiff_t>(i));
  }
}

}  // namespace windows
