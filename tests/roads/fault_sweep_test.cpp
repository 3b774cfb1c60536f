#include <algorithm>
#include <iostream>

#include "headless/faults.h"
#include "model/catalogue.h"
#include "registration/registration_world.h"
#include "support/user.h"

namespace {

using enum headless::Failure::Reach;
namespace stored = simulator::stored;
using platform::ObjectServerError;
using Values = std::map<std::string, simulator::Bytes>;

constexpr std::int32_t kGone = static_cast<std::int32_t>(0x800706BAu);
constexpr headless::Failure kFailures[] = {
    {"does not communicate", ObjectServerError(18200)},
    {"refuses", ObjectServerError(18034)},
    {"fails with a system error", static_cast<std::int32_t>(0x80004005u)},
    {"fails four times", ObjectServerError(17008), Operations, 4},
    {"kills its object", kGone, Object},
    {"fails once", ObjectServerError(17008)},
    {"loses its answer", ObjectServerError(18200), Operations, 1, true},
    {"fails twice", ObjectServerError(17008), Operations, 2},
    {"kills all objects", kGone, Server}};

/// Keeps only these networks, with one device in each subsystem, because each operation takes a run.
void KeepNetworks(World& world, const std::vector<std::string>& names) {
  auto& networks = world.simulation->installation().networks;
  stored::NamedList<stored::Network> kept;
  for (const std::string& name : names) kept.push_back(*networks.Find(name));
  networks = std::move(kept);
  for (auto& network : networks)
    for (auto& subsystem : network.system.subsystems)
      if (subsystem.devices.size() > 1) subsystem.devices = {subsystem.devices.back()};
}

/// Makes every operation of a procedure fail, one after the other, in every way.
struct FaultSweep : testing::Test {
  /// The step calls Fail() before the part that fails, then checks the state and that the next try works.
  void Walk(const std::string& procedure, const std::function<void()>& step) {
    const auto installation = world.simulation->installation();
    const auto machine = world.machine.machine;
    std::size_t operations = 0;
    for (const headless::Failure& each : failures) {
      failure = each;
      for (first = 0; first <= operations; ++first) {
        world.simulation->installation() = installation;
        world.machine.machine = machine;
        world.simulation->journal().Clear();
        ClearReports();
        step();
        if (first == 0) operations = faults.seen();
        End();
        if (HasFailure()) FAIL() << procedure << ": " << first << ' ' << faults.struck() << ' ' << each.name;
      }
    }
    std::cout << procedure << ": " << operations << " operations, " << operations * failures.size()
              << " faults\n";
  }
  void Fail(const std::function<void()>& part) {
    faults.Begin(failure, first);
    part();
    faults.End();
  }
  bool Recovers() const { return failure.reach == Operations; }
  bool FailsAgain() const { return failure.length > 1 || !Recovers(); }

  /// The plug-in ends and leaves nothing open, unless closing itself fails.
  void End() {
    api.reset();
    world.main.EndPlugIn();
    EXPECT_PRED2(Both, world.desktop.windows == 0, world.desktop.pointers.back() == ui::Pointer::Default);
    EXPECT_PRED2(Both, !faults.held(), !world.main.Busy());
    EXPECT_EQ(world.session.InstanceCount, 0);
    int open = 0;
    const auto& journal = world.simulation->journal();
    for (std::size_t i = 0; i < journal.Count(); ++i)
      if (const auto& [operation, result, error] = journal.At(i); error == 0)
        open += operation.member == "Open" ? 1 : operation.member == "Close" ? -1 : 0;
    EXPECT_PRED2(Implies, !FailsAgain() && !failure.done && faults.struck() != "Close", open <= 0) << open;
    faults.Forget();
  }
  platform::Error Send(std::int32_t command, const std::string& path) {
    if (faults.object_is_dead()) End();  // a director notices only the loss of the whole object server
    if (!api) api = world.CreateApi();
    ClearReports();
    return ErrorOf([&] {
      world.Put(*api, "networkName", path.substr(0, path.find('/')));
      world.Send(*api, command, session::kAppDeviceType, path);
    });
  }
  void ClearReports() {
    world.desktop.messages.clear();
    world.log.lstActivity.Clear();
  }

  RegistrationWorld world;
  headless::Faults faults{world};
  std::span<const headless::Failure> failures = kFailures;
  headless::Failure failure{};
  std::size_t first = 0;
  std::shared_ptr<plugin::LNSPlugInAPI> api;
};

struct FaultsAtADevice : FaultSweep {
  FaultsAtADevice() {
    KeepNetworks(world, {"Demo Islands"});
    Device().powered = true;
    initial = Shown();
    for (const int units : {1, 0}) {
      world.registry.SetMachineSetting(world.identity.PlugInKey(), "DisplayUnits", std::to_string(units));
      Open();
      EXPECT_NE(full[units] = Shown(), initial);
      End();
    }
  }
  platform::Error Configure() { return Send(13, "Demo Islands/Demo Islands.South/Thermostat I3"); }
  void Open() { EXPECT_EQ(Configure().number(), 0); }
  simulator::stored::Device& Device() {
    return stored::DeviceOf(world.simulation->installation(), {"Demo Islands", {"South"}, "Thermostat I3"});
  }
  /// All texts except that of the heartbeat, which the user edits.
  std::vector<std::string> Shown() const {
    std::vector<std::string> texts;
    for (const auto& row : model::Catalogue())
      if (const auto* control = world.main.screen.Find(row.control); control && row.control.index != 39)
        texts.push_back(control->Text());
    return texts;
  }
  bool FailureShown() const {
    std::ptrdiff_t critical = 0, red = 0;
    for (const auto& shown : world.desktop.messages) critical += shown.message.icon == ui::Icon::Critical;
    for (const auto& row : world.log.lstActivity.Rows()) red += row.icon == ui::ListView::Icon::Red;
    EXPECT_PRED2(Both, critical <= 1, critical <= red);
    return critical == 1;
  }

  User user{world};
  std::vector<std::string> initial, full[2];  // without a device, and the device's in both units
};

TEST_F(FaultsAtADevice, ConfigureShowsAllOrNothing) {
  Walk("configure", [&] {
    platform::Error error(0, "", "");
    Fail([&] { error = Configure(); });
    const bool failed = FailureShown() || error.number() != 0;
    EXPECT_PRED2(Implies, Shown() != full[world.main.DisplayUnits], failed && Shown() == initial);
    if (world.main.CurrentDevice() && Shown() == initial && Recovers()) {
      user.Enter(39, "90");
      EXPECT_FALSE(User::IsMarked(user.Field(39))) << "an edit that could not be applied";
      world.main.cmdRefresh.UserClicks();
      EXPECT_EQ(Shown(), full[world.main.DisplayUnits]);
      EXPECT_EQ(world.StatusPanel(1), "Cnfg Online");
    }
    Open();
    EXPECT_EQ(Shown(), full[world.main.DisplayUnits]);
    EXPECT_TRUE(Device().values.empty()) << "nothing is written";
  });
}

TEST_F(FaultsAtADevice, ApplyLosesNoEdit) {
  Values wanted;
  Walk("edit and apply", [&] {
    Open();
    user.Enter(0, "20.5");
    user.Choose(0, "TEMPORARY");
    user.Enter(39, "90");
    Fail([&] { world.main.cmdApply.UserClicks(); });
    if (first == 0) wanted = Device().values;
    const auto check = [&](bool pending) {
      EXPECT_EQ(user.Field(0).Text() + user.List(0).Text() + user.Field(39).Text(), "20.5TEMPORARY90");
      EXPECT_EQ(world.main.cmdApply.Enabled(), pending);
      Values held = Device().values;
      for (const auto& [name, bytes] : wanted) {
        const ui::Control& edited = name == "nciGenOpts"  ? static_cast<ui::Control&>(user.List(0))
                                    : name == "nciSetPts" ? user.Field(0)
                                                          : user.Field(39);
        EXPECT_PRED2(Implies, held[name] != bytes, held[name].empty() && pending && User::IsMarked(edited));
        EXPECT_PRED2(Implies, !pending, !User::IsMarked(edited));
      }
      EXPECT_EQ(held.size(), 3u) << "other variables are not written";
    };
    const bool failed = FailureShown();
    check(failed);
    if (first % 2 == 1) world.main.cmdRefresh.UserClicks();
    world.main.cmdApply.UserClicks();
    check(failed && !Recovers());
  });
}

TEST_F(FaultsAtADevice, RefreshShowsAllOrNothingAndKeepsEdits) {
  std::vector<std::string> fresh;
  Walk("refresh", [&] {
    Open();
    user.Enter(39, "90");
    Device().values["nciSetPts"] = {8, 0xFC, 9, 0xC4, 10, 0xF0, 8, 2, 7, 0x6C, 5, 0xDC};
    Fail([&] { world.main.cmdRefresh.UserClicks(); });
    if (first == 0) fresh = Shown();
    EXPECT_EQ(Shown(), FailureShown() ? full[0] : fresh);
    world.main.cmdRefresh.UserClicks();
    EXPECT_PRED2(Implies, Recovers(), Shown() == fresh);
    EXPECT_PRED2(Both, user.Field(39).Text() == "90", User::IsMarked(user.Field(39)));
    EXPECT_PRED2(Both, world.main.cmdApply.Enabled(), Device().values.size() == 1);
  });
}

TEST_F(FaultsAtADevice, UnitsAreNeverMixed) {
  const Values wanted{{"nciSetPts", {8, 0xFC, 9, 0xC4, 10, 0xF0, 8, 2, 7, 0x6C, 6, 0x40}}};
  Walk("switch units", [&] {
    Open();
    Fail([&] { world.main.obUnits[1].UserClicks(); });
    const int units = world.main.DisplayUnits;
    EXPECT_EQ(units == 0, FailureShown());
    EXPECT_TRUE(world.main.obUnits[static_cast<std::size_t>(units)].Selected());
    EXPECT_EQ(world.main.screen.txtTempUnits().back()->Text(), units ? "\u00BAF" : "\u00BAC");
    // If restoring the units fails too, nothing can be edited until everything is read.
    if (Shown() != full[units]) {
      EXPECT_PRED2(Both, FailsAgain(), user.Field(0).Locked());
      world.main.cmdRefresh.UserClicks();
    }
    EXPECT_PRED2(Implies, Shown() != full[units], !Recovers());
    user.Enter(0, units ? "68.9" : "20.5");
    world.main.cmdApply.UserClicks();
    EXPECT_PRED2(Implies, !Device().values.empty(), Device().values == wanted);
    world.main.cmdRefresh.UserClicks();
    world.main.cmdApply.UserClicks();
    EXPECT_PRED2(Implies, Device().values != wanted, Device().values.empty() && !Recovers());
  });
}

TEST_F(FaultsAtADevice, ExitAlwaysEndsThePlugIn) {
  Walk("exit", [&] {
    Open();
    world.desktop.ended = false;
    Fail([&] { api.reset(); });
    EXPECT_TRUE(world.desktop.ended);
  });
}

TEST_F(FaultSweep, TheNextTryCompletesRegistration) {
  failures = failures.last(4);  // error numbers do not matter to registration
  world.shell.on_start = [this] { world.shell.running = false; };
  const auto all = world.simulation->installation();
  for (const std::string network : {"Demo Islands", "Demo Quarry"}) {
    world.simulation->installation() = all;
    KeepNetworks(world, {network});
    std::string registered;
    Walk("register with " + network, [&] {
      platform::Error error(0, "", "");
      Fail([&] { error = Send(50, network); });
      if (first == 0) registered = world.Saved();
      const auto red =
          std::ranges::count(world.log.lstActivity.Rows(), ui::ListView::Icon::Red, &ui::ListView::Row::icon);
      // Only reads with a default, and a network that does not open, leave no row.
      const std::string defaulted[] = {"",       "machine",   "Advise",          "DeviceTemplate",
                                       "IsOpen", "ProgramId", "LdrfCatalogPath", "Name"};
      EXPECT_TRUE(red != 0 || error.number() == 20006 ||
                  (error.number() == 0 && std::ranges::count(defaulted, faults.struck())))
          << "error " << error.number() << " without a row in the log";
      EXPECT_PRED2(Implies, red != 0, first != 0);
      EXPECT_PRED2(Implies, error.number() != 0,
                   error.source() == world.identity.PlugInName && error.number() / 10 == 2000);
      EXPECT_PRED2(Implies, error.number() == 0 && faults.struck() != "VersionNumber",
                   world.Saved() == registered);
      EXPECT_EQ(Send(50, network).number(), 0);
      // If cleaning up fails too, a command keeps no default flag, or a template no interface.
      const std::string untidy[] = {"DefaultAppFlag", "VersionNumber", "Import", "machine"};
      EXPECT_PRED2(Implies, !FailsAgain() || !std::ranges::count(untidy, faults.struck()),
                   world.Saved() == registered);
    });
  }
}

TEST_F(FaultSweep, DeregistrationAlwaysCompletes) {
  failures = failures.last(4);
  KeepNetworks(world, {"Demo Islands", "Demo Foundry"});
  for (const char* network : {"Demo Islands", "Demo Foundry"}) EXPECT_EQ(Send(50, network).number(), 0);
  End();
  std::string removed;
  Walk("deregister everything", [&] {
    const auto deregister = [&] {
      const auto code = registration::MMain(world.services, world.by_hand).Main("/deregplugin");
      EXPECT_PRED2(Implies, code != 0, faults.struck() == "machine");
      EXPECT_PRED2(Both, world.desktop.messages.empty(), !world.session.CurrentNetwork);
    };
    world.main.Load();
    Fail(deregister);
    if (first == 0) removed = world.Saved();
    const auto& foundry = stored::NetworkOf(world.simulation->installation(), "Demo Foundry").system;
    // The interface is restored once; after a failure the user selects it again in the network tool.
    const bool restored = foundry.interface == "DEMO-LOCAL-2";
    EXPECT_PRED2(Implies, !FailsAgain() && faults.struck() != "NetworkInterface", restored)
        << foundry.interface;
    deregister();
    EXPECT_PRED2(Implies, Recovers() && restored, world.Saved() == removed);
    EXPECT_EQ(world.registry.MachineSetting(world.identity.PlugInKey(), ""), "");
  });
}

}  // namespace
