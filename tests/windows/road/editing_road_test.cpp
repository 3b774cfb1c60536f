// Editing in the real program, by real keys and the mouse, on the simulated network.

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

class EditingRoad : public PlugInUser {};

TEST_F(EditingRoad, ARuleRepairsTheOtherFieldAndApplyWritesOneVariable) {
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

TEST_F(EditingRoad, AnEntryThatIsNoNumberIsRefused) {
  const std::string before = Text(kUnoccupiedHeat);
  Click(Fields().at(kUnoccupiedHeat));
  Type("1:30");
  Key(VK_TAB);
  ExpectBox(L"Invalid value", "Value must be numerical <OK>", IDOK);
  ExpectText(kUnoccupiedHeat, before);
  Key(VK_MENU, 'C');
  EXPECT_EQ(Written(), "");
}

TEST_F(EditingRoad, PasteAndTheContextMenuEnterAsKeysDo) {
  const std::string before = Text(kStandbyHeat);
  const HWND field = Fields().at(kStandbyHeat);
  PutOnClipboard(L" 1x9");
  Click(field);
  Key(VK_CONTROL, 'V');
  ExpectText(kStandbyHeat, "19");
  ExpectEnabled(L"&Apply", true);
  Key(VK_SHIFT, VK_F10);
  ChooseFromMenu('U');
  ExpectText(kStandbyHeat, before);
  Key(VK_SHIFT, VK_F10);
  ChooseFromMenu('A');
  Click(field, true);
  ChooseFromMenu('D');
  ExpectText(kStandbyHeat, "");
  Click(field, true);
  ChooseFromMenu('P');
  ExpectText(kStandbyHeat, "19");
  Key(VK_MENU, 'C');
  ExpectText(kStandbyHeat, before);
  EXPECT_EQ(Written(), "");
}

TEST_F(EditingRoad, AListIsChosenByKeysAndAppliedByEnter) {
  Click(Fields().at(kHeatMax));
  for (std::size_t i = kHeatMax; i < kSetpointType; ++i) Key(VK_TAB);
  ASSERT_TRUE(Eventually([&] { return Focused() == Fields().at(kSetpointType); }));
  const std::string before = Text(kSetpointType);
  Type("t");
  ExpectText(kSetpointType, before);
  Key(before == "PERMANENT" ? VK_DOWN : VK_UP);
  const std::string chosen = before == "PERMANENT" ? "TEMPORARY" : "PERMANENT";
  ExpectText(kSetpointType, chosen);
  Key(VK_RETURN);
  ExpectEnabled(L"&Apply", false);
  EXPECT_EQ(Written(), "nciGenOpts ");
}

TEST_F(EditingRoad, LookingInOtherUnitsTouchesNothing) {
  const std::string setpoints = Raw("nciSetPts"), options = Raw("nciGenOpts"), shown = Text(kUnoccupiedCool);
  Key(VK_MENU, 'I');
  ExpectText(kUnoccupiedCool, "82.5");
  Key(VK_MENU, 'M');
  ExpectText(kUnoccupiedCool, shown);
  EXPECT_EQ(Written(), "");
  EXPECT_EQ(Raw("nciSetPts"), setpoints);
  EXPECT_EQ(Raw("nciGenOpts"), options);
}

TEST_F(EditingRoad, AFailedWriteIsToldAndTheNextTryWrites) {
  Click(Fields().at(kStandbyCool));
  Type("26");
  ExpectText(kStandbyCool, "26");
  Knobs().AddFault({"", "nciSetPts", "write", 1, 18034});
  Key(VK_MENU, 'A');
  const HWND box = Box(kCaption);
  ASSERT_TRUE(box);
  EXPECT_NE(Reads(box).find("Failed to write data to the network variable object."), std::string::npos)
      << Reads(box);
  Press(box, IDOK);
  ExpectEnabled(L"&Apply", true);
  ExpectText(kStandbyCool, "26");
  Key(VK_MENU, 'A');
  ExpectEnabled(L"&Apply", false);
  EXPECT_EQ(Raw("nciSetPts").substr(4, 4), "0A28");
}

TEST_F(EditingRoad, F1OpensTheHelpAndChangesNothing) {
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

TEST_F(EditingRoad, EveryQuestionAndMessageReadsAsItShould) {
  Click(Fields().at(kStandbyHeat));
  Type("99");
  Key(VK_MENU, 'A');
  ExpectBox(kTitle,
            "Occupied standby setpoint out of range\r\n\r\nThe maximum allowed value is: 32\r\n\r\nThe value "
            "has been adjusted <OK>",
            IDOK);
  Click(Fields().at(kCoolMin));
  Type("29");
  Key(VK_TAB);
  const std::string limit = "Heating maximum limit was not respected.\r\n\r\nAdjustment where made <OK>";
  ExpectBox(kTitle, limit, IDOK);
  ExpectBox(kTitle, limit, IDOK);
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
