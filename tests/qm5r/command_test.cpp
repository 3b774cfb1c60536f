#include "user.h"

namespace {

const std::string k101 = kFirstThermostat, k102 = "Demo Tower/Demo Tower.Floor 1/Thermostat 102";

TEST(Qm5r, SavesAFileThatIsNeverReplacedUnasked) {
  CommandUser user;
  EXPECT_EQ(user.Run({"save", k101, "C:\\a\\b.qm5r"}), 0);
  const std::string file = user.File("C:\\a\\b.qm5r");
  for (const char* line :
       {"QM5R settings 1.0\r\n", "Neuron ID = 00DE00000001\r\n", "software version = 2.3\r\n",
        "saved = 2026-11-23T10:15:00Z\r\n", "saved by = me@here\r\n",
        "# nciSetPts\r\nnciSetPts.occ_heat = 21 C\r\nnciSetPts.standby_heat = 19 C\r\n",
        "[calibration]\r\nRHcalib = 0 %\r\nCalibRS = 0 K\r\n"})
    EXPECT_NE(file.find(line), std::string::npos) << line;
  EXPECT_EQ(user.Run({"save", k102, "C:\\a\\b.qm5r"}), 2);
  EXPECT_EQ(user.errors.str(), "qm5r: C:\\a\\b.qm5r exists; --force replaces it\n");
  EXPECT_EQ(user.File("C:\\a\\b.qm5r"), file);
  EXPECT_EQ(user.Run({"save", k102, "C:\\a\\b.qm5r", "--force", "--anonymous"}), 0);
  EXPECT_EQ(user.File("C:\\a\\b.qm5r").find("me@here"), std::string::npos);
  EXPECT_EQ(user.Run({"save", k101}), 0);
  EXPECT_EQ(user.out.str(), "Thermostat 101.qm5r\n");
}

TEST(Qm5r, EndsWithTheCodeOfTheOutcome) {
  CommandUser user;
  user.Run({"save", k101, "one.qm5r"});
  user.files.Write("warm.qm5r",
                   "QM5R settings 1.0\nprogram ID = 8000D3550004041D\n[settings]\nHeatMax = 30 C\n");
  user.files.Write("C:\\f\\wrong.qm5r",
                   "QM5R settings 1.0\nprogram ID = 8000D3550004041D\n[settings]\nHeatMax = 86 F\n");
  const std::string silent = "Demo Tower/Demo Tower.Floor 1.West Wing/Thermostat 110";
  struct Case {
    std::vector<std::string> words;
    int code;
    const char* says;
  };
  const Case cases[] = {
      {{}, 1, "qm5r: a command is required: save, check, show, compare, snapshot"},
      {{"save"}, 1, "qm5r save: path is required"},
      {{"compare", "one.qm5r"}, 1, "A second place, or --odd, is required"},
      {{"show", k101, "--fields", "HeatMin"}, 1, "qm5r: there is no field \"HeatMin\""},
      {{"save", k101, "x.txt"}, 2, "qm5r: x.txt does not end in .qm5r, by which the commands know files"},
      {{"save", "Demo Tower", "x.qm5r"},
       2,
       "qm5r: Demo Tower names 10 devices; snapshot saves more than one"},
      {{"save", "Demo Tower/Demo Tower.Floor 1/Nope"},
       2,
       "qm5r: there is no device Demo Tower/Demo Tower.Floor 1/Nope"},
      {{"save", "Nowhere"},
       2,
       "qm5r: object server error 17006 (LNS Simulator): There is no object named \"Nowhere\"."},
      {{"show", "No*"}, 2, "qm5r: there is no device No*"},
      {{"save", "Demo Tower/Demo Tower.Floor 2.Plant/Wall Switch 1"},
       2,
       "is of another type: program ID 9FFFFF0000000401"},
      {{"show", "none.qm5r"}, 2, "qm5r: there is no file none.qm5r"},
      {{"check", "C:\\f\\*.qm5r"}, 2, "wrong.qm5r:4: HeatMax is in C, not in F"},
      {{"check", "none.qm5r", "C:\\f\\wrong.qm5r"}, 2, "wrong.qm5r:4: HeatMax is in C, not in F"},
      {{"compare", "warm.qm5r", k101, "--fields", "CoolMin"},
       2,
       "warm.qm5r sets none of the fields to compare"},
      {{"compare", "--odd", k101, "warm.qm5r", "--fields", "HeatMax"},
       4,
       "HeatMax: no value is held by more than half: 1 have 30 C, 1 have 32 C"},
      {{"check", "one.qm5r", "warm.qm5r"}, 0, ""},
      {{"compare", "one.qm5r", "C:\\f\\wrong.qm5r"}, 2, "wrong.qm5r has errors"},
      {{"compare", "one.qm5r", k101}, 0, "1 device: 1 equal"},
      {{"compare", "warm.qm5r", "one.qm5r"},
       3,
       "one.qm5r\n  HeatMax                 32 C, standard 30 C\n1 device: 1 different"},
      {{"compare", "warm.qm5r", k101, silent}, 4, silent.c_str()},
      {{"compare", k101, silent}, 4, "not read: Failed to communicate with target device."},
      {{"compare", "one.qm5r", "warm.qm5r", "--fields", "CoolMin"},
       4,
       "CoolMin                 not in the file, standard 12 C"},
      {{"compare", "one.qm5r", "warm.qm5r", "--fields", "CoolMin,HeatMax", "--except", "C*"},
       3,
       "1 device: 1 different"},
      {{"compare", "Demo Tower", k101},
       2,
       "qm5r: the standard must be one device or file; Demo Tower names 10"},
      {{"save", silent, "x.qm5r"}, 4, "not read: Failed to communicate with target device."},
      {{"show", "Demo *101", "*A1", "--fahrenheit"},
       0,
       "HeatMax                 89.6 F              Heating, Maximum limit"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(user.Run(c.words), c.code) << c.says << user.errors.str();
    EXPECT_NE((user.out.str() + user.errors.str()).find(c.says), std::string::npos)
        << c.says << "\nis missing in\n"
        << user.out.str() << user.errors.str();
  }
  EXPECT_FALSE(user.files.FileExists("x.qm5r"));
}

TEST(Qm5r, ASnapshotHasAFileForEachDeviceAndAnIndexOfAll) {
  CommandUser user;
  EXPECT_EQ(user.Run({"snapshot", "Demo Tower", "C:\\s"}), 4);
  EXPECT_EQ(user.out.str(),
            "C:\\s\\index.csv: 10 devices: 6 read, 1 incomplete, 2 not read, 1 another type\n");
  const std::string index = user.File("C:\\s\\index.csv");
  for (const char* row :
       {"Demo Tower/Demo Tower.Floor 1/Thermostat 102,Demo Tower\\Demo Tower.Floor 1\\Thermostat "
        "102.qm5r,read,,",
        "Demo Tower/Demo Tower.Floor 2/Thermostat 203,,not read,Failed to communicate with target device.,",
        "Demo Tower/Demo Tower.Floor 2.Plant/Wall Switch 1,,another type,program ID 9FFFFF0000000401,"})
    EXPECT_NE(index.find(row), std::string::npos) << index;
  EXPECT_EQ(user.Run({"snapshot", "Demo Tower", "C:\\s"}), 2) << "it does not replace a snapshot";
  EXPECT_EQ(user.Run({"check", "C:\\s\\*.qm5r"}), 0) << user.out.str();
  EXPECT_EQ(user.Run({"compare", k102, "C:\\s\\*102.qm5r"}), 0) << user.out.str();
}

/// A network of this many thermostats in subsystems of a hundred, with what the caller adds to each.
std::string Network(int count, const std::function<std::string(int)>& more) {
  std::string subsystems, devices;
  for (int i = 0; i < count; ++i) {
    devices += (devices.empty() ? "" : ",") + ("{\"name\": \"T" + std::to_string(i)) +
               "\", \"template\": \"T\"" + more(i) + '}';
    if (i % 100 != 99 && i + 1 != count) continue;
    subsystems += (subsystems.empty() ? "" : ",") + ("{\"name\": \"" + std::to_string(i / 100)) +
                  "\", \"devices\": [" + std::exchange(devices, "") + "]}";
  }
  return R"({"autoSave": false, "interfaces": [{"name": "NI"}], "networks": [{"name": "N", "system": {"interface": "NI",
      "templates": [{"name": "T", "programId": "8000D3550004041D"}, {"name": "Lamp", "programId": "9FFFFF0000000401",
      "variables": [{"name": "nviLamp", "format": "SNVT_switch", "value": "0000"}]}], "subsystems": [)" +
         subsystems + "]}}]}";
}

TEST(Qm5r, ComparisonNamesExactlyTheDevicesThatDiffer) {
  // One step of a field's resolution each: the last bits of variables of every kind.
  const std::pair<const char*, const char*> changed[] = {{"nciSetPts", "08FC09C40AF00835076C0640"},
                                                         {"nciRHmodel", "01650A6400"},
                                                         {"nciSndHrtBt", "0259"},
                                                         {"nciGenOpts",
                                                          "00030400000000010100000402"
                                                          "0C8104B00002009600000000030102"}};
  std::map<std::string, std::string> expected, found;
  const auto more = [&](int i) -> std::string {
    const std::string path = "N/N." + std::to_string(i / 100) + "/T" + std::to_string(i);
    if (i % 25 == 7) {
      const auto& [name, bytes] = changed[i / 25 % 4];
      expected[path] = "different";
      return ", \"values\": {\"" + std::string(name) + "\": \"" + bytes + "\"}";
    }
    if (i % 50 == 11) return expected[path] = "not read", ", \"attachment\": 2";
    if (i % 200 == 13) return expected[path] = "another type", R"(, "programId": "9FFFFF0000000401")";
    return "";
  };
  CommandUser user(Network(1000, more));
  EXPECT_EQ(user.Run({"compare", "N/N.0/T0", "N", "--json"}), 4) << user.errors.str();
  auto result = user.Json();
  for (const auto& device : result["devices"]) {
    if (device["state"] != "equal") found[device["name"]] = device["state"];
    EXPECT_PRED2(Implies, device["state"] == "different", device.value("differences", result).size() == 1);
  }
  EXPECT_EQ(found, expected);
  EXPECT_EQ(std::ranges::count(expected, "different", &std::pair<const std::string, std::string>::second),
            40);
  EXPECT_EQ(user.Run({"compare", "--odd", "N", "--json"}), 4);
  std::size_t odd = 0;
  result = user.Json();
  for (const auto& device : result["devices"]) odd += device["state"] == "different";
  EXPECT_EQ(odd, 40u);
}

}  // namespace
