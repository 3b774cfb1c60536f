#include "windows_under_test.h"

#include <algorithm>

#include "../mouse_input.h"

namespace {

BOOL CALLBACK AddWindow(HWND window, LPARAM all) {
  reinterpret_cast<std::vector<HWND>*>(all)->push_back(window);
  return TRUE;
}

}  // namespace

ScreenForm::ScreenForm(ui::Desktop& screen_desktop)
    : Form(screen_desktop, "fScreen", ui::BorderStyle::Sizable) {
  using ui::Box;
  SetCaption("Screen under test");
  heading.shows_data = true;
  note.columns = 30;
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
  std::vector<HWND> all;
  EnumChildWindows(parent, AddWindow, reinterpret_cast<LPARAM>(&all));
  if (!window_class.empty()) std::erase_if(all, [&](HWND window) { return ClassOf(window) != window_class; });
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

void WindowsUiTest::Press(std::vector<WORD> keys) {
  std::vector<INPUT> inputs(2 * keys.size());
  for (std::size_t i = 0; i < keys.size(); ++i)
    for (INPUT* input : {&inputs[i], &inputs[inputs.size() - 1 - i]}) {
      input->type = INPUT_KEYBOARD;
      input->ki.wVk = keys[i];
      input->ki.wScan = static_cast<WORD>(MapVirtualKeyW(keys[i], MAPVK_VK_TO_VSC));
      input->ki.dwFlags = input == &inputs[i] ? 0 : KEYEVENTF_KEYUP;
    }
  SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
  Settle();
}

void WindowsUiTest::Click(HWND window) {
  ClickWindow(window);
  Settle();
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
