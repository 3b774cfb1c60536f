#include <algorithm>

#include "headless/forwarding_object.h"
#include "model/catalogue.h"
#include "support/user.h"

namespace {

using model::txtNvi;

std::vector<std::string> LoggedActions(const World& world, ui::ListView::Icon icon) {
  std::vector<std::string> actions;
  for (const auto& row : world.log.lstActivity.Rows())
    if (row.icon == icon) actions.push_back(row.cells[1]);
  return actions;
}

/// An object server with altered members.
class AlteredObject : public headless::ForwardingObject {
 public:
  /// Changes the answer of a member of an object.
  using Alter = std::function<void(LateBound& object, std::string_view member, platform::Value& answer)>;
  AlteredObject(platform::LateBoundPtr inner, Alter alter)
      : ForwardingObject(std::move(inner)), alter_(std::move(alter)) {}

 private:
  platform::Value Forward(const platform::Member& member, platform::CallKind kind,
                          platform::Arguments arguments) override {
    platform::Value answer = ForwardingObject::Forward(member, kind, arguments);
    alter_(*inner(), member.name, answer);
    return answer;
  }
  platform::LateBoundPtr Another(platform::LateBoundPtr inner) override {
    return std::make_shared<AlteredObject>(std::move(inner), alter_);
  }

  Alter alter_;
};

TEST(ContactPage, IsAProgramResourceAndHasTheSamePlainText) {
  Opened world;
  const ui::WebView& page = world.main.screen.WebBrowser1;
  EXPECT_EQ(page.url, "res://C:\\Plug-in\\QM5RFcPirConfigure.exe/about.htm");
  const startup::Identity& identity = world.identity;
  EXPECT_TRUE(
      page.Text().starts_with(identity.PlugInName + "\n\n" + identity.PlugInManufacturerName + ", version "));
  EXPECT_NE(page.Text().find("\n\n" + identity.PlugInDescription + ".\n\nHelp\nF1 "), std::string::npos);
  EXPECT_EQ(page.Text().find_first_of("<>{}"), std::string::npos);
}

TEST(ConfigureCommand, FillsTheScreen) {
  Opened world;
  const std::pair<int, const char*> fields[] = {{0, "21"}, {18, "19"}, {1, "16"},
                                                {3, "23"}, {19, "25"}, {4, "28"}};
  const std::pair<int, const char*> lists[] = {{0, "PERMANENT"}, {1, "4"}, {5, "ON_OFF"}, {12, "CELSIUS"}};
  for (const auto& [index, text] : fields) EXPECT_EQ(world.Field(index).Text(), text) << index;
  for (const auto& [index, text] : lists) EXPECT_EQ(world.List(index).Text(), text) << index;
  EXPECT_EQ(world.Shown({model::ScreenArray::lbHvacType}), "HVT_FAN_COIL");
  EXPECT_NE(world.Shown({model::ScreenArray::lbModel}), "Undefined model");
  for (const auto& row : model::Catalogue()) {
    const ui::Control* control = world.main.screen.Find(row.control);
    EXPECT_FALSE(control && control->Text().empty()) << row.name;
  }
  EXPECT_EQ(world.main.lblDeviceTemplate.Text(),
            "Korvell QM5R-FC PIR Configure [Korvell QM5R-FC PIR  (Thermostat 101)]");
  EXPECT_EQ(world.StatusPanel(1), "Cnfg Online");
  EXPECT_EQ(world.StatusPanel(2), kFirstThermostat);
  EXPECT_TRUE(world.main.DeviceOnline());
  EXPECT_FALSE(world.main.cmdApply.Enabled());
  EXPECT_TRUE(world.desktop.messages.empty());
  EXPECT_FALSE(world.main.Visible());
  EXPECT_EQ(world.desktop.pointers.back(), ui::Pointer::Default);
}

TEST(ConfigureCommand, ReportsADeviceOfAnotherTypeAndLocksItsFields) {
  World world;
  const auto api = world.Configure("Demo Tower/Demo Tower.Floor 2.Plant/Wall Switch 1");
  ASSERT_EQ(world.desktop.messages.size(), 1u);
  const std::string& text = world.desktop.messages[0].message.text;
  EXPECT_TRUE(text.ends_with("\r\nThe device has no variable nciSetPts; is it a QM5R-FC?")) << text;
  EXPECT_FALSE(text.starts_with("\r\n")) << "the platform's text is missing";
  for (const ui::Field* const field : world.main.screen.EditableFields()) EXPECT_TRUE(field->Locked());
}

TEST(ConfigureCommand, TakesThreeOperationsPerPointAndLogsEachRead) {
  World world;
  if (world.FindsOut()) GTEST_SKIP() << "it takes more operations to find out what the server demands";
  const auto api = world.Configure(kFirstThermostat);
  const std::pair<const char*, const char*> points[] = {{"nciSetPts", "#SISNVT_temp_setpt"},
                                                        {"nciRHmodel", "UNVT_rh_model"},
                                                        {"nciGenOpts", "#SIUNVT_fc_pir_gen_opts"},
                                                        {"nciSccModel", "UNVT_model_info2"},
                                                        {"nciHvacType", "SNVT_hvac_type"},
                                                        {"nciSndHrtBt", "SNVT_time_sec"},
                                                        {"nciMinOutTm", "SNVT_time_sec"},
                                                        {"nciRcvHrtBt", "SNVT_time_sec"},
                                                        {"nciMajVer", "INT"},
                                                        {"nciMinVer", "INT"},
                                                        {"nciSccModel", "RAW"}};
  std::vector<std::string> expected;
  for (const auto& [name, format] : points) {
    expected.push_back(std::string(name) + " SourceOptions=0");
    expected.push_back(std::string(name) + " DsFormatType=" + format);
    expected.push_back(std::string(name) + " Value");
  }
  EXPECT_EQ(world.Operations("nci"), expected);
  const auto all = world.Operations();
  EXPECT_NE(std::search(all.begin(), all.end(), expected.begin(), expected.end()), all.end())
      << "there are operations between the points";
  const auto actions = LoggedActions(world, ui::ListView::Icon::Green);
  ASSERT_EQ(actions.size(), 12u);
  EXPECT_EQ(world.log.lstActivity.Rows().front().cells[2], kFirstThermostat);
  EXPECT_EQ(actions[0] + ", " + actions[1], "Configuring, Reading nciSetPts");
  EXPECT_EQ(actions.back(), "Reading nciSccModel (Raw)");
}

TEST(ConfigureCommand, ShowsTheDevicesState) {
  const std::tuple<const char*, const char*, bool> cases[] = {
      {"Demo Tower/Demo Tower.Floor 1.West Wing/Thermostat 110", "Offnet", false},
      {"Demo Tower/Demo Tower.Floor 1.West Wing/Thermostat 111", "Not Commissioned yet", true},
      {"Demo Tower/Demo Tower.Floor 2/Thermostat 201", "Soft Offline", true},
      {"Demo Tower/Demo Tower.Floor 2/Thermostat 202", "Unconfigured", true},
      {"Demo Tower/Demo Tower.Floor 2/Thermostat 203", "?", false},
      {"Demo Annex/Demo Annex.Ground.Lobby.Corner/Thermostat A3", "Cnfg Offline", true},
  };
  for (const auto& [path, state, shown] : cases) {
    Opened world(path);
    const bool known = state != std::string("Offnet") ||
                       world.simulation->installation().strict.Knows("AttachmentStatus", 0);
    EXPECT_EQ(world.StatusPanel(1), known ? state : "?") << path;
    EXPECT_FALSE(world.main.DeviceOnline());
    EXPECT_EQ(world.Shown(txtNvi(0)).empty(), !shown) << path;
    EXPECT_EQ(world.desktop.messages.size(), shown ? 0u : 1u) << path;
  }
}

TEST(ConfigureCommand, ReportsValuesThatDoNotFit) {
  struct Case {
    platform::Value value;
    const char* reason;
  };
  const Case cases[] = {
      {std::string("23,25"), "nciSetPts has no value number 4 for nciSetPts.occ_heat"},
      {std::string(), "nciSetPts has no value number 4"},
      {std::int32_t{42}, "nciSetPts has no value number 4"},
      {std::monostate{}, "nciSetPts has no value number 4"},
      {platform::LateBoundPtr(), "Overflow"},
      {std::string("23,5,25,0,28,0,21,0,19,0,16,0"), "has 12 fields; the most are 6"},
  };
  for (const Case& c : cases) {
    World world;
    bool fits = false;
    world.in_between = [&](platform::LateBoundPtr object_server) {
      return std::make_shared<AlteredObject>(
          std::move(object_server), [&](auto& object, std::string_view member, platform::Value& answer) {
            if (fits || member != "Value") return;
            if (World::Get(object, "Name") == platform::Value("nciSetPts")) answer = c.value;
          });
    };
    const auto api = world.Configure(kFirstThermostat);
    EXPECT_NE(world.Message().text.find(c.reason), std::string::npos) << world.Message().text;
    EXPECT_EQ(LoggedActions(world, ui::ListView::Icon::Red).size(), 1u);
    EXPECT_EQ(world.Shown(txtNvi(0)), "");
    const bool read = world.Message().text.find("no value number") != std::string::npos;
    EXPECT_EQ(world.main.screen.cbNvi(0)->Text(), read ? "PERMANENT" : "") << "the other values are shown";

    fits = true;
    World::Send(*api, 13, 7, kFirstThermostat);
    EXPECT_EQ(world.Shown(txtNvi(0)), "21") << "the window stays usable";
  }
}

TEST(ConfigureCommand, ALonMarkObjectLeadsToItsDevice) {
  World world;
  const auto api =
      world.Configure("Demo Tower/Demo Tower.Floor 1/Thermostat 102/Thermostat", session::kLonMarkObjectType);
  EXPECT_TRUE(world.main.CurrentLonMarkObject());
  EXPECT_EQ(world.main.CurrentDevice().Name(), "Thermostat 102");
  EXPECT_EQ(world.Shown(txtNvi(0)), "20.5");
  EXPECT_EQ(world.main.CurrentLonMarkObject().Mode(), 3) << "the scope of the maker's resource files";

  world.simulation->faults().Add({"", "", "Parent", 1, 17008});
  World::Send(*api, 13, 28, "Demo Tower/Demo Tower.Floor 1/Thermostat 101/Thermostat");
  EXPECT_FALSE(world.main.CurrentDevice()) << "never the former device";
  EXPECT_EQ(world.Shown(txtNvi(0)), "");
  const std::string reason = world.Message().text;
  EXPECT_EQ(reason.find("Object variable"), std::string::npos) << "the platform's own: " << reason;
  const auto& row = world.log.lstActivity.Rows().back();
  EXPECT_EQ(row.cells[1] + ": " + row.cells[2], "Preparing the device: " + reason);
  world.main.cmdRefresh.UserClicks();
  EXPECT_EQ(world.Shown(txtNvi(0)), "21") << "the owner is looked up again";
}

TEST(ConfigureCommand, TheLogDistinguishesDevicesAndActions) {
  Opened world;
  const std::string second = "Demo Tower/Demo Tower.Floor 1/Thermostat 102";
  World::Send(*world.api, 13, 7, second);
  world.main.cmdRefresh.UserClicks();
  std::vector<std::pair<std::size_t, std::string>> named;
  const auto& rows = world.log.lstActivity.Rows();
  const std::size_t found_out = world.FindsOut();
  for (std::size_t i = 0; i < rows.size(); ++i)
    if (rows[i].cells[1] == "Configuring") named.emplace_back(i, rows[i].cells[2]);
  EXPECT_EQ(named, (std::vector<std::pair<std::size_t, std::string>>{{0, kFirstThermostat},
                                                                     {12 + found_out, second}}));
  EXPECT_EQ(rows.size(), 35u + found_out);

  World talkative;
  talkative.in_between = [](platform::LateBoundPtr object_server) {
    return std::make_shared<AlteredObject>(
        std::move(object_server), [](auto&, std::string_view member, platform::Value&) {
          if (member == "NetworkVariables")
            throw platform::Error(platform::ObjectServerError(17008), "Test", "One reason.\r\nAnother one.");
        });
  };
  const auto api = talkative.Configure(second);
  const auto& row = talkative.log.lstActivity.Rows().back();
  EXPECT_EQ(row.cells[1] + ": " + row.cells[2], "Preparing the device: One reason. Another one.");
}

TEST(ConfigureCommand, ShowsTheVariableBeingReadAndHowManyAreLeft) {
  World world;
  std::vector<std::string> seen;
  world.desktop.on_yield = [&] {
    seen.push_back(world.main.Visible() ? world.StatusPanel(3) : world.progress.Status());
  };
  const auto api = world.Configure(kFirstThermostat);
  EXPECT_EQ(std::vector(seen.end() - 11, seen.end()).front(), "Reading nciSetPts, 10 left");
  EXPECT_EQ(seen.back(), "Reading nciSccModel (Raw), 0 left");
  World::Put(*api, "Visible", true);
  world.main.screen.txtNvi(39)->UserChangesText("90");
  EXPECT_EQ(world.StatusPanel(3), "1 change not applied");
  world.main.screen.txtNvi(0)->UserChangesText("20");
  EXPECT_EQ(world.StatusPanel(3), "2 changes not applied");
  world.main.cmdApply.UserClicks();
  EXPECT_EQ(seen.back(), "Updating nciSndHrtBt, 0 left");
  EXPECT_EQ(world.StatusPanel(3), "");
}

TEST(ConfigureCommand, AsksBeforeItReadsTheDevice) {
  struct Case {
    bool files_missing;
    bool mode_fails;
    ui::Answer answer;
    bool read;
  };
  const Case cases[] = {{true, true, ui::Answer::Yes, true},
                        {true, false, ui::Answer::No, false},
                        {false, true, ui::Answer::Yes, true},
                        {false, true, ui::Answer::No, false}};
  for (const Case& c : cases) {
    World world;
    if (c.files_missing) world.registry.SetMachineSetting("SOFTWARE\\LonWorks", "LonWorks Path", "nowhere");
    if (c.mode_fails) world.simulation->faults().Add({"", "", "Mode", 0, 17119});
    world.desktop.answers = {c.answer};
    const auto api = world.Configure(kFirstThermostat);
    const ui::Message& question = world.Message();  // files missing: the mode step is skipped
    EXPECT_EQ(question.text,
              c.files_missing
                  ? "The resource files required for this device are not present on this computer. Browsing "
                    "and data formating capabilities might be restricted to standard types and standard "
                    "functional profile templates. Do you want to continue?"
                  : "Unable to set the Mode for the LonMark Objects, do you want to proceed?");
    EXPECT_EQ(question.icon, ui::Icon::Exclamation);
    EXPECT_EQ(question.buttons, ui::Buttons::YesNo);
    EXPECT_EQ(world.Shown(txtNvi(0)), c.read ? "21" : "");
  }
}

TEST(ConfigureCommand, ARefreshShowsARecoveredDevice) {
  Opened world("Demo Tower/Demo Tower.Floor 2/Thermostat 203");
  EXPECT_EQ(world.StatusPanel(1), "?");
  ErrorOf([&] { World::Send(*world.api, 13, 7, "Demo Tower/Demo Tower.Floor 1/Nobody"); });
  simulator::stored::DeviceOf(world.simulation->installation(), {"Demo Tower", {"Floor 2"}, "Thermostat 203"})
      .powered = true;
  world.main.cmdRefresh.UserClicks();
  EXPECT_NE(world.StatusPanel(1), "?");
  EXPECT_EQ(world.StatusPanel(2), "Demo Tower/Demo Tower.Floor 2/Thermostat 203")
      << "not the path that was refused since";
  EXPECT_NE(world.Shown(txtNvi(0)), "");
}

}  // namespace
