#include <memory>

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
  EXPECT_FALSE(IsWindowVisible(window));
  form.SetBounds(600, 450, 13500, 12000);
  Settle();
  EXPECT_FALSE(IsWindowVisible(window));
  EXPECT_FALSE(form.Visible());

  form.Show();
  EXPECT_TRUE(Until([&] { return IsIconic(window) != 0; }));
  EXPECT_EQ(form.State(), ui::WindowState::Minimized);
  EXPECT_EQ(form.Left(), 600);
  EXPECT_EQ(form.Width(), 13500);

  form.SetState(ui::WindowState::Normal);
  EXPECT_TRUE(Until([&] { return !IsIconic(window); }));
  const RECT place = ScreenPlace(window);
  EXPECT_EQ(place.left, 40);
  EXPECT_EQ(place.right - place.left, 900);
  EXPECT_EQ(form.Left(), 600);
}

TEST_F(FormWindow, TellsWhatTheUserMakesOfItsState) {
  form.Show();
  const HWND window = WindowOf(form);
  const std::pair<WPARAM, ui::WindowState> commands[] = {{SC_MINIMIZE, ui::WindowState::Minimized},
                                                         {SC_RESTORE, ui::WindowState::Normal},
                                                         {SC_MAXIMIZE, ui::WindowState::Maximized},
                                                         {SC_RESTORE, ui::WindowState::Normal}};
  for (const auto& [command, state] : commands) {
    SendMessageW(window, WM_SYSCOMMAND, command, 0);
    EXPECT_TRUE(Until([&, wanted = state] { return form.State() == wanted; })) << command;
  }
}

TEST_F(FormWindow, ReadsTheBoundsThatWereWritten) {
  form.Load();
  const HWND window = WindowOf(form);
  struct Bounds {
    double left, top, width, height;
    RECT pixels;
  };
  const Bounds cases[] = {{300, 150, 15000, 12000, {20, 10, 1020, 810}},
                          {301, 157, 15007, 12008, {20, 10, 1020, 811}},  // no whole pixels
                          {-150, -75, 9000, 9000, {-10, -5, 590, 595}},
                          {0, 0, 3000, 1500, {0, 0, 200, 100}},       // below the layout's minimum
                          {0, 0, 900, 450, {0, 0, 60, 30}},           // and below the system's
                          {0, 0, 30000, 24000, {0, 0, 2000, 1600}}};  // larger than the screen
  for (const bool visible : {false, true}) {
    form.SetVisible(visible);
    for (const Bounds& bounds : cases) {
      form.SetBounds(bounds.left, bounds.top, bounds.width, bounds.height);
      Settle();
      const RECT place = ScreenPlace(window);
      EXPECT_TRUE(EqualRect(&place, &bounds.pixels)) << bounds.width << " visible " << visible;
      EXPECT_EQ(form.Left(), bounds.left);
      EXPECT_EQ(form.Top(), bounds.top);
      EXPECT_EQ(form.Width(), bounds.width);
      EXPECT_EQ(form.Height(), bounds.height);
    }
  }
}

TEST_F(FormWindow, KeepsTheUserAboveTheMinimumSize) {
  form.Show();
  const HWND window = WindowOf(form);
  const double best = form.Width();
  SetWindowPos(window, nullptr, 0, 0, 1200, 1000, SWP_NOZORDER | SWP_NOACTIVATE);
  EXPECT_EQ(form.Width(), 1200 * 15);
  SetWindowPos(window, nullptr, 0, 0, 50, 50, SWP_NOZORDER | SWP_NOACTIVATE);
  EXPECT_EQ(form.Width(), best);
}

// One entry for each way in which a form can lose its window while one of its controls is at work.
struct ClosingCase {
  const char* name;
  bool in_procedure;  // of the window itself, which must stay until that has ended
  void (*prepare)(ScreenForm&);
  void (*act)(ScreenForm&, HWND);
};

HWND Find(HWND window, const wchar_t* text) { return WindowsUiTest::Child(window, text); }

const ClosingCase kClosing[] = {
    {"button", true, [](ScreenForm& f) { f.apply.on_click = [&f] { f.Unload(); }; },
     [](ScreenForm&, HWND window) { SendMessageW(Find(window, L"&Apply"), BM_CLICK, 0, 0); }},
    {"option button", true, [](ScreenForm& f) { f.imperial.on_click = [&f] { f.Unload(); }; },
     [](ScreenForm&, HWND window) { SendMessageW(Find(window, L"&Imperial"), BM_CLICK, 0, 0); }},
    {"text", true, [](ScreenForm& f) { f.screen.txtNvi(0)->on_change = [&f] { f.Unload(); }; },
     [](ScreenForm& f, HWND window) {
       f.screen.txtNvi(0)->SetText("marked");
       SendMessageW(Find(window, L"marked"), WM_CHAR, '1', 0);
     }},
    {"key", true,
     [](ScreenForm& f) {
       f.screen.txtNvi(0)->on_key_press = [&f](char32_t) {
         f.Unload();
         return true;
       };
     },
     [](ScreenForm& f, HWND window) {
       f.screen.txtNvi(0)->SetText("marked");
       SendMessageW(Find(window, L"marked"), WM_CHAR, '1', 0);
     }},
    {"page", false, [](ScreenForm& f) { f.screen.tabData.on_select = [&f] { f.Unload(); }; },
     [](ScreenForm& f, HWND) { f.screen.tabData.Select(2); }},
    {"focus", true, [](ScreenForm& f) { f.apply.on_got_focus = [&f] { f.Unload(); }; },
     [](ScreenForm& f, HWND) { f.apply.SetFocus(); }},
    {"close box", true, [](ScreenForm&) {},
     [](ScreenForm&, HWND window) { SendMessageW(window, WM_CLOSE, 0, 0); }},
    {"the program itself", false, [](ScreenForm&) {}, [](ScreenForm& f, HWND) { f.Unload(); }},
};

TEST_F(FormWindow, ClosesFromWithinItsOwnEvents) {
  for (const ClosingCase& each : kClosing) {
    SCOPED_TRACE(each.name);
    ScreenForm closing(desktop);
    each.prepare(closing);
    closing.Show();
    Settle();
    const HWND window = WindowOf(closing);
    ASSERT_TRUE(window);
    each.act(closing, window);
    EXPECT_FALSE(closing.Loaded());
    EXPECT_EQ(IsWindow(window) != 0, each.in_procedure);
    for (const HWND child : Children(window))  // what still comes is heard by nobody
      for (const UINT late : {WM_SETFOCUS, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_CHAR, WM_NCPAINT, WM_PAINT})
        SendMessageW(child, late, 0, 0);
    EXPECT_TRUE(Until([&] { return !IsWindow(window); }));
    closing.Show();  // and it can be loaded again
    EXPECT_TRUE(WindowOf(closing));
    closing.apply.SetText("text without a window must not matter");
  }
  EXPECT_TRUE(failures.empty());
}

TEST_F(FormWindow, GoesWithItsForm) {
  auto going = std::make_unique<ScreenForm>(desktop);
  going->Show();
  const HWND window = WindowOf(*going);
  ASSERT_TRUE(window);
  going.reset();
  EXPECT_FALSE(IsWindow(window));
}

TEST_F(FormWindow, AsksTheFormBeforeItCloses) {
  form.Show();
  const HWND window = WindowOf(form);
  int asked = 0;
  form.on_query_unload = [&](ui::CloseReason reason) {
    EXPECT_EQ(reason, ui::CloseReason::User);
    return ++asked > 1;
  };
  SendMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
  EXPECT_TRUE(form.Loaded());
  SendMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
  EXPECT_FALSE(form.Loaded());
  EXPECT_EQ(asked, 2);
}

TEST_F(FormWindow, ReportsWhatAHandlerThrows) {
  form.Show();
  form.apply.on_click = [] { throw platform::Error(5, "test", "The handler fails."); };
  SendMessageW(Child(WindowOf(form), L"&Apply"), BM_CLICK, 0, 0);
  ASSERT_EQ(failures.size(), 1u);
  EXPECT_EQ(failures[0], "The handler fails.");
}

}  // namespace
