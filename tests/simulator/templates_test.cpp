#include "simulator/client.h"

namespace {

using namespace client;

const std::string kTemplates = kSystem + ".TemplateLibrary.DeviceTemplates";
const std::string kThermostatType = kTemplates + "(QM [demo])";
const std::string kBlock = "Interface.LonMarkObjects(Thermostat)";

using Templates = OpenWorld;

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
  // Devices follow a renamed template.
  Play(root, {kThermostatType + ".Name=Renamed", kDeviceA + ".DeviceTemplate.Name -> Renamed",
              kVariablesOfA + "(nciMajVer).Value -> 1", kTemplates + "(Renamed).Name=QM [demo]"});
}

TEST_F(Templates, ImportReadsTheProgramIdOfTheFile) {
  const std::string head = "File: a\r\nb\r\nc\r\n", id = "90:00:D3:55:00:04:04:9a";
  const struct {
    std::string file;
    std::optional<std::string> contents;
    std::string expected;
  } cases[] = {
      {"a.XIF", head + id + "\r\n7 8\r\n", "9000D3550004049A"},
      {"new.xif", head + " \t\r\n" + id + " more", "9000D3550004049A"},
      {"text.xif", head + "51-4D-35-52-00-00-00-00\n", "514D355200000000"},
      {"new.XFB", "\x01\x02", "9000D3550004049A"},
      {"d.Xif", head + "80:00:D3:55:00:04:04:1D", "17003"},  // another template has it
      {"alone.xfb", "\x01\x02", "17008"},
      {"none.xif", std::nullopt, "17008"},
  };
  world.simulation->read_file = [&](const std::string& path) -> std::optional<std::string> {
    for (const auto& each : cases)
      if (each.file == path) return each.contents;
    return std::nullopt;
  };
  const LateBoundPtr templates = Reach(root, kTemplates);
  for (const auto& [file, contents, expected] : cases) {
    SCOPED_TRACE(file);
    const LateBoundPtr type = Reach(templates, "Add(New)");
    const int code = CodeOf(type, "Import(" + file + ")");
    EXPECT_EQ(code ? std::to_string(code) : Text(type, "ProgramId"), expected);
    Play(type, {"XifPath -> " + (code ? "" : file), "Interface.NetworkVariables.Count -> 0"});
    Do(templates, "Remove(New)");
  }
  Play(Reach(root, kSystem), {"GetProgramId(new.xif) -> 9000D3550004049A", "GetProgramId(new.XFB) ! 17008"});
  Play(templates, {"Item(1).Import(d.Xif)", "Item(1).Import(new.xif) ! 17011"});  // devices use it
  World empty(R"({"networks": [{"name": "T", "system": {"name": "S", "templates": [{"name": "Q"}]}}]})");
  empty.simulation->read_file = world.simulation->read_file;
  Play(Reach(empty.Open(), kTemplates + "(Q)"),
       {"Interface.LonMarkObjects.Count -> 0", "Import(d.Xif)", "Interface.NetworkVariables.Count -> 10",
        "Interface.LonMarkObjects(1).NetworkVariables(2).Name -> nciMinVer",
        kBlock + ".NetworkVariables.Count -> 10", kBlock + ".Parent.Parent.Parent.Name -> Q",
        "Interface.NetworkVariables(nciGenOpts).Index -> 2",
        "Interface.NetworkVariables(nciGenOpts).Value ! 17038"});
}

TEST_F(Templates, ShareABlocksCommandsWithEveryDeviceOfTheType) {
  World islands(Contents(DEMO_FOLDER "many-networks.json"));
  const LateBoundPtr server = islands.simulation->CreateObjectServer();
  const std::string system = "Networks(Demo Islands).Systems(1)", apps = "." + kBlock + ".ComponentApps";
  Play(server, {"Open", "Networks(Demo Islands).Open", system + ".Open"});
  const std::string type = system + ".TemplateLibrary.DeviceTemplates(1)" + apps;
  const std::string one = system + ".Subsystems(ALL).AppDevices(Thermostat I1)" + apps;
  const std::string own =
      system + ".Subsystems(ALL).AppDevices(Thermostat I2)" + apps;  // has its own command
  Play(server,
       {type + ".Add(New;S;28).CommandId=13", one + "(2).CommandId -> 13", own + ".Count -> 3",
        own + "(3).Name -> Demo Tool: Only here", type + ".Count -> 2", one + ".Add(New;S;28) ! 17003",
        own + ".Add(Demo Tool: Only here;S;28) ! 17003", own + ".Remove(3)", own + ".Count -> 2",
        one + ".Remove(1)", one + ".Remove(1)", type + ".Count -> 0", own + ".Count -> 0"});
}

}  // namespace
