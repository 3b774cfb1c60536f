#pragma once

#include <optional>
#include <string>
#include <vector>

#include "settings/comparison.h"

namespace settings {

/// One device of a report.
struct ReportRoom {
  /// The device's path, or the name of its file.
  std::string name;
  /// "read", "incomplete", "not read" or "another type".
  std::string state;
  /// What is not known of it, and why.
  std::string reason;
  DeviceSettings settings;
  /// With the standard; nothing without one, and for a device of which nothing is known.
  std::optional<Comparison> comparison;
};

/// What is handed over: what rooms hold, and how they differ from a standard.
struct Report {
  /// What the rooms have in common: the network, the pattern or the folder.
  std::string place;
  /// With the offset from UTC: "2026-11-23 11:15 +01:00".
  std::string made;
  /// Empty for a report without names.
  std::string made_by;
  /// The name of the standard; empty if there is none.
  std::string standard_name;
  DeviceSettings standard;
  Selection selection;
  std::vector<ReportRoom> rooms;
};

/// Compares the rooms with the standard, if there is one.
void CompareRooms(Report& report);

/// How a room compares: "equal", "different" or "incomplete"; its state if it was not compared.
std::string ResultOf(const ReportRoom& room);

/// One page without outside parts, to be shown by a browser or printed on A4: a table of the rooms, then for
/// each tab of the window the rooms down and the fields across, with the standard in the head. Deviations are
/// marked by a sign, not by colour alone.
std::string HtmlOf(const Report& report);

/// A row for each room and a column for each field, below a row with the units and one with the standard.
std::string CsvOf(const Report& report);

}  // namespace settings
