#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

#include "lns/members.h"
#include "platform/late_bound.h"

namespace director {

/// The knobs of a simulated object server. Throws 20003 for a real one.
class SimulatorKnobs {
 public:
  explicit SimulatorKnobs(const platform::LateBoundPtr& object_server);

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
  void AddFault(const Fault& fault);
  void PrintFaults(std::ostream& out);
  void ClearFaults();
  void Vanish(const std::string& device);
  void Restore(const std::string& device);

  /// Kinds: any, read, write, open, test.
  void SetLatency(const std::string& kind, std::int32_t milliseconds);
  std::int32_t Latency(const std::string& kind);

  void PrintJournal(std::ostream& out);
  void ClearJournal();

  /// Ends the simulator.
  void Stop();

 private:
  platform::Value Call(std::string_view member, platform::Arguments arguments = {});

  platform::LateBoundPtr control_;
};

}  // namespace director
