#include "simulator/client.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "automation/convert.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace client {

const char kWorld[] = R"({
  "interfaces": [{"name": "L1"}, {"name": "L2"}, {"name": "R1"}, {"name": "Busy", "inUse": true}],
  "networks": [
    {"name": "T", "internet": true, "remoteInterfaces": ["R1", "Busy"], "system": {
      "name": "S", "interface": "L1",
      "templates": [
        {"name": "QM [demo]", "programId": "8000D3550004041D", "componentApps": [
          {"name": "Configure", "server": "Some.Server", "classId": 7, "commandId": 13}]},
        {"name": "Switch", "programId": "9FFFFF0000000401",
         "variables": [{"name": "nvoLamp", "format": "SNVT_switch", "direction": "output", "value": "C801"},
                       {"name": "nviWide", "format": "RAW", "value": "0102030405"}]}],
      "subsystems": [
        {"name": "F", "devices": [{"name": "A", "template": "QM [demo]"},
                                  {"name": "B", "template": "QM [demo]", "attachment": 1}],
         "subsystems": [{"name": "West", "devices": [
           {"name": "C", "template": "QM [demo]", "state": 12, "missing": ["nciMinVer"], "refuses": ["nciGenOpts"],
            "lonMarkObjects": [{"name": "Thermostat", "mode": 3, "modeLocked": true, "variables": ["nciSetPts"]}]},
           {"name": "Lamp", "template": "Switch"}]}]}],
      "discovered": [{"name": "D", "template": "QM [demo]", "commissioned": false, "powered": false}]}},
    {"name": "U", "local": true, "system": {"interface": "L2"}},
    {"name": "Far", "local": false, "remoteInterfaces": ["R1"], "system": {"interface": "L1"}}
  ]
})";

namespace {

Value ParseValue(const LateBoundPtr& object, const std::string& text) {
  if (text.starts_with("@")) return Do(object, text.substr(1));
  if (text == "nothing") return LateBoundPtr();
  if (const auto number = text::ParseNumber(text)) return static_cast<std::int32_t>(*number);
  return text;
}

/// Splits at the dots that stand outside brackets.
std::vector<std::string> Steps(std::string_view line) {
  std::vector<std::string> steps(1);
  bool in_brackets = false;
  for (const char c : line) {
    if (c == '(' || c == ')') in_brackets = c == '(';
    if (c == '.' && !in_brackets) {
      steps.emplace_back();
    } else {
      steps.back() += c;
    }
  }
  return steps;
}

Value Step(const LateBoundPtr& object, const std::string& step) {
  const std::size_t bracket = step.find('(');
  if (bracket == std::string::npos) return object->Invoke({step}, platform::CallKind::GetOrMethod, {});
  std::vector<Value> arguments;
  for (const std::string& piece : text::Split(step.substr(bracket + 1, step.size() - bracket - 2), ";"))
    arguments.push_back(ParseValue(object, piece));
  const std::string member = step.substr(0, bracket);
  return object->Invoke({member}, platform::CallKind::GetOrMethod, arguments);
}

}  // namespace

World::World(std::string_view text) {
  simulation = simulator::Simulation::FromText(
      text, [this](std::chrono::milliseconds time) { slept.push_back(static_cast<int>(time.count())); });
}

LateBoundPtr World::Open() {
  LateBoundPtr root = simulation->CreateObjectServer();
  Do(root, "Open");
  Do(root, "Networks(T).Open");
  Do(root, kSystem + ".Open");
  return root;
}

std::vector<std::string> World::Journal() const {
  std::vector<std::string> lines;
  for (std::size_t i = 0; i < simulation->journal().Count(); ++i)
    lines.push_back(simulation->journal().At(i).Text());
  return lines;
}

Value Do(const LateBoundPtr& object, std::string_view line) {
  LateBoundPtr at = object;
  const std::size_t equals = line.find('=');
  const std::vector<std::string> steps = Steps(line.substr(0, equals));
  for (std::size_t i = 0; i + 1 < steps.size(); ++i) at = automation::ToObject(Step(at, steps[i]));
  if (equals == std::string_view::npos) return Step(at, steps.back());
  return Put(at, steps.back(), ParseValue(object, std::string(line.substr(equals + 1))));
}

Value Put(const LateBoundPtr& object, std::string_view member, Value value) {
  const bool reference = std::holds_alternative<LateBoundPtr>(value);
  const Value arguments[] = {std::move(value)};
  return object->Invoke({member}, reference ? platform::CallKind::PutReference : platform::CallKind::Put,
                        arguments);
}

LateBoundPtr Reach(const LateBoundPtr& object, std::string_view line) {
  return automation::ToObject(Do(object, line));
}

std::string Text(const LateBoundPtr& object, std::string_view line) {
  return automation::ToText(Do(object, line));
}

int CodeOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const platform::Error& error) {
    return error.number() - platform::kObjectServerErrorBase;
  }
  return 0;
}

int CodeOf(const LateBoundPtr& object, std::string_view line) {
  return CodeOf([&] { Do(object, line); });
}

void Play(const LateBoundPtr& object, const std::vector<std::string>& lines) {
  for (const std::string& line : lines) {
    const std::size_t error = line.find(" ! ");
    const std::size_t result = line.find(" -> ");
    const int code = error == std::string::npos ? 0 : std::stoi(line.substr(error + 3));
    Value value;
    EXPECT_EQ(CodeOf([&] { value = Do(object, line.substr(0, std::min(error, result))); }), code) << line;
    if (result == std::string::npos) continue;
    EXPECT_EQ(automation::ToText(value), line.substr(result + 4)) << line;
  }
}

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  return text.replace(text.find(from), from.size(), to);
}

}  // namespace client
