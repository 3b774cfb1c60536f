#include "plug_in_user.h"

namespace {

// Fields of the first page in the order of Tab.
enum Field : std::size_t {
  kOccupiedHeat,
  kStandbyHeat,
  kUnoccupiedHeat,
  kHeatMax,
  kOccupiedCool,
  kStandbyCool,
  kUnoccupiedCool,
  kCoolMin,
  kSetpointType
};

class EditingScenario : public PlugInUser {};

TEST_F(EditingScenario, ARuleRepairsTheOtherFieldAndApplyWritesOneVariable) {
  Click(Fields().at(kStandbyHeat));
  Key(VK_SHIFT, VK_TAB);
  Type("22x");
  ExpectText(kOccupiedHeat, "22");
  ExpectEnabled(L"&Apply", true);
  Key(VK_TAB);
  const HWND box = Box(kTitle);
  ASSERT_TRUE(box);
  EXPECT_EQ(Reads(box), "The deadband limitation was not respected.\r\n\r\nAdjustment where made <OK>");
  Key(VK_RETURN);
  EXPECT_TRUE(Eventually([&] { return !IsWindow(box); }));
  ExpectText(kOccupiedCool, "23.5");
  Key(VK_PRIOR);
  ExpectText(kOccupiedCool, "24");
  Key(VK_MENU, 'A');
  ExpectEnabled(L"&Apply", false);
  EXPECT_EQ(Written(), "nciSetPts ");
  EXPECT_EQ(Raw("nciSetPts"), "096009C40AF00898076C0640");
}

TEST_F(EditingScenario, AFieldIsPutBackFromItsMenu) {
  Click(Fields().at(kOccupiedCool));
  const std::string held = Text(kOccupiedCool);
  Type("29");
  ExpectEnabled(L"&Apply", true);
  Key(VK_SHIFT, VK_F10);
  ChooseFromMenuBelow(Fields().at(kOccupiedCool), 'B');
  ExpectText(kOccupiedCool, held);
  ExpectEnabled(L"&Apply", false);
}

TEST_F(EditingScenario, F1OpensTheHelpAndChangesNothing) {
  Click(Fields().at(kOccupiedHeat));
  for (std::size_t field = kOccupiedHeat; field <= kSetpointType; ++field, Key(VK_TAB)) {
    if (field != kOccupiedHeat && field != kCoolMin && field != kSetpointType) continue;
    Key(VK_F1);
    HWND viewer = nullptr;
    ASSERT_TRUE(Eventually([&] { return (viewer = FindWindowW(nullptr, L"QM5R-FC PIR Configure Help")); }));
    PostMessageW(viewer, WM_CLOSE, 0, 0);
    EXPECT_TRUE(Eventually([&] { return !IsWindow(viewer); }));
    BringToFront();
  }
  ExpectEnabled(L"&Apply", false);
}

TEST_F(EditingScenario, TheEndOfWindowsEndsARefreshAndClosesTheNetwork) {
  Click(Fields().at(kOccupiedCool));
  Type("29");
  Knobs().SetLatency("read", 1000);
  Key(VK_MENU, 'R');
  EXPECT_TRUE(Eventually([&] { return !Journalled("(nciSetPts) Value").empty(); }));
  EXPECT_EQ(SendMessageW(window_, WM_QUERYENDSESSION, 0, 0), TRUE);
  SendMessageW(window_, WM_ENDSESSION, TRUE, 0);
  EXPECT_TRUE(Eventually([&] { return !IsWindow(window_); }));
  Knobs().SetLatency("read", 0);
  EXPECT_EQ(Journalled("(nciRHmodel|nciSccModel) Value"), "") << "the refresh continued";
  EXPECT_EQ(Journalled("(Demo Tower Close|LnsSimulator Close|Close)\\n"), "");
}

TEST_F(EditingScenario, TheSecondButtonOfAQuestionKeepsTheEdit) {
  Click(Fields().at(kOccupiedCool));
  Type("29");
  Key(VK_MENU, 'I');
  ExpectBox(L"Warning",
            "This action will discard all changes\r\n\r\nProceed and lose all changes ? <OK><Cancel>",
            IDCANCEL);
  ExpectText(kOccupiedCool, "29");
  Key(VK_MENU, 'E');
  ExpectBox(kCaption, "Are you sure that you want to exit? <Yes><No>", IDNO);
  Key(VK_MENU, 'C');
  ExpectEnabled(L"&Cancel", false);
  EXPECT_NE(Text(kOccupiedCool), "29");
}

}  // namespace
