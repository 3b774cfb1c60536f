#include <windows.h>

#include <cstdio>
#include <fstream>
#include <iterator>

#include "plug_in_user.h"

namespace {

constexpr const char* kFile = "C:\\room.qm5r";

class SettingsScenario : public PlugInUser {
 protected:
  void SetUp() override {
    SetRaw("nciSetPts", "08FC09C40AF00834076C0640");
    PlugInUser::SetUp();
    std::remove(kFile);
    Key(VK_MENU, 'R');
    AwaitEndOfPass();
    for (int i = 0; i < 2; ++i) Key(VK_TAB);
    button_ = Focused();
    Knobs().ClearJournal();
  }

  HWND Window(const wchar_t* caption) const {
    HWND found = nullptr;
    EXPECT_TRUE(Eventually(
        [&] { return (found = FindWindowW(nullptr, caption)) && GetForegroundWindow() == found; }));
    Settle();
    return found;
  }
  void ChooseFromMenu(WORD letter, const wchar_t* dialog) {
    Key(VK_SPACE);
    ChooseFromMenuBelow(button_, letter);
    Window(dialog);
  }
  void NameFile(const wchar_t* dialog) {
    const HWND window = Window(dialog);
    Type(kFile);
    Key(VK_RETURN);
    EXPECT_TRUE(Eventually([&] { return !IsWindow(window); }));
  }
  void Save() {
    ChooseFromMenu('S', L"Save settings");
    NameFile(L"Save settings");
    EXPECT_TRUE(Eventually([&] { return !Saved().empty() && GetForegroundWindow() == window_; }));
    AwaitEndOfPass();
  }
  static std::string Saved() {
    std::ifstream file(kFile, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  static void Change(const std::string& field, const std::string& value) {
    const std::string text =
        std::regex_replace(Saved(), std::regex("\n" + field + " = [^\n]*"), "\n" + field + " = " + value);
    std::ofstream(kFile, std::ios::binary) << text;
  }
  HWND Load() {
    ChooseFromMenu('L', L"Load settings");
    NameFile(L"Load settings");
    return Window(L"Loading settings");
  }
  /// The rows of the list in the window in front, which gets the focus.
  std::string Rows() {
    Key(VK_TAB);
    for (const int letter : {'A', 'C'}) Key(VK_CONTROL, letter);
    std::string rows;
    EXPECT_TRUE(Eventually([&] { return (rows = FromClipboard()).find("different") != std::string::npos; }));
    return rows;
  }

  HWND button_ = nullptr;
};

TEST_F(SettingsScenario, SettingsAreSavedLoadedAndAppliedInBothUnits) {
  for (const bool fahrenheit : {false, true}) {
    if (fahrenheit) {
      Key(VK_MENU, 'I');
      AwaitEndOfPass();
      Click(button_);
      Key(VK_ESCAPE);  // the menu
    }
    Save();
    Change("nciSetPts.occ_heat", fahrenheit ? "21 C" : "24 C");
    Change("nciSetPts.occ_cool", fahrenheit ? "23.27 C" : "26 C");
    Change("FanMode", "MEDIUM");
    const HWND review = Load();
    const std::string rows = Rows();
    const std::regex expected(
        fahrenheit ? "Heating - Cooling\tHeating, Occupied\t75.2\t69.8\t\u00BAF\tdifferent\t\r\n"
                     "Heating - Cooling\tCooling, Occupied\t78.8\t73.89\t\u00BAF\tdifferent\t\r\n"
                     "General\tFan Mode\t[A-Z]+\tMEDIUM\t\tdifferent\t\r\n"
                   : "Heating - Cooling\tHeating, Occupied\t21\t24\t\u00BAC\tdifferent\t\r\n"
                     "Heating - Cooling\tCooling, Occupied\t23\t26\t\u00BAC\tdifferent\t\r\n"
                     "General\tFan Mode\t[A-Z]+\tMEDIUM\t\tdifferent\t\r\n");
    EXPECT_TRUE(std::regex_match(rows, expected)) << rows;
    EXPECT_FALSE(IsWindowEnabled(window_));
    for (const int key : {VK_END, VK_SPACE, VK_RETURN}) Key(key);  // without the fan mode
    EXPECT_TRUE(Eventually([&] { return !IsWindow(review) && GetForegroundWindow() == window_; }));
    EXPECT_EQ(Focused(), button_);
    ExpectText(0, fahrenheit ? "69.8" : "24");
    ExpectText(4, fahrenheit ? "73.89" : "26");
    EXPECT_EQ(Written(), "") << "loading writes nothing";
    Key(VK_MENU, 'A');
    ExpectEnabled(L"&Apply", false);
    EXPECT_EQ(Written(), "nciSetPts ");
    EXPECT_EQ(Raw("nciSetPts"), fahrenheit ? "091709C40AF00834076C0640" : "0A2809C40AF00960076C0640");
    Knobs().ClearJournal();
    std::remove(kFile);
  }
  Key(VK_MENU, 'M');  // for the next tests
  AwaitEndOfPass();
}

TEST_F(SettingsScenario, AFileOfAnotherModelIsLoadedWithAWarningAndADeviceMayVanish) {
  Save();
  Change("model", "5");
  Change("nciSetPts.occ_heat", "20 C");
  Load();
  const std::string rows = Rows();
  EXPECT_EQ(rows.substr(0, rows.find("\r\n")),
            "File\tModel\t4\t5\t\tdifferent\tWarning: the file is of another one");
  director::SimulatorKnobs knobs = Knobs();
  knobs.Vanish("Thermostat 101");
  Key(VK_RETURN);
  ExpectText(0, "20");
  Key(VK_MENU, 'A');
  const HWND box = Box(kCaption);
  ASSERT_TRUE(box);
  Press(box, IDOK);
  ExpectText(0, "20");
  ExpectEnabled(L"&Apply", true);
  knobs.Restore("Thermostat 101");
  Key(VK_MENU, 'C');
}

TEST_F(SettingsScenario, ACommandOfTheDirectorClosesTheReview) {
  Save();
  Change("nciSetPts.occ_heat", "20 C");
  const HWND review = Load();
  director::ConfigureRequest request;
  request.path = "Demo Tower/Demo Tower.Floor 1/Thermostat 102";
  director::Configure(*plug_in_, request);
  EXPECT_TRUE(Eventually([&] { return !IsWindowVisible(review); }));
  ExpectBox(kCaption,
            "Loading settings has ended: the network tool opened another device or closed the network. <OK>",
            IDOK);
  EXPECT_TRUE(IsWindowEnabled(window_));
  ExpectEnabled(L"&Apply", false);
  BringToFront();
}

}  // namespace
