#include "settings/file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

using settings::FindField;

const std::string kStart =
    "QM5R settings 1.0\nprogram ID = 8000D3550004041D\nNeuron ID = 00DE00000001\n[settings]\n";

std::string TextOf(const settings::SettingsFile& file, std::string_view field) {
  return file.settings.TextOf(*FindField(field)).value_or("(none)");
}

std::string FindingsOf(std::string_view text) {
  std::string findings;
  for (const auto& finding : settings::ParseSettings(text).findings)
    findings += FindingText(findings.empty() ? "f" : "\nf", finding);
  return findings;
}

TEST(SettingsFile, NamesEveryMistakeWithItsLine) {
  const std::string id = "QM5R settings 1.0\nprogram ID = 8000D3550004041D\n";
  const std::pair<std::string, const char*> cases[] = {
      {"", "f:1: this is no settings file: its first line is not \"QM5R settings 1.0\""},
      {"HeatMax = 30 C", "f:1: this is no settings file: its first line is not \"QM5R settings 1.0\""},
      {"QM5R settings one", "f:1: this is no settings file: its first line is not \"QM5R settings 1.0\""},
      {"\xFF\xFEQ", "f:1: the file is not UTF-8 text"},
      {"QM5R settings 2.0\nX", "f:1: the format 2.0 is another than this program reads, which is 1"},
      {"QM5R settings 0.9\nX", "f:1: the format 0.9 is another than this program reads, which is 1"},
      {"QM5R settings 1.0\n[settings]\nHeatMax = 30 C",
       "f:1: the line \"program ID = 8000D3550004041D\" is missing"},
      {"QM5R settings 1.0\nprogram ID = 9FFFFF0000000401\n[settings]\nHeatMax = 30 C",
       "f:1: the program ID is 9FFFFF0000000401, not the thermostat's, 8000D3550004041D"},
      {id + "program ID = 8000D3550004041D\n[settings]\nHeatMax = 30 C",
       "f:3: \"program ID\" is given twice"},
      {id + "color = red\n[settings]\nHeatMax = 30 C", "f:3: there is no information \"color\""},
      {id + "HeatMax = 30 C\n[settings]\nCoolMin = 20 C", "f:3: HeatMax belongs below [settings]"},
      {id + "path = \"a\n[settings]\nHeatMax = 30 C", "f:3: the quotation marks of \"a do not fit"},
      {id + "path = \"a\\q\"\n[settings]\nHeatMax = 30 C", "f:3: the quotation marks of \"a\\q\" do not fit"},
      {id + "path = \"a\\x0\"\n[settings]\nHeatMax = 30 C",
       "f:3: the quotation marks of \"a\\x0\" do not fit"},
      {id + "path = \"a\\x99\"\n[settings]\nHeatMax = 30 C",
       "f:3: the quotation marks of \"a\\x99\" do not fit"},
      {id + "[setings]\nHeatMax = 30 C",
       "f:3: there is no section [setings]\nf:4: HeatMax belongs below [settings]"},
      {kStart + "HeatMax 30 C", "f:5: there is no \"=\" in \"HeatMax 30 C\""},
      {kStart + "HeatMin = 30 C", "f:5: there is no field \"HeatMin\""},
      {kStart + "heatmax = 30 C", "f:5: there is no field \"heatmax\"; is HeatMax meant?"},
      {kStart + "= 30 C", "f:5: there is no field \"\""},
      {kStart + "software_version = 2", "f:5: software_version cannot be set"},
      {kStart + "HeatMax = 30 C\nHeatMax = 30 C", "f:6: HeatMax is already set in line 5"},
      {kStart + "HeatMax =", "f:5: HeatMax has no value"},
      {kStart + "HeatMax = # 30 C", "f:5: HeatMax has no value"},
      {kStart + "HeatMax = 30", "f:5: HeatMax is in C: \"30 C\""},
      {kStart + "HeatMax = 86 F", "f:5: HeatMax is in C, not in F"},
      {kStart + "HeatMax = 30 K", "f:5: HeatMax is in C, not in K"},
      {kStart + "HeatMax = 30 C C", "f:5: HeatMax is in C, not in C C"},
      {kStart + "HeatMax = 30C", "f:5: HeatMax is in C: \"30C C\""},
      {kStart + "HeatMax = 30,5 C", "f:5: \"30,5\" is not a number"},
      {kStart + "HeatMax = 3e1 C", "f:5: \"3e1\" is not a number"},
      {kStart + "HeatMax = nan C", "f:5: \"nan\" is not a number"},
      {kStart + "HeatMax = 30.005 C", "f:5: HeatMax holds steps of 0.01, not 30.005"},
      {kStart + "HeatMax = 327.68 C", "f:5: HeatMax holds -327.68 to 327.67, not 327.68"},
      {kStart + "TOccTime = 2.5 h", "f:5: TOccTime holds steps of 1, not 2.5"},
      {kStart + "RHsetpoint = 50.3 %", "f:5: RHsetpoint holds steps of 0.5, not 50.3"},
      {kStart + "nciSndHrtBt = 6553.6 s", "f:5: nciSndHrtBt holds 0 to 6553.5, not 6553.6"},
      {kStart + "PIRStandByTime = 1 h", "f:5: PIRStandByTime has no unit: \"1 h\""},
      {kStart + "FanMode = TURBO", "f:5: \"TURBO\" is not a choice of FanMode: LOW, MEDIUM, HIGH, AUTO, ON"},
      {kStart + "FanMode = auto", "f:5: \"auto\" is not a choice of FanMode: LOW, MEDIUM, HIGH, AUTO, ON"},
      {kStart + "CyclePerHour = 9", "f:5: \"9\" is not a choice of CyclePerHour: 3, 4, 5, 6, 7, 8"},
      {kStart + "CalibRS = 1 K", "f:5: CalibRS belongs below [calibration]"},
      {kStart + "[calibration]\nHeatMax = 30 C", "f:6: HeatMax belongs below [settings]"},
      {kStart + "HeatMax = 30 C\xC3", "f:5: the line is not UTF-8 text"},
      {kStart + "HeatMax = 30 C\x01", "f:5: the line contains a control character"},
      {kStart + "a\nb\nHeatMax = x C",
       "f:5: there is no \"=\" in \"a\"\nf:6: there is no \"=\" in \"b\"\nf:7: \"x\" is not a number"},
  };
  for (const auto& [text, findings] : cases) {
    EXPECT_EQ(FindingsOf(text), findings) << text;
    EXPECT_TRUE(settings::ParseSettings(text).HasErrors()) << text;
  }
}

TEST(SettingsFile, WarnsOfValuesThatMayBeRight) {
  const std::pair<std::string, const char*> cases[] = {
      {kStart, "f:1: warning: the file sets nothing"},
      {"QM5R settings 1.7\nprogram ID = 80 00 d3 55 00 04 04 1d\ncolor = red\n[settings]\nFanMode = ON",
       "f:1: warning: the format 1.7 is newer than this program; what it adds is ignored"},
      {kStart + "HeatMax = 32.22 C", ""},
      {kStart + "HeatMax = 32.3 C",
       "f:5: warning: HeatMax is outside the limits, which are 4.5 to 32 C or 40 to 90 F"},
      {kStart + "RHsetpoint = 10 %", "f:5: warning: RHsetpoint is outside the limits, which are 30 to 100 %"},
      {kStart + "nciSetPts.occ_heat = 22 C\nDeadBand = 2 K\nnciSetPts.occ_cool = 23 C",
       "f:7: warning: nciSetPts.occ_cool is less than DeadBand above nciSetPts.occ_heat"},
      {kStart + "nciSetPts.occ_heat = 22 C\nnciSetPts.occ_cool = 23 C", ""},
      // 69.5, 72 and 2.5 ºF, as a device holds them: 21, 22 and 1.5 ºC in the window.
      {kStart + "nciSetPts.occ_heat = 20.83 C\nDeadBand = 1.39 K\nnciSetPts.occ_cool = 22.22 C", ""},
      {kStart + "HeatMax = 20 C\nnciSetPts.unocc_heat = 21 C",
       "f:6: warning: nciSetPts.unocc_heat is above HeatMax"},
      {kStart + "CoolMin = 21 C\nnciSetPts.occ_cool = 20 C",
       "f:6: warning: nciSetPts.occ_cool is below CoolMin"},
      {"QM5R settings 1.0\nprogram ID = 8000D3550004041D\n[calibration]\nCalibRS = 1 K",
       "f:4: warning: CalibRS belongs to one device, but there is no Neuron ID"},
  };
  for (const auto& [text, findings] : cases) EXPECT_EQ(FindingsOf(text), findings) << text;
}

TEST(SettingsFile, ReadsWhatEditorsWrite) {
  const auto file = settings::ParseSettings(
      "\xEF\xBB\xBFQM5R settings 1.0\r\n# by hand\r\n  path = A # B/Ä\r\nprogram ID = "
      "8000D3550004041D\r\n\r\n"
      "not read = nciRHmodel: Why: \"so\"\r\n[settings]  # all\r\n\tHeatMax\t=  30.50\tC  # "
      "warm\r\nFanMode=AUTO");
  EXPECT_EQ(file.findings.size(), 0u);
  EXPECT_EQ(file.settings.origin.path, "A # B/Ä");
  EXPECT_EQ(TextOf(file, "HeatMax"), "30.5");
  EXPECT_EQ(TextOf(file, "FanMode"), "AUTO");
  EXPECT_EQ(TextOf(file, "CoolMin"), "(none)");
  ASSERT_NE(file.settings.UnreadOf(*FindField("RHdisplay")), nullptr);
  EXPECT_EQ(file.settings.UnreadOf(*FindField("RHdisplay"))->reason, "Why: \"so\"");
}

TEST(SettingsFile, FilesOfEveryReleaseLoad) {
  std::size_t samples = 0;
  for (const auto& entry : std::filesystem::directory_iterator(QM5R_SETTINGS_SAMPLES)) {
    std::ostringstream text;
    text << std::ifstream(entry.path(), std::ios::binary).rdbuf();
    const auto file = settings::ParseSettings(text.str());
    EXPECT_TRUE(file.findings.empty()) << entry.path();
    EXPECT_EQ(TextOf(file, "HeatMax"), "31.95");
    EXPECT_EQ(TextOf(file, "FanMode"), "(none)");
    EXPECT_EQ(TextOf(file, "CalibRS"), "0");
    EXPECT_EQ(file.settings.origin.path, "Hôtel/Hôtel.Floor #1/Room 1");
    ++samples;
  }
  EXPECT_EQ(samples, 1u) << "one for each version of the format";
}

TEST(SettingsFile, EverySavedFileLoads) {
  settings::DeviceSettings device;
  device.origin = {" a\\b\t\"\x7F", "8000D3550004041D", "", "\n", "# 2", "\"x", "=", "[settings]", "Ä@ß"};
  device.unread = {{"nciSetPts", "lost\r\n[settings]\r\nHeatMax = 1 C"}};
  const char* const odd[] = {
      "", " ", "21.5", "1:30", "9", "-", "1e9", "21,5", "\n", "#", "99999999999999999999", "AUTO", "x\r\ny"};
  for (const char* text : odd) {
    for (const settings::Field& field : settings::Fields()) device.TextOf(field) = text;
    const auto loaded = settings::ParseSettings(SettingsText(device));
    EXPECT_FALSE(loaded.HasErrors()) << SettingsText(device);
    for (const settings::OriginRow& row : settings::OriginRows())
      EXPECT_EQ(loaded.settings.origin.*row.text, device.origin.*row.text) << row.key;
    EXPECT_EQ(loaded.settings.unread.at(0).reason, device.unread.at(0).reason);
    for (const settings::Field& field : settings::Fields())
      EXPECT_EQ(loaded.settings.TextOf(field).has_value(), !ProblemOf(field, text).has_value())
          << field.name() << text;
  }
}

}  // namespace
