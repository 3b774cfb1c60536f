#include <fstream>

#include "simulator/client.h"

namespace {

using namespace client;
namespace fs = std::filesystem;

struct Saving : testing::Test {
  Saving() {
    fs::create_directories(folder_);
    Write(kWorld);
    root_ = Open();
  }
  ~Saving() override { fs::remove_all(folder_); }

  void Write(const std::string& text) { std::ofstream(file_, std::ios::binary) << text; }
  LateBoundPtr Open() {
    simulation_ = simulator::Simulation::FromFile(file_, [](std::chrono::milliseconds) {});
    return OpenSystem(*simulation_);
  }

  const std::string name_ = testing::UnitTest::GetInstance()->current_test_info()->name();
  const fs::path folder_ = fs::path(testing::TempDir()) / ("simulator-\xC3\xA9-" + name_);
  const fs::path file_ = folder_ / "network.json";
  std::shared_ptr<simulator::Simulation> simulation_;
  LateBoundPtr root_;
};

TEST_F(Saving, WritesEachChangeAtOnceAndOnlyChanges) {
  const std::pair<std::string, const char*> cases[] = {
      {kVariablesOfA + "(nciMajVer).Value=9", "\"nciMajVer\": \"09\""},
      {kDeviceA + ".Interface.LonMarkObjects(1).Mode=5", "\"mode\": 5"},
      {kDeviceA + ".DeviceTemplate.ComponentApps.Add(New Command;S;7)", "\"name\": \"New Command\""},
  };
  Play(root_, {kVariablesOfA + "(nciSetPts).Value", kVariablesOfA + "(nciSetPts).Value=1 ! 18035",
               kDeviceA + ".Interface.LonMarkObjects(1).Mode=0"});  // its current mode
  EXPECT_EQ(Contents(file_), kWorld);
  const fs::path before = fs::path(testing::TempDir()) / "simulator-before.json";
  fs::remove(before);
  fs::create_hard_link(file_, before);
  for (const auto& [change, saved] : cases) {
    Do(root_, change);
    EXPECT_NE(Contents(file_).find(saved), std::string::npos) << change;
  }
  EXPECT_EQ(Contents(before), kWorld) << "the file is replaced, never partly written";
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_), {}), 1) << "no other file is left";
  const LateBoundPtr later = Open();
  Play(later, {kVariablesOfA + "(nciMajVer).Value -> 9",
               kDeviceA + ".DeviceTemplate.ComponentApps.Count -> 2", kVariablesOfA + "(nciMajVer).Value=3"});
  Write("edited by hand");
  Do(later, kVariablesOfA + "(nciMajVer).Value");
  EXPECT_EQ(Contents(file_), "edited by hand") << "saved changes are not saved again";
}

TEST_F(Saving, AFailedSaveDoesNotFailTheWrite) {
  fs::remove_all(folder_);
  Play(root_, {kVariablesOfA + "(nciMajVer).Value=9", "Simulator.Save ! 17008"});
  EXPECT_NE(Text(root_, "Simulator.SaveError").find("network.json: cannot be written"), std::string::npos);
  fs::create_directories(folder_);
  Do(root_, kVariablesOfA + "(nciMinVer).Value");
  EXPECT_NE(Contents(file_).find("\"09\""), std::string::npos) << "the next operation tries again";
  EXPECT_EQ(Text(root_, "Simulator.SaveError"), "");
}

TEST_F(Saving, ReloadReadsTheFileAndKeepsTheSessions) {
  const LateBoundPtr variable = Reach(root_, kVariablesOfA + "(nciMajVer)");
  const LateBoundPtr lamp = Reach(root_, kSystem + ".Subsystems(ALL).AppDevices(Lamp)");
  simulation_->Vanish("A");
  Write("{\n broken");
  EXPECT_EQ(CodeOf(root_, "Simulator.Reload"), 17008);
  EXPECT_EQ(Contents(file_), "{\n broken");
  EXPECT_EQ(CodeOf(variable, "Value"), 18200);
  Write(Replaced(Replaced(kWorld, "\"template\": \"QM [demo]\"}",
                          "\"template\": \"QM [demo]\", \"values\": {\"nciMajVer\": \"08\"}}"),
                 "\"Lamp\"", "\"Candle\""));
  Do(root_, "Simulator.Reload");
  EXPECT_EQ(Text(variable, "Value"), "8");
  EXPECT_EQ(CodeOf(lamp, "State"), 17096);
}

}  // namespace
