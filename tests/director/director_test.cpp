#include <fstream>
#include <sstream>

#include "director/command_line.h"
#include "director/configure.h"
#include "director/networks.h"
#include "director/simulator_knobs.h"
#include "simulator/object_server.h"
#include "support/user.h"

namespace {

using director::Command;

TEST(CommandLine, ParsesCommandsAndExplainsMistakes) {
  using Words = std::vector<std::string>;
  const auto configure =
      director::ParseCommandLine({"configure", "N/S.A/D", "--object", "Node", "--left", "-5", "--hidden"});
  ASSERT_TRUE(configure.run) << configure.message;
  EXPECT_EQ(configure.options.configure.lonmark_object, "Node");
  EXPECT_EQ(configure.options.configure.left, -5);
  EXPECT_EQ(configure.options.configure.top, std::nullopt);
  EXPECT_EQ(configure.options.answer, false) << "nobody sees a hidden plug-in's questions";
  const auto fault = director::ParseCommandLine({"fault", "add", "--device", "D", "--code", "18034"});
  EXPECT_EQ(fault.options.command, Command::FaultAdd);
  EXPECT_EQ(fault.options.fault.code, 18034);
  const auto none = director::ParseCommandLine({"interface", "N", "--none"});
  EXPECT_EQ(none.options.interface_name, "") << none.message;
  EXPECT_EQ(director::ParseCommandLine({"--version"}, "1.2.3").message, "director 1.2.3\n");
  const std::pair<Words, std::string> mistakes[] = {
      {{}, "director: a command is required: networks, "},
      {{"nonsense"}, "director: there is no command \"nonsense\": networks, "},
      {{"configure"}, "director configure: path is required"},
      {{"configure", "N/S.A/D", "--left", "far"}, "director configure: "},
      {{"configure", "N/S.A/D", "--width", "0"}, "director configure: --width: "},
      {{"fault"}, "director fault: a command is required: add, list, clear, "},
      {{"fault", "add", "--variable", "v"}, "director fault add: --device or --occurrence "},
      {{"fault", "add", "--device", "D", "--code", "70000"},
       "director fault add: --code: Value 70000 not in "},
      {{"latency", "read", "-5"}, "director latency: milliseconds: Value -5 not in range"},
      {{"latency", "reed"}, "director latency: kind: reed not in "},
      {{"register", "N", "--answer", "maybe"}, "director register: --answer: maybe not in "},
  };
  for (const auto& [wrong, message] : mistakes) {
    const auto parsed = director::ParseCommandLine(wrong);
    EXPECT_EQ(parsed.message.substr(0, message.size()), message);
    EXPECT_EQ(parsed.exit_code, 1);
  }
}

TEST(CommandLine, NamesTheKindOfAnError) {
  const std::pair<std::uint32_t, std::string> cases[] = {
      {20005, "error 20005"}, {0x80044718, "object server error 18200"}, {0x80040154, "error 0x80040154"}};
  for (const auto& [number, text] : cases)
    EXPECT_EQ(console::ErrorText("director", {static_cast<std::int32_t>(number), "S", "D"}),
              "director: " + text + " (S): D\n");
}

TEST(Answers, PressAButtonOfTheBox) {
  const struct {
    std::vector<int> buttons;
    int yes, no;
    std::string report;
  } cases[] = {{{6, 7}, 6, 7, "asks: Text - no\n"},
               {{1}, 1, 1, "says: Text\n"},
               {{1, 2}, 2, 2, "says: Text - cancelled\n"}};
  for (const auto& each : cases) {
    const director::Box box{"Title", "Text", each.buttons};
    EXPECT_EQ(std::pair(box.ButtonFor(true), box.ButtonFor(false)), std::pair(each.yes, each.no));
    EXPECT_EQ(director::Report(box, false), "director: the plug-in " + each.report);
    EXPECT_NE(director::Report(box, std::nullopt).find("--answer yes"), std::string::npos);
  }
}

TEST(Networks, ListDevicesAndTheirValues) {
  World world;
  const lns::ObjectServer server(world.simulation->CreateObjectServer());
  std::ostringstream networks, devices, device;
  director::PrintNetworks(server, networks);
  EXPECT_EQ(networks.str(), "Demo Tower\nDemo Annex\n");
  director::PrintDevices(server, "", devices);
  EXPECT_NE(devices.str().find("Demo Tower/Demo Tower.Floor 1.West Wing/Thermostat 110\tstate 4"),
            std::string::npos);
  EXPECT_EQ(devices.str().find(".ALL/"), std::string::npos) << "no device is listed twice";
  director::PrintDevice(server, kFirstThermostat, device);
  EXPECT_NE(device.str().find("nciSetPts\t23,25,28,21,19,16\t08 FC 09 C4 0A F0 08 34 07 6C 06 40"),
            std::string::npos)
      << device.str();
  EXPECT_FALSE(server.IsOpen());

  world.simulation->Vanish("Thermostat 101");
  std::ostringstream vanished, nothing;
  director::PrintDevice(server, kFirstThermostat, vanished);
  EXPECT_NE(vanished.str().find("nciSetPts\t("), std::string::npos)
      << "a variable that cannot be read says why";
  EXPECT_THROW(director::PrintDevice(server, "Demo Tower/Demo Tower.Floor 1/Nobody", nothing),
               platform::Error);
  EXPECT_THROW(director::PrintDevices(server, "Nowhere", nothing), platform::Error);
  EXPECT_FALSE(server.IsOpen()) << "closed after a failure";
}

TEST(ComponentApps, AreListedForTheNetworkAndForADevice) {
  std::ifstream file(DEMO_FOLDER "many-networks.json");
  World world({std::istreambuf_iterator<char>(file), {}});
  const lns::ObjectServer server(world.simulation->CreateObjectServer());
  const std::string harbour = "Demo Harbour/Demo Harbour/LcaDeviceTemplate:", tool = "\tSample.DemoTool\t";
  std::ostringstream all, device;
  director::PrintCommands(server, "", all);
  for (const std::string& line :
       {"LcaObjectServer\tDemo Tool: Register everywhere\t50\t0" + tool + "1.2.0\n",
        "\nDemo Harbour/Demo Harbour\tDemo Tool: Register\t50\t3" + tool + "1.2.0\n",
        harbour + "Korvell QM5R-FC PIR [demo]\tDemo Tool: Inspect\t13\t7" + tool + "\tdefault\n",
        harbour + "Demo Wall Switch [demo]/Switch\tDemo Tool: Test lamp\t13\t28" + tool + "\n",
        std::string("\nDemo Ruin\tcannot be opened: ")})
    EXPECT_NE(all.str().find(line), std::string::npos) << line << all.str();
  const std::string path = "Demo Islands/Demo Islands.North/Thermostat I2", block = path + "/Thermostat\t";
  director::PrintCommands(server, path, device);
  EXPECT_EQ(device.str(), block + "Demo Tool: Watch\t15\t28" + tool + "\tdefault\n" + block +
                              "Demo Tool: Only here\t16\t28" + tool + "\n");
  EXPECT_EQ(director::RegistrationOf(server, "Demo Harbour", "sample.demotool").version, "1.2.0");
  EXPECT_EQ(director::RegistrationOf(server, "Demo Harbour", "Another.Tool").version, std::nullopt);
  for (const std::string interface : {"", "DEMO-LOCAL-2"}) {
    director::SetInterface(server, "Demo Ruin", interface);
    EXPECT_EQ(director::InterfaceOf(server, "Demo Ruin"), interface);
  }
}

TEST(Configure, WorksRemotelyAndHidden) {
  World world;
  const auto api = world.CreateApi();
  director::Configure(
      *api, {"Demo Annex/Demo Annex.Ground.Lobby/Thermostat A1", "", "Internet", {}, {}, 1000, {}, true});
  EXPECT_FALSE(world.main.Visible());
  EXPECT_TRUE(world.session.ObjectServer.RemoteFlag());
  EXPECT_EQ(world.main.Width(), 15000);
  EXPECT_EQ(world.main.CurrentDevice().Name(), "Thermostat A1");
}

TEST(Networks, DownloadRestoresValuesThatWereNotUploaded) {
  for (const bool uploaded : {false, true}) {
    Opened opened;
    opened.simulation->installation().strict.database = true;
    opened.Enter(0, "20.5");
    opened.Apply();
    const lns::ObjectServer server(opened.simulation->CreateObjectServer());
    if (uploaded) director::UploadConfiguration(server, kFirstThermostat);
    director::DownloadConfiguration(server, kFirstThermostat);
    opened.Press(opened.main.cmdRefresh);
    EXPECT_EQ(opened.Field(0).Text(), uploaded ? "20.5" : "21");
    EXPECT_EQ(opened.MessageTexts(), std::vector<std::string>());
  }
}

TEST(SimulatorKnobs, ReachTheSimulation) {
  World world;
  director::SimulatorKnobs knobs(world.simulation->CreateObjectServer());
  knobs.Vanish("Thermostat 101");
  EXPECT_TRUE(world.simulation->HasVanished(kFirstThermostat));
  knobs.Restore("Thermostat 101");
  EXPECT_FALSE(world.simulation->HasVanished(kFirstThermostat));
  bool stopped = false;
  world.simulation->on_stop = [&] { stopped = true; };
  knobs.Stop();
  EXPECT_TRUE(stopped);
  EXPECT_EQ(ErrorOf([&] { director::SimulatorKnobs(world.CreateApi()); }).number(), 20003);
  const auto unusable = simulator::MakeUnusableServer("network.json:5: colour: unknown key");
  EXPECT_EQ(console::ErrorText("director", ErrorOf([&] { director::SimulatorKnobs{unusable}; })),
            "director: object server error 17008 (LNS Simulator): network.json:5: colour: unknown key\n");
}

}  // namespace
