#include "windows/ui/clipboard.h"

#include <algorithm>

#include "platform/error.h"

namespace windows {
namespace {

/// The clipboard for as long as this lives. Another program may have it open for a moment.
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
  // A clipboard without an owner takes no data.
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

}  // namespace windows
