#include "lns/object_path.h"

#include "support/world.h"

namespace {

TEST(ObjectPath, LeadsToADeviceOrItsObject) {
  // Empty text means that nothing is found.
  const std::tuple<std::int32_t, const char*, const char*> cases[] = {
      {7, "Demo Tower/Demo Tower.Floor 1/Thermostat 101", "Thermostat 101"},
      {7, "Demo Tower/Demo Tower.Floor 1.West Wing/Thermostat 110", "Thermostat 110"},
      {7, "LcaNetwork:Demo Tower/LcaSystem:Demo Tower.LcaSubsystem:Floor 1/LcaAppDevice:Thermostat 101",
       "Thermostat 101"},
      {7, "Demo Tower/Demo Tower.ALL/Thermostat 101", "Thermostat 101"},
      {28, "Demo Tower/Demo Tower.Floor 1/Thermostat 101/Thermostat", "Thermostat"},
      {28, "Demo Tower/Demo Tower.Floor 1/Thermostat 101/LcaLonMarkObject:Thermostat", "Thermostat"},
      {7, "", ""},
      {7, "Demo Tower", ""},
      {7, "Demo Tower/Demo Tower/Thermostat 101", ""},
      {7, "Demo Tower/Demo Tower.Floor 1", ""},
      {7, "Demo Tower/Demo Tower.Floor 1/Thermostat 101/", ""},
      {7, "Demo Tower/Demo Tower.Floor 1/Thermostat 101/Thermostat", ""},
      {28, "Demo Tower/Demo Tower.Floor 1/Thermostat 101", ""},
      {28, "Demo Tower/Demo Tower.Floor 1/Thermostat 101/Thermostat/more", ""},
      {7, "demo tower/Demo Tower.Floor 1/Thermostat 101", ""},
      {7, "Demo Tower/Other.Floor 1/Thermostat 101", ""},
      {7, "Demo Tower/Demo Tower.Floor 1/LcaRouter:Thermostat 101", ""},
      {7, "Demo Annex/Demo Annex.Floor 1/Thermostat 101", ""},
      {7, "Demo Tower\\Demo Tower.Floor 1\\Thermostat 101", ""},
  };
  World world;
  const auto api = world.CreateApi();
  World::Put(*api, "networkName", std::string("Demo Tower"));
  for (const auto& [type, path, name] : cases) {
    const lns::Object found = lns::ResolveObject(type, lns::SplitObjectPath(path),
                                                 world.session.CurrentNetwork, world.session.CurrentSystem);
    EXPECT_EQ(found ? found.Name() : "", name) << path;
  }
  for (const char* operation : {"Name", "Subsystems", "AppDevices", "Interface", "LonMarkObjects", "Item"}) {
    world.simulation->faults().Add({"", "", operation, 1, 18200});
    const platform::Error error =
        ErrorOf([&] { World::Send(*api, 13, 28, std::string(kFirstThermostat) + "/Thermostat"); });
    EXPECT_EQ(error.number(), 20005) << operation;
  }
  EXPECT_FALSE(lns::ResolveObject(7, lns::SplitObjectPath(kFirstThermostat), {}, {})) << "no network is open";
}

}  // namespace
