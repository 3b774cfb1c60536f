// Open windows during a change of screen or system settings.

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <set>
#include <sstream>
#include <tuple>

#include "windows_under_test.h"

namespace {

HWND WindowOf(const ui::HasWindow& shown) { return reinterpret_cast<HWND>(shown.hwnd()); }

HWND TipsOf(HWND window) {
  HWND tips = nullptr;
  do tips = FindWindowExW(nullptr, tips, TOOLTIPS_CLASSW, nullptr);
  while (tips && GetWindow(tips, GW_OWNER) != window);
  return tips;
}

const std::tuple<std::wstring, UINT, WPARAM> kMeasures[] = {{L"ComboBox", CB_GETITEMHEIGHT, 0},
                                                            {L"Edit", EM_GETMARGINS, 0},
                                                            {L"SysListView32", LVM_GETCOLUMNWIDTH, 0},
                                                            {L"SysListView32", LVM_GETCOLUMNWIDTH, 2},
                                                            {TOOLTIPS_CLASSW, TTM_GETMAXTIPWIDTH, 0}};

/// All that depends on the resolution, one line per child window and for the tooltips.
std::string LookOf(HWND window) {
  std::ostringstream look;
  std::vector<HWND> all = WindowsUiTest::Children(window);
  all.push_back(TipsOf(window));
  for (const HWND each : all) {
    const std::wstring kind = ClassOf(each);
    // The arrows to scroll tabs; a tab control keeps them once it has needed them.
    if (kind == UPDOWN_CLASSW && !IsWindowVisible(each)) continue;
    RECT place = ScreenPlace(each), client;
    GetClientRect(each, &client);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&place), 2);
    if (kind == TOOLTIPS_CLASSW) place = client = {};
    LOGFONTW font{};
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(each, WM_GETFONT, 0, 0)), sizeof font, &font);
    IMAGEINFO mark{};
    if (kind == L"SysListView32") ImageList_GetImageInfo(ListView_GetImageList(each, LVSIL_SMALL), 0, &mark);
    ICONINFO icon{};
    if (kind == L"Button")
      GetIconInfo(reinterpret_cast<HICON>(SendMessageW(each, BM_GETIMAGE, IMAGE_ICON, 0)), &icon);
    BITMAP picture{};
    GetObjectW(icon.hbmColor, sizeof picture, &picture);
    look << '\n' << windows::ToUtf8(kind + L" " + TextOf(each)) << " at";
    for (const LONG measure : {place.left, place.top, client.right, client.bottom, font.lfHeight,
                               font.lfWeight, mark.rcImage.bottom, picture.bmWidth})
      look << ' ' << measure;
    for (const auto& [whose, message, wparam] : kMeasures)
      if (kind == whose) look << ' ' << SendMessageW(each, message, wparam, 0);
  }
  return look.str();
}

std::function<void(const CWPSTRUCT& sent)> on_sent;
LRESULT CALLBACK Receive(int code, WPARAM wparam, LPARAM lparam) {
  on_sent(*reinterpret_cast<const CWPSTRUCT*>(lparam));
  return CallNextHookEx(nullptr, code, wparam, lparam);
}
struct Receiving {
  const HHOOK hook = SetWindowsHookExW(WH_CALLWNDPROC, Receive, nullptr, GetCurrentThreadId());
  ~Receiving() { UnhookWindowsHookEx(hook); }
};

struct NewWindow {
  explicit NewWindow(int dpi) : desktop({dpi}) {
    form.Load();
    form.log.Append({ui::ListView::Icon::Green, {"10:00", "Read", "A result wider than its heading"}});
    form.SetBounds(0, 0, form.best.width, form.best.height);
    size = ScreenPlace(WindowOf(form));
  }
  windows::WindowsDesktop desktop;
  ScreenForm form{desktop};
  RECT size;
};

class Resolution : public WindowsUiTest {
 protected:
  static void Change(const ui::Form& form, int dpi, RECT suggested) {
    SendMessageW(::WindowOf(form), WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&suggested));
  }
  std::array<double, 4> Bounds() const { return {form.Left(), form.Top(), form.Width(), form.Height()}; }

  NewWindow first{96};
  ScreenForm& form = first.form;
  const HWND window = ::WindowOf(form);
};

TEST_F(Resolution, AChangedWindowLooksLikeANewOne) {
  for (const int dpi : {144, 192, 96}) {
    SCOPED_TRACE(dpi);
    const NewWindow created(dpi);
    form.SetBounds(0, 0, 30000, 24000);
    EXPECT_EQ(ScreenPlace(window).right, 2000) << "a pixel has 15 twips on every screen";
    Change(form, dpi, {20, 10, 20 + created.size.right, 10 + created.size.bottom});
    EXPECT_EQ(Bounds(), (std::array{300.0, 150.0, created.size.right * 15.0, created.size.bottom * 15.0}));
    EXPECT_EQ(LookOf(window), LookOf(::WindowOf(created.form)));
  }
}

TEST_F(Resolution, ASuggestedSizeCutsNothing) {
  form.SetBounds(0, 0, form.best.width + 150, form.best.height);
  Change(form, 120, {0, 0, 100, 100});
  const RECT least = NewWindow(120).size;
  EXPECT_EQ(Bounds(), (std::array{0.0, 0.0, least.right * 15.0, least.bottom * 15.0}));
}

TEST_F(Resolution, TightensGapsOnASmallScreen) {
  const RECT usual = first.size, large = NewWindow(192).size;
  EXPECT_LT(large.right, 2 * usual.right - 50);
  EXPECT_LT(large.bottom, 2 * usual.bottom - 100);
}

TEST_F(Resolution, TheProgramsBoundsHoldOnAnotherScreen) {
  on_sent = [&](const CWPSTRUCT& sent) {
    if (sent.message == WM_WINDOWPOSCHANGED && sent.hwnd == window) Change(form, 144, {0, 0, 1500, 1200});
  };
  const Receiving receiving;
  form.SetBounds(300, 150, 12000, 9000);
  EXPECT_EQ(Bounds(), (std::array{300.0, 150.0, 12000.0, 9000.0}));
}

TEST_F(Resolution, AnAnimationGrowsWithItsArea) {
  struct ClipForm : ui::Form {
    explicit ClipForm(ui::Desktop& screen) : Form(screen, "fClip", ui::BorderStyle::FixedDialog) {
      SetLayout(ui::Box::Leaf(area));
    }
    ui::AnimationHost area{"area"};
  } shown(first.desktop);
  shown.Load();
  ui::cAnimControl clip(first.desktop, "Program");
  clip.ResourceId = 201;
  clip.SetOwner(shown.area);
  clip.StartPlay();
  Change(shown, 192, {});
  EXPECT_EQ(clip.Width(), 640);
}

TEST_F(Resolution, AllWindowsFollowSystemChanges) {
  std::vector<HWND> all = Children(window);
  all.push_back(TipsOf(window));
  for (const UINT message : {WM_SYSCOLORCHANGE, WM_SETTINGCHANGE, WM_THEMECHANGED}) {
    std::set<HWND> received;
    on_sent = [&](const CWPSTRUCT& sent) {
      if (sent.message == message) received.insert(sent.hwnd);
    };
    const Receiving receiving;
    SendMessageW(window, message, 0, 0);
    for (const HWND each : all) EXPECT_TRUE(received.contains(each)) << windows::ToUtf8(ClassOf(each));
  }
}

TEST_F(Resolution, AppliesANewSystemFontAtOnce) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  LONG& height = metrics.lfMessageFont.lfHeight;
  for (const LONG next : {height - 2, height}) {
    height = next;
    SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    SendMessageW(window, WM_SETTINGCHANGE, 0, 0);
    EXPECT_EQ(LookOf(window), LookOf(::WindowOf(NewWindow(96).form)));
  }
}

TEST_F(Resolution, TextColorMatchesItsBackground) {
  form.screen.txtNvi(0)->SetText("open");
  form.screen.txtNvi(1)->SetText("locked");
  form.screen.txtNvi(1)->SetLocked(true);
  const int parts[] = {COLOR_WINDOWTEXT, COLOR_BTNTEXT, COLOR_WINDOW};
  const COLORREF high[] = {RGB(255, 255, 0), RGB(0, 255, 0), RGB(0, 0, 0)};
  COLORREF former[3];
  std::ranges::transform(parts, former, GetSysColor);
  SetSysColors(3, parts, high);
  SendMessageW(window, WM_SYSCOLORCHANGE, 0, 0);
  EXPECT_EQ(ListView_GetBkColor(Children(window, L"SysListView32").at(0)), high[2]);
  const HDC dc = GetDC(window);
  for (const auto& [text, message, color] : {std::tuple(L"open", WM_CTLCOLOREDIT, high[0]),
                                             {L"locked", WM_CTLCOLORSTATIC, high[1]},
                                             {L"Occupied", WM_CTLCOLORSTATIC, high[0]}}) {
    const HWND control = Child(window, text);
    SendMessageW(GetParent(control), message, reinterpret_cast<WPARAM>(dc),
                 reinterpret_cast<LPARAM>(control));
    EXPECT_EQ(GetTextColor(dc), color) << windows::ToUtf8(text);
  }
  ReleaseDC(window, dc);
  SetSysColors(3, parts, former);
}

}  // namespace
