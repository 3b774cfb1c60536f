#include "simulator/client.h"

namespace {

using namespace client;

TEST(Session, OpensInOrderAndReachesWhatItsKindAllows) {
  // Each row is a separate client.
  const std::vector<std::string> cases[] = {
      {"Networks ! 17004", "ComponentApps ! 17004", "IsOpen -> False", "Open", "Networks(T).Systems ! 17004",
       "Networks(T).Open", kSystem + ".Subsystems ! 17004", kSystem + ".TemplateLibrary ! 17004",
       kSystem + ".ComponentApps ! 17004", kSystem + ".NetworkServiceDevice.NetworkInterface.Name -> L1",
       "Open", "Networks(T).Open", kSystem + ".Open", kSystem + ".Open", kDeviceA + ".State -> 4",
       "Networks(T).Close", "Networks(T).Systems ! 17004"},
      {"Open", "Networks(X) ! 17006", "Networks(t) ! 17006", "Networks(0) ! 17006", "Networks(3) ! 17006",
       "Networks(2).Open", "Networks(2).Systems(2) ! 17006", "Networks(2).Systems(1).MgmtMode=2 ! 17090"},
      {"SingleUserFlag=0", "RemoteFlag=0", "Flags=1024", "Open", "RemoteFlag=1 ! 17005", "Flags=16 ! 17005",
       "SingleUserFlag=0 ! 17005", "Close", "Networks ! 17004", "Close", "Flags=0", "Flags=48 ! 17090"},
      {"Open", "Networks.Count -> 2", "Networks(1).Name -> T", "Networks(2).Name -> U"},
      {"Flags=16", "Open", "Networks.Count -> 2"},  // the flags need the remote flag
      {"RemoteFlag=1", "Flags=16", "Open", "Networks.Count -> 1", "Networks(1).Name -> T"},
      {"RemoteFlag=1", "Flags=32", "Open", "Networks ! 17006"},
      {"RemoteFlag=1", "Flags=1056", "Open", "ActiveRemoteNI=@RemoteNetworkInterfaces(R1)",
       "Networks.Count -> 2", "Networks(Far).Open", "Networks(U) ! 17006"},
      {"RemoteFlag=1", "Open", "ActiveRemoteNI=@NetworkInterfaces(L2)", "Networks.Count -> 0"},
      {"RemoteFlag=1", "Open", "ActiveRemoteNI=@NetworkInterfaces(Busy)", "Networks(T).Open ! 16501",
       "ActiveRemoteNI=@NetworkInterfaces(R1)", "ActiveRemoteNI.Name -> R1", "Networks(T).Open",
       kSystem + ".Open", kVariablesOfA + "(nciMajVer).Value -> 1"},
  };
  for (const auto& steps : cases) Play(World().simulation->CreateObjectServer(), steps);
}

TEST(Session, AnInterfaceServesOneNetworkAtATime) {
  World world(Replaced(kWorld, "\"interface\": \"L2\"", "\"interface\": \"L1\""));
  LateBoundPtr first = world.Open();
  const LateBoundPtr second = world.Open();  // the same system may be shared
  EXPECT_EQ(Text(second, kDeviceA + ".Test"), "0");
  const LateBoundPtr third = world.simulation->CreateObjectServer();
  Play(third, {"Open", "Networks(U).Open", "Networks(U).Systems(1).Open ! 16501"});
  Do(second, "Close");
  LateBoundPtr kept = Reach(first, kDeviceA);
  first.reset();
  EXPECT_EQ(CodeOf(third, "Networks(U).Systems(1).Open"), 16501) << "a kept device keeps its session";
  EXPECT_EQ(Text(kept, "Name"), "A");
  kept.reset();
  EXPECT_EQ(CodeOf(third, "Networks(U).Systems(1).Open"), 0);
  EXPECT_EQ(world.simulation->Sessions().size(), 2u);
}

}  // namespace
