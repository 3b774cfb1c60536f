#pragma once

#include <optional>
#include <string>
#include <vector>

#include "simulator/installation.h"
#include "simulator/journal.h"

namespace simulator {

/// The kinds of operations that latency and faults distinguish.
enum class OperationClass { Other, Read, Write, Open, Test };
OperationClass ClassOf(const Operation& operation);

/// The wrong key of a fault, and what is wrong with it.
struct FaultMistake {
  const char* key;
  std::string reason;
};
std::optional<FaultMistake> MistakeOf(const stored::Fault& fault, stored::Installation& installation);

/// The faults that are set. Each counts the operations that match it.
class Faults {
 public:
  explicit Faults(const std::vector<stored::Fault>& faults = {});

  void Add(const stored::Fault& fault);
  void Clear() { armed_.clear(); }
  std::size_t Count() const { return armed_.size(); }
  /// One fault per line, separated by tabs: device, item, operation, which matching operation fails and how
  /// many were seen, and the code.
  std::string Text() const;

  /// Counts the operation and returns the code of the first fault that is due; 0 if the device vanishes.
  std::optional<int> Strike(const Operation& operation);

 private:
  struct Armed {
    stored::Fault fault;
    int seen = 0;
  };
  std::vector<Armed> armed_;
};

}  // namespace simulator
