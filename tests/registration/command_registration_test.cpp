#include "registration/command_registration.h"

#include <algorithm>

#include "registration/registration_world.h"

namespace {

const std::string kDeviceCommand = "Korvell QM5R-FC PIR Device Configure";
const std::string kObjectCommand = "Korvell QM5R-FC PIR LonMarkObject Configure";

struct CommandRegistration : testing::Test {
  int Send(std::int32_t command) {
    const platform::Error error = ErrorOf([&] { world.Send(*api, command, 0, ""); });
    EXPECT_EQ(error.description(), error.number() ? "Unable to register Supported Commands" : "");
    return error.number();
  }
  std::function<void()> Fault(const std::string& item, const std::string& operation) {
    return [=, this] { world.simulation->faults().Add({"", item, operation, 0, 17008}); };
  }
  void Open(const std::string& network) { world.Put(*api, "networkName", network); }
  simulator::stored::System& System(const std::string& network) {
    return simulator::stored::NetworkOf(world.simulation->installation(), network).system;
  }

  /// "action|result", after "!" for a failure.
  std::vector<std::string> Logged() const {
    std::vector<std::string> logged;
    for (const ui::ListView::Row& row : world.log.lstActivity.Rows())
      logged.push_back((row.icon == ui::ListView::Icon::Red ? "!" : "") + row.cells[1] + "|" + row.cells[2]);
    return logged;
  }

  RegistrationWorld world;
  std::shared_ptr<plugin::LNSPlugInAPI> api = world.CreateApi();
};

TEST_F(CommandRegistration, AddsEachCommandOnceAndRemovesIt) {
  const std::string server = "QM5RFcPirConfigure.LNSPlugInAPI", start = "Configure the Korvell QM5R-FC PIR ";
  const simulator::stored::ComponentApp device{
      kDeviceCommand, server, 7, 13, true, start + "Application Device", "", "1.2.3"};
  const simulator::stored::ComponentApp object{
      kObjectCommand, server, 28, 13, false, start + "LonMarks Object", "", "1.2.3"};
  world.desktop.answers = {ui::Answer::Yes};
  System("Demo Quarry").catalog_path = "E:\\On another computer\\Types";
  // Failures of unrelated objects.
  Fault("Demo Wall Switch [demo]", "Name")();
  world.simulation->faults().Add({"", "Demo Quarry", "Item", 2, 17008});
  for (const std::string network : {"Demo Harbour", "Demo Quarry", "Demo Orchard", "Demo Islands"}) {
    SCOPED_TRACE(network);
    Open(network);
    const std::string before = world.Saved();
    world.desktop.messages.clear();
    EXPECT_EQ(Send(50), 0);
    const auto& types = System(network).templates;
    const auto type = std::ranges::find(types, std::string("8000D3550004041D"),
                                        &simulator::stored::DeviceTemplate::program_id);
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
    EXPECT_EQ(world.desktop.messages.size(), 1u) << "and asks nothing";
    EXPECT_EQ(Send(51), 0);
    EXPECT_EQ(world.Saved(), before);
    EXPECT_EQ(world.desktop.messages.size(), 1u);
  }
  EXPECT_EQ(world.statuses[0], "Registering plug-in . . .");
  EXPECT_EQ(world.statuses[1], "Adding command Configure for LonMark Object objects...");
  EXPECT_EQ(world.statuses[2], "Adding command Configure for Application Device objects...");
  EXPECT_EQ(world.statuses.back(), "Unregistering plug-in . . .");
}

TEST_F(CommandRegistration, LogsEachStepWithItsPlace) {
  Open("Demo Islands");
  auto& system = System("Demo Islands");
  auto& own = system.subsystems[0].devices[0].objects.emplace_back();
  own.name = own.programmatic_name = "Own";
  const std::string type = "Korvell QM5R-FC PIR [demo]", at_type = "Device Template " + type;
  const std::string device = kDeviceCommand + "|" + at_type;
  const std::string node = kObjectCommand + "|LonMark Object Node Object of " + at_type;
  const std::string thermostat = kObjectCommand + "|LonMark Object Thermostat of " + at_type;
  const std::string other = kObjectCommand + "|LonMark Object Own of Application Device Thermostat I1";
  const std::string mark_name = "Korvell QM5R-FC PIR Configure Register", mark = mark_name + "|System ";
  const std::string add = "Adding command ", remove = "Removing command ", islands = "Demo Islands";
  const std::string because = ": A fault was set for this operation.";
  const auto others_unreadable = [&] {
    Fault(islands, "Name")();
    Fault("Demo Tool: Register", "RegisteredServer")();
  };
  const auto older_and_read_only = [&] {
    system.templates[0].component_apps[0].version = system.component_apps.back().version = "1.0";
    for (const std::string& command : {kDeviceCommand, mark_name}) Fault(command, "VersionNumber=")();
  };
  std::vector<std::string> updated = {"Updating command " + device};
  std::vector<std::string> added_anew = {"!Error writing the version of command " + mark + islands + because,
                                         add + mark + islands};
  if (world.simulation->installation().strict.read_only.contains("VersionNumber")) {
    updated.clear();
    added_anew.erase(added_anew.begin());
  }
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
      {50,
       0,
       others_unreadable,
       {add + device, "!Error reading a command|System ?" + because, add + mark + "?"}},
      {50, 0, [] {}, {}},
      {50, 0, [&] { system.templates[0].component_apps[0].version = "1.0"; }, updated},
      {50, 0, older_and_read_only, added_anew},
      {51,
       0,
       Fault(type, "Remove"),
       {"!Error removing command " + device + because, remove + node, remove + thermostat, remove + other,
        remove + mark + islands}},
      {51, 0, Fault(kDeviceCommand, "Name"), {remove + "?|" + at_type}},
      {51, 0, Fault(type, "Name"), {"!Error removing unused device templates|?" + because}},
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
    EXPECT_EQ(Logged(), rows);
    EXPECT_NE(system.component_apps.back().version, "1.0") << "directors would register again and again";
  }
}

/// For each step that can fail: shows the message, leaves nothing half done, and the next try works.
TEST_F(CommandRegistration, ShowsAFailureAndSucceedsOnTheNextTry) {
  struct Case {
    const char* network;
    std::function<void()> breaks;
    std::string message;
    std::function<void()> mends = [] {};
    bool leaves_nothing = true;
  };
  auto& quarry =
      simulator::stored::NetworkOf(world.simulation->installation(), "Demo Quarry").system.templates;
  const auto with_taken_names = quarry.size();
  const std::string no_file = kObjectCommand + "\r\nUnable to find XIF file / create a template.";
  const Case cases[] = {
      {"Demo Quarry", [this] { world.files.Lock("C:\\LonWorks\\Import"); }, no_file,
       [this] { world.desktop.open_path = RegistrationWorld::kXif; }},
      {"Demo Quarry", Fault("", "Import"),
       kObjectCommand + "\r\nCould not import the external interface file " + RegistrationWorld::kXif + "."},
      {"Demo Quarry",
       [&] {
         for (int number = 1; number <= 100; ++number)
           quarry.emplace_back().name =
               "Korvell QM5R-FC PIR" + (number == 1 ? "" : " " + std::to_string(number));
       },
       kObjectCommand + "\r\nCould not create a unique template name.",
       [&] { quarry.resize(with_taken_names); }},
      {"Demo Harbour", Fault(kDeviceCommand, "CommandId="), kDeviceCommand, [] {}, false},
      {"Demo Quarry", Fault("", "DeviceTemplates"), kObjectCommand},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.message);
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
    EXPECT_TRUE((*progress)->CloseRequested(ui::CloseReason::User)) << "the user can close it";
    EXPECT_FALSE(world.progress.Shown());
    std::vector<std::string> messages = world.MessageTexts();
    std::erase_if(messages, [](const std::string& text) { return text.starts_with("Do you wish"); });
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_TRUE(messages[0].starts_with("Error adding command " + c.message)) << messages[0];
    world.simulation->faults().Clear();
    EXPECT_PRED2(Implies, c.leaves_nothing, world.Saved() == before);
    for (const auto& type : System(c.network).templates)
      for (const auto& app : type.component_apps) EXPECT_NE(app.command_id, 0) << app.name;
    c.mends();
    EXPECT_EQ(Send(50), 0);
    EXPECT_EQ(world.progress.Status(), "");
    EXPECT_EQ(System(c.network).component_apps.back().command_id, 50);
    EXPECT_EQ(Send(51), 0);
  }
}

/// If the tool fails, registration continues; no box delays a director if all commands are registered.
TEST_F(CommandRegistration, AddsMissingResourceFilesToTheCatalogue) {
  const std::string types = "C:\\LonWorks\\Types", folder = types + "\\User\\Korvell";
  const std::string unable = "Unable to add the resources listed in the ResourceTable to the catalog";
  const auto catalog = [=, this](std::string_view text) { world.files.Write(types + "\\ldrf.cat", text); };
  const auto failed = [&](const std::string& why) {
    return "!" + unable + "|" + folder + ": The tool " + why;
  };
  auto& tool = world.shell;
  // The tool's behaviour before, at its start and in each round; and the log row, empty if it does not run.
  const std::pair<std::function<void()>, std::string> cases[] = {
      {[&] { tool.running = false; }, "Adding resource files to the catalog|" + folder},
      {[&] { tool.running = tool.succeeded = false; }, failed("failed.")},
      {[] {}, failed("did not finish.")},
      {[&] { tool.refuses = true; }, failed("could not be started.")},
      {[&] {
         catalog({"q\0m\0005\0r\0.\0t\0y\0p\0QM5R.FMT", 24});
       },
       ""},
      {[&] { catalog(""); }, ""},
      {[&] { world.files.Lock(folder); }, ""}};
  catalog("QM5R.typ");
  world.Put(*api, "NetworkInterfaceName", "DEMO-REMOTE-1");
  Open("Demo Islands");
  EXPECT_EQ(Send(50), 0);
  EXPECT_TRUE(tool.launches.empty()) << "the system is on another computer";
  world.Put(*api, "NetworkInterfaceName", "");
  Open("Demo Harbour");
  for (const auto& [play, row] : cases) {
    SCOPED_TRACE(row);
    catalog("QM5R.typ");
    tool.on_start = tool.on_pause = play;
    play();
    for (const bool first : {true, false}) {
      world.log.Clear();
      world.desktop.messages.clear();
      tool.launches.clear();
      EXPECT_EQ(Send(50), 0);
      EXPECT_EQ(tool.launches.size(), row.empty() ? 0u : 1u);
      for (const auto& [program, arguments, show] : tool.launches)
        EXPECT_EQ(program + " " + arguments,
                  R"(C:\LonWorks\bin\LDRFCAT "C:\LonWorks\Types\ldrf.cat" ")" + folder + '"');
      EXPECT_EQ(row.empty() ? row : Logged().at(0), row);
      EXPECT_EQ(std::ranges::count(world.MessageTexts(), unable), first && row.starts_with('!'));
    }
    EXPECT_EQ(Send(51), 0);
    tool.succeeded = !(tool.refuses = false);
  }
}

TEST_F(CommandRegistration, KeepsItsNetworkIfAnotherIsOpened) {
  EXPECT_EQ(Send(50), 20000) << "no network is open";
  Open("Demo Quarry");
  world.files.Lock("C:\\LonWorks\\Import");
  world.desktop.open_path = RegistrationWorld::kXif;
  world.desktop.on_file_dialog = [this] {
    EXPECT_EQ(Send(50), 20000) << "only one at a time";
    Open("Demo Empty Shell");
  };
  const std::string before = world.Saved();
  EXPECT_EQ(Send(50), 20000);
  EXPECT_EQ(world.Saved(), before);
}

}  // namespace
