#include "simulator/files.h"

#include <nlohmann/json.hpp>

#include "simulator/client.h"
#include "simulator/errors.h"

namespace {

using namespace client;

std::string ErrorOf(const std::string& text) {
  try {
    simulator::ReadInstallation(text, "n.json");
  } catch (const simulator::FileError& error) {
    return error.what();
  }
  return "";
}

TEST(NetworkFile, ErrorsNameLineAndField) {
  const struct {
    std::string from, to, line, error;
  } cases[] = {
      {"12,", "256,", "15", "state: expected a whole number from 0 to 255"},
      {"12,", "99999999999999999999,", "15", "state: expected a whole number"},
      {"12,", "4, 'state': 4,", "15", "the key 'state' is given twice"},
      {"'state'", "'X'", "15", "networks[0].system.subsystems[0].subsystems[0].devices[0].X: unknown key"},
      {"'state': 12,", "\n'values': 5\n,", "16", "values: expected an object"},  // ends its line
      {"'state': 12", "'values': {'nciMajVer': '0202'}", "15", "values.nciMajVer: expected 1 bytes, found 2"},
      {"nciMinVer", "X", "15", "missing: the template has no variable 'X'"},
      {"['nciGenOpts']", "['nciMinVer', 'nciMinVer']", "16", "refuses[1]: 'nciMinVer' is listed twice"},
      {"'state': 12", "'powered': 1", "15", "powered: expected true or false"},
      {"'state': 12", "'handle': 1", "15", "handle: is already taken"},
      {"'name': 'C'", "'name': 'a/b'", "15", "name: must not contain any of the characters /"},
      {"'C', 'template': 'QM [demo]'", "'C', 'template': 'XX'", "15", "template: unknown template 'XX'"},
      {"'name': 'B'", "'name': 'A'", "13", "subsystems[0].devices[1].name: 'A' is already taken"},
      {"'F'", "'ALL'", "11", "subsystems[0].name: 'ALL' always exists and cannot be listed"},
      {"'RAW'", "'LONG'", "10", "variables[1].format: unknown format 'LONG'"},
      {"'RAW'", "'INT'", "10", "variables[1].value: 5 bytes do not fit the format INT"},
      {"'interface': 'L1'", "'interface': 'L9'", "5", "interface: unknown interface 'L9'"},
      {"'R1', 'Busy']", "\n'R1', 5]", "5", "networks[0].remoteInterfaces[1]: expected a text"},
      {"'interfaces'", "'componentApps': {}, 'interfaces'", "2", "componentApps: expected a list"},
      {"'networks'", "'faults': [{'vanish': true, 'code': 5}], 'networks'", "3",
       "code: cannot be given with 'vanish'"},
      {"'networks'", "'faults': [{'item': 'x'}], 'networks'", "3", "faults[0].code: is required"},
      {"'networks'", "'faults': [{'device': 'X', 'code': 5}], 'networks'", "3",
       "device: there is no device 'X'"},
  };
  for (const auto& c : cases) {
    const std::string error = ErrorOf(Replaced(kWorld, Quoted(c.from), Quoted(c.to)));
    EXPECT_PRED2(Both, error.starts_with("n.json:" + c.line + ": "), error.ends_with(Quoted(c.error)))
        << error;
  }
}

TEST(NetworkFile, BrokenJsonErrorsNameLineAndColumn) {
  const std::pair<std::string, std::string> cases[] = {
      {"", "n.json:1:1: not valid JSON"},     {"{\n  \"a\": tru\n}", "n.json:2:11: not valid JSON"},
      {"{} x", "n.json:1:4: not valid JSON"}, {"{\"a\": \"\xFF\"}", "n.json:1:8: not valid JSON"},
      {"[]", "n.json:1: expected an object"}, {std::string(100000, '['), "n.json:1: nested too deeply"},
  };
  for (const auto& [text, start] : cases) EXPECT_EQ(ErrorOf(text).substr(0, start.size()), start);
  for (std::string text = kWorld; text.pop_back(), !text.empty();)
    EXPECT_NE(ErrorOf(text), "") << text.size();
}

TEST(NetworkFile, EveryKeySurvivesSaving) {
  const char* full = R"({
    "autoSave": false, "interfaces": [{"name": "L1", "inUse": true}],
    "componentApps": [{"name": "Register", "server": "S.S", "classId": 0, "commandId": 50, "defaultApp": true,
                       "description": "D", "manufacturerId": "211", "version": "1.0"}],
    "networks": [{"name": "T", "local": false, "internet": true, "remoteInterfaces": ["L1"], "opens": false, "system": {
      "name": "S", "interface": "L1", "opensEngineered": false, "opensAttached": false, "lockedBy": "X", "managementMode": 1, "discoveryInterval": 0, "updateInterval": 200,
      "launchServer": true, "catalogPath": "C:\\Types",
      "componentApps": [{"name": "x", "server": "", "classId": 3}],
      "templates": [{"name": "P", "programId": "9000000000000001", "xifPath": "p.xif", "description": "d",
        "variables": [{"name": "v", "format": "INT", "direction": "output", "value": "0A"}],
        "lonMarkObjects": [{"name": "O", "programmaticName": "Obj", "index": 4, "typeIndex": 3, "mode": 2,
          "modeLocked": true, "variables": ["v"],
          "componentApps": [{"name": "y", "server": "", "classId": 28}]}],
        "componentApps": [{"name": "z", "server": "", "classId": 7}]},
        {"name": "Bare", "programId": "8000D3550004041D", "lonMarkObjects": []},
        {"name": "New", "variables": []}],
      "subsystems": [{"name": "F", "subsystems": [{"name": "G"}], "devices": [{"name": "A", "template": "P",
        "handle": 9, "neuronId": "0123456789AB", "programId": "9000000000000003", "state": 6, "attachment": 2,
        "commissioned": false, "commissionStatus": 2, "configurationState": 1, "powered": false,
        "testResult": 3, "values": {"v": "FF"}, "database": {"v": "FE"}, "missing": ["v"], "refuses": ["v"], "lonMarkObjects": []}]}],
      "discovered": [{"name": "N", "template": "P", "handle": 10, "neuronId": "0123456789AC"}]}}],
    "latency": {"any": 1, "read": 2, "write": 3, "open": 4, "test": 5},
    "strict": {"pausing": true, "demonstration": 5, "release": 320, "missingMembers": ["Mode"],
               "readOnlyMembers": ["State", "Value"]},
    "faults": [{"vanish": true},
               {"device": "N", "item": "v", "operation": "read", "occurrence": 2, "code": 18200}]
  })";
  const std::string saved = simulator::WriteInstallation(simulator::ReadInstallation(full, "n.json"));
  EXPECT_EQ(nlohmann::json::parse(saved), nlohmann::json::parse(full));
}

TEST(Demo, FilesHaveTheFormOfSavedOnes) {
  for (const std::string name : {"network.json", "many-networks.json"}) {
    const std::string file = Contents(DEMO_FOLDER + name);
    EXPECT_EQ(simulator::WriteInstallation(simulator::ReadInstallation(file, name)), file);
  }
}

}  // namespace
