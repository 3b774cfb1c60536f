#include "simulator/client.h"

#include <algorithm>
#include <fstream>
#include <regex>

#include "support/error_of.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace client {

const char kWorld[] = R"({
  "interfaces": [{"name": "L1"}, {"name": "L2"}, {"name": "R1"}, {"name": "Busy", "inUse": true}],
  "networks": [
    {"name": "T", "internet": true, "remoteInterfaces": ["R1", "Busy"], "system": {
      "name": "S", "interface": "L1", "templates": [
        {"name": "QM [demo]", "programId": "8000D3550004041D", "componentApps": [
          {"name": "Configure", "server": "Some.Server", "classId": 7, "commandId": 13}]},
        {"name": "Switch", "programId": "9FFFFF0000000401", "variables": [
          {"name": "nvoLamp", "format": "SNVT_switch", "direction": "output", "value": "C801"},
          {"name": "nviWide", "format": "RAW", "value": "0102030405"}]}],
      "subsystems": [{"name": "F", "devices": [
        {"name": "A", "template": "QM [demo]"},
        {"name": "B", "template": "QM [demo]", "attachment": 1, "testResult": 3}], "subsystems": [
          {"name": "West", "devices": [
            {"name": "C", "template": "QM [demo]", "state": 12, "missing": ["nciMinVer"],
             "refuses": ["nciGenOpts"], "lonMarkObjects": [
               {"name": "Thermostat", "mode": 3, "modeLocked": true, "variables": ["nciSetPts"]}]},
            {"name": "Lamp", "template": "Switch"}]}]}],
      "discovered": [{"name": "D", "template": "QM [demo]", "commissioned": false, "powered": false}]}},
    {"name": "U", "local": true, "system": {"interface": "L2"}},
    {"name": "Far", "local": false, "remoteInterfaces": ["R1"], "system": {"interface": "L1"}}]
})";

namespace {

Value ParseValue(const LateBoundPtr& object, const std::string& text) {
  if (text.starts_with("@")) return Do(object, text.substr(1));
  if (text == "nothing") return LateBoundPtr();
  if (const auto number = text::ParseNumber(text)) return static_cast<std::int32_t>(*number);
  return text;
}

}  // namespace

World::World(const std::string& text) {
  simulation = simulator::Simulation::FromText(
      text, [this](std::chrono::milliseconds time) { slept.push_back(static_cast<int>(time.count())); });
}

LateBoundPtr OpenSystem(simulator::Simulation& simulation) {
  LateBoundPtr root = simulation.CreateObjectServer();
  Play(root, {"Open", "Networks(T).Open", kSystem + ".Open"});
  return root;
}

Value Do(const LateBoundPtr& object, const std::string& line) {
  static const std::regex kStep(R"((\w+)(?:\(([^)]*)\))?)");
  const std::size_t equals = line.find('=');
  const std::string path = line.substr(0, equals);
  Value at = object;
  for (std::sregex_iterator step(path.begin(), path.end(), kStep), end; step != end;) {
    const std::smatch match = *step++;
    auto kind = platform::CallKind::GetOrMethod;
    std::vector<Value> arguments;
    if (match[2].matched)
      for (const std::string& piece : text::Split(match.str(2), ";"))
        arguments.push_back(ParseValue(object, piece));
    if (step == end && equals != std::string::npos) {
      arguments = {ParseValue(object, line.substr(equals + 1))};
      const bool reference = std::holds_alternative<LateBoundPtr>(arguments[0]);
      kind = reference ? platform::CallKind::PutReference : platform::CallKind::Put;
    }
    at = automation::ToObject(at)->Invoke({match.str(1)}, kind, arguments);
  }
  return at;
}

int CodeOf(const std::function<void()>& action) {
  const std::int32_t number = ErrorOf(action).number(), code = number - platform::kObjectServerErrorBase;
  return code > 0 && code <= 0xFFFF ? code : number;
}

void Play(const LateBoundPtr& object, const std::vector<std::string>& lines) {
  static const std::regex kLine("(.*?)(?: (->|!) (.*))?");
  for (const std::string& line : lines) {
    std::smatch pieces;
    std::regex_match(line, pieces, kLine);
    Value value;
    const int code = pieces[2] == "!" ? std::stoi(pieces[3]) : 0;
    EXPECT_EQ(CodeOf([&] { value = Do(object, pieces[1]); }), code) << line;
    EXPECT_EQ(pieces[2] == "->" ? automation::ToText(value) : pieces.str(3), pieces[3]) << line;
  }
}

std::string Contents(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  return text.replace(text.find(from), from.size(), to);
}

std::string Quoted(std::string text) {
  std::replace(text.begin(), text.end(), '\'', '"');
  return text;
}

}  // namespace client
