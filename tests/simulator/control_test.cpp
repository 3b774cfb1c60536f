#include "simulator/client.h"
#include "text/strings.h"

namespace {

using namespace client;
using Control = OpenWorld;

TEST_F(Control, JournalRecordsExactlyTheOperations) {
  const LateBoundPtr variable = Reach(root, kVariablesOfA + "(nciHvacType)");
  const LateBoundPtr service = Reach(root, kSystem + ".NetworkServiceDevice");
  Do(control, "ClearJournal");  // the control's own use is not recorded
  Play(variable, {"SourceOptions=0", "DsFormatType=#SISNVT_hvac_type", "Value", "Value=nonsense ! 18035"});
  CodeOf(service, "NetworkInterface=nothing");
  Do(root, "Networks(1).IsOpen");
  Do(device, "Test");
  Reach(root, "Simulator");
  const std::string path = "T/S.F/A/nciHvacType ";
  const std::vector<std::string> lines = {path + "SourceOptions=0",
                                          path + "DsFormatType=#SISNVT_hvac_type",
                                          path + "Value -> HVT_FAN_COIL",
                                          path + "Value=nonsense ! 18035",
                                          "T/S:NetworkServiceDevice NetworkInterface=nothing ! 17005",
                                          "LcaObjectServer Networks(1)",
                                          "LcaObjectServer:Networks Item(1)",
                                          "T IsOpen -> True",
                                          "T/S.F/A Test() -> 0"};
  EXPECT_EQ(Text(control, "Journal"), text::Join(lines, "\n") + "\n");
  Play(control, {"JournalCount -> 9", "JournalEntry(1) -> " + lines[0], "JournalEntry(9) -> " + lines[8],
                 "JournalEntry(0) ! 17090"});
}

TEST_F(Control, FaultsStrikeMatchingOperations) {
  // The codes of three reads of a variable, a read of another, and a write of the first.
  const std::pair<std::string, std::string> cases[] = {
      {"A;nciSetPts;read;2;18200", "0 18200 0 0 0 "},
      {"A;nciSetPts;read;0;7", "7 7 7 0 0 "},
      {"A;;any;4;7", "0 0 0 7 0 "},
      {";nciHvacType;Value;1;5", "0 0 0 5 0 "},
      {"A;nciSetPts;write;1;7", "0 0 0 0 7 "},
      {"B;;read;0;7", "0 0 0 0 0 "},
      {";nciSetPts;put;1;7", "0 0 0 0 7 "},
      {";nciSetPts;read;3;0", "0 0 18200 18200 18200 "},  // the device vanishes
  };
  const LateBoundPtr points = Reach(root, kVariablesOfA + "(nciSetPts)");
  const LateBoundPtr type = Reach(root, kVariablesOfA + "(nciHvacType)");
  for (const auto& [fault, expected] : cases) {
    Do(root, "Simulator.AddFault(" + fault + ")");
    std::string codes;
    for (const LateBoundPtr& variable : {points, points, points, type})
      codes += std::to_string(CodeOf(variable, "Value")) + " ";
    codes += std::to_string(CodeOf(points, "Value=1,2,3,4,5,6")) + " ";
    EXPECT_EQ(codes, expected) << fault;
    Play(root, {"Simulator.ClearFaults", "Simulator.Vanish(Z) ! 17006", "Simulator.Restore(A)",
                kVariablesOfA + "(nciSetPts).Value"});
  }
}

TEST_F(Control, KnobsNeverFail) {
  Play(root, {"Simulator.AddFault(;;;0;7)", "Simulator.SetLatency(any;60000)", "IsOpen ! 7",
              "Simulator.FaultCount -> 1"});
  EXPECT_EQ(Text(root, "Simulator.Faults"), "any\tany\tany\tevery one, 1 seen\t7\n");
  Play(root, {"Simulator.ClearFaults", "Simulator.SetLatency(any;0)", "IsOpen -> True"});
  EXPECT_EQ(world.slept, std::vector<int>({60000}));
}

TEST_F(Control, FaultsMustNameExistingItems) {
  const std::string good[] = {"T/S.F/A;T/S.F/A/nciSetPts;Value",
                              "A;Thermostat;mode",
                              ";T/S:ComponentApps;Add",
                              ";Switch;Import",
                              ";nvoLamp;Read",
                              ";Configure;",
                              ";LcaNetworkInterface:L1;Name",
                              ";F;",
                              ";U;Systems"};
  const std::string bad[] = {"Z;;",     "A;nciSetPt;read", "A;nvoLamp;read",
                             "A;;raed", ";nciSetPt;",      ";T/X:ComponentApps;Add"};
  for (const std::string& fault : good) EXPECT_EQ(CodeOf(control, "AddFault(" + fault + ";1;7)"), 0) << fault;
  for (const std::string& fault : bad)
    EXPECT_EQ(CodeOf(control, "AddFault(" + fault + ";1;7)"), 17006) << fault;
}

TEST_F(Control, LatencyDelaysCallsAndLongDelaysRaiseEvents) {
  const LateBoundPtr variable = Reach(root, kVariablesOfA + "(nciMajVer)");
  std::vector<int> events;
  auto subscription = root->Advise([&](std::int32_t event, platform::Arguments) { events.push_back(event); });
  Play(control, {"SetLatency(read;700)", "SetLatency(write;40)", "SetLatency(test;5)", "Latency(read) -> 700",
                 "SetLatency(reed;1) ! 17006", "SetLatency(read;-1) ! 17090"});
  Do(variable, "Value");
  EXPECT_EQ(world.slept, std::vector<int>({700}));
  Do(root, kSystem + ".BeginNssIdleEvent(200)");
  Play(variable, {"Value", "Value=1"});
  EXPECT_EQ(world.slept, std::vector<int>({700, 200, 200, 200, 100, 40}));
  EXPECT_EQ(events, std::vector<int>({9, 9, 9}));

  subscription.reset();
  Do(variable, "Value");
  EXPECT_EQ(events.size(), 3u) << "no subscriber is left";
}

TEST_F(Control, EventsReachEverySession) {
  const LateBoundPtr plug_in = world.simulation->CreateObjectServer();
  std::vector<std::string> seen;
  std::unique_ptr<platform::Subscription> second;
  auto first = plug_in->Advise([&](std::int32_t event, platform::Arguments arguments) {
    seen.push_back(std::to_string(event));
    for (const Value& argument : arguments)
      seen.back() +=
          " " + (std::holds_alternative<LateBoundPtr>(argument) ? "object" : automation::ToText(argument));
    second.reset();  // a handler may disconnect during an event
  });
  second = plug_in->Advise([&](std::int32_t, platform::Arguments) { seen.push_back("second"); });
  Play(control, {"RaiseEvent(13;5;21.5 C)", "RaiseEvent(20;7)", "RaiseEvent(9)", "RaiseEvent(14) ! 17006"});
  EXPECT_EQ(seen, std::vector<std::string>({"13 5 21.5 C object", "20 7", "9"}));
  EXPECT_THROW(control->Advise([](std::int32_t, platform::Arguments) {}), platform::Error);
}

}  // namespace
