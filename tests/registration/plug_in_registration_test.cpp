#include "registration/main.h"

#include "support/user.h"

namespace {

class PlugInRegistration : public testing::Test {
 protected:
  void SetUp() override { world.registry.DeleteMachineKey(key); }
  std::string Stored(const std::string& value) const { return world.registry.MachineSetting(key, value); }
  /// Text, caption and icon of the box shown since the last call; "" for none.
  std::string TakeMessage() {
    std::string shown;
    for (const auto& [message, answer] : world.desktop.messages)
      shown += message.text + "|" + message.caption + (message.icon == ui::Icon::Critical ? "|!" : "|i");
    world.desktop.messages.clear();
    return shown;
  }

  World world;
  const std::string key = world.identity.PlugInKey();
  const std::string name = world.identity.PlugInName;
  static constexpr const char* kTitle = "QM5R-FC PIR LNS Device Plug-in";
};

TEST_F(PlugInRegistration, WritesTenValuesAndRegistersTheClass) {
  world.machine.standard_user = true;
  registration::RegisterPlugIn(world.services, false);
  EXPECT_EQ(Stored(""), "") << "refused writes are skipped";
  world.machine.standard_user = false;
  registration::RegisterPlugIn(world.services, true);
  EXPECT_EQ(world.machine.machine[key].texts.size(), 10u);
  EXPECT_EQ(world.shell.launches.at(1).program, "C:\\Plug-in\\QM5RFcPirConfigure.exe");
  EXPECT_EQ(world.shell.launches.at(1).arguments, "/regserver");
  EXPECT_EQ(TakeMessage(), "Plug-in registered as QM5RFcPirConfigure.LNSPlugInAPI|" + name + "|i");
}

TEST_F(PlugInRegistration, KeepsOnlyANewerVersion) {
  const std::string updated = "Updated version of plug-in registered as QM5RFcPirConfigure.LNSPlugInAPI|";
  const std::string newer = "A newer version of this plug-in is already registered|";
  const std::pair<const char*, std::string> cases[] = {
      {"1.2.3", updated}, {"1.2.9", updated}, {"1.1.9", updated}, {"0.9", updated},  {"x", updated},
      {"", updated},      {"1.10", newer},    {"1.3.0", newer},   {"2.0.0", newer},  {"2", newer},
      {"1.2 b", updated}, {"1. 3", newer},    {"99999", newer},   {"-1.5", updated},
  };
  for (const auto& [version, text] : cases) {
    world.registry.SetMachineSetting(key, "", "something");
    world.registry.SetMachineSetting(key, "Version", version);
    registration::RegisterPlugIn(world.services, true, [] {});
    EXPECT_EQ(TakeMessage(), text + name + "|i") << version;
    EXPECT_EQ(Stored("Version"), text == newer ? version : "1.2.3");
  }
  EXPECT_TRUE(world.shell.launches.empty()) << "this process registers the class";
}

TEST_F(PlugInRegistration, StopsAtARefusedClassOnlyIfInteractive) {
  const std::string failed = "Plug-in QM5RFcPirConfigure.LNSPlugInAPIregistration as COM server failed|";
  world.shell.refuses = true;
  registration::RegisterPlugIn(world.services, true);
  EXPECT_EQ(TakeMessage(), failed + kTitle + "|!");
  EXPECT_EQ(Stored("Name"), "");
  registration::RegisterPlugIn(world.services, true, [] { throw platform::Error(5, "", ""); });
  EXPECT_EQ(TakeMessage(), failed + kTitle + "|!");
  registration::RegisterPlugIn(world.services, false);
  EXPECT_EQ(TakeMessage(), "");
  EXPECT_EQ(Stored("Name"), name);
}

TEST_F(PlugInRegistration, RemovalShowsItsResult) {
  world.registry.SetMachineSetting(key, "", "x");
  world.registry.SetMachineSetting(key + "\\Templates\\Deep", "a", "b");
  world.shell.refuses = true;
  registration::UnregisterPlugIn(world.services, true);
  const std::string message = TakeMessage();
  EXPECT_TRUE(
      message.starts_with("Plug-in QM5RFcPirConfigure.LNSPlugInAPI deregistration as COM server failed\r"
                          "Verify that there are not instances running\r"));
  EXPECT_TRUE(message.ends_with(std::string("|") + kTitle + "|!"));
  EXPECT_EQ(Stored(""), "x");
  world.shell.refuses = false;
  for (const std::string& text : {"Plug-in " + name + " deregistered",
                                  "Plug-in " + name + " does not exisit in the Windows registery"}) {
    registration::UnregisterPlugIn(world.services, true);
    EXPECT_EQ(TakeMessage(), text + "|" + name + "|i");
    EXPECT_EQ(Stored(""), "");
  }
  EXPECT_EQ(world.shell.launches.back().program, "QM5RFcPirConfigure.exe");
  EXPECT_EQ(world.shell.launches.back().arguments, "/unregserver");
  registration::UnregisterPlugIn(world.services, false);
  EXPECT_EQ(TakeMessage(), "");
}

TEST_F(PlugInRegistration, EachButtonOfTheWindowActsOnce) {
  int ended = 0, class_registered = 0;
  registration::MMain::Process process = world.ByHand([&] { ++class_registered; });
  process.end_plug_in = [&] { ++ended; };
  const auto open = [&](registration::MMain& program) -> registration::fRegisterPlugIn& {
    EXPECT_FALSE(program.Main(""));
    EXPECT_EQ(program.window()->Caption(), name);
    EXPECT_EQ(program.window()->cmbDeregMode.Text(), "Complete Mode");
    program.window()->HelpRequested();
    EXPECT_EQ(world.desktop.help_shown.back().second, 1207);
    EXPECT_EQ(class_registered, 0) << "opening changes nothing";
    return *program.window();
  };
  {
    registration::MMain program(world.services, process);
    auto& window = open(program);
    EXPECT_EQ(window.lblRegistered.Text(), "Not registered on this computer.");
    window.bRegister.UserClicks();
    EXPECT_EQ(Stored("Name"), name);
    EXPECT_EQ(std::exchange(class_registered, 0), 1);
  }
  {
    registration::MMain program(world.services, process);
    auto& window = open(program);
    bool refused = false;
    world.desktop.on_message = [&](const ui::Message&) {
      refused = !window.bExit.Enabled() && !window.bRegister.Enabled() && window.cmbDeregMode.Locked() &&
                !window.CloseRequested(ui::CloseReason::User) &&
                world.desktop.pointers.back() == ui::Pointer::Hourglass;
    };
    EXPECT_EQ(window.lblRegistered.Text(), "Registered on this computer: version 1.2.3.");
    EXPECT_EQ(window.lblMode.Text(), "First removes its commands from every network.");
    window.cmbDeregMode.UserChooses("Minimal Mode");
    EXPECT_EQ(window.lblMode.Text(), "Removes the plug-in from this computer.");
    window.bDeregister.UserClicks();
    EXPECT_TRUE(refused) << "a second action could start";
    EXPECT_EQ(Stored("Name"), "");
    EXPECT_EQ(world.simulation->journal().Count(), 0u) << "no network is visited";
    EXPECT_EQ(world.desktop.pointers.back(), ui::Pointer::Default);
    world.desktop.on_message = nullptr;
  }
  {
    registration::MMain program(world.services, process);
    EXPECT_TRUE(open(program).CloseRequested(ui::CloseReason::User));
  }
  EXPECT_EQ(ended, 3);
}

/// A user without administrator rights, step by step. The machine's keys do not change.
TEST(StandardUser, CanWorkAndIsAskedForRightsIfNeeded) {
  Opened user(kFirstThermostat, "1");
  user.registry.SetMachineSetting("SOFTWARE\\Classes", "", "");
  int ended = 0, class_registered = 0;
  registration::MMain::Process process = user.ByHand([&] { ++class_registered; });
  process.end_plug_in = [&] { ++ended; };
  registration::MMain program(user.services, process);
  using Window = registration::fRegisterPlugIn;
  // The exit code, or the state of the window.
  const auto start = [&](const char* command_line, const std::function<void(Window&)>& press = {}) {
    const auto code = program.Main(command_line);
    if (code) return std::to_string(*code);
    if (press) press(*program.window());
    return std::string(program.window()->bRegister.shield ? "shield, " : "") +
           (program.window()->Visible() ? "open" : "closed");
  };
  const auto press_register = [](Window& window) { window.bRegister.UserClicks(); };
  const auto press_deregister = [](Window& window) { window.PressDeregister(-1); };
  const auto units = [&] {
    World next;
    next.machine = user.machine;
    next.main.Load();
    return std::to_string(next.main.DisplayUnits);
  };
  const auto leave_in_celsius = [&] {
    user.main.obUnits[0].UserClicks();
    user.desktop.answers = {ui::Answer::Yes};
    user.Press(user.main.cmdExit);
    return units();
  };
  struct Step {
    const char* what;
    bool standard;
    std::function<std::string()> seen;
    std::string expected;
  };
  const Step steps[] = {
      {"apply", true, [&] { return user.Enter(0, "68.5"), user.Apply(), user.Writes().at(0); },
       "nciSetPts Value=73.4,77,82.4,68.5,66.2,60.8"},
      {"/regplugin", true, [&] { return start("/regplugin"); }, "5"},
      {"/deregplugin", true, [&] { return start("/deregplugin"); }, "5"},
      {"Register, declined", true, [&] { return user.shell.declines = true, start("", press_register); },
       "shield, open"},
      {"Register", true, [&] { return user.shell.declines = false, start("", press_register); },
       "shield, closed"},
      {"Deregister", true, [&] { return start("", press_deregister); }, "shield, closed"},
      {"the second copy, with rights", false, [&] { return start("/window /regplugin"); }, "closed"},
      {"the second copy, without rights", true, [&] { return start("/window /deregplugin /deregmode:-1"); },
       "closed"},
      {"units: all users' by default", true, units, "1"},
      {"units: the user's own", true, leave_in_celsius, "0"},
      {"units: an administrator's", false, units, "1"},
  };
  for (const auto& [what, standard, seen, expected] : steps) {
    SCOPED_TRACE(what);
    user.machine.standard_user = standard;
    const auto before = user.registry.MachineSetting(user.identity.PlugInKey(), "DisplayUnits");
    EXPECT_EQ(seen(), expected);
    EXPECT_EQ(user.registry.MachineSetting(user.identity.PlugInKey(), "DisplayUnits"), before);
  }
  std::string elevated;
  for (const auto& launch : user.shell.elevated)
    elevated += launch.program + launch.arguments.substr(7) + ';';
  const std::string self = "C:\\Plug-in\\QM5RFcPirConfigure.exe ";
  EXPECT_EQ(elevated, self + "/regplugin;" + self + "/regplugin;" + self + "/deregplugin /deregmode:-1;");
  EXPECT_EQ(std::pair(ended, class_registered), std::pair(4, 1));
  EXPECT_EQ(user.MessageTexts().size(), 3u) << "from each second copy and from Exit";
}

}  // namespace
