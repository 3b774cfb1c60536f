#include "registration/command_registration.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "registration/registration_world.h"

namespace {

const std::string kDeviceCommand = "Korvell QM5R-FC PIR Device Configure";
const std::string kObjectCommand = "Korvell QM5R-FC PIR LonMarkObject Configure";

struct CommandRegistration : testing::Test {
  /// The error number of a command, 0 where it succeeds.
  int Send(std::int32_t command) {
    const platform::Error error = ErrorOf([&] { world.Send(*api, command, 0, ""); });
    EXPECT_EQ(error.description(), error.number() ? "Unable to register Supported Commands" : "");
    return error.number();
  }
  std::function<void()> Fault(const std::string& item, const std::string& operation) {
    return [=, this] { world.simulation->faults().Add({"", item, operation, 0, 17008}); };
  }
  void Open(const std::string& network) { world.Put(*api, "networkName", network); }
  const simulator::model::System& System(const std::string& network) {
    return simulator::model::NetworkOf(world.simulation->installation(), network).system;
  }

  RegistrationWorld world;
  std::shared_ptr<plugin::LNSPlugInAPI> api = world.CreateApi();
};

TEST_F(CommandRegistration, PutsEachCommandWhereDirectorsLookOnceAndTakesItBack) {
  const std::string server = "QM5RFcPirConfigure.LNSPlugInAPI", start = "Configure the Korvell QM5R-FC PIR ";
  const simulator::model::ComponentApp device{
      kDeviceCommand, server, 7, 13, true, start + "Application Device", "", "1.2.3"};
  const simulator::model::ComponentApp object{
      kObjectCommand, server, 28, 13, false, start + "LonMarks Object", "", "1.2.3"};
  world.desktop.answers = {ui::Answer::Yes};
  for (const std::string network : {"Demo Harbour", "Demo Quarry", "Demo Orchard", "Demo Islands"}) {
    SCOPED_TRACE(network);
    Open(network);
    const std::string before = world.Saved();
    world.desktop.messages.clear();
    EXPECT_EQ(Send(50), 0);
    const auto& types = System(network).templates;
    const auto type = std::ranges::find(types, std::string("8000D3550004041D"),
                                        &simulator::model::DeviceTemplate::program_id);
    ASSERT_NE(type, types.end());
    EXPECT_EQ(world.Message().text, "Do you wish to make " + kDeviceCommand + " the default action for " +
                                        type->name + " devices?");
    EXPECT_EQ(type->component_apps.back(), device);
    ASSERT_FALSE(type->objects.empty());
    for (const auto& block : type->objects) EXPECT_EQ(block.component_apps.back(), object);
    const auto& mark = System(network).component_apps.back();
    EXPECT_EQ(std::tuple(mark.command_id, mark.class_id, mark.version), std::tuple(50, 3, "1.2.3"));
    for (const auto& row : world.session.SupportedCommands) EXPECT_EQ(row.CommandText, "Configure");

    const std::string registered = world.Saved();
    EXPECT_EQ(Send(50), 0);
    EXPECT_EQ(world.Saved(), registered) << "the second time changes nothing";
    EXPECT_EQ(world.desktop.messages.size(), 1u) << "nor asks again";
    EXPECT_EQ(Send(51), 0);
    EXPECT_EQ(world.Saved(), before);
    EXPECT_EQ(world.desktop.messages.size(), 1u);
  }
  EXPECT_EQ(world.statuses[0], "Registering plug-in . . .");
  EXPECT_EQ(world.statuses[1], "Adding command Configure for LonMark Object objects...");
  EXPECT_EQ(world.statuses[2], "Adding command Configure for Application Device objects...");
  EXPECT_EQ(world.statuses.back(), "Unregistering plug-in . . .");
}

TEST_F(CommandRegistration, TheLogTellsWhatWasDoneWhere) {
  Open("Demo Islands");
  auto& system = simulator::model::NetworkOf(world.simulation->installation(), "Demo Islands").system;
  auto& own = system.subsystems[0].devices[0].objects.emplace_back();
  own.name = own.programmatic_name = "Own";
  const std::string type = "Korvell QM5R-FC PIR [demo]", at_type = "Device Template " + type;
  const std::string device = kDeviceCommand + "|" + at_type;
  const std::string node = kObjectCommand + "|LonMark Object Node Object of " + at_type;
  const std::string thermostat = kObjectCommand + "|LonMark Object Thermostat of " + at_type;
  const std::string other = kObjectCommand + "|LonMark Object Own of Application Device Thermostat I1";
  const std::string mark = "Korvell QM5R-FC PIR Configure Register|System ";
  const std::string add = "Adding command ", remove = "Removing command ", islands = "Demo Islands";
  const std::string because = ": A fault was set for this operation.";
  struct Step {
    std::int32_t command;
    int error;
    std::function<void()> before;
    std::vector<std::string> rows;
  };
  const Step steps[] = {
      {50,
       20000,
       Fault(type, "Add"),
       {add + node, add + thermostat, add + other, "!Error adding command " + device + because}},
      {50, 0, Fault(islands, "Name"), {add + device, add + mark + "?"}},
      {50, 0, [] {}, {}},
      {50, 0, [&] { system.templates[0].component_apps[0].version = "1.0"; }, {"Updating command " + device}},
      {51,
       0,
       Fault(type, "Remove"),
       {"!Error removing command " + device + because, remove + node, remove + thermostat, remove + other,
        remove + mark + islands}},
      {51, 0, Fault(kDeviceCommand, "Name"), {remove + "?|" + at_type}},
      {51,
       0,
       Fault(islands, "Subsystems"),
       {"!Error removing commands|System Demo Islands" + because,
        "!Error removing unused device templates|System Demo Islands" + because}},
  };
  for (const auto& [command, error, before, rows] : steps) {
    world.log.Clear();
    before();
    EXPECT_EQ(Send(command), error);
    world.simulation->faults().Clear();
    std::vector<std::string> logged;
    for (const auto& [icon, cells] : world.log.lstActivity.Rows())
      logged.push_back((icon == ui::ListView::Icon::Red ? "!" : "") + cells[1] + "|" + cells[2]);
    EXPECT_EQ(logged, rows);
  }
}

/// Each step that can fail: what the user is told, that nothing is left half done, and that the next try
/// works.
TEST_F(CommandRegistration, AFailingStepIsToldAndTheNextTryWorks) {
  struct Case {
    const char* network;
    std::function<void()> breaks;
    std::string told;
    std::function<void()> mends = [] {};
    bool leaves_nothing = true;
  };
  auto& quarry =
      simulator::model::NetworkOf(world.simulation->installation(), "Demo Quarry").system.templates;
  const auto with_taken_names = quarry.size();
  const std::string no_file = "Unable to find XIF file / create a template.";
  const std::string add = "Error adding command ";
  const Case cases[] = {
      {"Demo Quarry", [this] { world.files.Lock("C:\\LonWorks\\Import"); }, no_file,
       [this] { world.desktop.open_path = RegistrationWorld::kXif; }},
      {"Demo Quarry", Fault("", "Import"),
       std::string("Could not import the external interface file ") + RegistrationWorld::kXif + "."},
      {"Demo Quarry",
       [&] {
         for (int number = 1; number <= 100; ++number)
           quarry.emplace_back().name =
               "Korvell QM5R-FC PIR" + (number == 1 ? "" : " " + std::to_string(number));
       },
       "Could not create a unique template name.", [&] { quarry.resize(with_taken_names); }},
      {"Demo Harbour", Fault("Korvell QM5R-FC PIR [demo]", "Add"), add + kDeviceCommand, [] {}, false},
      {"Demo Harbour", Fault(kDeviceCommand, "CommandId="), add + kDeviceCommand, [] {}, false},
      {"Demo Harbour", Fault("", "DefaultAppFlag="), add + kDeviceCommand, [] {}, false},
      {"Demo Islands", Fault(kObjectCommand, "Description="), add + kObjectCommand, [] {}, false},
      {"Demo Quarry", Fault("", "DeviceTemplates"), ""},
      {"Demo Harbour", Fault("Demo Harbour", "TemplateLibrary"), ""},
      {"Demo Harbour", Fault("Demo Harbour", "Add"), add + "Korvell QM5R-FC PIR Configure Register", [] {},
       false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.told);
    Open(c.network);
    c.breaks();
    const std::string before = world.Saved();
    world.desktop.messages.clear();
    world.desktop.open_dialogs.clear();
    EXPECT_EQ(Send(50), 20000);
    EXPECT_LE(world.desktop.open_dialogs.size(), 1u) << "the commands of one program ID ask once";
    EXPECT_NE(world.progress.Status(), "") << "the progress window stays";
    const auto progress = std::ranges::find(world.desktop.forms, "fProgress", &ui::Form::name);
    ASSERT_NE(progress, world.desktop.forms.end());
    EXPECT_TRUE((*progress)->CloseRequested(ui::CloseReason::User)) << "it is the user's now";
    EXPECT_FALSE(world.progress.Shown());
    std::vector<std::string> told = world.MessageTexts();
    std::erase_if(told, [](const std::string& text) { return text.starts_with("Do you wish"); });
    ASSERT_EQ(told.size(), 1u);
    EXPECT_EQ(told[0].rfind(c.told, 0), 0u) << told[0];
    world.simulation->faults().Clear();
    EXPECT_TRUE(!c.leaves_nothing || world.Saved() == before);
    for (const auto& type : System(c.network).templates)
      for (const auto& app : type.component_apps) EXPECT_NE(app.command_id, 0) << app.name;
    c.mends();
    EXPECT_EQ(Send(50), 0);
    EXPECT_EQ(world.progress.Status(), "");
    EXPECT_EQ(System(c.network).component_apps.back().command_id, 50);
    EXPECT_EQ(Send(51), 0);
  }
}

TEST_F(CommandRegistration, StaysWithItsNetworkWhateverIsOpenedMeanwhile) {
  EXPECT_EQ(Send(50), 20000) << "no network is open";
  Open("Demo Quarry");
  world.files.Lock("C:\\LonWorks\\Import");
  world.desktop.open_path = RegistrationWorld::kXif;
  world.desktop.on_open_dialog = [this] {
    EXPECT_EQ(Send(50), 20000) << "not twice at a time";
    Open("Demo Empty Shell");
  };
  const std::string before = world.Saved();
  EXPECT_EQ(Send(50), 20000);
  EXPECT_EQ(world.Saved(), before);
}

}  // namespace
