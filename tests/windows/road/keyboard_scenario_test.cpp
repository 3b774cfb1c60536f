#include <windows.h>

#include <commctrl.h>

#include <fstream>

#include "plug_in_user.h"

namespace {

class KeyboardScenario : public PlugInUser {
 protected:
  LRESULT Page() const {
    return SendMessageW(FindWindowExW(window_, nullptr, WC_TABCONTROLW, nullptr), TCM_GETCURSEL, 0, 0);
  }
  /// The front window, once it is another one.
  HWND NextFront(HWND before) const {
    HWND front = nullptr;
    EXPECT_TRUE(Eventually([&] { return (front = GetForegroundWindow()) && front != before; }));
    Settle();
    return front;
  }
  static std::string ExpectCopied(const std::string& pattern) {
    const std::regex wanted(pattern);
    std::string copied;
    EXPECT_TRUE(Eventually([&] { return std::regex_match(copied = FromClipboard(), wanted); }))
        << copied << " is not " << pattern;
    return copied;
  }
};

TEST_F(KeyboardScenario, TheKeyboardReachesEverything) {
  for (LRESULT page = 0; page < 8; ++page) {
    EXPECT_EQ(Page(), page);
    for (const HWND field : Fields()) {
      EXPECT_TRUE(Eventually([&] { return Focused() == field; })) << page << windows::TextOf(field);
      if (field != Fields().back()) Key(VK_TAB);
    }
    Key(VK_CONTROL, VK_TAB);
  }
  Key(VK_CONTROL, VK_SHIFT, VK_TAB);
  EXPECT_EQ(Page(), 7);
  for (const int letter : {'A', 'C'}) Key(VK_CONTROL, letter);
  ExpectCopied(Text(0));
  Key(VK_CONTROL, VK_PRIOR);
  EXPECT_EQ(Page(), 6);

  Key(VK_MENU, 'H');
  Type("20");
  Key(VK_SHIFT, VK_TAB);
  Key(VK_RIGHT);  // to the next tab
  EXPECT_EQ(Page(), 1);
  Key(VK_TAB);
  const std::string fan = Text(0);
  Key(VK_MENU, VK_DOWN);
  Key(fan == "LOW" ? VK_DOWN : VK_HOME);
  Key(VK_MENU, VK_UP);
  EXPECT_NE(Text(0), fan);
  Key(VK_MENU, 'A');
  ExpectEnabled(L"&Apply", false);
  EXPECT_EQ(Written(), "nciSetPts nciGenOpts ");

  Key(VK_MENU, 'H');
  Type("19");
  ExpectText(0, "19");
  Key(VK_MENU, 'C');
  ExpectText(0, "20");
  Key(VK_MENU, 'I');
  ExpectText(0, "68");
  AwaitEndOfPass();
  Key(VK_LEFT);
  ExpectText(0, "20");
  AwaitEndOfPass();
  EXPECT_EQ(Written(), "nciSetPts nciGenOpts ") << "showing other units writes nothing";
  Key(VK_MENU, 'R');
  AwaitEndOfPass();

  for (const int key : {VK_TAB, VK_TAB, VK_TAB, VK_SPACE}) Key(key);
  const HWND log = NextFront(window_);
  EXPECT_EQ(windows::TextOf(log), "Network activity logging");
  for (const int letter : {'A', 'C'}) Key(VK_CONTROL, letter);
  // The device's name, eleven points read four times, two written; possibly the object server's requirements.
  const std::string rows = ExpectCopied("(.*\t.*\t.*\r\n){47,48}");
  Key(VK_END);
  Key(VK_SHIFT, VK_F10);
  ChooseFromMenuBelow(FindWindowExW(Focused(), nullptr, L"SysHeader32", nullptr), 'C');
  ExpectCopied(".*\tReading nciSccModel \\(Raw\\)\t.*\r\n");
  Key(VK_MENU, 'S');
  const HWND dialog = NextFront(log);
  DeleteFileW(L"C:\\keys.csv");
  Type("C:\\keys.csv");
  Key(VK_RETURN);
  EXPECT_EQ(NextFront(dialog), log);
  std::ifstream file("C:\\keys.csv");
  EXPECT_EQ(std::count(std::istreambuf_iterator<char>(file), {}, '\n'), std::ranges::count(rows, '\n'));
  Key(VK_ESCAPE);

  EXPECT_EQ(NextFront(log), window_);
  for (const int key : {VK_TAB, VK_RETURN}) Key(key);
  const HWND help = NextFront(window_);  // or the message instead
  Key(VK_MENU, VK_F4);
  EXPECT_EQ(NextFront(help), window_);
  Key(VK_SHIFT, VK_F10);
  for (const int key : {VK_DOWN, VK_RETURN}) Key(key);
  ExpectCopied("Korvell QM5R-FC PIR Configure \\[.*Thermostat 101\\)\\]");
}

}  // namespace
