// Measures each text of the configuration screen against its control's real size, at several resolutions.

#include <windows.h>

#include <commctrl.h>

#include "windows_under_test.h"

namespace {

SIZE TextSize(HWND window, const std::wstring& text, UINT format, LONG width = 0) {
  const HDC dc = GetDC(window);
  const HGDIOBJ former = SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageW(window, WM_GETFONT, 0, 0)));
  RECT box{0, 0, width, 0};
  DrawTextW(dc, text.c_str(), -1, &box, DT_CALCRECT | format);
  SelectObject(dc, former);
  ReleaseDC(window, dc);
  return {box.right, box.bottom};
}

RECT ClientOnScreen(HWND window) {
  RECT client;
  GetClientRect(window, &client);
  MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&client), 2);
  return client;
}

struct Text {
  std::wstring text;
  LONG room;
  UINT format = 0;
};

std::vector<Text> TextsOf(HWND window, int dpi) {
  const std::wstring kind = ClassOf(window);
  const RECT client = ClientOnScreen(window);
  const LONG width = client.right - client.left, style = GetWindowLongW(window, GWL_STYLE);
  if (kind == L"Static" && (style & (SS_NOPREFIX | SS_ENDELLIPSIS)))
    return {{TextOf(window), width, style & SS_NOPREFIX ? DT_NOPREFIX : 0u}};
  if (kind == L"Static") {  // a caption, which may take two lines
    const SIZE size = TextSize(window, TextOf(window), DT_WORDBREAK, width);
    EXPECT_LE(size.cy, client.bottom - client.top);
    return {{std::wstring(), width - size.cx}};
  }
  if (kind == L"Edit") return {{L"-100.55", width - 4}};
  if (kind == L"Button") {
    const LONG type = style & BS_TYPEMASK;
    return {
        {TextOf(window), width - (type == BS_RADIOBUTTON || type == BS_CHECKBOX ? MulDiv(18, dpi, 96) : 6)}};
  }
  std::vector<Text> texts;
  wchar_t text[64];
  if (kind == L"ComboBox") {
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    EXPECT_TRUE(GetComboBoxInfo(window, &info));
    for (WPARAM item = 0; SendMessageW(window, CB_GETLBTEXT, item, reinterpret_cast<LPARAM>(text)) != CB_ERR;
         ++item)
      texts.push_back({text, info.rcItem.right - info.rcItem.left - 3});
  } else if (kind == L"SysTabControl32") {
    TCITEMW caption{};
    caption.mask = TCIF_TEXT;
    caption.pszText = text;
    caption.cchTextMax = 64;
    for (WPARAM item = 0; SendMessageW(window, TCM_GETITEMW, item, reinterpret_cast<LPARAM>(&caption));
         ++item) {
      RECT place;
      SendMessageW(window, TCM_GETITEMRECT, item, reinterpret_cast<LPARAM>(&place));
      texts.push_back({text, std::min(place.right, width) - place.left - 8});
    }
  }
  return texts;
}

void ExpectNothingIsCut(HWND window, int dpi) {
  int measured = 0;
  for (const HWND child : WindowsUiTest::Children(window)) {
    const bool shown = (GetWindowLongW(child, GWL_STYLE) & WS_VISIBLE) || ClassOf(child) == L"FormSurface";
    if (!shown || ClassOf(child) == L"SysHeader32") continue;
    SCOPED_TRACE(windows::ToUtf8(ClassOf(child) + L" " + TextOf(child)));
    const RECT place = ScreenPlace(child), room = ClientOnScreen(GetParent(child));
    EXPECT_PRED2(Both, place.left >= room.left, place.right <= room.right);
    EXPECT_PRED2(Both, place.top >= room.top, place.bottom <= room.bottom);
    for (const Text& text : TextsOf(child, dpi)) {
      const SIZE size = TextSize(child, text.text, DT_SINGLELINE | text.format);
      EXPECT_LE(size.cx, text.room) << windows::ToUtf8(text.text);
      ++measured;
    }
  }
  EXPECT_GT(measured, 150);  // the whole screen was checked
}

TEST(TextFit, TheConfigurationScreenShowsItsTextsInFullAtEveryResolution) {
  LONG usual = 0;
  for (const int dpi : {96, 120, 144, 192}) {
    SCOPED_TRACE(dpi);
    windows::WindowsDesktop desktop({dpi});
    ScreenForm form(desktop);
    form.Load();
    form.SetBounds(0, 0, form.best.width, form.best.height);
    for (const auto& label : form.screen.txtTempUnits()) label->SetText("\u00BAC");
    const HWND window = FindWindowW(L"FormSurface", L"Screen under test");
    ExpectNothingIsCut(window, dpi);
    const HWND button = WindowsUiTest::Child(window, L"&Apply");
    const LONG width = TextSize(button, L"Heating cooling minimum", DT_SINGLELINE).cx;
    if (usual == 0) usual = width;
    EXPECT_NEAR(static_cast<double>(width) / static_cast<double>(usual), dpi / 96.0, 0.15);
  }
}

}  // namespace
