#include <gtest/gtest.h>

#include "settings/comparison.h"
#include "settings/file_names.h"
#include "simulator/formats.h"
#include "text/numbers.h"
#include "text/pattern.h"

namespace {

using settings::FindField;

TEST(Fahrenheit, DistinguishesEveryHundredthOfADegree) {
  const auto check = [](const settings::Field& field, const char* format, bool difference) {
    for (int raw = -32768; raw <= 32767; ++raw) {
      const std::string celsius = text::ShortestText(raw / 100.0), fahrenheit = InFahrenheit(field, celsius);
      ASSERT_EQ(InCelsius(field, fahrenheit), celsius);
      if (difference) continue;
      const auto bytes = simulator::Format::Find(format)->Parse(fahrenheit, 2, {});
      ASSERT_EQ(simulator::ToInteger(bytes.data(), 2, true), raw) << fahrenheit;
    }
  };
  check(*FindField("HeatMax"), "SNVT_temp_p#US", false);
  check(*FindField("DeadBand"), "", true);
  EXPECT_EQ(InFahrenheit(*FindField("DeadBand"), "1.5"), "2.7");
  EXPECT_EQ(InFahrenheit(*FindField("RHsetpoint"), "50"), "50");
}

TEST(Settings, AreTheSameInTheFormThatIsStored) {
  struct Case {
    const char *field, *standard, *held;
    bool same;
  };
  const Case cases[] = {
      {"HeatMax", "30", "30", true},
      {"HeatMax", "30", "30.01", false},
      {"HeatMax", "30", "30.0000001", true},
      {"HeatMax", "30.5", "30.50", true},
      {"HeatMax", "32", "31.95", true},
      {"HeatMax", "31.95", "32", true},
      {"HeatMax", "40", "31.95", true},  // what Apply would store
      {"HeatMax", "32", "40", false},    // Apply did not store that
      {"HeatMax", "40", "40", true},
      {"HeatMax", "32.22", "32.21", true},  // 90 ºF, stored as 89.975 ºF
      {"HeatMax", "4.5", "4.55", true},
      {"nciSetPts.standby_heat", "32", "31.95", false},  // takes no offset
      {"CalibRS", "-2.5", "-2.45", true},
      {"RHsetpoint", "100", "99.95", false},
      {"RHsetpoint", "120", "100", true},
      {"FanMode", "AUTO", "ON", false},
      {"FanMode", "9", "9", true},
      {"CyclePerHour", "4", "4", true},
      {"CyclePerHour", "4", "5", false},
  };
  for (const Case& c : cases)
    EXPECT_EQ(IsSame(*FindField(c.field), c.standard, c.held), c.same)
        << c.field << ' ' << c.standard << ' ' << c.held;
}

TEST(Settings, CalibrationsAreComparedOnlyWithTheirOwnDeviceOrByName) {
  settings::DeviceSettings one, other;
  one.origin.neuron_id = "1";
  one.TextOf(*FindField("CalibRS")) = "1";
  other.TextOf(*FindField("CalibRS")) = "2";
  EXPECT_TRUE(Compare(one, other, {}).differences.empty());
  EXPECT_EQ(Compare(one, other, {"Calib*", ""}).differences.size(), 1u);
  EXPECT_EQ(Compare(one, other, {"*", "RH*,Calib*"}).differences.size(), 0u);
  one.origin.neuron_id = other.origin.neuron_id = "000000000000";
  EXPECT_TRUE(Compare(one, other, {}).differences.empty()) << "planned devices have no ID of their own";
  one.origin.neuron_id = other.origin.neuron_id = "1";
  EXPECT_EQ(Compare(one, other, {}).differences.size(), 1u);
  other.TextOf(*FindField("CalibRS")).reset();
  EXPECT_FALSE(Compare(one, other, {}).IsComplete()) << "what is not known is not equal";
  EXPECT_THROW(settings::Selection("HeatMax,Nope", ""), std::invalid_argument);
  EXPECT_THROW(settings::Selection("HeatMax", "Heat*"), std::invalid_argument)
      << "nothing is equal to everything";
}

TEST(FileNames, AreDistinctOnEveryFileSystem) {
  settings::FileNames names('/');
  const std::pair<const char*, const char*> cases[] = {
      {"Hotel/Hotel.Floor 1/Room 1", "Hotel/Hotel.Floor 1/Room 1.qm5r"},
      {"Hotel/Hotel.Floor 1/ROOM 1", "Hotel/Hotel.Floor 1/%52%4F%4F%4D 1.qm5r"},
      {"Hotel/Hotel.Floor 1/room 1", "Hotel/Hotel.Floor 1/%72%6F%6F%6D 1.qm5r"},
      {"Hotel/Hotel.Floor 2/ROOM 1", "Hotel/Hotel.Floor 2/ROOM 1.qm5r"},
      {"Hotel/Hotel.FLOOR 1/Room 1", "Hotel/%48%6F%74%65%6C.%46%4C%4F%4F%52 1/Room 1.qm5r"},
      {"Hotel/Hotel.Floor 1/CON", "Hotel/Hotel.Floor 1/%43ON.qm5r"},
      {"Hotel/Hotel.Floor 1/lpt1.x", "Hotel/Hotel.Floor 1/%6Cpt1.x.qm5r"},
      {"Hotel/Hotel.Floor 1/COM10", "Hotel/Hotel.Floor 1/COM10.qm5r"},
      {"Hotel/Hotel.Floor 1/a:b*c?\"<>|\\%", "Hotel/Hotel.Floor 1/a%3Ab%2Ac%3F%22%3C%3E%7C%5C%25.qm5r"},
      {"Hotel/Hotel.Floor 1/end. ", "Hotel/Hotel.Floor 1/end.%20.qm5r"},
      {"Hotel/Hotel.Floor 1/Süd", "Hotel/Hotel.Floor 1/Süd.qm5r"},
      {"Hotel/Hotel.Floor 1/SÜD", "Hotel/Hotel.Floor 1/%53%C3%9C%44.qm5r"},
      {"index.csv/S.1/T", "%69ndex.csv/S.1/T.qm5r"},
  };
  for (const auto& [path, file] : cases) EXPECT_EQ(names.For(path), file) << path;
}

TEST(Pattern, StandsForAnyCharacters) {
  struct Case {
    const char *pattern, *text;
    bool matches, may_begin;
  };
  const Case cases[] = {
      {"a/b", "a/b", true, true},         {"a/b", "a", false, true},
      {"a/b", "a/b/c", false, false},     {"*", "", true, true},
      {"*101", "x/y/101", true, true},    {"*101", "101x", false, true},
      {"a/*.1/*", "a/s.1/t", true, true}, {"a/*.1/*", "b/", false, false},
      {"a*a", "a", false, true},          {"a*b*c", "axbxbxc", true, true},
      {"a*b*c", "acb", false, true},      {"\\*", "*", true, true},
      {"\\*", "x", false, false},         {"a\\b", "a\\b", true, true},
  };
  for (const Case& c : cases) {
    const text::Pattern pattern(c.pattern);
    EXPECT_EQ(pattern.Matches(c.text), c.matches) << c.pattern << ' ' << c.text;
    EXPECT_EQ(pattern.MayBegin(c.text), c.may_begin) << c.pattern << ' ' << c.text;
  }
  EXPECT_TRUE(text::Pattern("C:\\*.x", text::Pattern::Backslash::IsPlain).Matches("C:\\y.x"));
}

}  // namespace
