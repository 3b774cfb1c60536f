#include "windows/ui/ui_thread.h"

// The identifiers of the annotation service are made here, for this file alone.
#include <initguid.h>
#include <objbase.h>
#include <oleacc.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "platform/error.h"
#include "windows/ui/form_shell.h"
#include "windows/ui/native_peer.h"

namespace windows {
namespace {

// PROPID_ACC_NAME and PROPID_ACC_DESCRIPTION of the system.
constexpr GUID kName{0x608d3df8, 0x8128, 0x4aa7, {0xa4, 0x28, 0xf5, 0x5e, 0x49, 0x26, 0x72, 0x91}};
constexpr GUID kDescription{0x4d48dfe4, 0xbd3f, 0x491f, {0xa6, 0x48, 0x49, 0x2d, 0x6f, 0x20, 0xc5, 0x88}};

void Annotate(IAccPropServices* services, HWND control, const GUID& property, const std::wstring& text) {
  if (services)
    services->SetHwndPropStr(control, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, property, text.c_str());
}

}  // namespace

AccessibleTexts::AccessibleTexts() {
  CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER, IID_IAccPropServices,
                   services_.ReceiveVoid());
}

AccessibleTexts::~AccessibleTexts() = default;

void AccessibleTexts::SetName(HWND control, const std::wstring& name) const {
  Annotate(services_.get(), control, kName, name);
}

void AccessibleTexts::SetDescription(HWND control, const std::wstring& description) const {
  Annotate(services_.get(), control, kDescription, description);
}

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
  if (on_failure_) platform::IgnoreFailure([&] { on_failure_(failure); });
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
