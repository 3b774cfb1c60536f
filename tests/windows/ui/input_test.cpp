// The keyboard and the mouse, by real input.

#include "ui/keyboard.h"
#include "windows_under_test.h"

namespace {

HWND other_window = nullptr;
bool other_was_usable = false;

/// Presses the button of the dialog when it has come up.
void CALLBACK AnswerBox(HWND, UINT, UINT_PTR timer, DWORD) {
  const HWND box = FindWindowW(L"#32770", L"Question of the test");
  if (!box) return;
  KillTimer(nullptr, timer);
  other_was_usable = IsWindowEnabled(other_window);
  PostMessageW(box, WM_COMMAND, IDOK, 0);
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
  }
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
};

TEST_F(Input, TabWalksTheFieldsAndTypingReplacesTheirText) {
  EXPECT_EQ(form.ActiveControl(), &first);
  for (const WORD key : std::vector<WORD>{'2', VK_OEM_PERIOD, '5', VK_TAB, '7'}) Press({key});
  EXPECT_EQ(first.Text(), "2.5");
  EXPECT_EQ(second.Text(), "7");
  Press({VK_SHIFT, VK_TAB});
  EXPECT_EQ(form.ActiveControl(), &first);
  EXPECT_EQ(journal,
            " got txtNvi(0) check txtNvi(0) lost txtNvi(0) got txtNvi(18) check txtNvi(18) lost txtNvi(18)"
            " got txtNvi(0)");
  EXPECT_TRUE(failures.empty());
}

TEST_F(Input, LettersWithAltBringPagesToTheFront) {
  const std::pair<WORD, int> steps[] = {{'G', 1}, {'H', 0}, {'H', 2}, {'H', 0}, {'P', 4}, {'B', 7}, {'N', 5}};
  for (const auto& [letter, page] : steps) {
    Press({VK_MENU, letter});
    ASSERT_TRUE(form.ActiveControl());
    EXPECT_EQ(ui::PagesAround(form.layout(), *form.ActiveControl()).front().page, page) << char(letter);
    EXPECT_TRUE(IsWindowVisible(GetFocus()));
  }
  Press({VK_MENU, 'A'});
  EXPECT_NE(journal.find(" apply"), std::string::npos);
  Press({VK_CONTROL, VK_TAB});
  EXPECT_EQ(form.screen.tabData.Selected(), 6u);
  Press({VK_CONTROL, VK_PRIOR});
  EXPECT_EQ(form.screen.tabData.Selected(), 5u);
}

TEST_F(Input, MovesOnOnlyWhenACheckBringsUpNoMessage) {
  first.on_validate = [this] { Ask(); };
  ClickApply();
  EXPECT_EQ(journal, " got txtNvi(0) asks answered lost txtNvi(0)");
  EXPECT_EQ(form.ActiveControl(), &form.apply);
  ClickApply();
  EXPECT_EQ(journal, " got txtNvi(0) asks answered lost txtNvi(0) apply");
}

TEST_F(Input, ARuleThatMovesTheFocusSwallowsThePress) {
  first.on_lost_focus = [this] {
    form.screen.txtNvi(7)->SetFocus();  // on a page behind
    Ask();
  };
  ClickApply();
  EXPECT_EQ(journal, " got txtNvi(0) check txtNvi(0) asks answered");
  EXPECT_EQ(form.ActiveControl(), form.screen.txtNvi(7));
  EXPECT_EQ(form.screen.tabData.Selected(), 3u);
  EXPECT_TRUE(IsWindowVisible(GetFocus()));
}

TEST_F(Input, AnotherWindowInFrontIsNoLeaving) {
  ASSERT_TRUE(Activate(other));
  SetForegroundWindow(WindowOf(form));
  EXPECT_TRUE(Until([&] { return GetActiveWindow() == WindowOf(form); }));
  Ask();
  EXPECT_EQ(form.ActiveControl(), &first);
  EXPECT_EQ(journal, " got txtNvi(0) asks answered");
}

TEST_F(Input, WhileADialogIsUpNoWindowCanBeUsed) {
  other.Show();
  other_window = WindowOf(other);
  for (const bool saving : {false, true}) {
    ASSERT_TRUE(Activate(form));
    if (saving) SetTimer(nullptr, 0, 30, AnswerBox);
    other_was_usable = true;
    saving ? void(desktop.AskSaveFile({"Question of the test", "file", "*.csv", "All|*.*"})) : Ask();
    EXPECT_FALSE(other_was_usable) << saving;
    EXPECT_TRUE(IsWindowEnabled(other_window));
    EXPECT_TRUE(Until([&] { return GetForegroundWindow() == WindowOf(form) && GetFocus(); })) << saving;
    EXPECT_EQ(form.ActiveControl(), &first);
  }
}

TEST_F(Input, EnterAndEscapePressTheirButtons) {
  form.default_button = &form.apply;
  form.cancel_button = &form.options;
  form.options.on_click = [this] { journal += " cancel"; };
  Press({VK_RETURN});
  Press({VK_ESCAPE});
  EXPECT_EQ(journal, " got txtNvi(0) check txtNvi(0) lost txtNvi(0) apply cancel");
}

TEST_F(Input, FocusLeavesAControlThatIsDisabled) {
  form.apply.on_click = [this] { form.apply.SetEnabled(false); };
  ClickApply();
  EXPECT_EQ(form.ActiveControl(), &form.options);
  Press({VK_SHIFT, VK_TAB});
  EXPECT_EQ(form.ActiveControl(), &form.show);
}

TEST_F(Input, ATipComesUpUnderTheMouseForADisabledControlToo) {
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
