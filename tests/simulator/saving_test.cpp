#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "simulator/client.h"
#include "simulator/errors.h"

namespace {

using namespace client;
namespace fs = std::filesystem;

/// A network file in a folder of its own.
class Saving : public testing::Test {
 protected:
  Saving() : folder_(fs::path(testing::TempDir()) / ("simulator-\xC3\xA9-" + std::string(TestName()))) {
    fs::remove_all(folder_);
    fs::create_directories(folder_);
    Write(kWorld);
  }
  ~Saving() override { fs::remove_all(folder_); }

  static const char* TestName() { return testing::UnitTest::GetInstance()->current_test_info()->name(); }
  void Write(const std::string& text) { std::ofstream(file_, std::ios::binary) << text; }
  std::string Read() const {
    std::ostringstream text;
    text << std::ifstream(file_, std::ios::binary).rdbuf();
    return text.str();
  }
  LateBoundPtr Open() {
    simulation_ = simulator::Simulation::FromFile(file_, [](std::chrono::milliseconds) {});
    LateBoundPtr root = simulation_->CreateObjectServer();
    Do(root, "Open");
    Do(root, "Networks(T).Open");
    Do(root, kSystem + ".Open");
    return root;
  }

  fs::path folder_;
  fs::path file_ = folder_ / "network.json";
  std::shared_ptr<simulator::Simulation> simulation_;
};

TEST_F(Saving, ReadingLeavesTheFileAlone) {
  const LateBoundPtr root = Open();
  Do(root, kVariablesOfA + "(nciSetPts).Value");
  Do(root, kDeviceA + ".Interface.LonMarkObjects(1).Mode=0");  // the mode it has already
  CodeOf(root, kVariablesOfA + "(nciSetPts).Value=1");
  EXPECT_EQ(Read(), kWorld);
}

TEST_F(Saving, ChangesAreInTheFileAtOnce) {
  const struct {
    std::string change;
    const char* saved;
  } cases[] = {
      {kVariablesOfA + "(nciMajVer).Value=9", "\"nciMajVer\": \"09\""},
      {kDeviceA + ".Interface.LonMarkObjects(1).Mode=5", "\"mode\": 5"},
      {kSystem + ".DiscoveryInterval=17", "\"discoveryInterval\": 17"},
      {kDeviceA + ".DeviceTemplate.XifPath=x-y", "\"xifPath\": \"x-y\""},
      {kDeviceA + ".DeviceTemplate.ComponentApps.Add(New Command;S;7)", "\"name\": \"New Command\""},
      {kDeviceA + ".DeviceTemplate.ComponentApps(1).Description=Words", "\"description\": \"Words\""},
  };
  const LateBoundPtr root = Open();
  for (const auto& c : cases) {
    EXPECT_EQ(Read().find(c.saved), std::string::npos) << c.change;
    Do(root, c.change);
    EXPECT_NE(Read().find(c.saved), std::string::npos) << c.change;
  }
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_), {}), 1) << "nothing is left beside the file";
  const LateBoundPtr later = Open();
  EXPECT_EQ(Text(later, kVariablesOfA + "(nciMajVer).Value"), "9");
  EXPECT_EQ(Text(later, kDeviceA + ".DeviceTemplate.ComponentApps.Count"), "2");
  Do(later, kVariablesOfA + "(nciMajVer).Value=3");
  Write("edited by hand");
  Do(later, kVariablesOfA + "(nciMajVer).Value");
  EXPECT_EQ(Read(), "edited by hand") << "what is saved is not saved again";
}

TEST_F(Saving, WithoutAutoSaveOnlyOnRequest) {
  Write(Replaced(kWorld, "\"interfaces\"", "\"autoSave\": false, \"interfaces\""));
  const LateBoundPtr root = Open();
  Do(root, kVariablesOfA + "(nciMajVer).Value=9");
  EXPECT_EQ(Read().find("\"09\""), std::string::npos);
  Do(root, "Simulator.Save");
  EXPECT_NE(Read().find("\"09\""), std::string::npos);
}

TEST_F(Saving, FailedSavingDoesNotFailTheWrite) {
  const LateBoundPtr root = Open();
  fs::remove_all(folder_);
  EXPECT_EQ(CodeOf(root, kVariablesOfA + "(nciMajVer).Value=9"), 0);
  EXPECT_NE(Text(root, "Simulator.SaveError").find("network.json: cannot be written"), std::string::npos);
  EXPECT_EQ(CodeOf(root, "Simulator.Save"), 17008);
  fs::create_directories(folder_);
  Do(root, kVariablesOfA + "(nciMinVer).Value");
  EXPECT_NE(Read().find("\"09\""), std::string::npos) << "tried again with the next operation";
  EXPECT_EQ(Text(root, "Simulator.SaveError"), "");
}

TEST_F(Saving, ReloadTakesTheFileAndKeepsTheSessions) {
  const LateBoundPtr root = Open();
  const LateBoundPtr variable = Reach(root, kVariablesOfA + "(nciMajVer)");
  const LateBoundPtr lamp = Reach(root, kSystem + ".Subsystems(ALL).AppDevices(Lamp)");
  simulation_->Vanish("A");
  Write("{\n broken");
  EXPECT_EQ(CodeOf(root, "Simulator.Reload"), 17008);
  EXPECT_EQ(Read(), "{\n broken");
  EXPECT_EQ(CodeOf(variable, "Value"), 18200);
  Write(Replaced(Replaced(kWorld, "\"template\": \"QM [demo]\"}",
                          "\"template\": \"QM [demo]\", \"values\": {\"nciMajVer\": \"08\"}}"),
                 "\"Lamp\"", "\"Candle\""));
  Do(root, "Simulator.Reload");
  EXPECT_EQ(Text(variable, "Value"), "8");
  EXPECT_EQ(CodeOf(lamp, "State"), 17096);
}

TEST_F(Saving, UnusableFilesAreRefused) {
  EXPECT_THROW(simulator::Simulation::FromFile(folder_ / "none.json", {}), simulator::FileError);
  EXPECT_THROW(simulator::Simulation::FromFile(folder_, {}), simulator::FileError);
  EXPECT_THROW(simulator::Simulation::FromText("{}", {}), simulator::FileError);
  World world;
  EXPECT_EQ(CodeOf(world.Open(), "Simulator.Reload"), 17008);
}

}  // namespace
