#include "simulator/control.h"

#include "automation/convert.h"
#include "simulator/errors.h"
#include "simulator/object.h"

namespace simulator {

Value SimulatorControl::Entry(Arguments arguments) {
  const auto count = static_cast<std::int32_t>(simulation_->journal().Count());
  const std::int32_t number = WholeNumber(arguments[0], 1, count);
  return simulation_->journal().At(static_cast<std::size_t>(number) - 1).Text();
}

int& SimulatorControl::LatencyOf(const Value& kind) {
  const std::string name = automation::ToText(kind);
  model::Latency& latency = simulation_->latency();
  if (name == "any") return latency.any;
  if (name == "read") return latency.read;
  if (name == "write") return latency.write;
  if (name == "open") return latency.open;
  if (name == "test") return latency.test;
  Fail(Code::NotFound, "There is no kind of latency \"" + name + "\".");
}

Value SimulatorControl::SetLatency(Arguments arguments) {
  const int milliseconds = WholeNumber(arguments[1], 0, model::Latency::kMost);
  LatencyOf(arguments[0]) = milliseconds;
  return {};
}

Value SimulatorControl::AddFault(Arguments arguments) {
  simulation_->faults().Add({automation::ToText(arguments[0]), automation::ToText(arguments[1]),
                             automation::ToText(arguments[2]), WholeNumber(arguments[3], 0),
                             WholeNumber(arguments[4], 0, 65535)});
  return {};
}

Value SimulatorControl::RaiseEvent(Arguments arguments) {
  const std::int32_t event = automation::ToInteger(arguments[0]);
  const std::int32_t tag = arguments.size() > 1 ? automation::ToInteger(arguments[1]) : 0;
  const Value text = arguments.size() > 2 ? automation::ToText(arguments[2]) : std::string();
  const Value update[] = {tag, text, LateBoundPtr()};
  const std::size_t used = event == kUpdateEvent ? 3 : event == kErrorEvent ? 1 : 0;
  if (event != kIdleEvent && used == 0) Fail(Code::NotFound, "The object server has no such event.");
  simulation_->RaiseEvent(event, Arguments(update, used));
  return {};
}

Value SimulatorControl::DoFile(void (Simulation::*operation)()) {
  try {
    (*simulation_.*operation)();
  } catch (const FileError& error) {
    Fail(Code::Internal, error.what());
  }
  return {};
}

std::span<const MemberRow<SimulatorControl>> SimulatorControl::Members() {
  using Self = SimulatorControl;
  static const MemberRow<Self> kRows[] = {
      {1, "Path",
       [](Self& self, Arguments) -> Value {
         const std::u8string path = self.simulation_->path().u8string();
         return std::string(path.begin(), path.end());
       }},
      {2, "JournalCount",
       [](Self& self, Arguments) -> Value {
         return static_cast<std::int32_t>(self.simulation_->journal().Count());
       }},
      {3, "JournalEntry", [](Self& self, Arguments arguments) { return self.Entry(arguments); }, nullptr,
       nullptr, 1},
      {4, "Journal", [](Self& self, Arguments) -> Value { return self.simulation_->journal().Text(); }},
      {5, "ClearJournal", nullptr, nullptr,
       [](Self& self, Arguments) -> Value { return self.simulation_->journal().Clear(), Value(); }},
      {6, "Latency", [](Self& self, Arguments arguments) -> Value { return self.LatencyOf(arguments[0]); },
       nullptr, nullptr, 1},
      {7, "SetLatency", nullptr, nullptr,
       [](Self& self, Arguments arguments) { return self.SetLatency(arguments); }, 2},
      {8, "AddFault", nullptr, nullptr,
       [](Self& self, Arguments arguments) { return self.AddFault(arguments); }, 5},
      {9, "FaultCount",
       [](Self& self, Arguments) -> Value {
         return static_cast<std::int32_t>(self.simulation_->faults().Count());
       }},
      {10, "ClearFaults", nullptr, nullptr,
       [](Self& self, Arguments) -> Value { return self.simulation_->faults().Clear(), Value(); }},
      {11, "Vanish", nullptr, nullptr,
       [](Self& self, Arguments arguments) -> Value {
         return self.simulation_->Vanish(automation::ToText(arguments[0])), Value();
       },
       1},
      {12, "Restore", nullptr, nullptr,
       [](Self& self, Arguments arguments) -> Value {
         return self.simulation_->Restore(automation::ToText(arguments[0])), Value();
       },
       1},
      {13, "RaiseEvent", nullptr, nullptr,
       [](Self& self, Arguments arguments) { return self.RaiseEvent(arguments); }, 1, 3},
      {14, "Reload", nullptr, nullptr,
       [](Self& self, Arguments) { return self.DoFile(&Simulation::Reload); }},
      {15, "Save", nullptr, nullptr, [](Self& self, Arguments) { return self.DoFile(&Simulation::Save); }},
      {16, "SaveError", [](Self& self, Arguments) -> Value { return self.simulation_->SaveError(); }},
      {17, "Stop", nullptr, nullptr,
       [](Self& self, Arguments) -> Value {
         if (self.simulation_->on_stop) self.simulation_->on_stop();
         return {};
       }},
  };
  return kRows;
}

}  // namespace simulator
