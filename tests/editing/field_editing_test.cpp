#include "editing/field_editing.h"

#include "support/user.h"

namespace {

TEST(FieldEditing, FiltersKeysAndMarksEvenForRefusedOnes) {
  const std::tuple<int, char32_t, bool> cases[] = {
      {0, U'0', true},   {0, U'9', true},   {0, U'.', true},  {0, U'-', true},  {0, U':', true},
      {0, 8, true},      {0, U' ', false},  {0, U',', false}, {0, U'a', false}, {0, U'+', false},
      {0, U'٣', false},  {19, U'.', true},  {7, U'.', false}, {8, U'.', false}, {9, U'.', false},
      {17, U'.', false}, {18, U'.', false}, {10, U'.', true}, {7, U'5', true},  {18, U'-', true},
      {14, U'.', true}};
  for (const auto& [index, character, accepted] : cases) {
    Opened opened;
    ui::TextField& field = opened.Field(index);
    opened.GoTo(field);
    EXPECT_FALSE(opened.IsMarked(field));
    EXPECT_EQ(field.on_key_press(character), accepted) << index << ' ' << static_cast<unsigned>(character);
    EXPECT_TRUE(opened.IsMarked(field)) << "a refused key marks as well";
    EXPECT_PRED2(Both, opened.main.cmdApply.Enabled(), opened.main.cmdCancel.Enabled());
  }
}

TEST(FieldEditing, PageUpAndPageDownStepTheNumber) {
  constexpr int kUp = 33, kDown = 34;
  struct Case {
    const char* before;
    int key, state;
    const char* after;
  };
  const Case cases[] = {{"21", kUp, 0, "21.5"},
                        {"21", kUp, ui::kShift, "31"},
                        {"21", kUp, ui::kCtrl, "22"},
                        {"21", kUp, ui::kAlt, "22"},
                        {"21", kUp, ui::kShift | ui::kCtrl, "22"},
                        {"0.2", kDown, 0, "-0.3"},
                        {"0.5", kDown, 0, "0"},
                        {"21.1", kUp, 0, "21.6"},
                        {"21.24", kUp, 0, "21.7"},
                        {"21.75", kDown, ui::kShift | ui::kAlt, "20.8"},
                        {"99", kUp, ui::kShift, "109"}};
  for (const Case& c : cases) {
    Opened opened;
    ui::TextField& field = opened.Field(0);
    field.SetText(c.before);
    EXPECT_TRUE(field.on_key_down(c.key, c.state));
    EXPECT_EQ(field.Text(), c.after) << c.before;
    EXPECT_TRUE(opened.IsMarked(field));
  }
  Opened opened;
  ui::TextField& field = opened.Field(0);
  for (const char* text : {"", "-", "1:30"}) {
    field.SetText(text);
    EXPECT_FALSE(field.on_key_down(kUp, 0));
  }
  field.SetText("21");
  EXPECT_FALSE(field.on_key_down(13, 0)) << "Enter does nothing";
  EXPECT_FALSE(opened.IsMarked(field));
  for (const int locked : {11, 12, 13, 15}) {
    EXPECT_PRED2(Both, !opened.Field(locked).on_key_down(kUp, 0), !opened.Field(locked).on_key_press(U'1'))
        << locked;
    EXPECT_FALSE(opened.IsMarked(opened.Field(locked)));
  }
}

TEST(FieldEditing, RefusesAnEntryThatIsNotANumber) {
  for (const char* entry : {"1:30", "-", "5-", ".", "1.2.3"}) {
    Opened opened;
    opened.Enter(0, entry);
    const ui::Message& message = opened.Message();
    EXPECT_EQ(message.text, "Value must be numerical");
    EXPECT_EQ(message.caption, "Invalid value");
    EXPECT_EQ(message.icon, ui::Icon::Exclamation);
    EXPECT_EQ(opened.Field(0).Text(), "21");
    EXPECT_FALSE(opened.IsMarked(opened.Field(0)));
    EXPECT_EQ(opened.Focused(), &opened.List(0)) << "the focus may always leave";
  }
  // Another device takes over the screen while the field has the focus.
  Opened opened;
  opened.GoTo(opened.Field(0));
  World::Send(*opened.api, 13, 7, "Demo Tower/Demo Tower.Floor 1/Thermostat 102");
  opened.Field(0).UserChangesText("1:30");
  opened.GoTo(opened.List(0));
  EXPECT_EQ(opened.Field(0).Text(), "20.5");
}

TEST(FieldEditing, RulesRepairTheOtherField) {
  constexpr const char* kDeadBand = "The deadband limitation was not respected.\r\n\r\nAdjustment where made";
  constexpr const char* kLimit = "Heating maximum limit was not respected.\r\n\r\nAdjustment where made";
  struct Case {
    int left;
    const char* typed;
    std::map<int, const char*> changed;  // except the field that was left
    std::vector<std::string> messages;
    int focused;  // -1: the control to which the user went
    const char* units = "0";
  };
  // Initially: heating 21 and 16, at most 32; cooling 23 and 28, at least 12; dead band 1.5.
  const Case cases[] = {
      {0, "21.4", {}, {}, -1},
      {0, "21.5", {}, {}, -1},
      {0, "21.6", {{3, "23.1"}}, {kDeadBand}, 3},
      {0, "30", {{3, "31.5"}}, {kDeadBand}, 3},
      {1, "26.5", {}, {}, -1},
      {1, "27.1", {{4, "28.6"}}, {kDeadBand}, 4},
      {3, "22.5", {}, {}, -1},
      {3, "22.3", {{0, "20.8"}}, {kDeadBand}, 0},
      {4, "17.5", {}, {}, -1},
      {4, "17", {{1, "15.5"}}, {kDeadBand}, 1},
      {16, "2", {}, {}, -1},
      {16, "2.1", {{0, "20.9"}}, {kDeadBand}, 0},
      {16, "12.5", {{0, "10.5"}, {1, "15.5"}}, {kDeadBand, kDeadBand}, 1},
      {2, "21", {}, {}, -1},
      {2, "20.5", {{0, "20.5"}}, {kLimit}, 0},
      {2, "15.0", {{0, "15.0"}, {1, "15.0"}}, {kLimit, kLimit}, 1},
      {5, "23", {}, {}, -1},
      {5, "24", {{3, "24"}}, {kLimit}, 3},
      {5, "29", {{3, "29"}, {4, "29"}}, {kLimit, kLimit}, 4},
      {18, "40", {}, {}, -1},
      {19, "5", {}, {}, -1},
      // In Fahrenheit: heating 70 and 61, at most 89.5; cooling 73.5 and 82.5, at least 53.5; dead band 2.5.
      {0, "71", {}, {}, -1, "1"},
      {0, "71.6", {{3, "74.1"}}, {kDeadBand}, 3, "1"},
      {1, "81", {{4, "83.5"}}, {kDeadBand}, 4, "1"},
      {3, "72", {{0, "69.5"}}, {kDeadBand}, 0, "1"},
      {4, "63", {{1, "60.5"}}, {kDeadBand}, 1, "1"},
      {16, "3.5", {}, {}, -1, "1"},
      {16, "22", {{0, "51.5"}, {1, "60.5"}}, {kDeadBand, kDeadBand}, 1, "1"},
      {2, "60.5", {{0, "60.5"}, {1, "60.5"}}, {kLimit, kLimit}, 1, "1"},
      {5, "74", {{3, "74"}}, {kLimit}, 3, "1"},
  };
  for (const Case& c : cases) {
    Opened opened(kFirstThermostat, c.units);
    std::map<int, std::string> expected;
    for (int i = 0; i < 22; ++i) expected[i] = opened.Field(i).Text();
    expected[c.left] = c.typed;
    for (const auto& [i, text] : c.changed) expected[i] = text;
    opened.Enter(c.left, c.typed);
    EXPECT_EQ(opened.MessageTexts(), c.messages) << c.typed;
    for (int i = 0; i < 22; ++i) {
      EXPECT_EQ(opened.Field(i).Text(), expected[i]) << i << ' ' << c.typed;
      const bool changed = i == c.left || c.changed.contains(i);
      EXPECT_EQ(opened.IsMarked(opened.Field(i)), changed) << i << ' ' << c.typed;
    }
    for (const auto& shown : opened.desktop.messages) {
      EXPECT_EQ(shown.message.icon, ui::Icon::None);
      EXPECT_EQ(shown.message.caption, "QM5R-FC PIR LNS Device Plug-in");
    }
    const ui::Control* focused =
        c.focused < 0 ? static_cast<ui::Control*>(&opened.List(0)) : &opened.Field(c.focused);
    EXPECT_EQ(opened.Focused(), focused) << c.left << ' ' << c.typed;
  }
}

TEST(FieldEditing, ARuleRunsEvenWithoutAnEditAndCanBeCancelled) {
  Opened opened;
  opened.Field(3).SetText("22.7");
  opened.Field(16).SetText("1.7");
  opened.GoTo(opened.Field(0));
  opened.GoTo(opened.List(0));
  EXPECT_EQ(opened.Field(3).Text(), "22.7") << "the difference is 1.7, not a little less";
  opened.Field(16).SetText("5");
  opened.GoTo(opened.Field(0));
  opened.GoTo(opened.List(0));
  EXPECT_EQ(opened.Field(3).Text(), "26");
  EXPECT_TRUE(opened.main.cmdCancel.Enabled());
  opened.Press(opened.main.cmdCancel);
  EXPECT_EQ(opened.Field(3).Text(), "23");
  EXPECT_FALSE(opened.main.cmdCancel.Enabled());
}

// The field then holds an unapplied edit; it must be marked, and Cancel must work.
TEST(FieldEditing, ARefusedEntryRestoresTheFormerTextWithItsMark) {
  Opened opened;
  opened.Enter(0, "22");  // repairs the cooling setpoint
  opened.Enter(3, "1:30");
  EXPECT_EQ(opened.Field(3).Text(), "23.5");
  EXPECT_TRUE(opened.IsMarked(opened.Field(3)));
  opened.Press(opened.main.cmdCancel);
  EXPECT_EQ(opened.Field(3).Text(), "23");
  opened.Enter(3, "1:30");
  EXPECT_FALSE(opened.IsMarked(opened.Field(3)));
}

TEST(FieldEditing, AcceptsAnUnchangedText) {
  Opened opened;
  opened.Field(0).SetText("");
  opened.GoTo(opened.Field(0));
  opened.Press(opened.main.cmdRefresh);
  EXPECT_TRUE(opened.desktop.messages.empty());
  EXPECT_EQ(opened.Field(0).Text(), "21") << "the press was not swallowed";
}

TEST(FieldEditing, RulesTerminateForAllNumbers) {
  const std::string nines(400, '9');
  for (const std::string& typed :
       {std::string("999999999999999.5"), std::string("123456789012345678"), nines, "-" + nines})
    for (const int first : {0, 3}) {
      Opened opened;
      opened.Field(first).UserChangesText(typed);
      opened.GoTo(opened.Field(first));
      for (int round = 0; round < 4; ++round) opened.GoTo(opened.List(0));
      const std::string& other = opened.Field(3 - first).Text();
      EXPECT_EQ(other.find("inf"), std::string::npos);
      EXPECT_LE(other.size(), 17u) << "a sign and 15 digits: " << other;
      const auto texts = opened.MessageTexts();
      const bool unchanged = other == (first == 0 ? "23" : "21");
      for (const std::string& text : opened.MessageTexts())
        EXPECT_NE(unchanged, text.ends_with("Adjustment where made")) << typed;
    }
}

TEST(FieldEditing, TheSecondHalfOfARuleLeavesTheNextDeviceAlone) {
  Opened opened;
  opened.desktop.on_message = [&](const ui::Message&) {
    opened.desktop.on_message = nullptr;
    World::Send(*opened.api, 13, 7, "Demo Tower/Demo Tower.Floor 1/Thermostat 102");
    opened.Field(16).SetText("20");  // otherwise its second rule would find something to adjust
  };
  opened.Enter(16, "12.5");
  EXPECT_EQ(opened.Field(1).Text(), "15");
  EXPECT_PRED2(Both, !opened.IsMarked(opened.Field(1)), !opened.main.cmdApply.Enabled());
}

TEST(Lists, OpeningAndKeysMarkThemAndEnterApplies) {
  constexpr int kPageDown = 34;
  const std::tuple<int, int, bool> cases[] = {
      {40, 0, true},        {38, 0, true},  {65, 0, true},   {27, 0, true},
      {kPageDown, 0, true}, {9, 0, false},  {112, 0, false}, {16, 0, false},
      {17, 0, false},       {18, 0, false}, {20, 0, false},  {kPageDown, ui::kCtrl, false}};
  for (const auto& [key, state, marks] : cases) {
    Opened opened;
    EXPECT_FALSE(opened.List(0).on_key_down(key, state));
    EXPECT_EQ(opened.IsMarked(opened.List(0)), marks) << key;
    EXPECT_EQ(opened.main.cmdApply.Enabled(), marks);
  }
  Opened opened;
  opened.Choose(0, "TEMPORARY");
  EXPECT_TRUE(opened.List(0).on_key_down(13, 0));
  EXPECT_FALSE(opened.IsMarked(opened.List(0)));
  EXPECT_FALSE(opened.main.cmdApply.Enabled());
  EXPECT_EQ(opened.log.lstActivity.Rows().back().cells[1], "Updating nciGenOpts");
}

TEST(Help, OpensAtTheTopicOfTheFocusedControlOrThePage) {
  Opened opened;
  const int topics[] = {1004, 1002, 1003, 1006, 1005, 1001, 1000, 0};
  for (std::size_t page = 0; page < std::size(topics); ++page) {
    opened.main.screen.tabData.Select(page);
    opened.Press(opened.main.cmdHelp);
    EXPECT_EQ(opened.desktop.help_shown.back().second, topics[page]);
  }
  const std::pair<ui::Control*, int> controls[] = {{&opened.Field(7), 1107},
                                                   {&opened.List(16), 1166},
                                                   {&opened.main.screen.txtMajorVersion, 1183},
                                                   {&opened.main.obUnits[1], 1201},
                                                   {&opened.main.cmdRefresh, 1204}};
  for (const auto& [control, topic] : controls) {
    opened.GoTo(*control);
    opened.main.HelpRequested();
    EXPECT_EQ(opened.desktop.help_shown.back().second, topic);
    opened.Press(opened.main.cmdHelp);
    EXPECT_EQ(opened.desktop.help_shown.back().second, topic) << "the control before the button";
  }
  EXPECT_FALSE(opened.main.cmdApply.Enabled()) << "help changes nothing";
  opened.log.HelpRequested();
  EXPECT_EQ(opened.desktop.help_shown.back().second, 1206);
  EXPECT_TRUE(opened.desktop.help_shown.back().first.ends_with("\\QM5R-FCConfigure.chm"));
}

}  // namespace
