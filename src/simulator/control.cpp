#include "simulator/control.h"

#include "automation/convert.h"
#include "simulator/errors.h"
#include "simulator/object.h"

namespace simulator {

std::string SimulatorControl::Entry(Arguments arguments) {
  const auto count = static_cast<std::int32_t>(simulation_->journal().Count());
  const std::int32_t number = WholeNumber(arguments[0], 1, count);
  return simulation_->journal().At(static_cast<std::size_t>(number) - 1).Text();
}

int& SimulatorControl::LatencyOf(Arguments arguments) {
  const std::string name = automation::ToText(arguments[0]);
  for (const auto& [kind, latency] : stored::kLatencies)
    if (name == kind) return simulation_->latency().*latency;
  Fail(Code::NotFound, "There is no kind of latency \"" + name + "\".");
}

void SimulatorControl::SetLatency(Arguments arguments) {
  const int milliseconds = WholeNumber(arguments[1], 0, stored::Latency::kMost);
  LatencyOf(arguments) = milliseconds;
}

void SimulatorControl::AddFault(Arguments arguments) {
  const stored::Fault fault{automation::ToText(arguments[0]), automation::ToText(arguments[1]),
                            automation::ToText(arguments[2]), WholeNumber(arguments[3], 0),
                            WholeNumber(arguments[4], 0, 65535)};
  if (const auto mistake = MistakeOf(fault, simulation_->installation()))
    Fail(Code::NotFound, mistake->reason);
  simulation_->faults().Add(fault);
}

void SimulatorControl::RaiseEvent(Arguments arguments) {
  const std::int32_t event = automation::ToInteger(arguments[0]);
  const std::int32_t tag = arguments.size() > 1 ? automation::ToInteger(arguments[1]) : 0;
  const Value text = arguments.size() > 2 ? automation::ToText(arguments[2]) : std::string();
  const Value update[] = {tag, text, LateBoundPtr()};
  const std::size_t used = event == kUpdateEvent ? 3 : event == kErrorEvent ? 1 : 0;
  if (event != kIdleEvent && used == 0) Fail(Code::NotFound, "The object server has no such event.");
  simulation_->RaiseEvent(event, Arguments(update, used));
}

void SimulatorControl::DoFile(void (Simulation::*operation)()) {
  try {
    (*simulation_.*operation)();
  } catch (const FileError& error) {
    Fail(Code::Internal, error.what());
  }
}

std::span<const MemberRow<SimulatorControl>> SimulatorControl::Members() {
  using Self = SimulatorControl;
  static const Row kRows[] = {
      Property(1, "Path",
               [](Self& self) {
                 const std::u8string path = self.simulation_->path().u8string();
                 return std::string(path.begin(), path.end());
               }),
      Property(2, "JournalCount",
               [](Self& self) { return static_cast<std::int32_t>(self.simulation_->journal().Count()); }),
      Indexed(3, "JournalEntry", Of<&Self::Entry>),
      Property(4, "Journal", [](Self& self) { return self.simulation_->journal().Text(); }),
      Function(5, "ClearJournal", [](Self& self) { self.simulation_->journal().Clear(); }),
      Indexed(6, "Latency", Of<&Self::LatencyOf>),
      Function(7, "SetLatency", Of<&Self::SetLatency>, 2),
      Function(8, "AddFault", Of<&Self::AddFault>, 5),
      Property(9, "FaultCount",
               [](Self& self) { return static_cast<std::int32_t>(self.simulation_->faults().Count()); }),
      Property(18, "Faults", [](Self& self) { return self.simulation_->faults().Text(); }),
      Function(10, "ClearFaults", [](Self& self) { self.simulation_->faults().Clear(); }),
      Function(
          11, "Vanish",
          [](Self& self, Arguments device) { self.simulation_->Vanish(automation::ToText(device[0])); }, 1),
      Function(
          12, "Restore",
          [](Self& self, Arguments device) { self.simulation_->Restore(automation::ToText(device[0])); }, 1),
      Function(13, "RaiseEvent", Of<&Self::RaiseEvent>, 1, 3),
      Function(14, "Reload", [](Self& self) { self.DoFile(&Simulation::Reload); }),
      Function(15, "Save", [](Self& self) { self.DoFile(&Simulation::Save); }),
      Property(16, "SaveError", [](Self& self) { return self.simulation_->SaveError(); }),
      Function(17, "Stop",
               [](Self& self) {
                 if (self.simulation_->on_stop) self.simulation_->on_stop();
               }),
  };
  return kRows;
}

}  // namespace simulator
