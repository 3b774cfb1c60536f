#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "director/command_line.h"
#include "director/component_apps.h"
#include "director/configure.h"
#include "director/networks.h"
#include "director/simulator_knobs.h"
#include "support/user.h"

namespace {

using director::Command;

TEST(CommandLine, CommandsAndMistakes) {
  using Words = std::vector<std::string>;
  const auto configure =
      director::ParseCommandLine({"configure", "N/S.A/D", "--object", "Node", "--left", "-5", "--hidden"});
  ASSERT_TRUE(configure.run) << configure.message;
  EXPECT_EQ(configure.options.configure.lonmark_object, "Node");
  EXPECT_EQ(configure.options.configure.left, -5);
  EXPECT_EQ(configure.options.configure.top, std::nullopt);
  const auto fault =
      director::ParseCommandLine({"fault", "add", "--variable", "nciSetPts", "--code", "18034"});
  EXPECT_EQ(fault.options.command, Command::FaultAdd);
  EXPECT_EQ(fault.options.fault.code, 18034);
  const auto none = director::ParseCommandLine({"interface", "N", "--none"});
  EXPECT_EQ(none.options.interface_name, "") << none.message;
  for (const Words& wrong :
       {Words{}, {"nonsense"}, {"configure"}, {"fault"}, {"configure", "N/S.A/D", "--left", "far"}}) {
    const auto parsed = director::ParseCommandLine(wrong);
    EXPECT_TRUE(!parsed.run && parsed.exit_code == 1 && !parsed.message.empty());
  }
}

TEST(Networks, ListsDevicesAndTheirValues) {
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
  EXPECT_FALSE(server.IsOpen()) << "a failure closes what was opened";
}

TEST(ComponentApps, AreListedWhereDirectorsFindThem) {
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

TEST(Networks, DownloadPutsFormerValuesBackUnlessTheyWereUploaded) {
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
  EXPECT_THROW(director::SimulatorKnobs(world.CreateApi()), platform::Error)
      << "not a simulated object server";
}

}  // namespace
