#include <gtest/gtest.h>

#include "support/user.h"

namespace {

struct Opened {
  Opened() : api(world.Configure(kFirstThermostat)), user(world) { world.simulation->journal().Clear(); }
  void Switch(std::size_t units) {
    world.main.obUnits[units].SetSelected(true);
    world.main.obUnits[units].UserClicks();
  }
  std::string Unit() const { return world.main.screen.txtTempUnits().back()->Text(); }
  int Chosen() const {
    return world.main.obUnits[1].Selected() ? world.main.obUnits[0].Selected() ? -1 : 1 : 0;
  }

  World world;
  std::shared_ptr<plugin::LNSPlugInAPI> api;
  User user;
};

TEST(Units, ASwitchReadsAndRedrawsEverything) {
  Opened opened;
  opened.Switch(1);
  EXPECT_EQ(opened.user.Field(0).Text(), "70");
  EXPECT_EQ(opened.user.Field(16).Text(), "2.5") << "a difference: 1.5 K are 2.7 °F";
  EXPECT_EQ(opened.Unit(), "\u00BAF");
  EXPECT_TRUE(opened.world.desktop.messages.empty());
  opened.Switch(0);
  EXPECT_EQ(opened.user.Field(0).Text(), "21");
  EXPECT_EQ(opened.Unit(), "\u00BAC");
  opened.world.simulation->journal().Clear();
  opened.Switch(0);
  EXPECT_EQ(opened.world.simulation->journal().Count(), 0u) << "the units in force: nothing happens";
  EXPECT_EQ(opened.world.registry.MachineSetting(opened.world.identity.PlugInKey(), "DisplayUnits"), "0");
}

TEST(Units, PendingEditsAreAskedAbout) {
  Opened opened;
  opened.user.Enter(0, "20");
  opened.world.desktop.answers = {ui::Answer::Cancel, ui::Answer::Ok};
  opened.Switch(1);
  ASSERT_EQ(opened.world.desktop.messages.size(), 1u);
  const ui::Message& question = opened.world.desktop.messages[0].message;
  EXPECT_EQ(question.text, "This action will discard all changes\r\n\r\nProceed and lose all changes ?");
  EXPECT_EQ(question.caption, "Warning");
  EXPECT_EQ(question.icon, ui::Icon::Exclamation);
  EXPECT_EQ(opened.Chosen(), 0);
  EXPECT_EQ(opened.user.Field(0).Text(), "20");
  EXPECT_TRUE(User::IsMarked(opened.user.Field(0)));
  opened.Switch(1);
  EXPECT_EQ(opened.Chosen(), 1);
  EXPECT_EQ(opened.user.Field(0).Text(), "70");
  EXPECT_FALSE(User::IsMarked(opened.user.Field(0)) || opened.world.main.cmdApply.Enabled());
}

TEST(Units, AFailedSwitchLeavesTheOldUnitsWhole) {
  for (int failing = 1; failing <= 11; ++failing) {
    Opened opened;
    opened.world.simulation->faults().Add({"", "", "read", failing, 18200});
    opened.Switch(1);
    EXPECT_EQ(opened.Chosen(), 0);
    EXPECT_EQ(opened.Unit(), "\u00BAC");
    EXPECT_EQ(opened.user.Field(0).Text(), "21");
    EXPECT_EQ(opened.world.desktop.messages.size(), 1u) << failing;
    opened.user.Enter(0, "20.5");
    opened.user.Press(opened.world.main.cmdApply);
    EXPECT_EQ(opened.world.log.lstActivity.Rows().back().cells[2], "23,25,28,20.5,19,16") << failing;
    opened.world.main.cmdRefresh.UserClicks();
    EXPECT_EQ(opened.user.Field(0).Text(), "20.5") << "written in the units that it was read in";
  }
}

TEST(Units, ADeviceThatTakesTheScreenDuringASwitchIsShownInTheNewUnits) {
  for (const int step : {1, 6, 11}) {
    Opened opened;
    int seen = 0;
    opened.world.desktop.on_yield = [&] {
      if (++seen != step) return;
      opened.user.Press(opened.world.main.cmdApply);
      World::Send(*opened.api, 13, 7, "Demo Tower/Demo Tower.Floor 1/Thermostat 102");
    };
    opened.Switch(1);
    EXPECT_EQ(opened.user.Field(0).Text(), "69") << step;
    EXPECT_EQ(opened.Unit(), "\u00BAF");
    EXPECT_EQ(opened.Chosen(), 1);
  }
}

TEST(Units, NothingIsAppliedBeforeACompleteReadAfterTwoFailures) {
  Opened opened;
  opened.world.simulation->faults().Add({"", "nciGenOpts", "read", 1, 18200});  // the switch
  opened.world.simulation->faults().Add({"", "nciSetPts", "read", 2, 18200});   // and the way back
  opened.Switch(1);
  opened.world.desktop.messages.clear();
  opened.user.Enter(1, "15");
  opened.world.simulation->journal().Clear();
  opened.user.Press(opened.world.main.cmdApply);
  EXPECT_EQ(opened.world.simulation->journal().Count(), 0u);
  EXPECT_EQ(opened.world.desktop.messages.size(), 1u);
  opened.world.main.cmdRefresh.UserClicks();
  EXPECT_EQ(opened.user.Field(1).Text(), "15");
  opened.user.Press(opened.world.main.cmdApply);
  EXPECT_EQ(opened.world.log.lstActivity.Rows().back().cells[2], "23,25,28,21,19,15");
}

}  // namespace
