#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "model/point_list.h"
#include "rollout/plan.h"
#include "rollout/record.h"
#include "text/pattern.h"

namespace rollout {

/// What one variable of a device is to hold.
class Goal {
 public:
  explicit Goal(const model::PointRow& row) : row_(row) {}
  virtual ~Goal() = default;

  const model::PointRow& row() const { return row_; }
  /// The units (0 SI, 1 US) in which the texts are.
  virtual int units() const = 0;
  /// The format that a variable in these units has; empty for any.
  virtual std::string format() const { return {}; }
  virtual bool IsReached(const std::vector<std::string>& fields) const = 0;
  /// How the fields differ from those before and those wanted; empty if they are one of them.
  virtual std::string ChangeIn(const std::vector<std::string>& fields) const = 0;
  /// The fields to write to a variable that holds these.
  virtual std::vector<std::string> Wanted(std::vector<std::string> fields) const = 0;

 private:
  const model::PointRow& row_;
};

/// What a run does with one device, in the order of the points.
struct DeviceWork {
  std::string path;
  std::string neuron_id;
  /// Why the device is left alone; empty if it is not.
  std::string problem;
  std::vector<std::unique_ptr<const Goal>> goals;
};

/// The work of a plan, which it refers to.
std::vector<DeviceWork> WorkOf(const Plan& plan);

/// The work that puts back what a record's run wrote to the devices whose paths match: every variable whole,
/// under its recorded format, if it still holds what the run left.
std::vector<DeviceWork> UndoOf(const RecordFile& record, const text::Pattern& path);

/// The devices of a record's plan that its run has not done.
Plan RestOf(const RecordFile& record);

}  // namespace rollout
