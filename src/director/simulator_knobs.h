#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "automation/convert.h"
#include "lns/members.h"
#include "lns/object_model.h"
#include "platform/late_bound.h"

namespace director {

/// The knobs of a simulated object server. Throws 20003 for a real one.
class SimulatorKnobs {
 public:
  explicit SimulatorKnobs(const platform::LateBoundPtr& object_server) {
    try {
      control_ = automation::ToObject(object_server->Invoke({"Simulator"}, platform::CallKind::Get, {}));
    } catch (const platform::Error& error) {
      if (!lns::IsUnknownMember(error)) throw;
      throw platform::Error(20003, "director", "The object server is not simulated");
    }
  }

  struct Fault {
    /// A device's name or path, and the name of a variable or other object; empty for any.
    std::string device;
    std::string variable;
    /// "read", "write" or a member's name; empty for any.
    std::string operation;
    /// Which matching operation fails, from 1; 0 for all.
    std::int32_t occurrence = 0;
    /// The platform's error code; 0 makes the device vanish.
    std::int32_t code = lns::members::kNoCommunication;
  };
  /// Throws 17006 if the networks have no such device, variable or operation.
  void AddFault(const Fault& fault) {
    Call("AddFault", fault.device, fault.variable, fault.operation, fault.occurrence, fault.code);
  }
  /// A line per fault.
  std::string Faults() { return automation::ToText(Call("Faults")); }
  void ClearFaults() { Call("ClearFaults"); }
  void Vanish(const std::string& device) { Call("Vanish", device); }
  void Restore(const std::string& device) { Call("Restore", device); }

  /// Kinds: any, read, write, open, test.
  void SetLatency(const std::string& kind, std::int32_t milliseconds) {
    Call("SetLatency", kind, milliseconds);
  }
  std::int32_t Latency(const std::string& kind) { return automation::ToInteger(Call("Latency", kind)); }

  /// A line per operation.
  std::string Journal() { return automation::ToText(Call("Journal")); }
  void ClearJournal() { Call("ClearJournal"); }

  /// Ends the simulator.
  void Stop() { Call("Stop"); }

 private:
  template <class... Values>
  platform::Value Call(std::string_view member, const Values&... values) {
    const std::array<platform::Value, sizeof...(values)> arguments{values...};
    return control_->Invoke({member}, platform::CallKind::GetOrMethod, arguments);
  }

  platform::LateBoundPtr control_;
};

}  // namespace director
