#include "session/session.h"

#include "support/world.h"

namespace {

struct Director {
  explicit Director(bool server_missing = false) {
    world.object_server_missing = server_missing;
    api = world.CreateApi();
  }
  void Open(const std::string& network) { World::Put(*api, "networkName", network); }
  void UseInterface(const std::string& name) { World::Put(*api, "NetworkInterfaceName", name); }
  void UseRemote() { World::Put(*api, "Remote", true); }
  bool Remote() const { return std::get<bool>(World::Get(*api, "Remote")); }
  std::string Network() const { return std::get<std::string>(World::Get(*api, "networkName")); }
  bool Asked(const char* operation) const { return !world.Operations(operation).empty(); }

  void ExpectRefused(const std::string& network) {
    const platform::Error error = ErrorOf([&] { Open(network); });
    EXPECT_EQ(error.number(), 20006);
    EXPECT_EQ(error.description(), "Cannot open the network " + network);
    EXPECT_EQ(error.source(), world.identity.PlugInName);
    EXPECT_EQ(world.desktop.pointers.back(), ui::Pointer::Default);
  }

  World world;
  std::shared_ptr<plugin::LNSPlugInAPI> api;
};

TEST(NetworkSession, OpensALocalSessionInOrder) {
  Director director;
  director.world.simulation->journal().Clear();
  director.Open("Demo Tower");
  // The first call checks whether the object server still answers.
  std::vector<std::string> expected = {" IsOpen",
                                       " RemoteFlag",
                                       " IsOpen",
                                       " SingleUserFlag=False",
                                       " Open",
                                       " Networks",
                                       " Item",
                                       "Demo Tower Open",
                                       "Demo Tower Name",
                                       "Demo Tower Systems",
                                       "Demo Tower Item",
                                       "Demo Tower Open",
                                       "Demo Tower BeginNssIdleEvent"};
  EXPECT_EQ(director.world.Operations(), expected);
  EXPECT_EQ(director.Network(), "Demo Tower");
  director.Open("Demo Tower");
  expected.push_back(" IsOpen");
  EXPECT_EQ(director.world.Operations(), expected) << "the same name again does nothing";
}

TEST(NetworkSession, TheRemoteFlagDecidesWhatInternetMeans) {
  Director director;
  director.UseRemote();
  director.UseInterface("Internet");
  director.Open("Demo Annex");
  for (const char* operation : {"Flags=16", "DsPause=True", "DsMode=0", "DsPause=False"})
    EXPECT_TRUE(director.Asked(operation)) << operation;
  EXPECT_FALSE(director.Asked("RemoteNetworkInterfaces"));

  // The switch to remote does not set the flags, and looks up even "Internet" by name.
  Director late;
  late.UseInterface("Internet");
  late.ExpectRefused("Demo Annex");
  EXPECT_PRED2(Both, late.Asked("RemoteFlag=True"), late.Asked("RemoteNetworkInterfaces"));
  EXPECT_FALSE(late.Asked("Flags"));
}

TEST(NetworkSession, ChangesToFullRemoteAndBackToLocal) {
  Director director;
  director.UseRemote();
  director.UseInterface("DEMO-REMOTE-1");
  director.Open("Demo Tower");
  EXPECT_PRED2(Both, director.Asked("Flags=32"), director.Asked("RemoteNetworkInterfaces"));
  EXPECT_TRUE(director.Remote());

  director.UseInterface("");
  director.Open("Demo Annex");
  EXPECT_TRUE(director.Asked("RemoteFlag=False"));
  EXPECT_FALSE(director.Remote());
  EXPECT_EQ(director.Network(), "Demo Annex");
}

TEST(NetworkSession, ClosesTheFormerNetworkOnlyIfTheNewOneExists) {
  Director director;
  director.Open("Demo Tower");
  director.ExpectRefused("Nowhere");
  EXPECT_EQ(director.Network(), "Demo Tower");
  EXPECT_TRUE(director.world.session.NetworkOpen);
  EXPECT_TRUE(director.world.session.CurrentSystem.IsOpen());
  const lns::Network former = director.world.session.CurrentNetwork;
  director.Open("Demo Annex");
  EXPECT_FALSE(former.IsOpen());
  director.ExpectRefused("demo annex");
}

TEST(NetworkSession, RecoversFromAFailedRemoteWrite) {
  // The first call checks whether the object server still answers; system and network close before it.
  const std::pair<const char*, int> cases[] = {{"IsOpen", 2}, {"Close", 3}, {"RemoteFlag", 1}, {"Open", 1}};
  for (const auto& [operation, failing] : cases) {
    Director director;
    director.Open("Demo Tower");
    director.world.simulation->faults().Add({"", "", operation, failing, 17008});
    const platform::Error error = ErrorOf([&] { director.UseRemote(); });
    EXPECT_EQ(error.number(), 20006) << operation;
    EXPECT_EQ(error.description(), "Cannot open the network Demo Tower");
    director.Open("Demo Tower");
    director.Open("Demo Annex");
    EXPECT_TRUE(director.world.session.CurrentSystem.IsOpen()) << operation;
  }
}

TEST(NetworkSession, RecoversFromAFailureOnTheNextTry) {
  Director hopeful(true);
  hopeful.ExpectRefused("Demo Tower");
  hopeful.world.object_server_missing = false;
  hopeful.Open("Demo Tower");
  for (const char* operation : {"Open", "Systems", "Name", "BeginNssIdleEvent"}) {
    Director director;
    director.world.simulation->faults().Add({"", "", operation, 1, 17008});
    director.ExpectRefused("Demo Tower");
    director.Open("Demo Tower");
    EXPECT_TRUE(director.world.session.CurrentSystem.IsOpen()) << operation;
  }
}

TEST(ObjectServer, IsLostIfItsProcessHasEnded) {
  struct Failing final : platform::LateBound {
    platform::Value Invoke(const platform::Member&, platform::CallKind, platform::Arguments) override {
      throw platform::Error(static_cast<std::int32_t>(number), "", "");
    }
    std::uint32_t number = 0;
  };
  const std::pair<std::uint32_t, bool> cases[] = {
      {0x800706BA, true},  {0x800706BE, true},  {0x800706BF, true}, {0x80010007, true},
      {0x80010012, true},  {0x80010108, true},  {0x800401FD, true}, {0x80044271, false},
      {0x80044719, false}, {0x80004005, false}, {0x8001010A, false}};
  const auto server = std::make_shared<Failing>();
  for (const auto& [number, lost] : cases) {
    server->number = number;
    EXPECT_EQ(lns::ObjectServer(server).IsLost(), lost) << std::hex << number;
    const platform::Error error = ErrorOf([&] { lns::Network(server).Name(); });
    EXPECT_EQ(error.description().find("demonstration mode") != std::string::npos, number == 0x80044271);
  }
}

}  // namespace
