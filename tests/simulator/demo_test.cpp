#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "automation/convert.h"
#include "simulator/client.h"
#include "simulator/network_file.h"
#include "text/strings.h"

namespace {

using namespace client;

TEST(Demo, ShowsAThermostatInEveryState) {
  std::ostringstream file;
  file << std::ifstream(DEMO_NETWORK, std::ios::binary).rdbuf();
  EXPECT_EQ(simulator::WriteInstallation(simulator::ReadInstallation(file.str(), "demo")), file.str())
      << "the file is in the form in which it is saved";
  World world(file.str());
  const LateBoundPtr root = world.simulation->CreateObjectServer();
  Do(root, "Open");
  const struct {
    const char* device;
    const char* state_attachment_commissioned_test;
    int code_of_reads;
  } cases[] = {
      {"Tower|Subsystems(Floor 1).AppDevices(Thermostat 101)", "4 0 True 0", 0},
      {"Tower|Subsystems(Floor 1).AppDevices(Thermostat 102)", "4 0 True 0", 0},
      {"Tower|Subsystems(Floor 1).Subsystems(West Wing).AppDevices(Thermostat 110)", "4 1 True 1", 18200},
      {"Tower|Subsystems(Floor 1).Subsystems(West Wing).AppDevices(Thermostat 111)", "2 0 False 0", 0},
      {"Tower|Subsystems(Floor 2).AppDevices(Thermostat 201)", "12 0 True 0", 0},
      {"Tower|Subsystems(Floor 2).AppDevices(Thermostat 202)", "2 0 True 0", 0},
      {"Tower|Subsystems(Floor 2).AppDevices(Thermostat 203)", "4 0 True 1", 18200},
      {"Annex|Subsystems(Ground).Subsystems(Lobby).AppDevices(Thermostat A1)", "4 0 True 0", 0},
      {"Annex|Subsystems(Ground).Subsystems(Lobby).Subsystems(Corner).AppDevices(Thermostat A3)",
       "6 0 True 0", 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.device);
    const std::vector<std::string> pieces = text::Split(c.device, "|");
    const LateBoundPtr network = Reach(root, "Networks(Demo " + pieces[0] + ")");
    Do(network, "Open");
    Do(network, "Systems(1).Open");
    const LateBoundPtr device = Reach(network, "Systems(1)." + pieces[1]);
    EXPECT_EQ(Text(device, "State") + " " + Text(device, "AttachmentStatus") + " " +
                  Text(device, "HasBeenCommissioned") + " " + Text(device, "Test"),
              c.state_attachment_commissioned_test);
    const LateBoundPtr variables = Reach(device, "Interface.NetworkVariables");
    for (int i = 1; i <= automation::ToInteger(Do(variables, "Count")); ++i)
      EXPECT_EQ(CodeOf(variables, "Item(" + std::to_string(i) + ").Value"), c.code_of_reads) << i;
  }
}

}  // namespace
