#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

#include "platform/late_bound.h"

namespace director {

/// The knobs of a simulated object server. A real one has none: then it throws 20003 and says so.
class SimulatorKnobs {
 public:
  explicit SimulatorKnobs(const platform::LateBoundPtr& object_server);

  struct Fault {
    /// A device's name or path, a variable's name or that of anything else; empty is any.
    std::string device;
    std::string variable;
    /// read, write, or a member's name; empty is any.
    std::string operation;
    /// Which matching operation fails, from 1; 0 for every one.
    std::int32_t occurrence = 0;
    /// The platform's error code; 0 makes the device vanish.
    std::int32_t code = 18200;
  };
  /// Throws 17006 for a device, a variable or an operation that the networks do not have.
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

  /// Ends a simulator that was started by hand.
  void Stop();

 private:
  platform::Value Call(std::string_view member, platform::Arguments arguments = {});

  platform::LateBoundPtr control_;
};

}  // namespace director
