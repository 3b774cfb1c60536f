#include "plugin/api.h"

#include "simulator/client_session.h"
#include "support/user.h"
#include "text/strings.h"

namespace {

const std::string kSecond = "Demo Tower/Demo Tower.Floor 1/Thermostat 102";

std::int32_t NumberOf(platform::LateBound& api, std::string_view property) {
  return std::get<std::int32_t>(World::Get(api, property));
}

TEST(Api, PlaceAndSizeAreReadBackAsWritten) {
  for (const double twips_per_pixel : {15.0, 12.0, 10.0, 7.5}) {
    World world;
    world.desktop.twips_per_pixel = twips_per_pixel;
    const auto api = world.CreateApi();
    const std::pair<const char*, std::int32_t> places[] = {
        {"left", -20}, {"top", 33}, {"Width", 901}, {"Height", 655}};
    for (const auto& [property, pixels] : places) World::Put(*api, property, pixels);
    for (const auto& [property, pixels] : places) EXPECT_EQ(NumberOf(*api, property), pixels) << property;
  }
}

TEST(Api, MinimizedTakesEffectWhenShownAndRefusesMoves) {
  World world;
  const auto api = world.CreateApi();
  const platform::Error hidden = ErrorOf([&] { World::Put(*api, "Minimized", true); });
  EXPECT_EQ(hidden.number(), 20006);
  EXPECT_EQ(hidden.description(),
            "Can not modify the minimzed property when invisble. The property will be applied the next time "
            "the plug-in is made visible");
  EXPECT_FALSE(world.main.Visible());
  EXPECT_EQ(std::get<bool>(World::Get(*api, "Minimized")), true);
  for (const char* property : {"left", "top", "Width", "Height"}) {
    const platform::Error raised = ErrorOf([&] { World::Put(*api, property, 10); });
    EXPECT_EQ(raised.number(), 20006) << property;
    EXPECT_EQ(raised.description(), "Plug-in can't be moved or sized while minimized or maximized");
  }
  World::Put(*api, "Visible", true);
  EXPECT_EQ(world.main.State(), ui::WindowState::Minimized);
  World::Put(*api, "Visible", true);
  EXPECT_EQ(world.desktop.raised, 0);
  World::Put(*api, "Minimized", false);
  EXPECT_EQ(world.main.State(), ui::WindowState::Normal);
  World::Put(*api, "Visible", true);
  EXPECT_EQ(world.desktop.raised, 1) << "it may be covered";
}

TEST(Api, ServesASecondDirectorWhileTheObjectServerStarts) {
  for (const bool stays : {true, false}) {
    World world;
    std::shared_ptr<plugin::LNSPlugInAPI> first, second;
    bool created = false;
    world.in_between = [&](platform::LateBoundPtr object_server) {
      if (!std::exchange(created, true)) second = world.Configure(kSecond);
      if (!stays) second.reset();
      return object_server;
    };
    first = world.CreateApi();
    World::Put(*first, "networkName", std::string("Demo Tower"));
    if (!stays) {
      World::Send(*first, 13, 7, kSecond);
      second = first;
    }
    first.reset();
    World::Put(*second, "Visible", true);
    EXPECT_EQ(world.Shown(model::txtNvi(0)), "20.5") << stays;
    EXPECT_PRED2(Both, !world.desktop.ended, world.main.lcaOS().IsOpen()) << stays;
    world.main.cmdExit.UserClicks();
    EXPECT_TRUE(world.desktop.ended);
    for (const auto& session : world.simulation->Sessions()) EXPECT_FALSE(session->IsOpen());
  }
}

TEST(Api, RefusesUnknownCommandsAndReadOnlyWrites) {
  struct Case {
    std::int32_t command, type;
    const char* path;
    std::int32_t number;
    const char* text;
  };
  const Case cases[] = {
      {14, 7, kFirstThermostat, 20003, "Command not supported"},
      {13, 3, kFirstThermostat, 20004, "Object type not supported for this command"},
      {13, 7, "Demo Tower/Demo Tower.Floor 1/Nobody", 20005, "Object not found"},
      {13, 28, "Demo Tower/Demo Tower.Floor 1/Thermostat 101/Nothing", 20005, "Object not found"},
      {13, 7, "", 20005, "Object not found"},
  };
  Opened world;
  const std::string heading = world.main.lblDeviceTemplate.Text();
  for (const Case& c : cases) {
    const platform::Error raised = ErrorOf([&] { World::Send(*world.api, c.command, c.type, c.path); });
    EXPECT_EQ(raised.number(), c.number) << c.path;
    EXPECT_EQ(raised.description(), c.text);
    EXPECT_EQ(raised.source(), world.identity.PlugInName);
    EXPECT_EQ(world.main.lblDeviceTemplate.Text(), heading) << "the current device stays";
  }
  EXPECT_EQ(world.desktop.windows, 2) << "main window and log: no progress window is left open";
  for (const char* property : {"Name", "Version", "LcaVersion", "ManufacturerID", "ManufacturerName"}) {
    const platform::Error raised = ErrorOf([&] { World::Put(*world.api, property, "2"); });
    EXPECT_EQ(raised.number(), 20002) << property;
    EXPECT_EQ(raised.description(), "Attempt to write to read-only property");
  }
}

// Compiled directors use these numbers.
TEST(Api, NamesKeepTheirNumbers) {
  const char* members[] = {
      "SendCommand", "Visible", "networkName", "NetworkInterfaceName", "Remote",           "Height",
      "Width",       "left",    "Minimized",   "ManufacturerID",       "ManufacturerName", "LcaVersion",
      "Version",     "top",     "Name",        "DevelopmentProgramId"};
  Opened world;
  std::int32_t number = 0;
  for (const char* name : members) {
    EXPECT_EQ(world.api->MemberNumber(name), ++number) << name;
    EXPECT_EQ(world.api->MemberNumber(text::ToUpper(name)), number) << name;
  }
  for (const char* none : {"", "Visibl", "SendCommand ", "SendCommands", "_NewEnum"})
    EXPECT_FALSE(world.api->MemberNumber(none)) << none;
}

TEST(Api, RefusesArgumentsThatDoNotFit) {
  using enum platform::CallKind;
  const platform::LateBoundPtr nothing;
  struct Case {
    const char* member;
    platform::CallKind kind;
    std::vector<platform::Value> arguments;
    std::int32_t number;
  };
  const Case cases[] = {
      {"SendCommand", Method, {"configure", 7, "a/b"}, platform::kTypeMismatch},
      {"SendCommand", Method, {13, 3e9, "a/b"}, platform::kOverflow},
      {"Visible", Put, {"shown"}, platform::kTypeMismatch},
      {"Height", PutReference, {nothing}, platform::kTypeMismatch},
      {"left", Put, {1e20}, platform::kOverflow},
  };
  Opened world;
  for (const Case& c : cases)
    EXPECT_EQ(ErrorOf([&] { world.api->Invoke({c.member}, c.kind, c.arguments); }).number(), c.number)
        << c.member << " with " << c.arguments.size() << " arguments";
  EXPECT_EQ(world.simulation->journal().Text(), "");
}

TEST(Api, AVisiblePlugInOutlivesItsObjectsAndClosesWithoutAQuestion) {
  Opened world;
  world.main.Show();
  world.api.reset();
  EXPECT_FALSE(world.desktop.ended);
  world.main.CloseRequested(ui::CloseReason::User);
  EXPECT_PRED2(Both, world.desktop.ended, world.desktop.messages.empty());
}

TEST(Api, ExitAsksWhileObjectsAreHeld) {
  Opened world;
  world.main.Show();
  world.main.DisplayUnits = 1;
  world.desktop.answers = {ui::Answer::No, ui::Answer::No, ui::Answer::Yes};
  world.main.cmdExit.UserClicks();
  EXPECT_FALSE(world.main.CloseRequested(ui::CloseReason::User));
  EXPECT_FALSE(world.desktop.ended);
  EXPECT_EQ(world.registry.MachineSetting(world.identity.PlugInKey(), "DisplayUnits"), "0");
  world.main.cmdExit.UserClicks();
  EXPECT_TRUE(world.desktop.ended);
  EXPECT_EQ(world.registry.MachineSetting(world.identity.PlugInKey(), "DisplayUnits"), "1");
  ASSERT_EQ(world.desktop.messages.size(), 3u);
  const ui::Message& question = world.desktop.messages[0].message;
  EXPECT_EQ(question.text, "Are you sure that you want to exit?");
  EXPECT_EQ(question.caption, world.identity.PlugInName);
  EXPECT_TRUE(question.second_is_default);
  EXPECT_FALSE(world.session.NetworkOpen);
  EXPECT_TRUE(world.simulation->Sessions().empty()) << "the object server is released";
  EXPECT_EQ(world.desktop.windows, 0);
}

}  // namespace
