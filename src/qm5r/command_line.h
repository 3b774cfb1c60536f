#pragma once

#include <string>
#include <vector>

#include "console/command_line.h"

namespace qm5r {

enum class Command { Save, Check, Show, Compare, Snapshot, Report, Plan, Apply, Resume, Undo, History };

/// The options of the command line.
struct Options {
  qm5r::Command command = Command::Save;
  /// Files, paths and patterns of devices, or networks.
  std::vector<std::string> places;
  /// Where the command writes; empty for the output or a usual name.
  std::string target;
  /// What a report compares with; empty for nothing.
  std::string standard;
  /// Empty for a local session.
  std::string interface_name;
  std::string fields;
  std::string except;
  bool json = false;
  bool anonymous = false;
  bool force = false;
  bool odd = false;
  /// The devices that a plan is for.
  std::vector<std::string> to;
  /// The snapshot from which devices are restored; empty for none.
  std::string restore;
  bool out_of_range = false;
  /// Nobody is asked before writing.
  bool yes = false;
  /// Stop after the first devices if one of them is not done; 0 for no canaries.
  std::size_t canary = 0;
  /// Stop after this number of devices that are not done; 0 for never.
  std::size_t stop_after = 0;
  /// Where records are kept; empty for the usual folder.
  std::string records;
  bool fahrenheit = false;
  /// A simulated network instead of the object server; only in programs that have the simulator.
  std::string network_file;
};

struct ParsedCommandLine : console::Parsed {
  qm5r::Options options;
};

/// Takes the arguments in UTF-8, without the program.
ParsedCommandLine ParseCommandLine(std::vector<std::string> arguments, const std::string& version,
                                   bool has_simulator);

}  // namespace qm5r
