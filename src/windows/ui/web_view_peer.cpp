#include <windows.h>

#include "windows/com/wide_text.h"
#include "windows/ui/embedded_browser.h"
#include "windows/ui/peers.h"
#include "windows/ui/theme.h"

namespace windows {
namespace {

constexpr UINT_PTR kTimer = 0x5057;
constexpr UINT kWaitMilliseconds = 100;
constexpr int kMostWaits = 20;

/// The text with CR LF line ends, as the system's controls need.
std::wstring WithLineEnds(const std::string& text) {
  std::string lines;
  for (const char character : text) {
    if (character == '\r') continue;
    lines += character == '\n' ? std::string("\r\n") : std::string(1, character);
  }
  return ToWide(lines);
}

bool ScrollsOrCopies(WPARAM key) {
  return (key >= VK_PRIOR && key <= VK_DOWN) ||
         (GetKeyState(VK_CONTROL) < 0 && (key == 'A' || key == 'C' || key == VK_INSERT));
}

/// Shows the page's text, for scrolling and copying, and the page itself in front of it once the system's
/// browser has loaded it. The browser is created when the text is first visible, and destroyed if it does not
/// load the page soon.
class WebViewPeer final : public NativePeer {
 public:
  using NativePeer::NativePeer;
  ui::Extent PreferredSize() const override { return {theme().Scaled(320), theme().Scaled(200)}; }

  HBRUSH Colors(HDC dc) override {
    SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    SetBkColor(dc, GetSysColor(COLOR_WINDOW));
    return GetSysColorBrush(COLOR_WINDOW);
  }

  /// The page has no input fields or links, so keys scroll, copy, or navigate in the window.
  bool UseKey(MSG& message) override {
    if (!page_shown_) return false;
    switch (message.message) {
      case WM_KEYDOWN:
        if (host().NavigationKey(message.wParam)) return true;
        return !ScrollsOrCopies(message.wParam) || browser_->UseKey(message);
      case WM_SYSKEYDOWN:
        host().ShowKeyboardCues();
        return false;
      case WM_SYSCHAR:
        return host().AcceleratorKey(static_cast<char32_t>(message.wParam));
      default:
        return false;
    }
  }

 protected:
  void MakeWindow() override {
    Create(L"EDIT", WithLineEnds(control().Text()), ES_MULTILINE | ES_READONLY | WS_CLIPCHILDREN,
           WS_EX_CLIENTEDGE);
  }

  void Rescale() override {
    NativePeer::Rescale();
    const auto margin = static_cast<WORD>(theme().Scaled(8));
    Send(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(margin, margin));
    FitScrollBar();
  }

  void Show(ui::Aspect aspect) override {
    if (aspect != ui::Aspect::Text) return NativePeer::Show(aspect);
    SetWindowTextW(handle(), WithLineEnds(control().Text()).c_str());
    FitScrollBar();
  }

  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam) override {
    switch (message) {
      case WM_PAINT:
        if (!asked_ && !static_cast<const ui::WebView&>(control()).url.empty()) {
          asked_ = true;
          SetTimer(handle(), kTimer, kWaitMilliseconds, nullptr);
        }
        break;
      case WM_TIMER:
        if (wparam != kTimer) break;
        WaitForPage();
        return 0;
      case WM_SIZE: {
        const LRESULT result = NativePeer::Handle(message, wparam, lparam);
        page_shown_ ? FitPage() : FitScrollBar();
        return result;
      }
      case WM_SETFOCUS: {
        const LRESULT result = NativePeer::Handle(message, wparam, lparam);
        if (alive() && page_shown_ && GetFocus() == handle()) browser_->TakeFocus();
        return result;
      }
      case WM_MOUSEWHEEL:  // the page did not use it, so it cannot scroll further
        if (page_shown_) return 0;
        break;
      default:
        break;
    }
    return NativePeer::Handle(message, wparam, lparam);
  }

  void Destroying() override { browser_.reset(); }

 private:
  void FitScrollBar() {
    RECT room;
    GetClientRect(handle(), &room);
    const bool needed = Send(EM_GETLINECOUNT) * theme().TextHeight() > room.bottom;
    const bool shown = (GetWindowLongW(handle(), GWL_STYLE) & WS_VSCROLL) != 0;
    if (needed != shown) ShowScrollBar(handle(), SB_VERT, needed);
  }

  void WaitForPage() {
    using enum EmbeddedBrowser::State;
    if (!browser_) {
      KillTimer(handle(), kTimer);  // messages may arrive while the browser is created
      browser_ = std::make_unique<EmbeddedBrowser>(
          handle(), ToWide(static_cast<const ui::WebView&>(control()).url), [this] {
            host().ui_thread().Dispatch([this]() -> LRESULT {
              if (alive()) host().Arrived(*this);
              return 0;
            });
          });
      SetTimer(handle(), kTimer, kWaitMilliseconds, nullptr);
      return;
    }
    const EmbeddedBrowser::State state = browser_->state();
    if (state == Loading && ++waits_ < kMostWaits) return;
    KillTimer(handle(), kTimer);
    if (state == Ready)
      ShowPage();
    else
      browser_.reset();
  }

  void ShowPage() {
    page_shown_ = true;
    ShowScrollBar(handle(), SB_VERT, FALSE);
    FitPage();
    if (GetFocus() == handle()) browser_->TakeFocus();
  }

  /// The browser uses the program's resolution; the zoom adds the screen's.
  void FitPage() { browser_->Show(MulDiv(100, theme().dpi(), SystemDpi())); }

  std::unique_ptr<EmbeddedBrowser> browser_;
  bool asked_ = false;
  bool page_shown_ = false;
  int waits_ = 0;
};

}  // namespace

std::unique_ptr<NativePeer> MakeWebView(PeerHost& host, Surface& parent, ui::Control& control) {
  return std::make_unique<WebViewPeer>(host, parent, control);
}

}  // namespace windows
