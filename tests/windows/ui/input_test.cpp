#include "ui/keyboard.h"
#include "windows_under_test.h"

namespace {

ui::Form* raised_below_box = nullptr;
bool box_was_topmost = false, box_was_in_front = false;

void CALLBACK AnswerBox(HWND, UINT, UINT_PTR timer, DWORD) {
  const HWND box = FindWindowW(L"#32770", L"Question of the test");
  if (!box) return;
  box_was_topmost = GetWindowLongW(box, GWL_EXSTYLE) & WS_EX_TOPMOST;
  if (ui::Form* const form = std::exchange(raised_below_box, nullptr)) form->BringToFront();
  box_was_in_front = GetForegroundWindow() == box;
  KillTimer(nullptr, timer);
  PostMessageW(box, WM_COMMAND, IDOK, 0);
}

bool menu_was_up = false;
WORD menu_key = VK_ESCAPE;

void CALLBACK AnswerMenu(HWND, UINT, UINT_PTR, DWORD) {
  GUITHREADINFO thread{};
  thread.cbSize = sizeof thread;
  if (!GetGUIThreadInfo(GetCurrentThreadId(), &thread) || !(thread.flags & GUI_INMENUMODE)) return;
  menu_was_up = true;
  PressKeys({menu_key});
}

class Input : public WindowsUiTest {
 protected:
  Input() {
    for (ui::TextField* field : {&first, &second}) {
      const std::string name = field->name();
      field->on_got_focus = [this, name] { journal += " got " + name; };
      field->on_validate = [this, name] { journal += " check " + name; };
      field->on_lost_focus = [this, name] { journal += " lost " + name; };
    }
    form.apply.on_click = [this] { journal += " apply"; };
    first.SetText("20");
    second.SetText("18");
    other.SetCaption("The other one");
    menu_key = VK_ESCAPE;
  }
  ~Input() override { KillTimer(nullptr, menu_timer); }
  void SetUp() override { ASSERT_TRUE(Activate(form)); }
  void ClickApply() { Click(Child(WindowOf(form), L"&Apply")); }

  HWND Tips() const {
    HWND tips = nullptr;
    do {
      tips = FindWindowExW(nullptr, tips, L"tooltips_class32", nullptr);
    } while (tips && GetWindow(tips, GW_OWNER) != WindowOf(form));
    return tips;
  }

  void Ask() {
    journal += " asks";
    SetTimer(nullptr, 0, 30, AnswerBox);
    desktop.ShowMessage({"Text", "Question of the test", ui::Icon::Exclamation});
    journal += " answered";
  }

  ScreenForm form{desktop}, other{desktop};
  ui::TextField &first = *form.screen.txtNvi(0), &second = *form.screen.txtNvi(18);
  std::string journal;
  const UINT_PTR menu_timer = SetTimer(nullptr, 0, 10, AnswerMenu);
};

TEST_F(Input, MovesOnOnlyIfACheckShowsNoMessage) {
  first.on_validate = [this] { Ask(); };
  ClickApply();
  EXPECT_EQ(journal, " got txtNvi(0) asks answered lost txtNvi(0)");
  EXPECT_EQ(form.ActiveControl(), &form.apply);
  ClickApply();
  EXPECT_EQ(journal, " got txtNvi(0) asks answered lost txtNvi(0) apply");
  EXPECT_FALSE(box_was_topmost);
  form.Hide();
  Ask();
  EXPECT_TRUE(box_was_topmost) << "it would open behind the director's window";
}

TEST_F(Input, ABoxStaysInFrontIfItsWindowIsRaised) {
  raised_below_box = &form;
  Ask();
  EXPECT_TRUE(box_was_in_front);
}

TEST_F(Input, ARuleThatMovesTheFocusSwallowsThePress) {
  first.on_lost_focus = [this] {
    form.screen.txtNvi(7)->SetFocus();  // on a hidden page
    Ask();
  };
  ClickApply();
  EXPECT_EQ(journal, " got txtNvi(0) check txtNvi(0) asks answered");
  EXPECT_EQ(form.ActiveControl(), form.screen.txtNvi(7));
  EXPECT_EQ(form.screen.tabData.Selected(), 3u);
  EXPECT_TRUE(IsWindowVisible(GetFocus()));
}

TEST_F(Input, SwitchingWindowsDoesNotLeaveTheField) {
  ASSERT_TRUE(Activate(other));
  SetForegroundWindow(WindowOf(form));
  EXPECT_TRUE(Until([&] { return GetActiveWindow() == WindowOf(form); }));
  Ask();
  EXPECT_EQ(form.ActiveControl(), &first);
  EXPECT_EQ(journal, " got txtNvi(0) asks answered");
}

TEST_F(Input, EnterPressesTheDefaultButtonAndEscapeReachesTheForm) {
  form.default_button = &form.apply;
  form.on_escape = [this] { journal += " escape"; };
  form.screen.cbNvi(2)->SetFocus();
  Press({VK_RETURN});
  Press({VK_ESCAPE});
  EXPECT_EQ(journal, " got txtNvi(0) check txtNvi(0) lost txtNvi(0) apply escape");
}

TEST_F(Input, AltOpensTheMenuUnlessAControlTakesItsKey) {
  ui::ChoiceList &list = *form.screen.cbNvi(11), &locked = *form.screen.cbNvi(0);
  locked.SetLocked(true);
  first.on_key_down = [](int key, int) { return key == VK_PRIOR; };
  const std::tuple<ui::Control*, WORD> cases[] = {{&first, VK_PRIOR}, {&locked, VK_DOWN}, {&list, VK_DOWN}};
  for (const auto& [control, key] : cases) {
    SCOPED_TRACE(control->name());
    control->SetFocus();
    Press({VK_MENU});
    EXPECT_TRUE(std::exchange(menu_was_up, false));
    Press({VK_MENU, key}, /*first_key_up_first=*/true);
    Press({VK_TAB});
    EXPECT_NE(form.ActiveControl(), control) << "the next key takes effect";
    EXPECT_FALSE(menu_was_up);
  }
}

TEST_F(Input, EveryEntryPassesTheFilterOfItsField) {
  EXPECT_FALSE(ImmGetContext(Child(WindowOf(form), L"20"))) << "an input method bypasses the filter";
  first.on_key_press = [this](char32_t character) {
    journal += static_cast<char>(character);
    return character != U'x';
  };
  first.on_change = [this] { journal += '!'; };
  menu_key = 'P';
  using Presses = std::vector<std::vector<WORD>>;
  const auto press = [this](const std::string& clipboard, const Presses& presses) {
    if (!clipboard.empty()) desktop.CopyText(clipboard);
    journal.clear();
    Press({VK_CONTROL, 'A'});
    for (const auto& keys : presses) Press(keys);
  };
  const std::string limit(static_cast<std::size_t>(first.most_typed), '7'), beyond = limit + "777";
  const std::tuple<std::string, Presses, std::string, std::string> cases[] = {
      {"", {{VK_BACK}, {'4'}, {'X'}, {'5'}, {VK_BACK}}, "4", "\b!4!x5!\b!"},
      {"",
       {{VK_CONTROL, 'C'}, {VK_CONTROL, VK_INSERT}, {VK_SHIFT, VK_DELETE}, {VK_SHIFT, VK_INSERT}},
       "4",
       "!4!"},
      {"1x2\t3", {{VK_CONTROL, 'V'}}, "123", "1x23!"},
      {"4x5", {{VK_SHIFT, VK_INSERT}}, "45", "4x5!"},
      {"1x2\t3", {{VK_SHIFT, VK_F10}}, "123", "1x23!"},
      {beyond, {{VK_SHIFT, VK_INSERT}, {'8'}}, limit, beyond + "!8"}};
  for (const auto& [clipboard, presses, text, events] : cases) {
    press(clipboard, presses);
    EXPECT_EQ(first.Text(), text);
    EXPECT_EQ(journal, events);
  }
  for (const auto& [entry, left] : {std::pair('D', std::string()), {'U', limit}}) {
    menu_key = static_cast<WORD>(entry);
    press("", {{VK_SHIFT, VK_F10}});
    EXPECT_EQ(first.Text() + journal, left + "!") << entry;
  }
  ui::ChoiceList& list = *form.screen.cbNvi(0);
  menu_key = 'B';
  for (ui::Field* field : {static_cast<ui::Field*>(&first), static_cast<ui::Field*>(&list)}) {
    field->on_put_back = [this] { journal += "back"; };
    field->can_put_back = [] { return true; };
    for (const std::vector<WORD>& keys : {std::vector<WORD>{VK_SHIFT, VK_F10}, {VK_APPS}}) {
      field->SetFocus();
      journal.clear();
      Press(keys);
      EXPECT_EQ(journal, "back") << field->name();
    }
  }
  first.SetFocus();
  journal.clear();
  first.SetText(beyond);  // set by the program: no input, so no limit
  Press({VK_END});
  Press({'9'});
  EXPECT_EQ(journal, "9");
  first.SetLocked(true);
  first.on_key_down = [this](int, int) { return journal += "key", false; };
  press("8", {{'9'}, {VK_SHIFT, VK_INSERT}, {VK_CONTROL, 'V'}, {VK_PRIOR}});
  EXPECT_EQ(journal, "") << "a locked field gets no entry";
  EXPECT_EQ(TextOf(GetFocus()), windows::ToWide(beyond));
}

TEST_F(Input, FocusLeavesAControlThatIsDisabled) {
  form.apply.on_click = [this] { form.apply.SetEnabled(false); };
  ClickApply();
  EXPECT_EQ(form.ActiveControl(), &form.options);
  Press({VK_SHIFT, VK_TAB});
  EXPECT_EQ(form.ActiveControl(), &form.show);
}

TEST_F(Input, ShowsTheTooltipEvenOfADisabledControl) {
  form.options.SetToolTip("Opens the options.");
  form.options.SetEnabled(false);
  const HWND tips = Tips();
  for (const wchar_t* caption : {L"&Options of this window", L""}) {  // the help button shows a picture
    const RECT away = ScreenPlace(Child(WindowOf(form), L"R&D template"));
    MoveMouse(away.left, away.top);
    ASSERT_TRUE(Until([&] { return !IsWindowVisible(tips); }));
    const HWND button =
        *caption ? Child(WindowOf(form), caption) : Children(WindowOf(form), L"Button").back();
    const RECT place = ScreenPlace(button);
    EXPECT_TRUE(
        Until([&] { return KeepMouseAt(place.left + 8, place.top + 8), IsWindowVisible(tips) != 0; }));
    EXPECT_EQ(TextOf(tips), *caption ? L"Opens the options." : L"Help");
  }
}

}  // namespace
