#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "simulator/installation.h"

namespace simulator {

/// The place of an operation: the object's address, and the device and item (variable, LonMark object,
/// network) that faults match.
struct Place {
  std::string path;
  std::string device;
  std::string item;
};

enum class OperationKind { Get, Put, Method };

struct Operation {
  Place place;
  std::string member;
  OperationKind kind = OperationKind::Get;
  std::string value;  // the new value, or the arguments
};

struct JournalEntry {
  Operation operation;
  std::string result;
  std::int32_t error = 0;

  /// "path Member -> result", "path Member=value", "path Member(arguments)"; a failure adds " ! code".
  std::string Text() const;
};

/// The operations on the object model in the order in which they began; only the last `kMost`.
class Journal {
 public:
  static constexpr std::size_t kMost = 100000;

  /// Returns the number to pass to Finish or Fail.
  std::size_t Begin(const Operation& operation);
  void Finish(std::size_t number, const std::string& result);
  void Fail(std::size_t number, std::int32_t error);

  std::size_t Count() const { return entries_.size(); }
  const JournalEntry& At(std::size_t index) const { return entries_.at(index); }
  std::string Text() const;
  void Clear();

 private:
  JournalEntry* Find(std::size_t number);

  std::deque<JournalEntry> entries_;
  std::size_t first_number_ = 0;
};

/// The kinds of operations that latency and faults distinguish.
enum class OperationClass { Other, Read, Write, Open, Test };
OperationClass ClassOf(const Operation& operation);

/// The wrong key of a fault, and the reason.
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
  /// One fault per line, separated by tabs: device, item, operation, which matching operation fails, how many
  /// have matched, and the code.
  std::string Text() const;

  /// Counts the operation and returns the code of the first fault that is due; 0 makes the device vanish.
  std::optional<int> Strike(const Operation& operation);

 private:
  struct Armed {
    stored::Fault fault;
    int seen = 0;
  };
  std::vector<Armed> armed_;
};

}  // namespace simulator
