#include "support/user.h"

namespace {

struct Units : Opened {
  void Switch(std::size_t units) {
    main.obUnits[units].SetSelected(true);
    main.obUnits[units].UserClicks();
  }
  int Chosen() const { return main.obUnits[1].Selected() ? main.obUnits[0].Selected() ? -1 : 1 : 0; }
};

TEST(Units, ASwitchReadsAllPointsAndARepeatedOneReadsNone) {
  Units opened;
  opened.Switch(1);
  EXPECT_EQ(opened.Field(0).Text(), "70");
  EXPECT_EQ(opened.Field(16).Text(), "2.5") << "a difference: 1.5 K are 2.7 °F";
  opened.simulation->journal().Clear();
  opened.Switch(1);
  EXPECT_EQ(opened.simulation->journal().Count(), 0u);
  EXPECT_EQ(opened.registry.MachineSetting(opened.identity.PlugInKey(), "DisplayUnits"), "0");
}

TEST(Units, TooltipsShowMeaningAndRangeInTheCurrentUnits) {
  Units opened;
  const std::tuple<model::ControlRef, const char*, const char*> cases[] = {
      {model::txtNvi(0), "occupied.\r\n4.5 to 32 \u00BAC", "occupied.\r\n40 to 90 \u00BAF"},
      {model::txtNvi(16), "setpoint.\r\n1 to 2.5 \u00BAC", "setpoint.\r\n2 to 5 \u00BAF"},
      {model::txtNvi(7), "room.\r\n30 to 100 %", "room.\r\n30 to 100 %"},
      {model::txtNvi(39), "\n0 to 6553.4 Sec", "\n0 to 6553.4 Sec"},
      {model::txtNvi(11), "reports.", "reports."}};
  for (const std::size_t units : {0u, 1u, 0u}) {
    opened.Switch(units);
    for (const auto& [field, celsius, fahrenheit] : cases) {
      const std::string& tip = opened.main.screen.Find(field)->ToolTip();
      EXPECT_TRUE(tip.ends_with(units == 0 ? celsius : fahrenheit)) << tip;
    }
  }
}

TEST(Units, AsksAboutPendingEdits) {
  Units opened;
  opened.Enter(0, "20");
  opened.desktop.answers = {ui::Answer::Cancel, ui::Answer::Ok};
  opened.Switch(1);
  const ui::Message& question = opened.Message();
  EXPECT_EQ(question.text, "This action will discard all changes\r\n\r\nProceed and lose all changes ?");
  EXPECT_EQ(question.caption, "Warning");
  EXPECT_EQ(question.icon, ui::Icon::Exclamation);
  EXPECT_TRUE(question.second_is_default) << "Enter discards";
  EXPECT_EQ(opened.Chosen(), 0);
  EXPECT_EQ(opened.Field(0).Text(), "20");
  EXPECT_TRUE(opened.IsMarked(opened.Field(0)));
  opened.Switch(1);
  EXPECT_EQ(opened.Chosen(), 1);
  EXPECT_EQ(opened.Field(0).Text(), "70");
  EXPECT_PRED2(Both, !opened.IsMarked(opened.Field(0)), !opened.main.cmdApply.Enabled());
}

}  // namespace
