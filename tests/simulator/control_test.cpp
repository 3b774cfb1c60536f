#include <gtest/gtest.h>

#include "automation/convert.h"
#include "simulator/client.h"

namespace {

using namespace client;
using Lines = std::vector<std::string>;

TEST(Control, JournalHoldsExactlyWhatWasAsked) {
  World world;
  const LateBoundPtr root = world.Open();
  const LateBoundPtr variable = Reach(root, kVariablesOfA + "(nciHvacType)");
  const LateBoundPtr service = Reach(root, kSystem + ".NetworkServiceDevice");
  Do(root, "Simulator.ClearJournal");
  Do(root, "Simulator.JournalCount");  // looking at the journal leaves no trace; reaching the control does
  world.simulation->journal().Clear();

  Do(variable, "SourceOptions=0");
  Put(variable, "DsFormatType", std::string("#SISNVT_hvac_type"));
  Do(variable, "Value");
  CodeOf(variable, "Value=nonsense");
  CodeOf(variable, "Colour");
  CodeOf(service, "NetworkInterface=nothing");
  Do(root, "Networks(1).IsOpen");
  Do(root, kDeviceA + ".Test");
  const std::string path = "T/S.F/A/nciHvacType ";
  const Lines expected = {
      path + "SourceOptions=0",
      path + "DsFormatType=#SISNVT_hvac_type",
      path + "Value -> HVT_FAN_COIL",
      path + "Value=nonsense ! 18035",
      path + "Colour ! " + std::to_string(platform::kUnknownName),
      "T/S:NetworkServiceDevice NetworkInterface=nothing ! 17005",
      "LcaObjectServer Networks(1)",
      "LcaObjectServer:Networks Item(1)",
      "T IsOpen -> True",
  };
  Lines lines = world.Journal();
  EXPECT_EQ(lines.back(), "T/S.F/A Test() -> 0");
  lines.resize(expected.size());
  EXPECT_EQ(lines, expected);

  const LateBoundPtr control = Reach(root, "Simulator");
  const std::string count = Text(control, "JournalCount");
  EXPECT_EQ(Text(control, "JournalEntry(1)"), expected[0]);
  EXPECT_EQ(Text(control, "JournalEntry(" + count + ")"), "LcaObjectServer Simulator");
  EXPECT_EQ(CodeOf(control, "JournalEntry(0)"), 17090);
  EXPECT_EQ(Text(control, "Journal").substr(0, expected[0].size() + 1), expected[0] + "\n");
  EXPECT_EQ(Text(control, "JournalCount"), count);
}

TEST(Control, FaultsHitTheOperationTheyName) {
  const struct {
    const char* fault;
    std::vector<int> reads_of_set_points;
    int read_of_type;
    int write_of_set_points;
  } cases[] = {
      {"A;nciSetPts;read;1;18200", {18200, 0, 0}, 0, 0},
      {"A;nciSetPts;read;2;18200", {0, 18200, 0}, 0, 0},
      {"A;nciSetPts;read;0;17008", {17008, 17008, 17008}, 0, 0},
      {"T/S.F/A;;read;3;18200", {0, 0, 18200}, 0, 0},
      {"A;;any;4;18200", {0, 0, 0}, 18200, 0},
      {";nciHvacType;Value;1;5", {0, 0, 0}, 5, 0},
      {"A;nciSetPts;write;1;18034", {0, 0, 0}, 0, 18034},
      {";T/S.F/A/nciSetPts;value;4;18034", {0, 0, 0}, 0, 18034},
      {"B;;read;0;18200", {0, 0, 0}, 0, 0},
      {"A;nciSetPts;test;0;18200", {0, 0, 0}, 0, 0},
      {"A;nciSetPts;read;2;0", {0, 18200, 18200}, 18200, 18200},  // the device vanishes
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.fault);
    World world;
    const LateBoundPtr root = world.Open();
    const LateBoundPtr points = Reach(root, kVariablesOfA + "(nciSetPts)");
    const LateBoundPtr type = Reach(root, kVariablesOfA + "(nciHvacType)");
    Do(root, "Simulator.AddFault(" + std::string(c.fault) + ")");
    for (const int code : c.reads_of_set_points) EXPECT_EQ(CodeOf(points, "Value"), code);
    EXPECT_EQ(CodeOf(type, "Value"), c.read_of_type);
    EXPECT_EQ(CodeOf(points, "Value=1,2,3,4,5,6"), c.write_of_set_points);
    Do(root, "Simulator.ClearFaults");
    Do(root, "Simulator.Restore(A)");
    EXPECT_EQ(CodeOf(points, "Value"), 0);
  }
}

TEST(Control, FaultsOfTheFileAreArmed) {
  World world(Replaced(kWorld, "\"networks\"",
                       R"("faults": [{"item": "T", "operation": "open", "occurrence": 2, "code": 17008},
                                     {"operation": "Mode", "occurrence": 0, "code": 17119}], "networks")"));
  const LateBoundPtr root = world.simulation->CreateObjectServer();
  Do(root, "Open");
  EXPECT_EQ(CodeOf(root, "Networks(T).Open"), 0);
  EXPECT_EQ(CodeOf(root, kSystem + ".Open"), 17008);
  EXPECT_EQ(CodeOf(root, kSystem + ".Open"), 0);
  EXPECT_EQ(CodeOf(root, kDeviceA + ".Interface.LonMarkObjects(1).Mode=0"), 17119);
  EXPECT_EQ(Text(root, "Simulator.FaultCount"), "2");
}

TEST(Control, VanishedDevicesStayInTheDatabase) {
  World world;
  const std::string value = kVariablesOfA + "(nciMajVer).Value";
  Play(world.Open(),
       {"Simulator.Vanish(T/S.F/A)", value + " ! 18200", kDeviceA + ".State -> 4", kDeviceA + ".Test -> 1",
        "Simulator.Restore(A)", value + " -> 1", "Simulator.Vanish(Z) ! 17006"});
}

TEST(Control, LatencyIsSleptAndLongCallsTellThatTheyLast) {
  World world;
  const LateBoundPtr root = world.Open();
  const LateBoundPtr variable = Reach(root, kVariablesOfA + "(nciMajVer)");
  const LateBoundPtr control = Reach(root, "Simulator");
  std::vector<int> events;
  auto subscription = root->Advise([&](std::int32_t event, platform::Arguments) { events.push_back(event); });
  Do(control, "SetLatency(read;700)");
  Do(control, "SetLatency(write;40)");
  Do(control, "SetLatency(test;5)");
  EXPECT_EQ(Text(control, "Latency(read)"), "700");
  EXPECT_EQ(CodeOf(control, "SetLatency(reed;1)"), 17006);
  EXPECT_EQ(CodeOf(control, "SetLatency(read;-1)"), 17090);

  Do(variable, "Value");
  EXPECT_EQ(world.slept, std::vector<int>({700}));
  EXPECT_TRUE(events.empty());
  Do(root, kSystem + ".BeginNssIdleEvent(200)");
  world.slept.clear();
  Do(variable, "Value");
  Do(variable, "Value=1");
  EXPECT_EQ(world.slept, std::vector<int>({200, 200, 200, 100, 40}));
  EXPECT_EQ(events, std::vector<int>({9, 9, 9}));

  subscription.reset();
  Do(variable, "Value");
  EXPECT_EQ(events.size(), 3u) << "nobody listens any more";
  Do(root, kSystem + ".EndNssIdleEvent");
  Do(control, "SetLatency(any;1)");
  world.slept.clear();
  Do(variable, "Name");
  Do(variable, "Value");
  EXPECT_EQ(world.slept, std::vector<int>({1, 701}));
}

TEST(Control, EventsReachEverySession) {
  World world;
  const LateBoundPtr director = world.simulation->CreateObjectServer();
  const LateBoundPtr plug_in = world.simulation->CreateObjectServer();
  std::vector<std::string> seen;
  std::unique_ptr<platform::Subscription> second;
  auto first = plug_in->Advise([&](std::int32_t event, platform::Arguments arguments) {
    std::string line = std::to_string(event);
    for (const Value& argument : arguments)
      line +=
          " " + (std::holds_alternative<LateBoundPtr>(argument) ? "object" : automation::ToText(argument));
    seen.push_back(line);
    second.reset();  // disconnecting while an event is raised is allowed
  });
  second = plug_in->Advise([&](std::int32_t, platform::Arguments) { seen.push_back("second"); });
  const LateBoundPtr control = Reach(director, "Simulator");
  Do(control, "RaiseEvent(13;5;21.5 C)");
  Do(control, "RaiseEvent(20;7)");
  Do(control, "RaiseEvent(9)");
  EXPECT_EQ(CodeOf(control, "RaiseEvent(14)"), 17006);
  EXPECT_EQ(seen, Lines({"13 5 21.5 C object", "20 7", "9"}));
  EXPECT_THROW(control->Advise([](std::int32_t, platform::Arguments) {}), platform::Error);
}

}  // namespace
