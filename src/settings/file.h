#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "settings/device_settings.h"

/// The text form of settings, in files that end in ".qm5r":
///
///   QM5R settings 1.0
///   path = Demo Tower/Demo Tower.Floor 1/Thermostat 101
///   program ID = 8000D3550004041D
///   ...
///   [settings]
///   nciSetPts.occ_heat = 21 C
///   FanMode = AUTO              # a comment
///   [calibration]
///   CalibRS = 0 K
///
/// docs/settings.md describes it.
namespace settings {

inline constexpr std::string_view kFileExtension = ".qm5r";

/// Something wrong with a file. Errors keep it from being used.
struct Finding {
  /// From 1.
  std::size_t line = 0;
  bool is_error = true;
  std::string text;
};

/// "rooms.qm5r:12: there is no field \"HeatMin\""; a warning says so before its text.
std::string FindingText(const std::string& file, const Finding& finding);

struct SettingsFile {
  DeviceSettings settings;
  /// All of them, by line.
  std::vector<Finding> findings;
  bool HasErrors() const;
};

/// Reads the text of a file: UTF-8 with or without byte-order mark, lines that end in LF or CR LF. Adjusts no
/// value. Never throws.
SettingsFile ParseSettings(std::string_view text);

/// The text of a file that ParseSettings accepts without an error. A value that a file cannot express, such
/// as a number in place of a choice, becomes a comment.
std::string SettingsText(const DeviceSettings& settings);

/// A rule between two fields that their values break, as the window would find in Celsius and in Fahrenheit.
/// A value that keeps the rule in one of them is right: a room may be set in either.
struct BrokenRule {
  const Field* field;
  const Field* against;
  /// "nciSetPts.occ_cool is less than DeadBand above nciSetPts.occ_heat"
  std::string text;
};
/// Leaves out rules of which a value is not known.
std::vector<BrokenRule> BrokenRules(const DeviceSettings& settings);

/// The lines before the settings: "path = ...". The reader and the writer share the table.
struct OriginRow {
  std::string_view key;
  std::string Origin::*text;
};
std::span<const OriginRow> OriginRows();
inline constexpr std::string_view kNotReadKey = "not read";
inline constexpr std::string_view kSettingsSection = "[settings]";
inline constexpr std::string_view kCalibrationSection = "[calibration]";
inline constexpr std::string_view kFirstWords = "QM5R settings ";
inline constexpr int kMajorVersion = 1;
inline constexpr int kMinorVersion = 0;

}  // namespace settings
