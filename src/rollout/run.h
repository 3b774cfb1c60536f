#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lns/dialect.h"
#include "lns/object_model.h"
#include "rollout/record.h"
#include "rollout/work.h"

namespace rollout {

/// How a device ends.
enum class State {
  Same,              // it has every value already
  Verified,          // what was sent was read back
  Refused,           // it holds something else than what was sent, or the platform refused to send it
  ChangedMeanwhile,  // it holds neither the value before nor the one wanted; nothing was written
  Partial,           // some variables were written
  Unreachable,       // it could not be read; nothing was written
  Unknown,           // a write may have arrived, and the device cannot be read
  LeftAlone,         // nothing is to be done with it, or can be
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

/// Does the work, device by device, each variable in one write that is recorded first and then read
/// back. The end of a lost answer is settled by reading. Devices that could not be reached get one more try
/// at the end.
///
/// Throws what recording throws; then nothing was sent that is not recorded.
class Run {
 public:
  Run(const std::vector<DeviceWork>& work, Record& record, const Site& site)
      : work_(work), record_(record), site_(site) {}

  /// Calls `show` with each device and its result when it is settled, in their order but for the second
  /// tries. Devices without a result have not been tried.
  void Go(const std::function<void(const DeviceWork& device, const Result& result)>& show);

 private:
  const std::vector<DeviceWork>& work_;
  Record& record_;
  const Site& site_;
};

}  // namespace rollout
