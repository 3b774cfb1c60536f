#include <cstdlib>

#include "settings/device_settings.h"

#include "headless/faults.h"
#include "settings/comparison.h"
#include "settings/device_search.h"
#include "settings/file.h"
#include "support/user.h"

namespace {

/// Reads the settings of a device in the middle of its editing.
settings::ReadPoint Apart(const model::PointList& points) {
  return [&](const model::PointRow& row) { return points.Item(row.key).ReadApart(0); };
}

struct Reading : Opened {
  Reading() {
    for (std::size_t i = 0; i < points.size(); ++i) points[i].GetNetworkValue(1);
    points.Item("nciSetPts").NvAsArray[3] = "68";
  }
  settings::DeviceSettings Read() { return ReadSettings(Apart(points), {}, {}, settings::Versions::Read); }
  model::PointList points{main.CurrentDevice().Interface().NetworkVariables(), session.Dialect};
};

TEST(ReadingSettings, LeavesTheFormatsOfEditedPointsInFahrenheit) {
  Reading reading;
  const auto device = reading.Read();
  EXPECT_EQ(device.TextOf(*settings::FindField("nciSetPts.occ_heat")), "21")
      << "the device's, not the edited one";
  EXPECT_EQ(device.origin.software_version + device.origin.module_version + device.origin.hvac_type,
            "2.31.4HVT_FAN_COIL");
  reading.points.Item("nciSetPts").SendNetworkValue();
  EXPECT_EQ(reading.Raw("nciSetPts"), "08FC09C40AF007D0076C0640") << "68 is 20 degrees Celsius";
}

TEST(ReadingSettings, APointWhoseFormatIsNotRestoredCountsAsNotRead) {
  for (const bool read_fails : {false, true}) {
    Reading reading;
    auto& faults = reading.simulation->faults();
    for (int occurrence = 2; occurrence < 6; ++occurrence)  // the forms of the former format
      faults.Add({"", "nciSetPts", "DsFormatType=", occurrence, 18035});
    if (read_fails) faults.Add({"", "nciSetPts", "Value", 1, 18200});
    EXPECT_EQ(reading.Read().unread.empty(), !read_fails);
    EXPECT_FALSE(reading.points.Item("nciSetPts").IsReadIn(1));
    EXPECT_FALSE(reading.points.IsReadIn(1));
  }
}

TEST(ReadingSettings, AFailureAtAnyCallLeavesNoPointToBeWrittenInOtherUnits) {
  using enum headless::Failure::Reach;
  const headless::Failure failures[] = {
      {"is silent", platform::ObjectServerError(18200)},
      {"refuses", platform::ObjectServerError(18035)},
      {"refuses twice", platform::ObjectServerError(18035), Operations, 2},
      {"refuses for long", platform::ObjectServerError(18035), Operations, 9},
      {"loses an answer", platform::ObjectServerError(18200), Operations, 1, true}};
  for (const headless::Failure& failure : failures) {
    std::size_t operations = 0;
    for (std::size_t first = 0; first <= operations; ++first) {
      World world;
      headless::Faults faults{world};
      const auto api = world.Configure(kFirstThermostat);
      const model::PointList points(world.main.CurrentDevice().Interface().NetworkVariables(),
                                    world.session.Dialect);
      model::CNvCpTable& setpoints = points.Item("nciSetPts");
      setpoints.GetNetworkValue(1);
      setpoints.NvAsArray[3] = "68";
      faults.Begin(failure, first);
      const auto device = ReadSettings(Apart(points), {}, {"nciSetPts.*", ""}, settings::Versions::Skip);
      faults.End();
      if (first == 0) operations = faults.seen();
      EXPECT_TRUE(device.unread.size() == 1 ||
                  device.TextOf(*settings::FindField("nciSetPts.occ_heat")) == "21");
      if (setpoints.IsReadIn(1)) setpoints.SendNetworkValue();
      const auto& held = simulator::stored::DeviceOf(world.simulation->installation(),
                                                     {"Demo Tower", {"Floor 1"}, "Thermostat 101"})
                             .values;
      EXPECT_TRUE(!setpoints.IsReadIn(1) || held.at("nciSetPts")[6] * 256 + held.at("nciSetPts")[7] == 2000)
          << failure.name << ' ' << first;
    }
    EXPECT_GE(operations, 3u);
  }
}

TEST(ReadingSettings, GoesOnAfterARefusalAndStopsAtSilence) {
  Reading reading;
  reading.simulation->faults().Add({"", "nciRHmodel", "Value", 0, 18035});
  reading.simulation->faults().Add({"", "nciGenOpts", "Value", 0, 18200});
  reading.simulation->journal().Clear();
  const auto device = reading.Read();
  EXPECT_EQ(device.TextOf(*settings::FindField("nciSetPts.occ_heat")), "21");
  EXPECT_EQ(device.unread.size(), 9u);
  EXPECT_EQ(device.unread.at(0).reason, "A fault was set for this operation.");
  EXPECT_EQ(device.unread.at(8).reason, "Failed to communicate with target device.");
  EXPECT_EQ(reading.Operations(" Value").size(), 3u);
}

/// Another program that uses the network, with objects of its own.
struct Client {
  explicit Client(World& world) : server(world.simulation->CreateObjectServer()) {
    server.SetRemoteFlag(false);
    server.Open();
    network = server.Networks().Item("Demo Tower");
    network.Open();
    system = network.Systems().Item(1);
    system.Open();
  }
  lns::ObjectServer server;
  lns::Network network;
  lns::System system;
  std::shared_ptr<lns::Dialect> dialect = std::make_shared<lns::Dialect>("#8000D30000000000[3].");
};

/// Any bytes: odd values, values on and beyond limits, choices that do not exist.
struct RandomDevice : Opened {
  explicit RandomDevice(const char* units) : Opened(kFirstThermostat, units) {}

  void Change() {
    auto& devices = simulation->installation().networks[0].system.subsystems[0].devices;
    const bool wild = Random() % 3 == 0;
    for (const auto& [name, size] :
         {std::pair("nciSetPts", 12), {"nciGenOpts", 28}, {"nciRHmodel", 5}, {"nciSndHrtBt", 2}}) {
      simulator::Bytes& bytes = devices[1].values[name];
      bytes.clear();
      for (int i = 0; i < size; ++i)
        bytes.push_back(static_cast<std::uint8_t>(wild || i % 2 ? Random() : Random() % 12));
    }
  }
  settings::DeviceSettings Read(const char* name) {
    const auto devices = client.system.Subsystems().Item("Floor 1").AppDevices();
    return settings::Read({name, devices.Item(name), {}}, client.dialect, {}, settings::Versions::Read)
        .settings;
  }
  /// As a user who types what the file says.
  void Type(const settings::DeviceSettings& wanted) {
    for (const settings::Field& field : settings::Fields()) {
      const auto& text = wanted.TextOf(field);
      if (!text) continue;
      ui::Control& control = *main.screen.Find(field.row->control);
      if (control.kind() == ui::Control::Kind::ChoiceList)
        static_cast<ui::ChoiceList&>(control).UserChooses(*text);
      else
        static_cast<ui::TextField&>(control).UserChangesText(
            main.DisplayUnits == 0 ? *text : InFahrenheit(field, *text));
    }
  }

 private:
  std::uint32_t Random() { return (state_ = state_ * 1664525 + 1013904223) >> 8; }
  std::uint32_t state_ = 1;
  Client client{*this};
};

TEST(RandomDevices, AreSavedLoadedAndAppliedInBothUnits) {
  const char* const asked = std::getenv("QM5R_DEVICES");
  const int count = asked ? std::atoi(asked) : 200;
  for (const char* units : {"0", "1"}) {
    RandomDevice device(units);
    for (int i = 0; i < count / 2; ++i) {
      device.Change();
      const auto saved = device.Read("Thermostat 102");
      ASSERT_TRUE(saved.unread.empty());
      const auto file = settings::ParseSettings(SettingsText(saved));
      ASSERT_FALSE(file.HasErrors());
      device.Type(file.settings);
      device.Apply();
      for (const auto& difference :
           Compare(file.settings, device.Read("Thermostat 101"), {"*", ""}).differences)
        FAIL() << difference.field->name() << ": " << difference.wanted << " is stored as "
               << difference.held.value_or("nothing");
      device.desktop.messages.clear();
    }
  }
}

}  // namespace
