#include <windows.h>

#include <commctrl.h>
#include <initguid.h>
#include <oleacc.h>

#include "windows/com/owners.h"
#include "windows/ui/theme.h"
#include "windows_under_test.h"

namespace {

class Controls : public WindowsUiTest {
 protected:
  Controls() { form.Load(); }
  LRESULT Send(HWND control, UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const {
    return SendMessageW(control, message, wparam, lparam);
  }
  HWND List() const { return Children(WindowOf(form), L"SysListView32").at(0); }
  std::wstring Cell(int row, int column) const {
    wchar_t text[128] = L"";
    ListView_GetItemText(List(), row, column, text, 128);
    return text;
  }
  int Image(int row) const {
    LVITEMW item{};
    item.mask = LVIF_IMAGE;
    item.iItem = row;
    ListView_GetItem(List(), &item);
    return item.iImage;
  }
  HWND Combo(const std::wstring& first) const {
    for (const HWND combo : Children(WindowOf(form), L"ComboBox"))
      if (Item(combo, 0) == first) return combo;
    return nullptr;
  }
  static std::wstring Item(HWND combo, LRESULT index) {
    wchar_t text[64] = L"";
    SendMessageW(combo, CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text));
    return text;
  }
  static std::wstring Chosen(HWND combo) { return Item(combo, SendMessageW(combo, CB_GETCURSEL, 0, 0)); }

  ScreenForm form{desktop};
};

std::vector<HWND> shielded;
LRESULT CALLBACK NoteShields(int code, WPARAM wparam, LPARAM lparam) {
  const auto& sent = *reinterpret_cast<const CWPSTRUCT*>(lparam);
  if (code == HC_ACTION && sent.message == BCM_SETSHIELD && sent.lParam) shielded.push_back(sent.hwnd);
  return CallNextHookEx(nullptr, code, wparam, lparam);
}

TEST_F(Controls, AButtonThatAsksForRightsShowsTheShield) {
  ScreenForm other(desktop);
  other.apply.shield = true;
  const HHOOK hook = SetWindowsHookExW(WH_CALLWNDPROC, NoteShields, nullptr, GetCurrentThreadId());
  other.Load();
  const HWND apply = Child(WindowOf(other), L"&Apply");
  UnhookWindowsHookEx(hook);
  EXPECT_EQ(shielded, std::vector{apply});
}

TEST_F(Controls, ListShowsAppendedRows) {
  form.log.follows_end = true;
  const auto width = [&](int column) { return ListView_GetColumnWidth(List(), column); };
  for (int row = 0; row < 500; ++row)
    form.log.Append({ui::ListView::Icon::Green, {"10:00:00", "Read", std::to_string(row)}});
  form.log.Append(
      {ui::ListView::Icon::Red, {"10:00:01", "Write", "A result that is wider than its heading \u00BAC"}});
  EXPECT_EQ(ListView_GetItemCount(List()), 501);
  EXPECT_EQ(Cell(7, 2), L"7");
  EXPECT_EQ(Cell(500, 1), L"Write");
  EXPECT_GE(ListView_GetTopIndex(List()) + ListView_GetCountPerPage(List()), 501);
  EXPECT_GT(width(2), ListView_GetStringWidth(List(), L"A result that is wider than its heading \u00BAC"));
  EXPECT_PRED2(Both, Image(499) == 1, Image(500) == 0) << "the pictures follow the icons";
  EXPECT_EQ(ImageList_GetImageCount(ListView_GetImageList(List(), LVSIL_SMALL)), 2);
  form.log.Clear();
  EXPECT_EQ(ListView_GetItemCount(List()), 0);
  form.log.Append({ui::ListView::Icon::Green, {"10:00:02", "An action wider than all before", "again"}});
  EXPECT_EQ(Cell(0, 2), L"again");
  EXPECT_LT(width(2), ListView_GetStringWidth(List(), L"A result that is wider than its heading"));
  EXPECT_GT(width(1), ListView_GetStringWidth(List(), L"An action wider than all before"));
}

TEST_F(Controls, ChoiceListKeepsATextThatIsNoItem) {
  ui::ChoiceList& list = *form.screen.cbNvi(11);
  const HWND combo = Combo(L"TWO_PIPE");
  const std::pair<const char*, LRESULT> texts[] = {{"FOUR_PIPE", 2}, {"6", 3}, {"7 \u00BA", 3},
                                                   {"TWO_PIPE", 2},  {"", 2},  {"SIX_PIPE", 3}};
  for (const auto& [text, items] : texts) {
    list.SetText(text);
    EXPECT_EQ(Chosen(combo), windows::ToWide(text));
    EXPECT_EQ(Send(combo, CB_GETCOUNT), items) << text;
    EXPECT_EQ(list.Text(), text);
  }
  // After opening and closing without a choice, the text is still there.
  int opened = 0;
  list.on_drop_down = [&] { ++opened; };
  form.Show();
  Send(combo, CB_SHOWDROPDOWN, TRUE);
  Send(combo, CB_SHOWDROPDOWN, FALSE);
  EXPECT_EQ(opened, 1);
  EXPECT_EQ(list.Text(), "SIX_PIPE");
}

TEST_F(Controls, ChoiceListTakesArrowKeysButNeitherLettersNorTheWheel) {
  ui::ChoiceList& list = *form.screen.cbNvi(2);
  const HWND combo = Combo(L"NONE");
  form.Show();
  form.screen.tabData.Select(2);
  list.SetText("REM_NSB");
  const std::tuple<UINT, WPARAM, const char*> steps[] = {
      {WM_CHAR, 'W', "REM_NSB"},
      {WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA)), "REM_NSB"},
      {WM_KEYDOWN, VK_DOWN, "MOTION_NO"},
      {WM_KEYDOWN, VK_END, "WINDOW"},
      {WM_KEYDOWN, VK_HOME, "NONE"}};
  int keys = 0;
  list.on_key_down = [&](int, int) {
    ++keys;
    return false;
  };
  for (const auto& [message, wparam, text] : steps) {
    Send(combo, message, wparam);
    EXPECT_EQ(list.Text(), text);
  }
  list.SetLocked(true);
  Send(combo, WM_KEYDOWN, VK_DOWN);
  EXPECT_EQ(list.Text(), "NONE");
  EXPECT_EQ(keys, 3);
}

TEST_F(Controls, OptionButtonsExcludeEachOther) {
  int clicks = 0;
  form.metric.on_click = form.imperial.on_click = [&] { ++clicks; };
  const HWND metric = Child(WindowOf(form), L"&Metric"), imperial = Child(WindowOf(form), L"&Imperial");
  form.metric.SetSelected(true);
  Send(imperial, BM_CLICK);
  EXPECT_PRED2(Both, form.imperial.Selected(), !form.metric.Selected());
  EXPECT_EQ(Send(metric, BM_GETCHECK), BST_UNCHECKED);
  form.metric.SetSelected(true);
  EXPECT_EQ(Send(imperial, BM_GETCHECK), BST_UNCHECKED);
  EXPECT_EQ(clicks, 1);
}

TEST_F(Controls, WindowGrowsWithACaptionButNotWithTextFromADevice) {
  const std::string text =
      "A text that takes far more room than the one that the layout was made for, and then some";
  const double before = form.Width();
  const HWND note = Child(WindowOf(form), L"Note");
  const RECT room = ScreenPlace(note);
  form.note.SetText("Nothing to report so far");
  const RECT same_room = ScreenPlace(note);
  EXPECT_TRUE(EqualRect(&room, &same_room));  // the room is larger than its first text needs
  form.heading.SetText(text + text + text);
  EXPECT_EQ(form.Width(), before);
  form.options.SetText(text.substr(0, 40));
  const double with_button = form.Width();
  EXPECT_GT(with_button, before);
  for (const auto& label : form.screen.txtTempUnits()) label->SetText(text + text);
  EXPECT_GT(form.Width(), with_button);
  EXPECT_LE(form.Width(), desktop.WorkArea().width);
}

TEST_F(Controls, ScreenReadersGetNameAndDescription) {
  form.screen.txtNvi(0)->SetText("unique");
  windows::com::ComPtr<IAccessible> field;
  ASSERT_EQ(AccessibleObjectFromWindow(Child(WindowOf(form), L"unique"), static_cast<DWORD>(OBJID_CLIENT),
                                       IID_IAccessible, field.ReceiveVoid()),
            S_OK);
  VARIANT self{};
  self.vt = VT_I4;
  BSTR name = nullptr;
  ASSERT_EQ(field->get_accName(self, &name), S_OK);
  // Wine ignores a control's accessible name and uses the label before the field.
  const bool wine = GetProcAddress(GetModuleHandleW(L"ntdll"), "wine_get_version") != nullptr;
  EXPECT_STREQ(name, wine ? L"Occupied" : L"Heating, Occupied");
  SysFreeString(name);
  for (const char* tip : {"Tip", "Tip\r\nchanged, was 21"}) {
    form.screen.txtNvi(0)->SetToolTip(tip);
    BSTR description = nullptr;
    field->get_accDescription(self, &description);
    EXPECT_TRUE(wine || (description && windows::ToWide(tip) == description)) << tip;
    SysFreeString(description);
  }
}

TEST_F(Controls, TheWholeWindowShowsTheHourglass) {
  const HWND window = WindowOf(form);
  std::vector<HWND> all = Children(window);
  all.push_back(window);
  const HCURSOR arrow = LoadCursorW(nullptr, IDC_ARROW), hourglass = LoadCursorW(nullptr, IDC_WAIT);
  for (const bool busy : {true, false}) {
    desktop.SetPointer(busy ? ui::Pointer::Hourglass : ui::Pointer::Default);
    for (const HWND each : all) {
      if (ClassOf(each) == L"SysHeader32") continue;  // between columns it has its own pointer
      SetCursor(arrow);
      Send(each, WM_SETCURSOR, reinterpret_cast<WPARAM>(each), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
      EXPECT_EQ(GetCursor() == hourglass, busy) << windows::ToUtf8(ClassOf(each));
    }
  }
}

TEST_F(Controls, ALongTextKeepsBothEnds) {
  const windows::Theme theme(96, windows::MessageFont(96));
  const std::wstring path = L"A long network/A long network.A long floor/Room 17 \xD83D\xDE00";
  for (const int width : {60, 100, 200}) {
    const std::wstring cut = theme.Shortened(path, width);
    EXPECT_PRED2(Both, theme.TextSize(cut).width <= width, theme.TextSize(cut).width > width - 30) << width;
    EXPECT_PRED2(Both, cut.starts_with(L"A l"), cut.ends_with(L"\xD83D\xDE00"));
    EXPECT_NE(cut.find(L'\x2026'), cut.npos);
  }
  EXPECT_EQ(theme.Shortened(path, 2000), path);
  const std::wstring lines =
      theme.ShortenedTo(path, windows::Theme::Weight::Bold, {150, 2 * theme.TextHeight()});
  EXPECT_PRED2(Both, theme.TextSize(lines, windows::Theme::Weight::Bold).width > 150, lines != path);
}

TEST_F(Controls, StatusBarShowsALongTextInFullInItsTooltip) {
  const HWND bar = Children(WindowOf(form), STATUSCLASSNAMEW).at(0);
  const std::string path = "Tower/Tower.Floor/Thermostat";
  wchar_t shown[1024];
  for (const auto& [text, fits] :
       {std::pair(path, true), {path + std::string(900, 'x'), false}, {path, true}}) {
    form.bar.SetPanel(2, text);
    Send(bar, SB_GETTEXTW, 1, reinterpret_cast<LPARAM>(shown));
    EXPECT_EQ(shown, windows::ToWide(text));
    EXPECT_EQ(Send(bar, SB_GETTEXTLENGTHW, 1), static_cast<LRESULT>(text.size()));
    EXPECT_EQ(form.bar.ToolTip(), fits ? "" : text);
  }
}

}  // namespace
