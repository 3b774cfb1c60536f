#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lns/dialect.h"
#include "lns/object_model.h"
#include "rollout/plan.h"
#include "rollout/record.h"

namespace rollout {

/// How a device ends.
enum class State {
  Same,              // it has every value already
  Verified,          // what was sent was read back
  Refused,           // it holds something else than what was sent, or the platform refused to send it
  ChangedMeanwhile,  // it held neither the value before nor the value after; nothing was written
  Partial,           // some variables were written
  Unreachable,       // it could not be read; nothing was written
  Unknown,           // a write may have arrived, and the device cannot be read
  LeftAlone,         // the plan does nothing with it
  NotTried,          // the run was stopped before
};
/// "changed meanwhile"
std::string_view NameOf(State state);
/// Everything is as the plan wants it.
bool IsDone(State state);

struct Result {
  State state = State::NotTried;
  std::string reason;
};

/// Where a run works.
struct Site {
  /// The device at a path; throws the platform's error.
  std::function<lns::AppDevice(const std::string& path)> find;
  const std::shared_ptr<lns::Dialect>& dialect;
  /// The run ends after the present variable.
  std::function<bool()> is_stopped;
  /// The object server has ended, so that nothing more can be done.
  std::function<bool()> is_lost;
};

/// Does what a plan says, device by device, each variable in one write that is recorded first and then read
/// back. The end of a lost answer is settled by reading. Devices that could not be reached get one more try
/// at the end.
///
/// Throws what recording throws; then nothing was sent that is not recorded.
class Run {
 public:
  Run(const Plan& plan, Record& record, const Site& site) : plan_(plan), record_(record), site_(site) {}

  /// Calls `show` with each device and its result when it is settled, in the plan's order but for the second
  /// tries. Devices without a result have not been tried.
  void Go(const std::function<void(const DevicePlan& device, const Result& result)>& show);

 private:
  const Plan& plan_;
  Record& record_;
  const Site& site_;
};

}  // namespace rollout
