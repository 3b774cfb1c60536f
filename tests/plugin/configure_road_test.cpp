#include <gtest/gtest.h>

#include <map>

#include "support/world.h"

namespace {

using model::cbNvi;
using model::txtNvi;
using platform::Error;

std::vector<std::string> LoggedActions(const World& world, ui::ListView::Icon icon) {
  std::vector<std::string> actions;
  for (const auto& row : world.log.lstActivity.Rows())
    if (row.icon == icon) actions.push_back(row.cells[1]);
  return actions;
}

/// An object server whose network variables give other values than the device has.
class TamperedObject : public platform::LateBound {
 public:
  using Values = std::map<std::string, platform::Value>;
  TamperedObject(platform::LateBoundPtr inner, const Values& values, std::string name = {})
      : inner_(std::move(inner)), values_(values), name_(std::move(name)) {}

  platform::Value Invoke(const platform::Member& member, platform::CallKind kind,
                         platform::Arguments arguments) override {
    const platform::Value result = inner_->Invoke(member, kind, arguments);
    if (const auto found = values_.find(name_); member.name == "Value" && found != values_.end())
      return found->second;
    const auto* object = std::get_if<platform::LateBoundPtr>(&result);
    if (!object || !*object) return result;
    const auto* item = arguments.empty() ? nullptr : std::get_if<std::string>(&arguments[0]);
    return std::make_shared<TamperedObject>(*object, values_, item ? *item : "");
  }

 private:
  platform::LateBoundPtr inner_;
  const Values& values_;
  std::string name_;
};

/// "nciSetPts DsFormatType=#SISNVT_temp_setpt" for every operation on a variable.
std::vector<std::string> VariableOperations(const World& world) {
  std::vector<std::string> operations;
  for (std::size_t i = 0; i < world.simulation->journal().Count(); ++i) {
    const simulator::Operation& operation = world.simulation->journal().At(i).operation;
    const bool put = operation.kind == simulator::OperationKind::Put;
    const bool of_variable = operation.member == "SourceOptions" || operation.member == "DsFormatType" ||
                             operation.member == "Value";
    if (of_variable)
      operations.push_back(operation.place.item + " " + operation.member +
                           (put ? "=" + operation.value : ""));
  }
  return operations;
}

TEST(ConfigureRoad, FillsTheScreen) {
  World world;
  const auto api = world.Configure(kFirstThermostat);
  const std::pair<model::ControlRef, const char*> cases[] = {
      {txtNvi(0), "21"},
      {txtNvi(18), "19"},
      {txtNvi(1), "16"},
      {txtNvi(3), "23"},
      {txtNvi(19), "25"},
      {txtNvi(4), "28"},
      {cbNvi(0), "PERMANENT"},
      {cbNvi(1), "4"},
      {cbNvi(5), "ON_OFF"},
      {cbNvi(12), "CELSIUS"},
      {{model::ScreenArray::lbHvacType}, "HVT_FAN_COIL"},
  };
  for (const auto& [control, text] : cases) EXPECT_EQ(world.Shown(control), text) << control.index;
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

TEST(ConfigureRoad, MakesThreeOperationsAPointAndLogsEachRead) {
  World world;
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
  EXPECT_EQ(VariableOperations(world), expected);
  std::size_t others = 0;
  bool reading = false;
  for (std::size_t i = 0, seen = 0; i < world.simulation->journal().Count() && seen < expected.size(); ++i) {
    const bool of_variable = world.simulation->journal().At(i).operation.place.item.starts_with("nci");
    reading = reading || of_variable;
    seen += of_variable;
    others += reading && !of_variable;
  }
  EXPECT_EQ(others, 0u) << "nothing else is asked between the points";
  const auto actions = LoggedActions(world, ui::ListView::Icon::Green);
  ASSERT_EQ(actions.size(), 11u);
  EXPECT_EQ(actions.front(), "Reading nciSetPts");
  EXPECT_EQ(actions.back(), "Reading nciSccModel (Raw)");
}

TEST(ConfigureRoad, UnitsComeFromTheStoredSetting) {
  World world;
  world.registry.SetMachineSetting(world.identity.PlugInKey(), "DisplayUnits", "2");
  const auto api = world.Configure(kFirstThermostat);
  EXPECT_EQ(world.Shown(txtNvi(0)), "70");  // 69.8 °F, shown in steps of a half
  EXPECT_EQ(world.main.screen.txtTempUnits().front()->Text(), "\u00BAF");
  EXPECT_TRUE(world.main.obUnits[1].Selected());
  EXPECT_FALSE(world.main.obUnits[0].Selected());
}

TEST(ConfigureRoad, SaysWhatStateTheDeviceIsIn) {
  struct Case {
    const char* path;
    const char* state;
    bool shown;
  };
  const Case cases[] = {
      {"Demo Tower/Demo Tower.Floor 1.West Wing/Thermostat 110", "Offnet", false},
      {"Demo Tower/Demo Tower.Floor 1.West Wing/Thermostat 111", "Not Commissioned yet", true},
      {"Demo Tower/Demo Tower.Floor 2/Thermostat 201", "Soft Offline", true},
      {"Demo Tower/Demo Tower.Floor 2/Thermostat 202", "Unconfigured", true},
      {"Demo Tower/Demo Tower.Floor 2/Thermostat 203", "?", false},
  };
  for (const Case& c : cases) {
    World world;
    const auto api = world.Configure(c.path);
    EXPECT_EQ(world.StatusPanel(1), c.state) << c.path;
    EXPECT_FALSE(world.main.DeviceOnline());
    EXPECT_EQ(world.Shown(txtNvi(0)).empty(), !c.shown) << c.path;
    EXPECT_EQ(world.desktop.messages.size(), c.shown ? 0u : 1u) << c.path;
  }
}

TEST(ConfigureRoad, AFailedReadIsToldOnceAndShowsNoHalfDevice) {
  for (int point = 1; point <= 11; ++point) {
    World world;
    world.simulation->faults().Add({"", "", "Value", point, 18200});
    const auto api = world.Configure(kFirstThermostat);
    EXPECT_EQ(LoggedActions(world, ui::ListView::Icon::Green).size(), static_cast<std::size_t>(point - 1));
    const auto errors = LoggedActions(world, ui::ListView::Icon::Red);
    ASSERT_EQ(errors.size(), 1u);
    EXPECT_TRUE(errors[0].starts_with("Error reading nci")) << errors[0];
    ASSERT_EQ(world.desktop.messages.size(), 1u);
    EXPECT_EQ(world.desktop.messages[0].message.icon, ui::Icon::Critical);
    EXPECT_TRUE(
        world.desktop.messages[0].message.text.ends_with("Failed to communicate with target device."));
    EXPECT_EQ(world.Shown(txtNvi(0)), "");
    EXPECT_EQ(world.Shown({model::ScreenArray::lbModel}), "Undefined model");
    EXPECT_EQ(world.desktop.pointers.back(), ui::Pointer::Default);
    EXPECT_EQ(world.desktop.windows, 2) << "the progress window is closed";
    world.main.cmdRefresh.UserClicks();
    EXPECT_EQ(world.Shown(txtNvi(0)), "21") << "the next try works";
  }
}

TEST(ConfigureRoad, ValuesThatDoNotFitAreReported) {
  struct Case {
    platform::Value value;
    const char* told;
  };
  const Case cases[] = {
      {std::string("23,25"), "nciSetPts has no value number 4 for nciSetPts.occ_heat"},
      {std::string(), "nciSetPts has no value number 4"},
      {std::int32_t{42}, "nciSetPts has no value number 4"},
      {std::monostate{}, "nciSetPts has no value number 4"},
      {platform::LateBoundPtr(), "Overflow"},
      {std::string("23,5,25,0,28,0,21,0,19,0,16,0"), "has 12 fields where 6 are the most"},
  };
  for (const Case& c : cases) {
    World world;
    TamperedObject::Values values = {{"nciSetPts", c.value}};
    plugin::Surroundings tampered = world.surroundings;
    tampered.make_object_server = [&] {
      return std::make_shared<TamperedObject>(world.simulation->CreateObjectServer(), values);
    };
    plugin::fMain main(tampered);
    const auto api = std::make_shared<plugin::LNSPlugInAPI>(tampered, main);
    World::Put(*api, "networkName", std::string("Demo Tower"));
    World::Send(*api, 13, 7, kFirstThermostat);
    ASSERT_EQ(world.desktop.messages.size(), 1u) << c.told;
    EXPECT_NE(world.desktop.messages[0].message.text.find(c.told), std::string::npos)
        << world.desktop.messages[0].message.text;
    EXPECT_EQ(LoggedActions(world, ui::ListView::Icon::Red).size(), 1u);
    EXPECT_EQ(main.screen.txtNvi(0)->Text(), "");
    EXPECT_EQ(main.screen.cbNvi(0)->Text(), "") << "no half device";

    values.clear();
    World::Send(*api, 13, 7, kFirstThermostat);
    EXPECT_EQ(main.screen.txtNvi(0)->Text(), "21") << "the window stays usable";
  }
}

TEST(ConfigureRoad, WorksOnANetworkWrittenFromTheDocumentation) {
  World world(R"({"interfaces": [{"name": "My interface"}], "networks": [{"name": "My network", "system": {
      "interface": "My interface", "templates": [{"name": "Thermostat type", "programId": "8000D3550004041D"}],
      "subsystems": [{"name": "Floor 1", "devices": [{"name": "Thermostat 1", "template": "Thermostat type"}]}]}}]})");
  const auto api = world.Configure("My network/My network.Floor 1/Thermostat 1");
  EXPECT_EQ(world.Shown(txtNvi(0)), "21");
  EXPECT_EQ(world.StatusPanel(1), "Cnfg Online");
  EXPECT_TRUE(world.desktop.messages.empty());
}

TEST(ConfigureRoad, ADeviceWithoutAVariableIsReported) {
  World world;
  const auto api = world.Configure("Demo Tower/Demo Tower.Floor 2.Plant/Thermostat 210");
  ASSERT_EQ(world.desktop.messages.size(), 1u);
  EXPECT_NE(world.desktop.messages[0].message.text.find("nciMinVer"), std::string::npos);
  EXPECT_EQ(LoggedActions(world, ui::ListView::Icon::Red).size(), 1u);
  EXPECT_EQ(world.Shown(txtNvi(0)), "");
  World::Send(*api, 13, 7, kFirstThermostat);
  EXPECT_EQ(world.Shown(txtNvi(0)), "21");
}

TEST(ConfigureRoad, ASecondCommandTakesNothingOfTheFirst) {
  World world;
  const auto api = world.Configure(kFirstThermostat);
  world.main.screen.txtNvi(0)->SetText("99");
  world.main.screen.txtNvi(0)->SetForeColor(ui::Color::ModifiedMark);
  world.main.cmdApply.SetEnabled(true);
  const auto second = world.CreateApi();
  World::Send(*second, 13, 7, "Demo Tower/Demo Tower.Floor 1/Thermostat 102");
  EXPECT_EQ(world.Shown(txtNvi(0)), "20.5");
  EXPECT_EQ(world.main.screen.txtNvi(0)->ForeColor(), ui::Color::ButtonText);
  EXPECT_FALSE(world.main.cmdApply.Enabled());

  World::Send(*second, 13, 7, "Demo Tower/Demo Tower.Floor 1.West Wing/Thermostat 110");
  EXPECT_EQ(world.Shown(txtNvi(0)), "") << "a device that does not answer shows nothing of the former one";
}

TEST(ConfigureRoad, ALonMarkObjectLeadsToItsDevice) {
  World world;
  const auto api =
      world.Configure("Demo Tower/Demo Tower.Floor 1/Thermostat 102/Thermostat", session::kLonMarkObjectType);
  EXPECT_TRUE(world.main.CurrentLonMarkObject());
  EXPECT_EQ(world.main.CurrentDevice().Name(), "Thermostat 102");
  EXPECT_EQ(world.Shown(txtNvi(0)), "20.5");
  EXPECT_EQ(world.main.CurrentLonMarkObject().Mode(), 3) << "the scope of the maker's resource files";

  world.simulation->faults().Add({"", "", "Parent", 0, 17008});
  World::Send(*api, 13, 28, "Demo Tower/Demo Tower.Floor 1/Thermostat 101/Thermostat");
  EXPECT_FALSE(world.main.CurrentDevice()) << "never the former device";
  EXPECT_EQ(world.Shown(txtNvi(0)), "");
}

TEST(ConfigureRoad, QuestionsBeforeTheDeviceIsRead) {
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
    ASSERT_EQ(world.desktop.messages.size(), 1u) << "files missing: the mode step is skipped";
    const ui::Message& question = world.desktop.messages[0].message;
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

TEST(ConfigureRoad, RefreshShowsNewValuesAndKeepsEdits) {
  World world;
  const auto api = world.Configure(kFirstThermostat);
  world.main.screen.txtNvi(0)->SetText("22");
  world.main.screen.txtNvi(0)->SetForeColor(ui::Color::ModifiedMark);
  world.main.screen.txtNvi(3)->SetText("unmarked");
  world.main.cmdRefresh.UserClicks();
  EXPECT_EQ(world.Shown(txtNvi(0)), "22");
  EXPECT_EQ(world.Shown(txtNvi(3)), "23");

  world.simulation->faults().Add({"", "nciHvacType", "Value", 1, 18200});
  world.main.screen.txtNvi(3)->SetText("stays");
  world.main.cmdRefresh.UserClicks();
  EXPECT_EQ(world.Shown(txtNvi(3)), "stays") << "nothing is shown before a complete read";
}

}  // namespace
