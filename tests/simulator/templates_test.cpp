#include <map>

#include "simulator/client.h"

namespace {

using namespace client;

const std::string kTemplates = kSystem + ".TemplateLibrary.DeviceTemplates";
const std::string kThermostatType = kTemplates + "(QM [demo])";
const std::string kBlock = "Interface.LonMarkObjects(Thermostat)";

/// The fourth line, or the fifth where that one is blank, holds the program ID.
std::string Xif(const std::string& lines) { return "File: a\r\nb\r\nc\r\n" + lines + "\r\n7 8 9\r\n"; }

struct Templates : OpenWorld {
  Templates() {
    world.simulation->read_file = [this](const std::string& path) -> std::optional<std::string> {
      const auto found = files.find(path);
      return found == files.end() ? std::nullopt : std::optional(found->second);
    };
  }
  const std::map<std::string, std::string> files = {
      {"C:\\d.XIF", Xif("80:00:D3:55:00:04:04:1d")},
      {"new.xif", Xif(" \t\r\n90:00:D3:55:00:04:04:99 more")},
      {"text.xif", Xif("51-4D-35-52-00-00-00-00")},
      {"new.XFB", "\x01\x02"},
      {"alone.xfb", "\x01\x02"},
      {"short.xif", Xif("80:00:D3:55:00:04:04")},
      {"words.xif", Xif("These lines hold no ID")},
      {"end.xif", "File: a"},
      {"new.txt", Xif("90:00:D3:55:00:04:04:99")},
  };
};

TEST_F(Templates, AreAddedNamedAndRemoved) {
  const LateBoundPtr templates = Reach(root, kTemplates);
  Play(templates, {"Add(Switch) ! 17003", "Add(a/b) ! 17090", "Remove(Nowhere) ! 17006",
                   "Remove(QM [demo]) ! 17011", "Remove(1) ! 17011", "Add(New).ProgramId -> ", "Count -> 3"});
  const LateBoundPtr type = Reach(templates, "Item(3)");
  const LateBoundPtr app = Reach(type, "ComponentApps.Add(P;S;7)");
  Play(type, {"Name=Switch ! 17003", "Name= ! 17090", "Name=Newer", "Name -> Newer", "Description=Words",
              "ComponentApps(P).RegisteredServer -> S"});
  Play(templates, {"Add(New).Description -> ", "Item(Newer).Description -> Words", "Item(New).Name -> New",
                   "Remove(New)", "Remove(3)", "Count -> 2"});
  EXPECT_EQ(CodeOf(type, "Description"), 17096);
  EXPECT_EQ(CodeOf(app, "CommandId"), 17096);
  // Devices go with the template of a new name.
  Play(root, {kThermostatType + ".Name=Renamed", kDeviceA + ".DeviceTemplate.Name -> Renamed",
              kVariablesOfA + "(nciMajVer).Value -> 1", kTemplates + "(Renamed).Name=QM [demo]"});
}

TEST_F(Templates, ImportTakesTheProgramIdOfTheFile) {
  const std::pair<std::string, std::string> cases[] = {
      {"new.xif", "90 00 D3 55 00 04 04 99"},
      {"new.XFB", "90 00 D3 55 00 04 04 99"},
      {"text.xif", "51 4D 35 52 00 00 00 00"},
      {"C:\\d.XIF", "17003"},  // another template has it
      {"none.xif", "17008"},
      {"alone.xfb", "17008"},
      {"short.xif", "17008"},
      {"words.xif", "17008"},
      {"end.xif", "17008"},
      {"new.txt", "17008"},
      {"xif", "17008"},
  };
  const LateBoundPtr templates = Reach(root, kTemplates);
  for (const auto& [file, expected] : cases) {
    SCOPED_TRACE(file);
    const LateBoundPtr type = Reach(templates, "Add(New)");
    const int code = CodeOf(type, "Import(" + file + ")");
    std::string spaced = Text(type, "ProgramId");
    for (std::size_t at = 2; at < spaced.size(); at += 3) spaced.insert(at, " ");
    EXPECT_EQ(code ? std::to_string(code) : spaced, expected);
    Play(type, {"XifPath -> " + (code ? "" : file), "Interface.NetworkVariables.Count -> 0"});
    Do(templates, "Remove(New)");
  }
  Play(root,
       {kSystem + ".GetProgramId(new.xif) -> 9000D35500040499", kSystem + ".GetProgramId(new.XFB) ! 17008",
        kThermostatType + ".Import(C:\\d.XIF)", kThermostatType + ".Import(new.xif) ! 17011"});
}

TEST_F(Templates, AnImportedThermostatHasItsInterface) {
  World empty(R"({"networks": [{"name": "T", "system": {"name": "S", "templates": [{"name": "Q"}]}}]})");
  empty.simulation->read_file = world.simulation->read_file;
  const LateBoundPtr type = Reach(empty.Open(), kTemplates + "(Q)");
  Play(type, {"Interface.LonMarkObjects.Count -> 0", "Import(C:\\d.XIF)", "ProgramId -> 8000D3550004041D",
              "Interface.LonMarkObjects.Count -> 2", "Interface.NetworkVariables.Count -> 10",
              "Interface.LonMarkObjects(1).NetworkVariables(2).Name -> nciMinVer",
              kBlock + ".NetworkVariables.Count -> 10", kBlock + ".TypeIndex -> 8060",
              kBlock + ".Parent.Parent.Parent.Name -> Q", "Interface.NetworkVariables(nciGenOpts).Index -> 2",
              "Interface.NetworkVariables(nciGenOpts).Value ! 17038",
              "Interface.NetworkVariables(nciGenOpts).Value=1 ! 17038"});
}

TEST_F(Templates, CommandsOfABlockAreThoseOfEveryDeviceOfTheType) {
  const std::string device_b = kSystem + ".Subsystems(F).AppDevices(B)." + kBlock + ".ComponentApps";
  const std::string device_c =
      kSystem + ".Subsystems(F).Subsystems(West).AppDevices(C)." + kBlock + ".ComponentApps";
  const std::string shared = kThermostatType + "." + kBlock + ".ComponentApps";
  World mixed(Replaced(kWorld, "\"modeLocked\": true,",
                       "\"modeLocked\": true, \"componentApps\": [{\"name\": \"Own\", \"server\": \"O\", "
                       "\"classId\": 28, \"commandId\": 3}],"));
  Play(mixed.Open(), {shared + ".Add(All;S;28).CommandId=13",
                      device_b + "(1).CommandId -> 13",
                      device_c + ".Count -> 2",
                      device_c + "(1).Name -> All",
                      device_c + "(2).Name -> Own",
                      shared + ".Count -> 1",
                      device_b + ".Add(All;S;28) ! 17003",
                      device_c + ".Add(Own;S;28) ! 17003",
                      device_b + ".Add(More;S;28).Name=Own",  // hides that of the device C
                      device_c + ".Count -> 2",
                      device_c + "(Own).CommandId -> 0",
                      device_c + ".Remove(Own)",
                      device_b + ".Count -> 1",
                      device_c + "(Own).CommandId -> 3",
                      device_c + ".Remove(Own)",
                      device_c + ".Count -> 1",
                      shared + "(All).Name= ! 17090",
                      device_b + ".Remove(1)",
                      shared + ".Count -> 0",
                      device_c + ".Count -> 0"});
}

}  // namespace
