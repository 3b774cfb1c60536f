#include "registration/command_removal.h"

#include "registration/registration_world.h"
#include "simulator/client_session.h"

namespace {

struct NetworkVisits : testing::Test {
  /// An older version's command for all networks.
  static simulator::stored::ComponentApp Leftover(const std::string& server) {
    simulator::stored::ComponentApp app;
    app.name = "Old";
    app.server = server;
    return app;
  }
  std::string& InterfaceOf(const char* network) {
    return simulator::stored::NetworkOf(world.simulation->installation(), network).system.interface;
  }
  void Register(const std::string& network) {
    const auto api = world.CreateApi();
    world.Put(*api, "networkName", network);
    world.Send(*api, 50, 0, "");
  }
  void Deregister(std::int32_t mode, bool interactive) {
    world.desktop.messages.clear();
    world.statuses.clear();
    if (world.desktop.has_display)
      world.main.Load();  // as in a later process than the registering director's
    registration::MMain(world.services, world.by_hand).DeregisterPlugIn(mode, interactive);
    EXPECT_FALSE(world.session.ObjectServer);
    EXPECT_FALSE(world.session.CurrentNetwork);
    EXPECT_TRUE(world.object_server_missing || !world.main.lcaOS().IsOpen());
    for (const auto& session : world.simulation->Sessions())
      for (const auto& network : world.simulation->installation().networks)
        EXPECT_FALSE(session->IsNetworkOpen(network.name)) << network.name;
  }

  RegistrationWorld world;
};

TEST_F(NetworkVisits, RemoveEveryCommandFromEveryNetworkThatOpens) {
  for (const std::string network : {"Demo Harbour", "Demo Quarry", "Demo Foundry", "Demo Islands"})
    Register(network);
  auto& shared = world.simulation->installation().component_apps;
  shared.push_back(Leftover("qm5rfcpirconfigure.lnspluginapi"));
  InterfaceOf("Demo Vault").clear();
  world.desktop.answers = {ui::Answer::No};  // keeps the first offered template
  Deregister(1, true);
  EXPECT_EQ(world.Saved().find("QM5RFcPirConfigure"), std::string::npos);
  // For each network: the number of tries to open it, and whether it opens.
  const std::tuple<std::string, std::size_t, bool> visits[] = {
      {"Empty Shell", 2, true}, {"Harbour", 2, true}, {"Quarry", 2, true},
      {"Orchard", 2, true},     {"Foundry", 3, true}, {"Ruin", 3, false},
      {"Vault", 2, false},      {"Bog", 1, false},    {"Islands", 2, true}};
  const char* suffixes[] = {"", "\r\nEngineered system mode", "\r\nNetwork Interface 'DEMO-LOCAL-2'"};
  std::vector<std::string> statuses = {"Opening the Object Server..."};
  for (const auto& [network, tries, opens] : visits) {
    for (std::size_t i = 0; i < tries; ++i)
      statuses.push_back("Opening Demo " + network + "..." + suffixes[i]);
    if (opens) statuses.push_back("Deregister commands...");
  }
  EXPECT_EQ(world.statuses, statuses);
  EXPECT_EQ(world.desktop.pointers.back(), ui::Pointer::Default);
  std::vector<std::string> offered;
  for (const std::string& text : world.MessageTexts()) {
    const std::string start = "The device template '";
    if (text.starts_with(start))
      offered.push_back(text.substr(start.size(), text.find("' is no") - start.size()));
  }
  EXPECT_EQ(offered, (std::vector<std::string>{"Korvell QM5R-FC PIR", "Korvell QM5R-FC PIR [unused]",
                                               "Demo Wall Switch [unused]", "Demo Template without a file"}));
  Deregister(1, true);
  EXPECT_EQ(world.MessageTexts().back(),
            "Plug-in Korvell QM5R-FC PIR Configure does not exisit in the Windows registery")
      << "removing the template creates no key";
}

/// The documents and the window warn about this.
TEST_F(NetworkVisits, LeaveSystemsInEngineeredMode) {
  Deregister(0, false);
  EXPECT_EQ(InterfaceOf("Demo Harbour") + InterfaceOf("Demo Foundry"), "DEMO-LOCAL-2");
  EXPECT_EQ(world.Operations("Demo Vault NetworkInterface=object").size(), 1u) << "it is locked";
  const registration::fRegisterPlugIn window(world.desktop, "", {});
  std::vector<std::string> texts = {window.cmbDeregMode.ToolTip(), window.bDeregister.ToolTip()};
  const auto root = std::filesystem::path(QM5R_DEMO_NETWORK).parent_path().parent_path();
  for (const char* document : {"docs/user-guide.md", "docs/installing.md", "help/registration.html"})
    (std::ostringstream() << std::ifstream(root / document).rdbuf()).str().swap(texts.emplace_back());
  for (const std::string& text : texts)
    EXPECT_NE(text.find("without a network interface"), std::string::npos) << text;
}

/// No failure of the object server may prevent the removal of the plug-in itself.
TEST_F(NetworkVisits, ContinueAfterFailures) {
  Register("Demo Harbour");
  const std::string key = world.identity.PlugInKey();
  const auto deregisters = [&] {
    world.registry.SetMachineSetting(key, "", "x");
    Deregister(0, true);
    return world.registry.MachineSetting(key, "").empty();
  };
  world.object_server_missing = true;
  EXPECT_TRUE(deregisters());
  world.object_server_missing = false;
  world.simulation->faults().Add({"", "", "NetworkInterface", 0, 17008});
  EXPECT_TRUE(deregisters());
  EXPECT_NE(InterfaceOf("Demo Harbour"), "") << "an unknown interface is not removed";
  EXPECT_EQ(world.Saved().find("QM5RFcPirConfigure"), std::string::npos);
}

TEST_F(NetworkVisits, RemoveSharedCommandsOnlyAtTheFirstNetwork) {
  auto& installation = world.simulation->installation();
  const auto shared = [&] { return installation.component_apps.size(); };
  installation.component_apps.push_back(Leftover(world.identity.PlugInProgID));
  ASSERT_EQ(shared(), 2u);
  installation.networks[0].opens = false;
  world.desktop.has_display = false;
  Deregister(0, false);
  EXPECT_EQ(InterfaceOf("Demo Foundry"), "DEMO-LOCAL-2") << "put back, though the log has no window";
  world.desktop.has_display = true;
  EXPECT_EQ(shared(), 2u);
  EXPECT_EQ(world.log.lstActivity.Rows().at(0).cells[1], "Error opening the network");
  installation.networks[0].opens = true;
  world.log.Clear();
  Deregister(1, false);
  EXPECT_PRED2(Both, world.statuses.empty(), world.desktop.messages.empty()) << "a command line is silent";
  EXPECT_EQ(shared(), 1u);
  EXPECT_EQ(std::ranges::count(world.log.lstActivity.Rows(), "Object Server",
                               [](const auto& row) { return row.cells[2]; }),
            1);
}

}  // namespace
