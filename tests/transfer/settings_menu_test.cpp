#include "transfer/settings_menu.h"

#include "support/user.h"
#include "transfer/review_form.h"
#include "transfer/thermostat_form.h"

namespace {

using transfer::fReview;

constexpr const char* kFile = "C:\\room.qm5r";
enum Item : std::size_t { kSave, kLoad, kCompareWithFile, kCompareWithThermostat };

struct Transfer : Opened {
  using Opened::Opened;

  void Choose(Item item) {
    desktop.messages.clear();
    desktop.save_path = desktop.open_path = kFile;
    desktop.from_menu = item;
    Press(main.cmdSettings);
  }
  std::string File() const { return files.ReadStart(kFile, 1 << 20); }
  void SaveAndChange(const std::vector<std::pair<std::string, std::string>>& changes) {
    Choose(kSave);
    std::string text = File();
    for (const auto& [field, value] : changes) {
      const std::size_t at = text.find("\n" + field + " = ") + 1;
      ASSERT_NE(at, 0u) << field;
      text.replace(at, text.find('\n', at) - at, value.empty() ? "" : field + " = " + value);
    }
    files.Write(kFile, text);
  }
  /// "!21>24" for a ticked row of a field; the remark for others.
  static std::string Rows(const fReview& review) {
    std::string rows;
    for (const ui::ListView::Row& row : review.lstFields.Rows())
      rows += (row.tick.value_or(false) ? "!" : "") + row.cells[1] + " " + row.cells[2] + ">" + row.cells[3] +
              (row.cells[6].empty() ? "" : " " + row.cells[6]) + "\n";
    return rows;
  }
  std::string Marked() {
    std::string marked;
    for (const auto& row : model::Catalogue())
      if (ui::Control* field = main.screen.Find(row.control); field && IsMarked(*field))
        marked += std::string(row.name) + "=" + field->Text() + " ";
    return marked;
  }
  /// Loads the file: notes its rows, lets `act` work on the review, then presses OK.
  void Load(const std::function<void(fReview&)>& act = {}) {
    desktop.on_modal = [&](ui::Form& form) {
      auto& review = dynamic_cast<fReview&>(form);
      rows = Rows(review);
      counts = review.lblCounts.Text();
      if (act) act(review);
      review.cmdOk.UserClicks();
    };
    Choose(kLoad);
  }
  std::string rows, counts;
};

TEST(SettingsMenu, SavesWhatTheDeviceHoldsAndLeavesItsFormats) {
  for (const char* units : {"0", "1"}) {
    Transfer user(kFirstThermostat, units);
    user.Enter(0, units == std::string("0") ? "20" : "68");
    user.Choose(kSave);
    EXPECT_EQ(user.Message().text,
              "The file will hold the values of the thermostat, without the 1 change that is not applied.");
    EXPECT_EQ(user.desktop.save_dialogs.back().file_name, "Thermostat 101");
    const auto file = settings::ParseSettings(user.File());
    EXPECT_TRUE(file.findings.empty());
    EXPECT_EQ(file.settings.TextOf(*settings::FindField("nciSetPts.occ_heat")), "21");
    EXPECT_EQ(file.settings.origin.path, kFirstThermostat);
    EXPECT_EQ(file.settings.origin.saved_by, "user@computer");
    user.Apply();
    EXPECT_EQ(user.Raw("nciSetPts"), "08FC09C40AF007D0076C0640") << units;
    EXPECT_TRUE(user.Operations("nciSetPts Value=").size() == 1) << "saving writes nothing";
  }
}

TEST(SettingsMenu, SavesAllThatCanBeReadOrNothing) {
  Transfer user;
  user.simulation->faults().Add({"", "nciGenOpts", "read", 1, 18034});
  user.Choose(kSave);
  EXPECT_EQ(user.Message().text.substr(0, 52), "The file lacks what could not be read:\r\nnciGenOpts: ");
  EXPECT_NE(user.File().find("not read = nciGenOpts: "), std::string::npos) << user.File();
  user.files.Write(kFile, "before");
  user.desktop.answers = {ui::Answer::Cancel};
  user.Choose(kSave);
  EXPECT_EQ(user.MessageTexts(),
            (std::vector<std::string>{"File already exists, override?", "Action canceled by user"}));
  user.simulation->faults().Add({"", "", "read", 0, 18200});
  user.Choose(kSave);
  EXPECT_EQ(user.desktop.messages.back().message.icon, ui::Icon::Critical);
  EXPECT_EQ(user.File(), "before");
}

TEST(SettingsMenu, LoadingTicksWhatDiffersAndWarns) {
  struct Case {
    const char* units;
    std::vector<std::pair<std::string, std::string>> changes;
    const char *rows, *counts;
  };
  const Case cases[] = {
      {"0", {}, "", "0 of 38 fields differ, 0 ticked"},
      {"0",
       {{"nciSetPts.occ_heat", "20.25 C"}},
       "!Heating, Occupied 21>20.25\n",
       "1 of 38 fields differ, 1 ticked"},
      {"1",
       {{"nciSetPts.occ_heat", "20.25 C"}},
       "!Heating, Occupied 69.8>68.45\n",
       "1 of 38 fields differ, 1 ticked"},
      {"0",
       {{"nciSetPts.occ_heat", "24 C"}, {"nciSetPts.occ_cool", "26 C"}},
       "!Heating, Occupied 21>24\n!Cooling, Occupied 23>26\n",
       "2 of 38 fields differ, 2 ticked"},
      {"0",
       {{"nciSetPts.occ_heat", "24 C"}},
       "!Heating, Occupied 21>24 Warning: less than the deadband below \"Cooling, Occupied\"\n",
       "1 of 38 fields differ, 1 ticked"},
      {"0",
       {{"FanMode", "HIGH"}, {"CalibRS", "1 K"}, {"Neuron ID", "00DE00000009"}},
       "!Fan Mode AUTO>HIGH\nTemperature sensor calibration, Room sensor offset 0>1 Corrects the sensor of "
       "another thermostat\n",
       "2 of 38 fields differ, 1 ticked"},
      {"1",
       {{"CalibRS", "1 K"}},
       "!Temperature sensor calibration, Room sensor offset 0>1.8\n",
       "1 of 38 fields differ, 1 ticked"},
      {"0",
       {{"HeatMax", "40 C"}, {"nciSetPts.unocc_cool", "45 C"}},
       "!Cooling, Unoccupied 28>45 Warning: beyond the limit, 37.5\n",
       "1 of 38 fields differ, 1 ticked"},
      {"0",
       {{"model", "5"}, {"software version", "2.4"}},
       "Model 4>5 Warning: the file is of another one\nSoftware version 2.3>2.4 Warning: the file is of "
       "another "
       "one\n",
       "0 of 38 fields differ, 0 ticked"},
      {"0", {{"FanMode", ""}}, "", "0 of 37 fields differ, 0 ticked"},
  };
  for (const Case& c : cases) {
    Transfer user(kFirstThermostat, c.units);
    user.SaveAndChange(c.changes);
    user.Load();
    EXPECT_EQ(user.rows, c.rows);
    EXPECT_EQ(user.counts, c.counts);
    EXPECT_EQ(user.Writes().size(), 0u) << "loading writes nothing";
  }
}

TEST(SettingsMenu, EntersAllTextsBeforeTheRulesOfTheFields) {
  struct Case {
    const char* units;
    std::vector<std::pair<std::string, std::string>> changes;
    const char* marked;
    std::size_t messages;
    const char* raw;
  };
  const Case cases[] = {
      {"0",
       {{"nciSetPts.occ_heat", "24 C"}, {"nciSetPts.occ_cool", "26 C"}, {"FanMode", "HIGH"}},
       "nciSetPts.occ_heat=24 nciSetPts.occ_cool=26 FanMode=HIGH ",
       0,
       "0A2809C40AF00960076C0640"},
      {"1",
       {{"nciSetPts.occ_heat", "24 C"}, {"nciSetPts.occ_cool", "26.07 C"}},
       "nciSetPts.occ_heat=75.2 nciSetPts.occ_cool=78.93 ",
       0,
       "0A2F09C40AF00960076C0640"},
      {"0",
       {{"nciSetPts.occ_heat", "24 C"}},
       "nciSetPts.occ_heat=24 nciSetPts.occ_cool=25.5 ",
       1,
       "09F609C40AF00960076C0640"},
      {"0",
       {{"HeatMax", "18 C"}, {"nciSetPts.unocc_heat", "20 C"}},
       "nciSetPts.occ_heat=18 nciSetPts.unocc_heat=18 HeatMax=18 ",
       2,
       "08FC09C40AF00708076C0708"},
  };
  for (const Case& c : cases) {
    Transfer user(kFirstThermostat, c.units);
    user.SaveAndChange(c.changes);
    user.Load();
    EXPECT_EQ(user.Marked(), c.marked);
    EXPECT_EQ(user.desktop.messages.size(), c.messages) << testing::PrintToString(user.MessageTexts());
    EXPECT_EQ(user.Focused(), &user.main.cmdSettings);
    user.desktop.messages.clear();
    user.Apply();
    EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{});
    EXPECT_EQ(user.Raw("nciSetPts"), c.raw);
  }
}

TEST(SettingsMenu, TheReviewIsTheUsersChoice) {
  Transfer user;
  user.SaveAndChange({{"nciSetPts.occ_heat", "20 C"}, {"FanMode", "HIGH"}, {"DeadBand", "1 K"}});
  user.Load([&user](fReview& review) {
    EXPECT_EQ(review.lstFields.Rows().size(), 3u);
    EXPECT_EQ(user.StatusPanel(3), "") << "nothing is being read";
    review.lstFields.UserTicks(0, false);
    EXPECT_EQ(review.lblCounts.Text(), "3 of 38 fields differ, 2 ticked");
    review.cbDifferences.UserChecks(false);
    EXPECT_EQ(review.lstFields.Rows().size(), 38u);
    EXPECT_EQ(review.lstFields.Rows()[0].tick, false);
    review.cbDifferences.UserChecks(true);
    review.lstFields.UserCopies(std::vector<std::size_t>{1, 2});
    review.cmdSave.UserClicks();
  });
  EXPECT_EQ(user.Marked(), "DeadBand=1 FanMode=HIGH ");
  EXPECT_NE(user.desktop.copied.find("General\tFan Mode\tAUTO\tHIGH\t\tdifferent\t\r\n"), std::string::npos);
  EXPECT_NE(user.File().find("General,Fan Mode,AUTO,HIGH,,different,\r\n"), std::string::npos) << user.File();

  for (const bool all : {false, true}) {
    Transfer other;
    other.SaveAndChange({{"nciSetPts.occ_heat", "20 C"}, {"CalibRS", "1 K"}, {"Neuron ID", "00DE00000009"}});
    other.Load([&](fReview& review) {
      (all ? review.cmdAll : review.cmdNone).UserClicks();
      EXPECT_EQ(review.cmdOk.Enabled(), all);
      if (!all) review.cmdCancel.UserClicks();
    });
    EXPECT_EQ(other.Marked(), all ? "nciSetPts.occ_heat=20 " : "");
  }
}

TEST(SettingsMenu, RefusesWhatCannotBeLoaded) {
  const std::pair<std::string, std::string> cases[] = {
      {"", "C:\\room.qm5r cannot be read or is empty"},
      {"QM5R settings 1.0\nprogram ID = 9FFFFF0000000401\n",
       "C:\\room.qm5r has errors, so it is not used:\r\n\r\nLine 1: the program ID is 9FFFFF0000000401, not "
       "the "
       "thermostat's, 8000D3550004041D"},
      {"QM5R settings 1.0\nprogram ID = 8000D3550004041D\n[settings]\nHeatMax = 30 F\nCoolMin = 99999 C\n",
       "C:\\room.qm5r has errors, so it is not used:\r\n\r\nLine 4: HeatMax is in C, not in F\r\nLine 5: "
       "CoolMin "
       "holds -327.68 to 327.67, not 99999"}};
  for (const auto& [text, message] : cases) {
    Transfer user;
    user.files.Write(kFile, text);
    for (const Item item : {kLoad, kCompareWithFile}) {
      user.Choose(item);
      EXPECT_EQ(user.Message().text, message);
    }
  }
  Transfer user;
  user.Choose(kSave);
  user.simulation->faults().Add({"", "nciGenOpts", "read", 1, 18034});
  user.Choose(kLoad);
  EXPECT_EQ(user.Message().text.substr(0, 43), "Not all settings can be read:\r\nnciGenOpts: ");
  user.Choose(kSave);
  // The format of the setpoints cannot be restored, so nothing may be entered in its units.
  user.main.obUnits[1].UserClicks();
  user.SaveAndChange({{"nciSetPts.occ_heat", "20 C"}});
  user.Load([&](fReview&) {});
  user.main.cmdCancel.UserClicks();
  user.simulation->faults().Add({"", "nciSetPts", "DsFormatType=", 2, 18200});
  user.Load();
  EXPECT_EQ(user.Marked(), "");
  EXPECT_EQ(user.Message().text,
            "The device has not been read completely. Refresh all values before loading settings.");
}

TEST(SettingsMenu, AReviewClosesWithItsDevice) {
  const std::pair<const char*, std::function<void(Transfer&)>> events[] = {
      {"another device", [](auto& user) { user.Configure("Demo Tower/Demo Tower.Floor 1/Thermostat 102"); }},
      {"another network",
       [](auto& user) { World::Put(*user.api, "networkName", std::string("Demo Annex")); }},
      {"the window hides", [](auto& user) { World::Put(*user.api, "Visible", false); }}};
  for (const auto& event : events) {
    SCOPED_TRACE(event.first);
    Transfer user;
    World::Put(*user.api, "Visible", true);
    user.SaveAndChange({{"nciSetPts.occ_heat", "20 C"}});
    user.desktop.on_modal = [&](ui::Form& form) {
      event.second(user);
      EXPECT_FALSE(form.Visible());
    };
    user.Choose(kLoad);
    EXPECT_EQ(user.Marked(), "");
    EXPECT_EQ(
        user.MessageTexts(),
        user.main.Visible()
            ? std::vector<std::string>{"Loading settings has ended: the network tool opened another device "
                                       "or closed the network."}
            : std::vector<std::string>{});
    EXPECT_FALSE(user.main.Busy());
  }
}

TEST(SettingsMenu, ComparesWithAnotherThermostatOfTheNetwork) {
  Transfer user;
  std::vector<std::string> paths;
  std::string heading;
  user.desktop.on_modal = [&](ui::Form& form) {
    if (auto* thermostats = dynamic_cast<transfer::fThermostats*>(&form)) {
      for (const auto& row : thermostats->lstThermostats.Rows()) paths.push_back(row.cells[0]);
      EXPECT_FALSE(thermostats->cmdOk.Enabled());
      thermostats->txtFind.UserChangesText("2/thermostat 201");
      thermostats->cmdOk.UserClicks();
      return;
    }
    const auto& review = dynamic_cast<fReview&>(form);
    heading = review.lblHeading.Text();
    user.rows = Transfer::Rows(review);
    EXPECT_FALSE(review.cmdOk.Visible());
  };
  user.Choose(kCompareWithThermostat);
  EXPECT_EQ(paths.size(), 8u);
  EXPECT_EQ(paths[0], "Demo Tower/Demo Tower.Floor 1/Thermostat 102") << "without the one on the screen";
  EXPECT_EQ(heading, kFirstThermostat + std::string("\r\nwith Demo Tower/Demo Tower.Floor 2/Thermostat 201"));
  EXPECT_NE(user.rows, "");
  EXPECT_EQ(user.rows.find('!'), std::string::npos);
  std::string logged;
  for (const auto& row : user.log.lstActivity.Rows())
    if (row.cells[1] == "Comparing" || row.cells[1] == "Configuring")
      logged += row.cells[1] + " " + row.cells[2] + "\n";
  EXPECT_EQ(logged, "Configuring " + std::string(kFirstThermostat) +
                        "\nComparing Demo Tower/Demo Tower.Floor 2/Thermostat 201\nConfiguring " +
                        kFirstThermostat + "\n")
      << "each row is below its device";
}

}  // namespace
