#include "session/network_session.h"

#include <gtest/gtest.h>

#include "support/world.h"

namespace {

/// The members called on an object server since the journal was cleared, in order, without lookups below
/// networks.
std::vector<std::string> Calls(World& world) {
  std::vector<std::string> calls;
  for (std::size_t i = 0; i < world.simulation->journal().Count(); ++i) {
    const simulator::Operation& operation = world.simulation->journal().At(i).operation;
    calls.push_back(operation.member +
                    (operation.kind == simulator::OperationKind::Put ? "=" + operation.value : ""));
  }
  world.simulation->journal().Clear();
  return calls;
}

void ExpectRefused(World& world, platform::LateBound& api, const std::string& network) {
  try {
    World::Put(api, "networkName", network);
    FAIL() << network << " was opened";
  } catch (const platform::Error& error) {
    EXPECT_EQ(error.number(), 20006);
    EXPECT_EQ(error.description(), "Cannot open the network " + network);
    EXPECT_EQ(error.source(), world.identity.PlugInName);
  }
  EXPECT_EQ(world.desktop.pointers.back(), ui::Pointer::Default);
}

bool Contains(const std::vector<std::string>& calls, const std::string& call) {
  return std::find(calls.begin(), calls.end(), call) != calls.end();
}

TEST(NetworkSession, LocalSessionInOrder) {
  World world;
  const auto api = world.CreateApi();
  world.simulation->journal().Clear();
  World::Put(*api, "networkName", std::string("Demo Tower"));
  const std::vector<std::string> expected = {
      "RemoteFlag", "IsOpen", "SingleUserFlag=False", "Open", "Networks", "Item", "Open", "Name", "Systems",
      "Item",       "Open",   "BeginNssIdleEvent"};
  const auto calls = Calls(world);
  EXPECT_EQ(calls, expected);
  EXPECT_EQ(std::get<std::string>(World::Get(*api, "networkName")), "Demo Tower");

  World::Put(*api, "networkName", std::string("Demo Tower"));
  EXPECT_TRUE(Calls(world).empty()) << "the same name again does nothing";
}

TEST(NetworkSession, RemoteFlagDecidesWhatInternetMeans) {
  World world;
  const auto api = world.CreateApi();
  World::Put(*api, "Remote", true);
  World::Put(*api, "NetworkInterfaceName", std::string("Internet"));
  world.simulation->journal().Clear();
  World::Put(*api, "networkName", std::string("Demo Annex"));
  auto calls = Calls(world);
  EXPECT_TRUE(Contains(calls, "Flags=16")) << testing::PrintToString(calls);
  EXPECT_TRUE(Contains(calls, "DsPause=True"));
  EXPECT_TRUE(Contains(calls, "DiscoveryInterval=0"));
  EXPECT_TRUE(Contains(calls, "DsPause=False"));
  EXPECT_FALSE(Contains(calls, "RemoteNetworkInterfaces"));

  // The write that itself switches the server to remote leaves the flags alone and looks even "Internet" up
  // by name.
  World other;
  const auto late = other.CreateApi();
  World::Put(*late, "NetworkInterfaceName", std::string("Internet"));
  other.simulation->journal().Clear();
  ExpectRefused(other, *late, "Demo Annex");
  calls = Calls(other);
  EXPECT_TRUE(Contains(calls, "RemoteFlag=True"));
  EXPECT_TRUE(Contains(calls, "RemoteNetworkInterfaces"));
  EXPECT_FALSE(Contains(calls, "Flags"));
}

TEST(NetworkSession, FullRemoteClientAndBackToLocal) {
  World world;
  const auto api = world.CreateApi();
  World::Put(*api, "Remote", true);
  World::Put(*api, "NetworkInterfaceName", std::string("DEMO-REMOTE-1"));
  world.simulation->journal().Clear();
  World::Put(*api, "networkName", std::string("Demo Tower"));
  auto calls = Calls(world);
  EXPECT_TRUE(Contains(calls, "Flags=32")) << testing::PrintToString(calls);
  EXPECT_TRUE(Contains(calls, "RemoteNetworkInterfaces"));
  EXPECT_EQ(std::get<bool>(World::Get(*api, "Remote")), true);

  World::Put(*api, "NetworkInterfaceName", std::string());
  World::Put(*api, "networkName", std::string("Demo Annex"));
  calls = Calls(world);
  EXPECT_TRUE(Contains(calls, "RemoteFlag=False"));
  EXPECT_EQ(std::get<bool>(World::Get(*api, "Remote")), false);
  EXPECT_EQ(std::get<std::string>(World::Get(*api, "networkName")), "Demo Annex");
}

TEST(NetworkSession, AnotherNetworkClosesTheFormerOnlyWhenItIsFound) {
  World world;
  const auto api = world.CreateApi();
  World::Put(*api, "networkName", std::string("Demo Tower"));
  ExpectRefused(world, *api, "Nowhere");
  EXPECT_EQ(std::get<std::string>(World::Get(*api, "networkName")), "Demo Tower");
  EXPECT_TRUE(world.session.NetworkOpen);
  EXPECT_TRUE(world.session.CurrentSystem.IsOpen());
  const lns::Network former = world.session.CurrentNetwork;
  World::Put(*api, "networkName", std::string("Demo Annex"));
  EXPECT_FALSE(former.IsOpen());
  ExpectRefused(world, *api, "demo annex");
}

TEST(NetworkSession, AFailureLeavesAStateThatTheNextTryRepairs) {
  World missing;
  missing.object_server_missing = true;
  const auto hopeful = missing.CreateApi();
  ExpectRefused(missing, *hopeful, "Demo Tower");
  missing.object_server_missing = false;
  World::Put(*hopeful, "networkName", std::string("Demo Tower"));
  for (const char* operation : {"Open", "Systems", "Name", "BeginNssIdleEvent"}) {
    World world;
    const auto api = world.CreateApi();
    world.simulation->faults().Add({"", "", operation, 1, 17008});
    ExpectRefused(world, *api, "Demo Tower");
    World::Put(*api, "networkName", std::string("Demo Tower"));
    EXPECT_TRUE(world.session.CurrentSystem.IsOpen()) << operation;
  }
}

}  // namespace
