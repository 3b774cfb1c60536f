#include "windows/ui/shell_services.h"

#include <windowsx.h>

#include <algorithm>
#include <memory>
#include <type_traits>

#include "platform/error.h"
#include "windows/com/wide_text.h"

namespace windows {
namespace {

/// The open clipboard. Another program may have it open for a moment, so it tries again.
class Opened {
 public:
  explicit Opened(HWND owner) {
    constexpr int kTries = 20;
    constexpr DWORD kPause = 10;  // milliseconds
    for (int i = 0; i < kTries && !open_; ++i) {
      if (i > 0) Sleep(kPause);
      open_ = OpenClipboard(owner) != 0;
    }
  }
  ~Opened() {
    if (open_) CloseClipboard();
  }
  Opened(const Opened&) = delete;
  Opened& operator=(const Opened&) = delete;
  explicit operator bool() const { return open_; }

 private:
  bool open_ = false;
};

HGLOBAL InMemory(const std::wstring& text) {
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
  void* const start = memory ? GlobalLock(memory) : nullptr;
  if (!start) return nullptr;
  std::copy_n(text.c_str(), text.size() + 1, static_cast<wchar_t*>(start));
  GlobalUnlock(memory);
  return memory;
}

struct MenuDestroy {
  void operator()(HMENU menu) const noexcept { DestroyMenu(menu); }
};
using OwnedMenu = std::unique_ptr<std::remove_pointer_t<HMENU>, MenuDestroy>;

/// Shows "&" literally and shortens a text that would make the menu too wide.
std::wstring MenuText(std::wstring text) {
  constexpr std::size_t kLongest = 80;
  if (text.size() > kLongest) text.replace(kLongest, std::wstring::npos, L"\x2026");
  for (std::size_t at = 0; (at = text.find(L'&', at)) != std::wstring::npos; at += 2)
    text.insert(at, 1, L'&');
  return text;
}

// Commands of the viewer.
constexpr UINT kDisplayTopic = 0;
constexpr UINT kHelpContext = 15;
constexpr UINT kCloseAll = 18;

}  // namespace

std::wstring ClipboardText(HWND owner) {
  std::wstring text;
  const Opened clipboard(owner);
  if (!clipboard) return text;
  if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
    if (const auto* characters = static_cast<const wchar_t*>(GlobalLock(data))) text = characters;
    GlobalUnlock(data);
  }
  return text;
}

void PutOnClipboard(const std::wstring& text) {
  // A clipboard without an owner accepts no data.
  const HWND owner = GetActiveWindow() ? GetActiveWindow() : GetDesktopWindow();
  const Opened clipboard(owner);
  if (clipboard && EmptyClipboard()) {
    const HGLOBAL memory = InMemory(text);
    if (memory && SetClipboardData(CF_UNICODETEXT, memory)) return;
    GlobalFree(memory);
  }
  throw platform::Error(static_cast<std::int32_t>(GetLastError()), "Windows",
                        "The text cannot be copied; another program may be using the clipboard.");
}

std::optional<std::size_t> ChooseFromMenu(HWND window, LPARAM where, const std::vector<MenuItem>& items) {
  const OwnedMenu menu(CreatePopupMenu());
  for (std::size_t i = 0; i < items.size(); ++i) {
    const UINT kind = items[i].caption.empty() ? MF_SEPARATOR : MF_STRING;
    const UINT state = items[i].enabled ? MF_ENABLED : MF_GRAYED;
    AppendMenuW(menu.get(), kind | state, i + 1, items[i].caption.c_str());
  }
  POINT at{GET_X_LPARAM(where), GET_Y_LPARAM(where)};
  TPMPARAMS beside{};
  beside.cbSize = sizeof beside;
  const bool by_keyboard = where == -1;
  if (by_keyboard) {
    GetWindowRect(window, &beside.rcExclude);
    at = {beside.rcExclude.left, beside.rcExclude.bottom};
  }
  const int chosen =
      TrackPopupMenuEx(menu.get(), TPM_RETURNCMD | TPM_RIGHTBUTTON | TPM_VERTICAL, static_cast<int>(at.x),
                       static_cast<int>(at.y), window, by_keyboard ? &beside : nullptr);
  if (chosen <= 0) return std::nullopt;
  return static_cast<std::size_t>(chosen - 1);
}

LPARAM PlaceIn(HWND window, POINT point) {
  ClientToScreen(window, &point);
  return MAKELPARAM(point.x, point.y);
}

bool OfferToCopy(HWND window, LPARAM where, const std::vector<std::string>& texts) {
  if (texts.empty()) return false;
  std::vector<MenuItem> items;
  for (const std::string& text : texts) items.push_back({L"Copy \"" + MenuText(ToWide(text)) + L"\""});
  if (const auto chosen = ChooseFromMenu(window, where, items)) PutOnClipboard(ToWide(texts[*chosen]));
  return true;
}

bool HtmlHelp::ShowContext(const std::wstring& file, DWORD context) {
  if (!call_) {
    // Never unloaded: the viewer's windows run its code until the program ends.
    const HMODULE viewer = LoadLibraryW(L"hhctrl.ocx");
    if (viewer)
      call_ = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(viewer, "HtmlHelpW")));
  }
  // Some viewers ask the user for a missing file.
  if (!call_ || GetFileAttributesW(file.c_str()) == INVALID_FILE_ATTRIBUTES) return false;
  return call_(nullptr, file.c_str(), context == 0 ? kDisplayTopic : kHelpContext, context) != nullptr;
}

void HtmlHelp::CloseAll() {
  if (call_) call_(nullptr, nullptr, kCloseAll, 0);
}

}  // namespace windows
