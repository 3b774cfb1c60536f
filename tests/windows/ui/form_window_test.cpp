#include <array>
#include <set>
#include <tuple>

#include "platform/error.h"
#include "windows_under_test.h"

namespace {

class FormWindow : public WindowsUiTest {
 protected:
  ScreenForm form{desktop};
};

TEST_F(FormWindow, ShowsAStateThatWasSetWhileItWasHidden) {
  form.Load();
  const HWND window = WindowOf(form);
  form.SetState(ui::WindowState::Minimized);
  form.SetBounds(600, 450, 13500, 12000);
  Settle();
  EXPECT_FALSE(IsWindowVisible(window));

  form.Show();
  EXPECT_TRUE(Until([&] { return IsIconic(window) != 0; }));
  EXPECT_EQ(form.Width(), 13500);

  form.SetState(ui::WindowState::Normal);
  EXPECT_TRUE(Until([&] { return !IsIconic(window); }));
  const RECT place = ScreenPlace(window);
  EXPECT_EQ(place.left, 40);
  EXPECT_EQ(place.right - place.left, 900);
  EXPECT_EQ(form.Left(), 600);
}

TEST_F(FormWindow, CannotBeFoundWhileItIsKeptForItsForm) {
  struct KeptForm : ui::Form {
    explicit KeptForm(ui::Desktop& screen) : Form(screen, "fKept", ui::BorderStyle::FixedDialog) {
      KeepWindow();
      SetCaption("Kept under test");
    }
  } kept(desktop);
  kept.Show();
  const HWND window = WindowOf(kept);
  ASSERT_TRUE(window);
  kept.Unload();
  EXPECT_FALSE(WindowOf(kept));
  EXPECT_PRED2(Both, !IsWindowVisible(window), !kept.hwnd());
  SendMessageW(window, WM_CLOSE, 0, 0);
  kept.Show();
  EXPECT_EQ(WindowOf(kept), window);
  EXPECT_TRUE(IsWindowVisible(window));
}

TEST_F(FormWindow, ReportsStateChangesByTheUser) {
  form.Show();
  const HWND window = WindowOf(form);
  using enum ui::WindowState;
  const std::pair<int, ui::WindowState> steps[] = {
      {SC_MINIMIZE, Minimized}, {SC_RESTORE, Normal}, {SC_MAXIMIZE, Maximized}, {SC_RESTORE, Normal}};
  for (const auto& [command, state] : steps) {
    SendMessageW(window, WM_SYSCOMMAND, static_cast<WPARAM>(command), 0);
    EXPECT_TRUE(Until([&, wanted = state] { return form.State() == wanted; })) << command;
  }
}

TEST_F(FormWindow, ReadsBackTheBoundsThatWereWritten) {
  form.Load();
  const HWND window = WindowOf(form);
  const std::pair<std::array<double, 4>, RECT> cases[] = {
      {{300, 150, 15000, 12000}, {20, 10, 1020, 810}},
      {{301, 157, 15007, 12008}, {20, 10, 1020, 811}},  // no whole pixels
      {{-150, -75, 9000, 9000}, {-10, -5, 590, 595}},
      {{0, 0, 3000, 1500}, {0, 0, 200, 100}},       // below the layout's minimum
      {{0, 0, 900, 450}, {0, 0, 60, 30}},           // and below the system's
      {{0, 0, 30000, 24000}, {0, 0, 2000, 1600}}};  // larger than the screen
  for (const bool visible : {false, true}) {
    form.SetVisible(visible);
    for (const auto& [bounds, pixels] : cases) {
      form.SetBounds(bounds[0], bounds[1], bounds[2], bounds[3]);
      Settle();
      const RECT place = ScreenPlace(window);
      EXPECT_TRUE(EqualRect(&place, &pixels)) << bounds[2] << " visible " << visible;
      EXPECT_EQ((std::array{form.Left(), form.Top(), form.Width(), form.Height()}), bounds);
    }
  }
}

TEST_F(FormWindow, CannotBeMadeSmallerThanItsMinimum) {
  form.Show();
  const HWND window = WindowOf(form);
  const double best = form.Width();
  SetWindowPos(window, nullptr, 0, 0, 1200, 1000, SWP_NOZORDER | SWP_NOACTIVATE);
  EXPECT_EQ(form.Width(), 1200 * 15);
  SetWindowPos(window, nullptr, 0, 0, 50, 50, SWP_NOZORDER | SWP_NOACTIVATE);
  EXPECT_EQ(form.Width(), best);
}

// How a form can lose its window in a control's event: that event, and the message that causes it.
using Event = std::function<void()>* (*)(ScreenForm&);
const std::tuple<const char*, Event, const wchar_t*, UINT, WPARAM> kClosing[] = {
    {"button", [](ScreenForm& f) { return &f.apply.on_click; }, L"&Apply", BM_CLICK, 0},
    {"option", [](ScreenForm& f) { return &f.imperial.on_click; }, L"&Imperial", BM_CLICK, 0},
    {"text", [](ScreenForm& f) { return &f.screen.txtNvi(0)->on_change; }, L"marked", WM_CHAR, '1'},
    {"page", [](ScreenForm& f) { return &f.screen.tabData.on_select; }, L"marked", WM_SYSCHAR, 'g'},
    {"focus", [](ScreenForm& f) { return &f.apply.on_got_focus; }, L"&Apply", WM_LBUTTONDOWN, 0},
    {"no focus", [](ScreenForm& f) { return &f.screen.txtNvi(0)->on_lost_focus; }, L"marked", WM_KEYDOWN,
     VK_TAB},
    {"close box", [](ScreenForm& f) { return &f.apply.on_click; }, nullptr, WM_CLOSE, 0},
};

TEST_F(FormWindow, ClosesFromWithinItsOwnEvents) {
  for (const auto& [name, event, control, message, wparam] : kClosing) {
    SCOPED_TRACE(name);
    ScreenForm closing(desktop);
    closing.screen.txtNvi(0)->SetText("marked");
    *event(closing) = [&] { closing.Unload(); };
    ASSERT_TRUE(Activate(closing));
    const HWND window = WindowOf(closing);
    SendMessageW(control ? Child(window, control) : window, message, wparam, 0);
    EXPECT_FALSE(closing.Loaded());
    EXPECT_TRUE(IsWindow(window));             // until the running procedure has certainly ended
    for (const HWND child : Children(window))  // nobody gets later messages
      for (const UINT late : {WM_SETFOCUS, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_CHAR, WM_NCPAINT, WM_PAINT})
        SendMessageW(child, late, 0, 0);
    EXPECT_TRUE(Until([&] { return !IsWindow(window); }));
    closing.Show();  // it can be loaded again
    EXPECT_TRUE(WindowOf(closing));
  }
  EXPECT_TRUE(failures.empty());
}

TEST_F(FormWindow, AsksTheFormBeforeItCloses) {
  form.Show();
  std::vector<ui::CloseReason> asked;
  form.on_query_unload = [&](ui::CloseReason reason) {
    asked.push_back(reason);
    return asked.size() == 2;
  };
  for (const bool stays : {true, false}) {
    SendMessageW(WindowOf(form), WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_EQ(form.Loaded(), stays);
  }
  EXPECT_EQ(asked, std::vector(2, ui::CloseReason::User));
}

TEST_F(FormWindow, ReportsWhatAHandlerThrows) {
  form.Show();
  form.apply.on_click = [] { throw platform::Error(5, "test", "The handler fails."); };
  SendMessageW(Child(WindowOf(form), L"&Apply"), BM_CLICK, 0, 0);
  EXPECT_EQ(failures, std::vector<std::string>{"The handler fails."});
}

TEST_F(FormWindow, HostsAnAnimationItselfOrInAControl) {
  ui::cAnimControl clip(desktop, "Program");
  clip.ResourceId = 201;
  clip.Transparent = true;
  for (const ui::HasWindow* owner : std::initializer_list<const ui::HasWindow*>{&form, &form.units})
    for (const bool owner_goes : {false, true}) {
      form.Show();
      clip.SetOwner(*owner);
      clip.StartPlay();
      const HWND window = reinterpret_cast<HWND>(clip.hwnd());
      EXPECT_EQ(ClassOf(window), L"SysAnimate32");
      EXPECT_FALSE(GetWindowLongW(GetParent(window), GWL_STYLE) & WS_CLIPCHILDREN) << "it is transparent";
      EXPECT_EQ(reinterpret_cast<std::uintptr_t>(GetParent(window)), owner->hwnd());
      EXPECT_PRED2(Both, IsWindowVisible(window), clip.Width() > 0);
      owner_goes ? form.Unload() : clip.StopPlay();
      EXPECT_PRED2(Both, !IsWindow(window), clip.hwnd() == 0);
    }
  EXPECT_THROW(clip.StartPlay(), platform::Error) << "the owner is gone";
}

struct LargeFormWindow : WindowsUiTest {
  LargeFormWindow() : WindowsUiTest(288) {}
  ScreenForm form{desktop};
};

TEST_F(LargeFormWindow, ScrollsToTheFocusOnASmallScreen) {
  ASSERT_TRUE(Activate(form));
  const HWND window = WindowOf(form);
  SetWindowPos(window, nullptr, 0, 0, 1, 1, SWP_NOZORDER | SWP_NOMOVE);
  RECT screen, client;
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &screen, 0);
  const RECT least = ScreenPlace(window);
  EXPECT_LE(least.right - least.left, screen.right);
  EXPECT_LE(least.bottom - least.top, screen.bottom);
  std::set<HWND> seen;
  for (int i = 0; i < 60; ++i) {
    Press({VK_TAB});
    if (i % 12 == 11) Press({VK_CONTROL, VK_TAB});
    const HWND focus = GetFocus();
    GetClientRect(window, &client);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&client), 2);
    const RECT place = ScreenPlace(focus);
    const bool whole = ClassOf(focus) != L"SysTabControl32" && ClassOf(focus) != L"SysListView32";
    EXPECT_PRED2(Both, place.left >= client.left, place.top >= client.top) << windows::ToUtf8(TextOf(focus));
    EXPECT_PRED2(Implies, whole, place.right <= client.right && place.bottom <= client.bottom)
        << windows::ToUtf8(TextOf(focus));
    seen.insert(focus);
  }
  EXPECT_GT(seen.size(), 25u);
  form.SetBounds(0, 0, 20000, 20000);  // large enough for all of it
  EXPECT_FALSE(GetWindowLongW(window, GWL_STYLE) & (WS_HSCROLL | WS_VSCROLL));
}

}  // namespace
