#pragma once

#include <optional>
#include <string>
#include <vector>

#include "simulator/installation.h"
#include "simulator/journal.h"

namespace simulator {

/// What an operation is, for latency and faults.
enum class OperationClass { Other, Read, Write, Open, Test };
OperationClass ClassOf(const Operation& operation);

/// The key of a fault that names something the installation does not have, and what is wrong with it.
struct FaultMistake {
  const char* key;
  std::string reason;
};
std::optional<FaultMistake> MistakeOf(const stored::Fault& fault, stored::Installation& installation);

/// The failures to come. Each counts the operations that match it.
class Faults {
 public:
  explicit Faults(const std::vector<stored::Fault>& faults = {});

  void Add(const stored::Fault& fault);
  void Clear() { armed_.clear(); }
  std::size_t Count() const { return armed_.size(); }
  /// One a line, with tabs between: device, item, operation, which of the operations that match and how many
  /// have been seen, and the code.
  std::string Text() const;

  /// Counts the operation; the code of the first fault that is due, 0 for one that makes the device vanish.
  std::optional<int> Strike(const Operation& operation);

 private:
  struct Armed {
    stored::Fault fault;
    int seen = 0;
  };
  std::vector<Armed> armed_;
};

}  // namespace simulator
