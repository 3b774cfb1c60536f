#include "director/simulator_knobs.h"

#include <array>
#include <ostream>

#include "automation/convert.h"
#include "lns/object_model.h"

namespace director {

using platform::Value;

SimulatorKnobs::SimulatorKnobs(const platform::LateBoundPtr& object_server) {
  try {
    control_ = automation::ToObject(object_server->Invoke({"Simulator"}, platform::CallKind::Get, {}));
  } catch (const platform::Error& error) {
    if (!lns::IsUnknownMember(error)) throw;
    throw platform::Error(20003, "director", "The object server is not simulated");
  }
}

Value SimulatorKnobs::Call(std::string_view member, platform::Arguments arguments) {
  return control_->Invoke({member}, platform::CallKind::GetOrMethod, arguments);
}

void SimulatorKnobs::AddFault(const Fault& fault) {
  const std::array<Value, 5> arguments = {fault.device, fault.variable, fault.operation, fault.occurrence,
                                          fault.code};
  Call("AddFault", arguments);
}

void SimulatorKnobs::PrintFaults(std::ostream& out) { out << automation::ToText(Call("Faults")); }

void SimulatorKnobs::ClearFaults() { Call("ClearFaults"); }

void SimulatorKnobs::Vanish(const std::string& device) {
  const Value argument = device;
  Call("Vanish", {&argument, 1});
}

void SimulatorKnobs::Restore(const std::string& device) {
  const Value argument = device;
  Call("Restore", {&argument, 1});
}

void SimulatorKnobs::SetLatency(const std::string& kind, std::int32_t milliseconds) {
  const std::array<Value, 2> arguments = {kind, milliseconds};
  Call("SetLatency", arguments);
}

std::int32_t SimulatorKnobs::Latency(const std::string& kind) {
  const Value argument = kind;
  return automation::ToInteger(Call("Latency", {&argument, 1}));
}

void SimulatorKnobs::PrintJournal(std::ostream& out) {
  const std::string journal = automation::ToText(Call("Journal"));
  out << journal;
  if (!journal.empty() && journal.back() != '\n') out << '\n';
}

void SimulatorKnobs::ClearJournal() { Call("ClearJournal"); }

void SimulatorKnobs::Stop() { Call("Stop"); }

}  // namespace director
