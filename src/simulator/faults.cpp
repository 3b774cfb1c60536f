#include "simulator/faults.h"

#include "text/strings.h"

namespace simulator {
namespace {

bool MatchesOperation(const std::string& wanted, const Operation& operation) {
  const auto is = [&](const char* word) { return text::EqualIgnoringCase(wanted, word); };
  if (wanted.empty() || is("any")) return true;
  if (is("read")) return ClassOf(operation) == OperationClass::Read;
  if (is("write")) return ClassOf(operation) == OperationClass::Write;
  const bool put = operation.kind == OperationKind::Put;
  if (is("put")) return put;
  if (wanted.ends_with('='))
    return put && text::EqualIgnoringCase(wanted.substr(0, wanted.size() - 1), operation.member);
  return text::EqualIgnoringCase(wanted, operation.member);
}

bool MatchesPlace(const std::string& wanted, const std::string& name, const std::string& path) {
  return wanted.empty() || wanted == name || wanted == path;
}

bool Matches(const stored::Fault& fault, const Operation& operation) {
  const Place& place = operation.place;
  const std::string device_name = place.device.substr(place.device.rfind('/') + 1);
  const bool on_device = !place.device.empty() && MatchesPlace(fault.device, device_name, place.device);
  return (fault.device.empty() || on_device) && MatchesPlace(fault.item, place.item, place.path) &&
         MatchesOperation(fault.operation, operation);
}

}  // namespace

OperationClass ClassOf(const Operation& operation) {
  if (operation.member == "Value")
    return operation.kind == OperationKind::Put ? OperationClass::Write : OperationClass::Read;
  if (operation.member == "Open") return OperationClass::Open;
  if (operation.member == "Test") return OperationClass::Test;
  return OperationClass::Other;
}

Faults::Faults(const std::vector<stored::Fault>& faults) {
  for (const stored::Fault& fault : faults) Add(fault);
}

void Faults::Add(const stored::Fault& fault) { armed_.push_back({fault}); }

std::optional<int> Faults::Strike(const Operation& operation) {
  std::optional<int> due;
  for (Armed& armed : armed_) {
    if (!Matches(armed.fault, operation)) continue;
    ++armed.seen;
    const bool is_due = armed.fault.occurrence == 0 || armed.fault.occurrence == armed.seen;
    if (is_due && !due) due = armed.fault.code;
  }
  return due;
}

}  // namespace simulator
