#include "simulator/client.h"

namespace {

using namespace client;
using Devices = OpenWorld;

const std::string kDeviceC = kSystem + ".Subsystems(F).Subsystems(West).AppDevices(C)";
const std::string kDeviceB = kSystem + ".Subsystems(F).AppDevices(B)";
const std::string kLamp = kSystem + ".Subsystems(F).Subsystems(West).AppDevices(Lamp).Interface";

TEST_F(Devices, FailuresHaveThePlatformsCodes) {
  Play(Reach(root, kSystem + ".Subsystems"),
       {"Item(Nowhere) ! 17006", "Item(F).AppDevices(C) ! 17006",
        "Item(Discovered).AppDevices(D).Interface.NetworkVariables(nciMajVer).Value ! 18200"});
  Play(Reach(root, kVariablesOfA),
       {"Item(11) ! 17006", "Item(nciOther) ! 17006", "Item(nciMajVer).Value=many ! 18035",
        "Item(nciMajVer).DsFormatType=NoSuchType ! 18035", "Item(nciMajVer).SourceOptions=3 ! 17090"});
  Play(device, {"Interface.LonMarkObjects(1).Mode=7 ! 17090", "Interface.LonMarkObjects(1).Request=7",
                "Interface.LonMarkObjects(1).Request=18 ! 17090",
                "DeviceTemplate.ComponentApps(1).ComponentClassId=-1 ! 17090", "State=12", "State -> 12",
                "State=6 ! 17090", "Handle=4 ! " + std::to_string(platform::kMemberNotFound),
                "Colour ! " + std::to_string(platform::kUnknownName)});
  Play(Reach(root, kDeviceB), {"State=12 ! 18200", "State -> 4"});
  Play(Reach(root, kDeviceB + ".Interface"),
       {"NetworkVariables(nciMajVer).Value ! 18200", "NetworkVariables(nciMajVer).Value=1 ! 18200",
        "NetworkVariables(nciMajVer).Value=many ! 18035", "LonMarkObjects(1).Request=7 ! 18200"});
  Play(Reach(root, kDeviceC + ".Interface"),
       {"NetworkVariables(nciMinVer) ! 17006", "LonMarkObjects(1).Mode=0 ! 17119"});
  Play(Reach(root, kLamp), {"NetworkVariables(nvoLamp).Value=5 0 ! 18034"});
}

TEST_F(Devices, WritesChangeTheBytesThatOthersRead) {
  const LateBoundPtr variable = Reach(root, kVariablesOfA + "(nciSetPts)");
  Play(variable, {"DsFormatType=#USSNVT_temp_setpt", "Value=73.4,77,82.4,70,66.2,60.8",
                  "Value -> 73.4,77,82.4,70,66.2,60.8", "Value=1,2,3 ! 18035"});
  const LateBoundPtr other = Reach(world.Open(), kVariablesOfA + "(nciSetPts)");
  Play(other,  // the format belongs to the client
       {"Value -> 23,25,28,21.11,19,16", "DsFormatType=RAW", "DsFormatType=Bogus ! 18035",
        "DsFormatType -> RAW", "Value -> 8\t252\t9\t196\t10\t240\t8\t63\t7\t108\t6\t64",
        "DsFormatType=", "DsFormatType -> SNVT_temp_setpt", "DsFormatType=SNVT_time_sec", "Value ! 18035"});

  const LateBoundPtr refused = Reach(root, kDeviceC + ".Interface.NetworkVariables(nciGenOpts)");
  EXPECT_EQ(CodeOf(refused, "Value=" + Text(refused, "Value")), 18034);
}

}  // namespace
