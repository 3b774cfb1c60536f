// No text of the configuration screen is cut, at any resolution: every caption, label and list item is
// measured against the room that its control really has on the screen.

#include <windows.h>

#include <commctrl.h>

#include "windows_under_test.h"

namespace {

LONG TextWidth(HWND window, const std::wstring& text, UINT format = 0) {
  const HDC dc = GetDC(window);
  const HGDIOBJ former = SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageW(window, WM_GETFONT, 0, 0)));
  RECT box{};
  DrawTextW(dc, text.c_str(), -1, &box, DT_CALCRECT | DT_SINGLELINE | format);
  SelectObject(dc, former);
  ReleaseDC(window, dc);
  return box.right;
}

RECT ClientOf(HWND window) {
  RECT client;
  GetClientRect(window, &client);
  return client;
}

class TextFit : public WindowsUiTest, public testing::WithParamInterface<int> {
 protected:
  TextFit() : WindowsUiTest(GetParam()) {}

  void ExpectInsideParent(HWND window) {
    const RECT place = ScreenPlace(window);
    RECT room = ClientOf(GetParent(window));
    MapWindowPoints(GetParent(window), nullptr, reinterpret_cast<POINT*>(&room), 2);
    EXPECT_TRUE(place.left >= room.left && place.top >= room.top && place.right <= room.right &&
                place.bottom <= room.bottom)
        << Describe(window);
  }
  void ExpectFits(HWND window, const std::wstring& text, LONG room, UINT format = 0) {
    ++measured;
    EXPECT_LE(TextWidth(window, text, format), room) << windows::ToUtf8(text) << " in " << Describe(window);
  }
  static std::string Describe(HWND window) {
    return windows::ToUtf8(ClassOf(window) + L" \"" + TextOf(window) + L"\"");
  }
  HWND GetParent(HWND window) const { return ::GetParent(window); }
  static int GetParam() { return testing::WithParamInterface<int>::GetParam(); }

  void MeasureCombo(HWND combo) {
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    ASSERT_TRUE(GetComboBoxInfo(combo, &info));
    const auto count = static_cast<WPARAM>(SendMessageW(combo, CB_GETCOUNT, 0, 0));
    for (WPARAM item = 0; item < count; ++item) {
      wchar_t text[64];
      SendMessageW(combo, CB_GETLBTEXT, item, reinterpret_cast<LPARAM>(text));
      ExpectFits(combo, text, info.rcItem.right - info.rcItem.left - 3);
    }
  }
  void MeasureTabs(HWND tabs) {
    for (int item = 0; item < TabCtrl_GetItemCount(tabs); ++item) {
      wchar_t text[64];
      TCITEMW caption{};
      caption.mask = TCIF_TEXT;
      caption.pszText = text;
      caption.cchTextMax = 64;
      SendMessageW(tabs, TCM_GETITEMW, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&caption));
      RECT place;
      SendMessageW(tabs, TCM_GETITEMRECT, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&place));
      ExpectFits(tabs, text, place.right - place.left - 8);
      EXPECT_LE(place.right, ClientOf(tabs).right);
    }
  }
  void Measure(HWND window) {
    const std::wstring kind = ClassOf(window);
    const LONG width = ClientOf(window).right;
    if (kind == L"Static") {
      const bool prefix = !(GetWindowLongW(window, GWL_STYLE) & SS_NOPREFIX);
      ExpectFits(window, TextOf(window), width, prefix ? 0 : DT_NOPREFIX);
    } else if (kind == L"Button") {
      const auto style = GetWindowLongW(window, GWL_STYLE) & BS_TYPEMASK;
      const bool mark = style == BS_RADIOBUTTON || style == BS_CHECKBOX;
      ExpectFits(window, TextOf(window), width - (mark ? MulDiv(18, GetParam(), 96) : 6));
    } else if (kind == L"Edit") {
      ExpectFits(window, L"-100.55", width - 4);
    } else if (kind == L"ComboBox") {
      MeasureCombo(window);
    } else if (kind == L"SysTabControl32") {
      MeasureTabs(window);
    }
  }

  int measured = 0;
};

TEST_P(TextFit, NothingIsCutOnTheConfigurationScreen) {
  ScreenForm form(desktop);
  form.Load();
  for (const auto& label : form.screen.txtTempUnits()) label->SetText("\u00BAC");
  for (const HWND child : Children(WindowOf(form))) {
    const bool shown = (GetWindowLongW(child, GWL_STYLE) & WS_VISIBLE) || ClassOf(child) == L"FormSurface";
    if (!shown || ClassOf(child) == L"SysHeader32") continue;
    ExpectInsideParent(child);
    Measure(child);
  }
  EXPECT_GT(measured, 150);  // all of the screen has been looked at
}

TEST_P(TextFit, TextGrowsWithTheResolution) {
  const auto width_at = [](ui::Desktop& at) {
    ScreenForm form(at);
    form.Load();
    return TextWidth(Child(FindWindowW(L"FormSurface", L"Screen under test"), L"&Apply"),
                     L"Heating cooling minimum");
  };
  windows::WindowsDesktop usual({96});
  const double growth = static_cast<double>(width_at(desktop)) / static_cast<double>(width_at(usual));
  EXPECT_NEAR(growth, GetParam() / 96.0, 0.15);
}

INSTANTIATE_TEST_SUITE_P(Resolutions, TextFit, testing::Values(96, 120, 144, 192));

}  // namespace
