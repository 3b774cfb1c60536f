#include "windows_under_test.h"

#include <algorithm>
#include <iterator>

ScreenForm::ScreenForm(ui::Desktop& screen_desktop)
    : Form(screen_desktop, "fScreen", ui::BorderStyle::Sizable) {
  using ui::Box;
  SetCaption("Screen under test");
  heading.shows_data = true;
  note.columns = 30;
  log.small_icons = &marks;
  help.picture = ui::Button::Picture::Help;
  help.SetToolTip("Help");
  Box strip = Box::Row({Box::Framed(units, Box::Row({Box::Leaf(metric), Box::Leaf(imperial)})),
                        Box{}.StretchWidth(), Box::Leaf(note), Box::Framed(on_error, Box::Leaf(show)),
                        Box::Leaf(apply), Box::Leaf(options), Box::Leaf(help)});
  SetLayout(Box::Column({Box::Leaf(heading).StretchWidth(), screen.Layout(), std::move(strip).StretchWidth(),
                         Box::Leaf(log).Stretch(), Box::Leaf(bar).StretchWidth()}));
}

WindowsUiTest::WindowsUiTest(int dpi)
    : desktop({dpi, [this](const std::exception& failure) { failures.push_back(failure.what()); }}) {}

bool WindowsUiTest::Until(const std::function<bool()>& condition) {
  for (const ULONGLONG end = GetTickCount64() + 5000; GetTickCount64() < end;) {
    desktop.Yield();
    if (condition()) return true;
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
  }
  return false;
}

HWND WindowsUiTest::WindowOf(const ui::Form& form) const {
  return FindWindowW(L"FormSurface", windows::ToWide(form.Caption()).c_str());
}

std::vector<HWND> WindowsUiTest::Children(HWND parent, const std::wstring& window_class) {
  SendMessageW(parent, RegisterWindowMessageW(L"FormSurface.MakeAllWindows"), 0, 0);
  std::vector<HWND> all;
  for (HWND child = GetWindow(parent, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    if (window_class.empty() || ClassOf(child) == window_class) all.push_back(child);
    std::ranges::copy(Children(child, window_class), std::back_inserter(all));
  }
  return all;
}

HWND WindowsUiTest::Child(HWND parent, const std::wstring& text) {
  for (const HWND child : Children(parent))
    if (TextOf(child) == text) return child;
  return nullptr;
}

bool WindowsUiTest::Activate(ui::Form& form) {
  form.Show();
  const HWND window = WindowOf(form);
  SetForegroundWindow(window);
  return Until([&] { return GetForegroundWindow() == window && GetFocus(); });
}

std::wstring ClassOf(HWND window) {
  wchar_t name[64];
  return {name, static_cast<std::size_t>(GetClassNameW(window, name, 64))};
}

std::wstring TextOf(HWND window) {
  wchar_t text[256];
  return {text,
          static_cast<std::size_t>(SendMessageW(window, WM_GETTEXT, 256, reinterpret_cast<LPARAM>(text)))};
}

RECT ScreenPlace(HWND window) {
  RECT place;
  GetWindowRect(window, &place);
  return place;
}
