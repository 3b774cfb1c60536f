#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"
#include "rollout/plan.h"

namespace rollout {

/// A write of one variable's whole value.
struct Write {
  std::string path;
  std::string neuron_id;
  std::string variable;
  /// The format in which the texts are.
  std::string format;
  std::string before, after;
};

/// What a record says of one write or device, in the order in which it happened.
struct Event {
  enum class Kind { Write, Outcome, Device };
  Kind kind;
  /// UTC.
  std::string time;
  Write write;  // of an outcome only path and variable, of a device only the path
  /// What came of the write, or the end state of the device; then the reason.
  std::string state, reason;
};

/// Who writes what, for the head of a record.
struct Head {
  std::string time;
  /// "user@computer"
  std::string user;
  std::string network;
  /// "apply", "undo", "window", ...
  std::string action;
};

/// The record of a run, written while it goes on. Its file is UTF-8 text, in files that end in ".qm5rrecord":
/// a line for each entry, tabs between its cells, of which the last is the checksum of the others. A line is
/// on the disk when a call returns, so a write is recorded before it is sent. Every call throws the system's
/// error if that fails.
class Record {
 public:
  /// The name of the file begins with time and network; a number makes it distinct.
  Record(platform::Files& files, const std::string& folder, const Head& head, const Plan& plan,
         std::function<std::string()> time);

  const std::string& path() const { return path_; }

  void Begin(const Write& write);
  void End(const Write& write, const std::string& outcome, const std::string& reason);
  void EndDevice(const std::string& path, const std::string& state, const std::string& reason);

 private:
  void Append(std::string_view kind, const std::vector<std::string>& cells);

  std::function<std::string()> time_;
  std::string path_;
  std::unique_ptr<platform::Files::Growing> file_;
};

/// A record as read from its file.
struct RecordFile {
  Head head;
  rollout::Plan plan;
  std::vector<Event> events;
  /// The last line is not complete: the computer stopped while it was written.
  bool is_torn = false;
  /// Lines that cannot be used, each with the reason.
  std::vector<settings::Finding> findings;
};
/// Never throws.
RecordFile ParseRecord(std::string_view text);

inline constexpr std::string_view kRecordExtension = ".qm5rrecord";

}  // namespace rollout
