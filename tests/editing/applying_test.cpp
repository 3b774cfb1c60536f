#include "editing/applying.h"

#include <gtest/gtest.h>

#include "support/user.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace {

using simulator::OperationKind;

struct Opened {
  explicit Opened(const char* units = "0") : user(world) {
    world.registry.SetMachineSetting(world.identity.PlugInKey(), "DisplayUnits", units);
    api = world.Configure(kFirstThermostat);
    world.simulation->journal().Clear();
  }
  void Apply() { user.Press(world.main.cmdApply); }

  /// "nciSetPts=<text>" for every value written, in order.
  std::vector<std::string> Writes() const {
    std::vector<std::string> writes;
    for (std::size_t i = 0; i < world.simulation->journal().Count(); ++i) {
      const auto& entry = world.simulation->journal().At(i);
      if (entry.operation.member == "Value" && entry.operation.kind == OperationKind::Put && entry.error == 0)
        writes.push_back(entry.operation.place.item + "=" + entry.operation.value);
    }
    return writes;
  }
  std::string Raw(const char* variable) {
    const auto server = lns::ObjectServer(world.simulation->CreateObjectServer());
    server.Open();
    const auto network = server.Networks().Item("Demo Tower");
    network.Open();
    network.Systems().Item(1).Open();
    const auto found = network.Systems()
                           .Item(1)
                           .Subsystems()
                           .Item("Floor 1")
                           .AppDevices()
                           .Item("Thermostat 101")
                           .Interface()
                           .NetworkVariables()
                           .Item(variable);
    found.SetFormatType("RAW_HEX_PACKED");
    return found.Value();
  }

  World world;
  User user;
  std::shared_ptr<plugin::LNSPlugInAPI> api;
};

TEST(Apply, ClampsTellsAndStoresInsideTheLimit) {
  struct Case {
    const char* units;
    int field;
    const char* typed;
    const char* shown;
    const char* limit;   // told; empty for no message
    const char* stored;  // the point's field
  };
  const Case cases[] = {
      {"0", 2, "31", "31", "", "31"},
      {"0", 2, "35", "32", "maximum allowed value is: 32", "31.95"},
      {"0", 2, "32", "32", "", "31.95"},
      {"0", 2, "32.0", "32.0", "", "32"},
      {"0", 18, "40", "32", "maximum allowed value is: 32", "32"},
      {"0", 18, "-3", "4.5", "minimum allowed value is: 4.5", "4.5"},
      {"0", 16, "0.5", "1", "minimum allowed value is: 1", "1.05"},
      {"0", 6, "-9", "-2.5", "minimum allowed value is: -2.5", "-2.45"},
      {"1", 2, "95", "90", "maximum allowed value is: 90", "89.975"},
      {"1", 16, "1", "2", "minimum allowed value is: 2", "2.025"},
      {"1", 6, "5", "5", "", "4.975"},
      {"0", 7, "20", "30", "minimum allowed value is: 30", "30"},
      {"0", 14, "9", "9", "", "9"},
      {"0", 39, "6600", "6553.4", "maximum allowed value is: 6553.4", "6553.4"},
  };
  for (const Case& c : cases) {
    Opened opened(c.units);
    opened.user.Enter(c.field, c.typed);
    opened.world.desktop.messages.clear();
    opened.Apply();
    EXPECT_EQ(opened.user.Field(c.field).Text(), c.shown) << c.typed;
    ASSERT_EQ(opened.world.desktop.messages.size(), *c.limit ? 1u : 0u) << c.field << ' ' << c.typed;
    if (*c.limit) {
      const ui::Message& message = opened.world.desktop.messages[0].message;
      EXPECT_NE(message.text.find(" out of range\r\n\r\nThe " + std::string(c.limit) +
                                  "\r\n\r\nThe value has been adjusted"),
                std::string::npos)
          << message.text;
      EXPECT_EQ(message.caption, "QM5R-FC PIR LNS Device Plug-in");
      EXPECT_EQ(message.icon, ui::Icon::None);
    }
    EXPECT_FALSE(User::IsMarked(opened.user.Field(c.field)));
    EXPECT_FALSE(opened.world.main.cmdApply.Enabled());
    const auto writes = opened.Writes();
    ASSERT_EQ(writes.size(), 1u) << "only the variable that changed is written";
    opened.world.main.cmdRefresh.UserClicks();
    for (const model::CatalogueRow& row : model::Catalogue()) {
      if (row.control != model::txtNvi(c.field)) continue;
      const auto& rows = opened.world.log.lstActivity.Rows();
      const auto read = std::find_if(rows.rbegin(), rows.rend(), [&](const auto& r) {
        return r.cells[1] == "Reading " + std::string(row.point);
      });
      const std::string separator = row.point == "nciSetPts" ? "," : " ";
      const std::string back = text::Split(read->cells[2], separator)[static_cast<std::size_t>(row.index)];
      EXPECT_NEAR(text::LeadingNumber(back), text::LeadingNumber(c.stored), 0.0101)
          << "what the device holds";
    }
  }
}

TEST(Apply, WritesOnlyTheChangedVariablesOnceEach) {
  Opened opened;
  opened.user.Enter(0, "20.5");
  opened.user.Enter(1, "15");
  opened.user.Choose(0, "TEMPORARY");
  opened.user.Enter(39, "90");
  opened.Apply();
  const auto writes = opened.Writes();
  ASSERT_EQ(writes.size(), 3u);
  EXPECT_EQ(writes[0], "nciSetPts=23,25,28,20.5,19,15");
  EXPECT_TRUE(writes[1].starts_with("nciGenOpts=")) << writes[1];
  EXPECT_EQ(writes[2], "nciSndHrtBt=90");
  EXPECT_EQ(opened.Raw("nciSetPts"), "08FC09C40AF00802076C05DC");
  EXPECT_TRUE(opened.world.desktop.messages.empty());
}

TEST(Apply, AFailedWriteKeepsWhatWasNotWritten) {
  // Three points change; the n-th write fails.
  for (int failing = 1; failing <= 3; ++failing) {
    Opened opened;
    opened.user.Enter(0, "20.5");
    opened.user.Choose(0, "TEMPORARY");
    opened.user.Enter(39, "90");
    opened.world.simulation->faults().Add({"", "", "write", failing, 18034});
    opened.Apply();
    const ui::Control* fields[] = {&opened.user.Field(0), &opened.user.List(0), &opened.user.Field(39)};
    for (int i = 0; i < 3; ++i)
      EXPECT_EQ(User::IsMarked(*fields[i]), i + 1 >= failing) << i << " of " << failing;
    EXPECT_TRUE(opened.world.main.cmdApply.Enabled() && opened.world.main.cmdCancel.Enabled());
    EXPECT_EQ(opened.Writes().size(), static_cast<std::size_t>(failing - 1));
    ASSERT_EQ(opened.world.desktop.messages.size(), 1u);
    EXPECT_TRUE(opened.world.desktop.messages[0].message.text.ends_with(
        "Failed to write data to the network variable object."));
    const auto& row = opened.world.log.lstActivity.Rows().back();
    EXPECT_EQ(row.icon, ui::ListView::Icon::Red);
    EXPECT_TRUE(row.cells[1].starts_with("Error updating nci")) << row.cells[1];

    opened.Apply();
    EXPECT_EQ(opened.Writes().size(), 3u) << "the second try writes the rest, nothing twice";
    EXPECT_FALSE(opened.world.main.cmdApply.Enabled());
    for (const ui::Control* field : fields) EXPECT_FALSE(User::IsMarked(*field));
  }
}

TEST(Apply, AnEditMadeMeanwhileIsKept) {
  Opened opened;
  opened.user.Enter(39, "90");
  opened.user.Enter(0, "20.5");
  opened.world.desktop.on_yield = [&] {
    opened.user.Field(39).UserChangesText("95");
    opened.user.Field(40).UserChangesText("7");
  };
  opened.Apply();
  opened.world.desktop.on_yield = nullptr;
  EXPECT_FALSE(User::IsMarked(opened.user.Field(0)));
  EXPECT_TRUE(User::IsMarked(opened.user.Field(39)) && User::IsMarked(opened.user.Field(40)));
  EXPECT_TRUE(opened.world.main.cmdApply.Enabled());
  opened.Apply();
  EXPECT_EQ(opened.Writes().back(), "nciMinOutTm=7");
}

TEST(Apply, ACommandThatComesInWhileAMessageIsShownTakesTheScreen) {
  // The message of a clamp, of a refused entry, of the question before a switch of units.
  for (int message = 0; message < 3; ++message) {
    Opened opened;
    if (message == 0) opened.user.Enter(18, "99");
    if (message == 1) opened.user.Type(0, "1:30");
    if (message == 2) opened.user.Enter(0, "20");
    opened.world.desktop.on_message = [&](const ui::Message&) {
      World::Send(*opened.api, 13, 7, "Demo Tower/Demo Tower.Floor 1/Thermostat 102");
    };
    if (message == 0) opened.Apply();
    if (message == 1) opened.user.GoTo(opened.user.List(0));
    if (message == 2) opened.world.main.obUnits[1].UserClicks();
    EXPECT_EQ(opened.user.Field(0).Text() + " " + opened.user.Field(18).Text(), "20.5 18") << message;
    EXPECT_FALSE(User::IsMarked(opened.user.Field(0)) || User::IsMarked(opened.user.Field(18)));
    EXPECT_TRUE(opened.Writes().empty());
    EXPECT_EQ(opened.world.main.obUnits[0].Selected(), true);
  }
}

TEST(Apply, OpeningEveryListAndApplyingChangesNoByte) {
  for (const char* units : {"0", "1"}) {
    Opened opened(units);
    const std::string options = opened.Raw("nciGenOpts"), humidity = opened.Raw("nciRHmodel");
    for (int i = 0; i < model::kChoiceListCount; ++i) opened.user.List(i).on_drop_down();
    opened.Apply();
    EXPECT_EQ(opened.Writes().size(), 2u);
    EXPECT_EQ(opened.Raw("nciGenOpts"), options);
    EXPECT_EQ(opened.Raw("nciRHmodel"), humidity);
  }
}

TEST(Apply, NothingIsAppliedToADeviceThatWasNotRead) {
  World world;
  User user(world);
  const auto api = world.Configure("Demo Tower/Demo Tower.Floor 1.West Wing/Thermostat 110");
  world.desktop.messages.clear();
  user.Field(0).UserChangesText("21");
  user.Press(world.main.cmdApply);
  ASSERT_EQ(world.desktop.messages.size(), 1u);
  EXPECT_TRUE(User::IsMarked(user.Field(0)));
  EXPECT_EQ(user.Field(0).Text(), "21") << "nothing that was typed is lost";
  user.Press(world.main.cmdCancel);
  EXPECT_EQ(user.Field(0).Text(), "");
}

TEST(Cancel, GoesBackToWhatTheDeviceHolds) {
  Opened opened;
  opened.user.Enter(0, "21.8");  // repairs the cooling setpoint as well
  EXPECT_EQ(opened.user.Field(3).Text(), "23.3");
  opened.user.Choose(0, "TEMPORARY");
  opened.world.main.cmdCancel.UserClicks();
  EXPECT_EQ(opened.user.Field(0).Text(), "21");
  EXPECT_EQ(opened.user.Field(3).Text(), "23");
  EXPECT_EQ(opened.user.List(0).Text(), "PERMANENT");
  EXPECT_FALSE(opened.world.main.cmdApply.Enabled() || opened.world.main.cmdCancel.Enabled());
  EXPECT_TRUE(opened.Writes().empty());

  // After a failed write the point holds the edit; the device does not.
  opened.user.Enter(0, "20.5");
  opened.world.simulation->faults().Add({"", "nciSetPts", "write", 1, 18200});
  opened.Apply();
  EXPECT_TRUE(User::IsMarked(opened.user.Field(0)));
  opened.world.main.cmdCancel.UserClicks();
  EXPECT_EQ(opened.user.Field(0).Text(), "21");
  opened.user.Enter(1, "15");
  opened.Apply();
  EXPECT_EQ(opened.Writes().back(), "nciSetPts=23,25,28,21,19,15");

  // What was written is what the next cancel returns to.
  opened.user.Enter(1, "14");
  opened.world.main.cmdCancel.UserClicks();
  EXPECT_EQ(opened.user.Field(1).Text(), "15");
}

TEST(Events, ShowLogAndRepaint) {
  Opened opened;
  auto& simulation = *opened.world.simulation;
  const auto raise = [&](std::int32_t event, std::int32_t tag, const char* value) {
    const platform::Value arguments[] = {tag, std::string(value), platform::LateBoundPtr()};
    simulation.RaiseEvent(event, platform::Arguments(arguments, event == 9 ? 0 : event == 20 ? 1 : 3));
  };
  raise(13, 1, "19.5");
  EXPECT_EQ(opened.user.Field(0).Text(), "19.5");
  EXPECT_FALSE(User::IsMarked(opened.user.Field(0)));
  raise(13, 9, "TEMPORARY");
  EXPECT_EQ(opened.user.List(0).Text(), "PERMANENT") << "lists are left alone";
  const std::size_t rows = opened.world.log.lstActivity.Rows().size();
  for (const std::int32_t tag : {0, -1, 46}) {
    raise(13, tag, "1");
    raise(20, tag, "");
  }
  EXPECT_EQ(opened.world.log.lstActivity.Rows().size(), rows);
  raise(20, 45, "");
  EXPECT_EQ(opened.world.log.lstActivity.Rows().size(), rows + 1);
  EXPECT_EQ(opened.world.log.lstActivity.Rows().back().cells[1], "");
  raise(9, 0, "");
  EXPECT_EQ(opened.world.desktop.repaints, 1);
}

}  // namespace
