// Pages, pictures, and the browser's page as far as possible without an HTML engine.

#include <winsock2.h>

#include <commctrl.h>

#include "windows_under_test.h"

namespace {

TEST_F(WindowsUiTest, APageIsCreatedWhenFirstShownAndShowsItsControlsCurrentState) {
  for (const bool selected_first : {false, true}) {
    ScreenForm form(desktop);
    const auto last_page = [&] {
      const HWND tabs = FindWindowExW(WindowOf(form), nullptr, WC_TABCONTROLW, nullptr);
      return GetWindow(GetWindow(tabs, GW_CHILD), GW_HWNDLAST);
    };
    const auto select = [&] { form.screen.tabData.Select(form.screen.tabData.Captions().size() - 1); };
    form.Load();
    selected_first ? select() : form.Show();
    ui::TextField& field = form.screen.txtMajorVersion;
    field.SetText("7");
    field.SetLocked(true);
    field.SetEnabled(false);
    EXPECT_FALSE(GetWindow(last_page(), GW_CHILD));
    selected_first ? form.Show() : select();
    const HWND shown = Child(last_page(), L"7");
    EXPECT_TRUE(IsWindowVisible(shown));
    EXPECT_FALSE(IsWindowEnabled(shown));
    EXPECT_TRUE(GetWindowLongW(shown, GWL_STYLE) & ES_READONLY);
    EXPECT_GT(ScreenPlace(shown).right, ScreenPlace(shown).left);
  }
}

TEST_F(WindowsUiTest, ATabShowsItsMarkUntilItIsRemoved) {
  ScreenForm form(desktop);
  form.Show();
  const HWND tabs = FindWindowExW(WindowOf(form), nullptr, WC_TABCONTROLW, nullptr);
  for (const std::set<std::size_t>& marked : {std::set<std::size_t>{0, 2}, {2}, {}}) {
    form.screen.tabData.SetMarked(marked);
    UpdateWindow(tabs);
    const HDC dc = GetDC(tabs);
    for (std::size_t page = 0; page < 8; ++page) {
      RECT tab{};
      SendMessageW(tabs, TCM_GETITEMRECT, page, reinterpret_cast<LPARAM>(&tab));
      const COLORREF color = GetPixel(dc, tab.left + 5, (tab.top + tab.bottom) / 2 - 1);
      EXPECT_EQ(color == RGB(0xC8, 0x37, 0x2D), marked.contains(page)) << page << ' ' << color;
    }
    ReleaseDC(tabs, dc);
  }
}

class WebView : public WindowsUiTest {
 protected:
  WebView() {
    page.SetText("First\n\nSecond");
    form.Show();
    view = Child(WindowOf(form), kText);
  }
  bool HasBrowser() const { return !Children(view).empty(); }

  static constexpr const wchar_t* kText = L"First\r\n\r\nSecond";
  ScreenForm form{desktop};
  ui::WebView& page = form.screen.WebBrowser1;
  HWND view = nullptr;
};

/// A page that is requested and never arrives.
class SilentServer {
 public:
  SilentServer() {
    WSADATA data;
    EXPECT_EQ(WSAStartup(MAKEWORD(2, 2), &data), 0);
    listener_ = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    int size = sizeof address;
    auto* const place = reinterpret_cast<sockaddr*>(&address);
    EXPECT_EQ(bind(listener_, place, size), 0);
    EXPECT_EQ(listen(listener_, 5), 0);
    getsockname(listener_, place, &size);
    url = "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port)) + "/";
  }
  ~SilentServer() { closesocket(listener_); }
  std::string url;

 private:
  SOCKET listener_;
};

TEST_F(WebView, ScrollsOnlyATextThatDoesNotFit) {
  form.screen.tabData.Select(model::kContactPage);
  const auto scrolls = [&] { return (GetWindowLongW(view, GWL_STYLE) & WS_VSCROLL) != 0; };
  EXPECT_FALSE(scrolls());
  page.SetText(std::string(100, '\n'));
  EXPECT_TRUE(scrolls());
  page.SetText("Short");
  EXPECT_FALSE(scrolls());
}

TEST_F(WebView, KeepsItsTextIfNoPageArrives) {
  const SilentServer server;
  page.url = server.url;
  ASSERT_TRUE(Activate(form));
  EXPECT_FALSE(HasBrowser());
  form.screen.tabData.Select(model::kContactPage);
  form.screen.tabData.SetFocus();
  Settle();
  EXPECT_PRED2(Both, IsWindowVisible(view), !HasBrowser());
  ASSERT_TRUE(Until([&] { return HasBrowser(); }));
  EXPECT_GE(ScreenPlace(Children(view).at(0)).left, ScreenPlace(view).right - 20);
  EXPECT_TRUE(Until([&] { return !HasBrowser(); }));
  EXPECT_EQ(TextOf(view), kText);
  Press({VK_TAB});
  EXPECT_EQ(form.ActiveControl(), &page);
  Press({VK_TAB});
  EXPECT_EQ(form.ActiveControl(), &form.metric);
}

TEST_F(WebView, ClosesWithItsWindowWhileThePageIsLoading) {
  const SilentServer server;
  page.url = server.url;
  form.screen.tabData.Select(model::kContactPage);
  ASSERT_TRUE(Until([&] { return HasBrowser(); }));
  const HWND browser = Children(view).at(0);
  form.Unload();
  Settle();
  EXPECT_PRED2(Both, !IsWindow(browser), !IsWindow(view));
}

TEST(Picture, IsSharpAtEveryResolutionAndOnTheWindowsBackground) {
  struct PictureForm : ui::Form {
    explicit PictureForm(ui::Desktop& screen) : Form(screen, "fPicture", ui::BorderStyle::None) {
      SetCaption("Picture under test");
      SetLayout(ui::Box::Column({ui::Box::Leaf(picture)}));
    }
    ui::Picture picture{"picture", 301, 72 * 15, 48 * 15};
  };
  for (const int dpi : {96, 144, 192}) {
    windows::WindowsDesktop desktop({dpi});
    PictureForm form(desktop);
    form.SetBounds(0, 0, 3000, 3000);
    form.Show();
    form.Repaint();
    const HWND picture = GetWindow(FindWindowW(L"FormSurface", L"Picture under test"), GW_CHILD);
    const HDC dc = GetDC(picture);
    // In pixels at 96 dots per inch: the display's glass beside its border, and a corner.
    const auto at = [&](int x, int y) { return GetPixel(dc, MulDiv(x, dpi, 96), MulDiv(y, dpi, 96)); };
    EXPECT_EQ(at(10, 20), RGB(214, 226, 219)) << dpi;
    EXPECT_EQ(at(8, 20), RGB(92, 110, 130)) << dpi;
    EXPECT_EQ(at(0, 0), GetSysColor(COLOR_3DFACE)) << dpi;
    ReleaseDC(picture, dc);
  }
}

}  // namespace
