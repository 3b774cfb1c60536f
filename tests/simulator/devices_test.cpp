#include <gtest/gtest.h>

#include "automation/convert.h"
#include "simulator/client.h"

namespace {

using namespace client;

const std::string kDeviceC = kSystem + ".Subsystems(F).Subsystems(West).AppDevices(C)";
const std::string kDeviceB = kSystem + ".Subsystems(F).AppDevices(B)";
const std::string kLamp =
    kSystem + ".Subsystems(F).Subsystems(West).AppDevices(Lamp).Interface.NetworkVariables";

TEST(Devices, MembersAnswerFromTheFile) {
  World world;
  const std::vector<std::string> lines = {
      "NetworkInterfaces.Count -> 4",
      "RemoteNetworkInterfaces(4).Name -> Busy",
      "Networks(T).IsOpen -> True",
      kSystem + ".Subsystems.Count -> 3",
      kSystem + ".Subsystems(ALL).AppDevices.Count -> 5",
      kSystem + ".Subsystems(ALL).AppDevices(3).Name -> C",
      kSystem + ".Subsystems(ALL).Subsystems.Count -> 0",
      kSystem + ".Subsystems(Discovered).AppDevices(D).HasBeenCommissioned -> False",
      kSystem + ".Subsystems(F).Parent.Parent.Name -> S",
      kSystem + ".TemplateLibrary.DeviceTemplates(QM [demo]).ProgramId -> 8000D3550004041D",
      kSystem + ".TemplateLibrary.DeviceTemplates(1).ComponentApps(Configure).CommandId -> 13",
      kDeviceC + ".State -> 12",
      kDeviceB + ".AttachmentStatus -> 1",
      kDeviceA + ".NeuronId -> 00DE00000001",
      kDeviceC + ".Handle -> 3",
      kDeviceC + ".Subsystems(1).Name -> West",
      kDeviceC + ".Subsystems(West).Parent.Parent.Name -> C",
      kDeviceA + ".Interface.LonMarkObjects(Thermostat).Index -> 1",
      kDeviceA + ".Interface.LonMarkObjects(2).Parent.Parent.Parent.Name -> A",
      kDeviceA + ".Interface.LonMarkObjects(2).NetworkVariables.Count -> 10",
      kDeviceC + ".Interface.LonMarkObjects(1).NetworkVariables(1).Name -> nciSetPts",
      kDeviceC + ".Interface.LonMarkObjects(1).NetworkVariables.Count -> 1",
      kDeviceC + ".Interface.NetworkVariables.Count -> 9",
      kVariablesOfA + "(nciHvacType).Index -> 4",
      kVariablesOfA + "(nciHvacType).DsFormatType -> SNVT_hvac_type",
      kVariablesOfA + "(nciHvacType).Parent.Parent.Parent.Name -> A",
      kLamp + "(nvoLamp).Direction -> 1",
      kLamp + "(nvoLamp).Value -> 100 1",
  };
  Play(world.Open(), lines);
}

TEST(Devices, FailuresHaveThePlatformsCodes) {
  World world;
  const std::vector<std::string> lines = {
      kSystem + ".Subsystems(Nowhere) ! 17006",
      kSystem + ".Subsystems(F).AppDevices(C) ! 17006",
      kVariablesOfA + "(11) ! 17006",
      kVariablesOfA + "(nciOther) ! 17006",
      kDeviceC + ".Interface.NetworkVariables(nciMinVer) ! 17006",
      kDeviceB + ".Interface.NetworkVariables(nciMajVer).Value ! 18200",
      kDeviceB + ".Interface.NetworkVariables(nciMajVer).Value=1 ! 18200",
      kSystem + ".Subsystems(Discovered).AppDevices(D).Interface.NetworkVariables(nciMajVer).Value ! 18200",
      kVariablesOfA + "(nciMajVer).Value=many ! 18035",
      kDeviceB + ".Interface.NetworkVariables(nciMajVer).Value=many ! 18035",
      kVariablesOfA + "(nciMajVer).DsFormatType=NoSuchType ! 18035",
      kVariablesOfA + "(nciMajVer).SourceOptions=3 ! 17090",
      kLamp + "(nvoLamp).Value=5 0 ! 18034",
      kDeviceC + ".Interface.LonMarkObjects(1).Mode=0 ! 17119",
      kDeviceA + ".Interface.LonMarkObjects(1).Mode=7 ! 17090",
      kDeviceA + ".Interface.LonMarkObjects(1).Request=7",
      kDeviceA + ".Interface.LonMarkObjects(1).Request=18 ! 17090",
      kDeviceB + ".Interface.LonMarkObjects(1).Request=7 ! 18200",
      kDeviceA + ".DeviceTemplate.ComponentApps.Add(Configure;Some.Server;7) ! 17003",
      kDeviceA + ".DeviceTemplate.ComponentApps.Add(Other;Some.Server;-1) ! 17090",
      kDeviceA + ".DeviceTemplate.ComponentApps.Remove(Other) ! 17006",
      kDeviceA + ".Handle=4 ! " +
          std::to_string(platform::kMemberNotFound - platform::kObjectServerErrorBase),
      kDeviceA + ".Colour ! " + std::to_string(platform::kUnknownName - platform::kObjectServerErrorBase),
  };
  Play(world.Open(), lines);
}

TEST(Devices, TestTellsWhetherTheDeviceAnswers) {
  World world(Replaced(kWorld, "\"attachment\": 1", "\"attachment\": 1, \"testResult\": 3"));
  Play(world.Open(), {kDeviceA + ".Test -> 0", kDeviceB + ".Test -> 3",
                      kSystem + ".Subsystems(Discovered).AppDevices(D).Test -> 1"});
}

TEST(Devices, WritingChangesTheBytesThatOthersRead) {
  World world;
  const LateBoundPtr root = world.Open();
  const LateBoundPtr variable = Reach(root, kVariablesOfA + "(nciSetPts)");
  Play(variable, {"DsFormatType=#USSNVT_temp_setpt", "Value=73.4,77,82.4,70,66.2,60.8",
                  "Value -> 73.4,77,82.4,70,66.2,60.8"});

  const LateBoundPtr other = Reach(world.Open(), kVariablesOfA + "(nciSetPts)");
  EXPECT_EQ(Text(other, "Value"), "23,25,28,21.11,19,16") << "the format belongs to the client";
  EXPECT_EQ(CodeOf(variable, "Value=1,2,3"), 18035);
  Play(other,
       {"Value -> 23,25,28,21.11,19,16", "DsFormatType=RAW", "DsFormatType=Bogus ! 18035",
        "DsFormatType -> RAW", "Value -> 8\t252\t9\t196\t10\t240\t8\t63\t7\t108\t6\t64",
        "DsFormatType=", "DsFormatType -> SNVT_temp_setpt", "DsFormatType=SNVT_time_sec", "Value ! 18035"});

  const LateBoundPtr refused = Reach(root, kDeviceC + ".Interface.NetworkVariables(nciGenOpts)");
  EXPECT_EQ(CodeOf(refused, "Value=" + Text(refused, "Value")), 18034);
  Play(root, {kVariablesOfA + "(nciMajVer).Value=9", kVariablesOfA + "(nciMajVer).Value -> 9"});
}

TEST(Devices, ReachedTwiceIsTheSameObject) {
  World world;
  const LateBoundPtr root = world.Open();
  const LateBoundPtr device = Reach(root, kDeviceA);
  EXPECT_EQ(Reach(root, kDeviceA), device);
  EXPECT_EQ(Reach(root, kSystem + ".Subsystems(1).AppDevices(1)"), device);
  EXPECT_NE(Reach(root, kSystem + ".Subsystems(ALL).AppDevices(A)"), device) << "it has another parent";
  EXPECT_NE(Reach(world.Open(), kDeviceA), device);
  const LateBoundPtr object = Reach(device, "Interface.LonMarkObjects(Thermostat)");
  EXPECT_EQ(Reach(object, "Parent.Parent.Parent"), device);
  EXPECT_EQ(Reach(object, "NetworkVariables(nciSetPts)"), Reach(object, "NetworkVariables(1)"));
}

TEST(Devices, CommandsCanBeAddedAndRemoved) {
  World world;
  const LateBoundPtr root = world.Open();
  for (const std::string& owner :
       {std::string("ComponentApps"), kSystem + ".ComponentApps", kDeviceA + ".DeviceTemplate.ComponentApps",
        kDeviceA + ".Interface.LonMarkObjects(2).ComponentApps"}) {
    SCOPED_TRACE(owner);
    const LateBoundPtr apps = Reach(root, owner);
    const std::string before = Text(apps, "Count");
    const LateBoundPtr app = Reach(apps, "Add(Fresh;My.Server;28)");
    Play(app, {"CommandId=13", "DefaultAppFlag=1", "VersionNumber=1.0.0", "ComponentClassId=-1 ! 17090"});
    Play(apps, {"Item(Fresh).CommandId -> 13", "Item(Fresh).ComponentClassId -> 28",
                "Item(Fresh).DefaultAppFlag -> True", "Item(Fresh).VersionNumber -> 1.0.0", "Remove(Fresh)",
                "Count -> " + before});
    EXPECT_EQ(CodeOf(app, "Name"), 17096);
  }
}

}  // namespace
