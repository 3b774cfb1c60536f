#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <regex>
#include <string>
#include <thread>

#include "../../support/conditions.h"
#include "../real_input.h"
#include "automation/convert.h"
#include "director/configure.h"
#include "director/networks.h"
#include "director/simulator_knobs.h"
#include "windows/com/dispatch_object.h"
#include "windows/com/wide_text.h"
#include "windows/director/remote_window.h"

/// A director and a user of the real plug-in in another process: starts it through COM on the simulated
/// network, operates its window with keys and the mouse, and reads the simulated device.
class PlugInUser : public testing::Test {
 protected:
  static constexpr const char* kDevice = "Demo Tower/Demo Tower.Floor 1/Thermostat 101";
  static constexpr const wchar_t* kCaption = L"Korvell QM5R-FC PIR Configure";
  static constexpr const wchar_t* kTitle = L"QM5R-FC PIR LNS Device Plug-in";

  /// One simulator for all tests: the plug-in would not use one that is ending.
  static void SetUpTestSuite() { simulator_ = windows::com::CreateObject("LnsSimulator.LcaObjectServer"); }
  static void TearDownTestSuite() { simulator_.reset(); }

  void SetUp() override {
    Knobs().ClearFaults();
    plug_in_ = windows::com::CreateObject("QM5RFcPirConfigure.LNSPlugInAPI");
    director::ConfigureRequest request;
    request.path = kDevice;
    request.left = request.top = 20;
    director::Configure(*plug_in_, request);
    window_ = FindWindowW(nullptr, kCaption);
    ASSERT_TRUE(window_);
    BringToFront();
    Knobs().ClearJournal();
  }

  void TearDown() override {
    if (IsWindow(window_)) {
      Key(VK_MENU, 'E');
      if (Box(kCaption)) Key('Y');
    }
    EXPECT_TRUE(Eventually([&] { return !IsWindow(window_); })) << "the plug-in did not end";
    plug_in_.reset();
  }

  director::SimulatorKnobs Knobs() const { return director::SimulatorKnobs(simulator_); }

  static bool Eventually(const std::function<bool()>& condition) {
    for (int i = 0; i < 3000; ++i) {
      if (condition()) return true;
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return false;
  }

  void BringToFront() {
    const DWORD thread = GetWindowThreadProcessId(window_, nullptr);
    AttachThreadInput(GetCurrentThreadId(), thread, TRUE);
    SetForegroundWindow(window_);
    AttachThreadInput(GetCurrentThreadId(), thread, FALSE);
    EXPECT_TRUE(Eventually([&] { return GetForegroundWindow() == window_; }));
    Settle();
  }

  void Settle() const {
    DWORD_PTR result = 0;
    SendMessageTimeoutW(window_, WM_NULL, 0, 0, SMTO_NORMAL, 3000, &result);
  }
  /// Waits until the thread of the window in front has taken all of the input, which it does in order. When
  /// it takes the last release, it notes that the key is up; attached threads share these notes.
  void SendAndAwait(int last_released, const std::function<void()>& send) const {
    const DWORD target = GetWindowThreadProcessId(GetForegroundWindow(), nullptr);
    const HANDLE thread = OpenThread(SYNCHRONIZE, FALSE, target);
    AttachThreadInput(GetCurrentThreadId(), target, TRUE);
    BYTE keys[256]{};
    keys[last_released] = 0x80;
    SetKeyboardState(keys);
    send();
    const auto is_up = [&] { return GetKeyState(last_released) >= 0; };
    EXPECT_TRUE(Eventually([&] { return is_up() || WaitForSingleObject(thread, 0) == WAIT_OBJECT_0; }));
    AttachThreadInput(GetCurrentThreadId(), target, FALSE);
    CloseHandle(thread);
    Settle();
  }

  template <class... Keys>
  void Key(Keys... keys) {
    const std::vector pressed{static_cast<WORD>(keys)...};
    SendAndAwait(pressed[0], [&] { PressKeys(pressed); });
  }
  void Type(const std::string& text) {
    for (const char c : text) {
      const SHORT code = VkKeyScanA(c);
      HIBYTE(code) & 1 ? Key(VK_SHIFT, LOBYTE(code)) : Key(LOBYTE(code));
    }
  }

  static bool Is(HWND window, const wchar_t* window_class) {
    return lstrcmpiW(windows::ClassOf(window).c_str(), window_class) == 0;
  }

  /// The fields of the page in front in tab order: text fields and lists.
  std::vector<HWND> Fields() const {
    std::vector<HWND> fields;
    for (HWND tab : windows::ChildrenOf(window_))
      for (HWND page : windows::ChildrenOf(tab))
        if (IsWindowVisible(page))
          for (HWND child : windows::ChildrenOf(page))
            if (Is(child, L"Edit") || Is(child, L"ComboBox")) fields.push_back(child);
    return fields;
  }
  std::string Text(std::size_t field) const { return windows::TextOf(Fields().at(field)); }

  void ExpectText(std::size_t field, const std::string& text) const {
    Eventually([&] { return Text(field) == text; });
    EXPECT_EQ(Text(field), text);
  }
  HWND Focused() const {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(window_, nullptr), &info);
    return info.hwndFocus;
  }

  /// "Reading nciSetPts, 10 left" during a pass.
  std::string Doing() const {
    return windows::StatusTexts(FindWindowExW(window_, nullptr, L"msctls_statusbar32", nullptr)).back();
  }
  void AwaitEndOfPass() const {
    EXPECT_TRUE(Eventually([&] { return !Doing().ends_with(" left"); }));
  }

  /// The standard button with the caption, anywhere in the window.
  void ExpectEnabled(const wchar_t* caption, bool enabled) const {
    const HWND button = FindWindowExW(window_, nullptr, L"Button", caption);
    ASSERT_TRUE(button);
    EXPECT_TRUE(Eventually([&] { return (IsWindowEnabled(button) != 0) == enabled; }))
        << windows::ToUtf8(caption) << (enabled ? " is not enabled" : " is not disabled");
  }

  void Click(HWND control) {
    SendAndAwait(VK_LBUTTON, [&] { ClickWindow(control); });
    EXPECT_EQ(Focused(), control);
  }

  void ChooseFromMenuBelow(HWND control, WORD letter) {
    RECT menu_place{}, place{};
    const auto open = [&] {
      const HWND menu = FindWindowW(L"#32768", nullptr);
      return menu && IsWindowVisible(menu) && GetWindowRect(menu, &menu_place);
    };
    EXPECT_TRUE(Eventually(open));
    EXPECT_TRUE(GetWindowRect(control, &place));
    EXPECT_GE(menu_place.top, place.bottom);
    Key(letter);
    EXPECT_TRUE(Eventually([&] { return !open(); }));
  }

  static std::string FromClipboard() {
    if (!OpenClipboard(nullptr)) return {};
    const HANDLE data = GetClipboardData(CF_UNICODETEXT);
    const auto* text = data ? static_cast<const wchar_t*>(GlobalLock(data)) : nullptr;
    const std::string copied = text ? windows::ToUtf8(text) : std::string();
    if (text) GlobalUnlock(data);
    CloseClipboard();
    return copied;
  }

  HWND Box(const wchar_t* caption) const {
    HWND box = nullptr;
    // It is ready when it is visible with its texts and buttons.
    const bool shown =
        Eventually([&] { return (box = FindWindowW(L"#32770", caption)) && IsWindowVisible(box); });
    return shown ? box : nullptr;
  }
  /// "The question <Yes><No>".
  static std::string Reads(HWND box) {
    std::string text, buttons;
    for (HWND child : windows::ChildrenOf(box))
      if (Is(child, L"Button"))
        buttons += "<" + windows::TextOf(child) + ">";
      else
        text += windows::TextOf(child);
    std::erase(buttons, '&');
    return text + " " + buttons;
  }
  void Press(HWND box, WORD button) {
    PostMessageW(box, WM_COMMAND, button, 0);
    EXPECT_TRUE(Eventually([&] { return !IsWindow(box); }));
    Settle();
  }

  void ExpectBox(const wchar_t* caption, const std::string& text, WORD answer) {
    const HWND box = Box(caption);
    ASSERT_TRUE(box) << text;
    EXPECT_EQ(Reads(box), text);
    Press(box, answer);
  }

  template <class Use>
  static auto InRaw(const std::string& variable, const Use& use) {
    const director::OpenedNetwork opened(lns::ObjectServer(simulator_), "Demo Tower");
    const auto found = director::DeviceAt(opened, kDevice).Interface().NetworkVariables().Item(variable);
    found.SetFormatType("RAW_HEX_PACKED");
    return use(found);
  }
  static std::string Raw(const std::string& variable) {
    return InRaw(variable, [](const lns::NetworkVariable& found) { return found.Value(); });
  }
  static void SetRaw(const std::string& variable, const std::string& bytes) {
    InRaw(variable, [&](const lns::NetworkVariable& found) { found.SetValue(bytes); });
  }

  /// "nciSetPts " for every value written, in order.
  std::string Written() const { return Journalled("([^/\\n]+) Value="); }

  /// The matches of the pattern's group in the simulator's journal.
  std::string Journalled(const char* pattern) const {
    const std::string lines = Knobs().Journal();
    const std::regex wanted(pattern);
    std::string all;
    for (std::sregex_iterator found(lines.begin(), lines.end(), wanted), end; found != end; ++found)
      all += found->str(1) + " ";
    return all;
  }

  static inline platform::LateBoundPtr simulator_;
  platform::LateBoundPtr plug_in_;
  HWND window_ = nullptr;
};
