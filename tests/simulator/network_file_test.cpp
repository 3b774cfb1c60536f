#include "simulator/network_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>

#include "simulator/client.h"
#include "simulator/errors.h"

namespace {

using simulator::ReadInstallation;

const char kBase[] = R"({
  "interfaces": [{"name": "L1"}, {"name": "L2"}],
  "networks": [
    {
      "name": "T",
      "system": {
        "interface": "L1",
        "templates": [
          {"name": "QM", "programId": "8000D3550004041D"},
          {"name": "SW", "programId": "9FFFFF0000000401",
           "variables": [{"name": "v", "format": "INT", "value": "00"}]}
        ],
        "subsystems": [
          {"name": "F", "devices": [
            {"name": "A", "template": "QM",
             "state": 4,
             "values": {"nciHvacType": "02"}},
            {"name": "B", "template": "SW", "handle": 7}
          ]}
        ]
      }
    }
  ]
})";

std::string ErrorOf(const std::string& text) {
  try {
    ReadInstallation(text, "n.json");
  } catch (const simulator::FileError& error) {
    return error.what();
  }
  return "";
}

/// Single quotes stand for double ones, so that the tables stay readable.
std::string Quoted(std::string text) {
  std::replace(text.begin(), text.end(), '\'', '"');
  return text;
}

TEST(NetworkFile, ErrorsNameLineAndField) {
  // "S", "T" and "D" at the beginning of a field stand for the system, its second template and its devices.
  const std::map<char, std::string> places = {{'S', "networks[0].system"},
                                              {'T', "networks[0].system.templates[1]"},
                                              {'D', "networks[0].system.subsystems[0].devices"}};
  const struct {
    const char* from;
    const char* to;
    const char* line;
    const char* field;
    const char* reason;
  } cases[] = {
      {"4,\n", "'4',\n", "16", "D[0].state", "expected a whole number"},
      {"4,\n", "4.5,\n", "16", "D[0].state", "expected a whole number"},
      {"4,\n", "256,\n", "16", "D[0].state", "expected a whole number from 0 to 255"},
      {"4,\n", "99999999999999999999,\n", "16", "D[0].state", "expected a whole number"},
      {"4,\n", "4, 'state': 4,\n", "16", "", "the key 'state' is given twice"},
      {"{'nciHvacType': '02'}", "5\n", "17", "D[0].values",
       "expected an object"},  // its line ends the number
      {"'state'", "'State'", "16", "D[0].State", "unknown key"},
      {"'02'", "'0'", "17", "D[0].values.nciHvacType", "expected 1 to 31 bytes, two hexadecimal digits each"},
      {"'02'", "'0G'", "17", "D[0].values.nciHvacType",
       "expected 1 to 31 bytes, two hexadecimal digits each"},
      {"'02'", "'0202'", "17", "D[0].values.nciHvacType", "expected 1 bytes, found 2"},
      {"'02'", "2", "17", "D[0].values.nciHvacType", "expected a text"},
      {"nciHvacType", "nciX", "17", "D[0].values.nciX", "the template has no variable 'nciX'"},
      {"'state': 4", "'missing': ['nciX']", "16", "D[0].missing", "the template has no variable 'nciX'"},
      {"'state': 4", "'refuses': ['v', 'v']", "16", "D[0].refuses[1]", "'v' is listed twice"},
      {"'state': 4", "'powered': 1", "16", "D[0].powered", "expected true or false"},
      {"'state': 4", "'neuronId': '00'", "16", "D[0].neuronId", "expected 12 hexadecimal digits"},
      {"'state': 4", "'lonMarkObjects': [{'name': 'X', 'mode': 7}]", "16", "D[0].lonMarkObjects[0].mode",
       "expected a whole number from 0 to 6"},
      {"'state': 4", "'handle': 7", "18", "D[1].handle", "is already taken"},
      {"'B'", "'A'", "18", "D[1].name", "'A' is already taken"},
      {"'B'", "''", "18", "D[1].name", "must not be empty"},
      {"'B'", "'a/b'", "18", "D[1].name", "must not contain any of the characters /"},
      {"'template': 'SW'", "'template': 'XX'", "18", "D[1].template", "unknown template 'XX'"},
      {", 'template': 'SW'", "", "18", "D[1].template", "is required"},
      {"'F'", "'ALL'", "14", "S.subsystems[0].name", "'ALL' is always there and cannot be listed"},
      {"'F'", "'F.1'", "14", "S.subsystems[0].name", "must not contain any of the characters /."},
      {"'SW', 'pro", "'QM', 'pro", "10", "T.name", "'QM' is already taken"},
      {"9FFFFF0000000401", "9FFF", "10", "T.programId", "expected 16 hexadecimal digits"},
      {"'INT'", "'LONG'", "11", "T.variables[0].format", "unknown format 'LONG'"},
      {"'00'", "''", "11", "T.variables[0].value", "expected 1 to 31 bytes, two hexadecimal digits each"},
      {"'00'", "'0000000000'", "11", "T.variables[0].value", "5 bytes do not fit the format INT"},
      {", 'value': '00'", "", "11", "T.variables[0].value", "is required"},
      {"'interface': 'L1'", "'interface': 'L9'", "7", "S.interface", "unknown interface 'L9'"},
      {"'T',", "'T', 'remoteInterfaces': [\n'L2', 5],", "6", "networks[0].remoteInterfaces[1]",
       "expected a text"},
      {"'name': 'T',", "", "4", "networks[0].name", "is required"},
      {"{'name': 'L2'}", "5", "2", "interfaces[1]", "expected an object"},
      {"[{'name': 'L1'}, {'name': 'L2'}]", "{}", "2", "interfaces", "expected a list"},
      {"'networks'", "'latency': {'reed': 5}, 'networks'", "3", "latency.reed", "unknown key"},
      {"'networks'", "'faults': [{'vanish': true, 'code': 5}], 'networks'", "3", "faults[0].code",
       "goes with no 'vanish'"},
      {"'networks'", "'faults': [{'item': 'x'}], 'networks'", "3", "faults[0].code", "is required"},
      {"'networks'", "'nets'", "1", "networks", "is required"},
  };
  ASSERT_EQ(ErrorOf(kBase), "");
  for (const auto& c : cases) {
    std::string field = c.field;
    const auto place = field.empty() ? places.end() : places.find(field[0]);
    if (place != places.end()) field.replace(0, 1, place->second);
    if (!field.empty()) field += ": ";
    EXPECT_EQ(ErrorOf(client::Replaced(kBase, Quoted(c.from), Quoted(c.to))),
              "n.json:" + std::string(c.line) + ": " + field + Quoted(c.reason));
  }
}

TEST(NetworkFile, BrokenJsonGivesLineAndColumn) {
  const struct {
    std::string text;
    const char* start;
  } cases[] = {
      {"", "n.json:1:1: not valid JSON"},
      {"{\n  \"a\": tru\n}", "n.json:2:11: not valid JSON"},
      {"{\n\"a\": 1,\n}", "n.json:3:1: not valid JSON"},
      {"{} x", "n.json:1:4: not valid JSON"},
      {"{\"a\": \"\xFF\"}", "n.json:1:8: not valid JSON"},
      {"[]", "n.json:1: expected an object"},
      {std::string(100000, '['), "n.json:1: nested too deeply"},
  };
  for (const auto& c : cases) EXPECT_EQ(ErrorOf(c.text).substr(0, std::string(c.start).size()), c.start);
  const std::string whole = kBase;
  for (std::size_t length = 0; length < whole.size(); ++length)
    EXPECT_NE(ErrorOf(whole.substr(0, length)), "") << length;
}

TEST(NetworkFile, SmallFileIsCompletedByDefaults) {
  auto installation = ReadInstallation(kBase, "n.json");
  const auto& system = installation.networks[0].system;
  EXPECT_EQ(system.name, "T");
  EXPECT_EQ(system.discovery_interval, 180);
  EXPECT_EQ(system.templates[0].variables.size(), 10u);
  const auto& a = system.subsystems[0].devices[0];
  EXPECT_EQ(a.handle, 1);
  EXPECT_EQ(a.neuron_id, "00DE00000001");
  EXPECT_EQ(a.program_id, "8000D3550004041D");
  EXPECT_EQ(a.objects.size(), 2u);
  EXPECT_TRUE(system.subsystems[0].devices[1].objects.empty());
}

TEST(NetworkFile, EveryKeySurvivesSaving) {
  const char* full = R"({
    "autoSave": false,
    "interfaces": [{"name": "L1", "inUse": true}],
    "componentApps": [{"name": "Register", "server": "S.S", "classId": 0, "commandId": 50, "defaultApp": true,
                       "description": "D", "manufacturerId": "211", "version": "1.0"}],
    "networks": [{"name": "T", "local": false, "internet": true, "remoteInterfaces": ["L1"], "system": {
      "name": "S", "interface": "L1", "managementMode": 1, "discoveryInterval": 0, "updateInterval": 200,
      "launchServer": true, "catalogPath": "C:\\Types",
      "componentApps": [{"name": "x", "server": "", "classId": 3}],
      "templates": [{"name": "P", "programId": "9000000000000001", "xifPath": "p.xif",
        "variables": [{"name": "v", "format": "INT", "direction": "output", "value": "0A"}],
        "lonMarkObjects": [{"name": "O", "programmaticName": "Obj", "index": 4, "typeIndex": 3, "mode": 2,
                            "modeLocked": true, "variables": ["v"],
                            "componentApps": [{"name": "y", "server": "", "classId": 28}]}],
        "componentApps": [{"name": "z", "server": "", "classId": 7}]},
        {"name": "Bare", "programId": "9000000000000002", "variables": [], "lonMarkObjects": []}],
      "subsystems": [{"name": "F",
        "devices": [{"name": "A", "template": "P", "handle": 9, "neuronId": "0123456789AB",
          "programId": "9000000000000003", "state": 6, "attachment": 2, "commissioned": false, "commissionStatus": 2,
          "configurationState": 1, "powered": false, "testResult": 3, "values": {"v": "FF"}, "missing": ["v"],
          "refuses": ["v"], "lonMarkObjects": []}],
        "subsystems": [{"name": "G"}]}],
      "discovered": [{"name": "N", "template": "P", "handle": 10, "neuronId": "0123456789AC"}]}}],
    "latency": {"any": 1, "read": 2, "write": 3, "open": 4, "test": 5},
    "faults": [{"device": "A", "item": "v", "operation": "read", "occurrence": 2, "code": 18200}, {"vanish": true}]
  })";
  const std::string saved = simulator::WriteInstallation(ReadInstallation(full, "n.json"));
  EXPECT_EQ(nlohmann::json::parse(saved), nlohmann::json::parse(full));
  EXPECT_EQ(simulator::WriteInstallation(ReadInstallation(saved, "n.json")), saved);
}

}  // namespace
