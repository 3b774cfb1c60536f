#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/rules.h"
#include "platform/files.h"
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
  /// The field whose value it is about; null for anything else. Errors name none.
  const Field* field = nullptr;
};

/// "rooms.qm5r:12: there is no field \"HeatMin\""; a warning says so before its text.
std::string FindingText(const std::string& file, const Finding& finding);

struct SettingsFile {
  DeviceSettings settings;
  /// All of them, by line.
  std::vector<Finding> findings;
  bool HasErrors() const;
};

/// Reads a file. Throws std::runtime_error if it is missing, empty, unreadable or larger than 1 MB.
SettingsFile ReadSettingsFile(const platform::Files& files, const std::string& path);

/// Reads the text of a file: UTF-8 with or without byte-order mark, lines that end in LF or CR LF. Adjusts no
/// value. Never throws.
SettingsFile ParseSettings(std::string_view text);

/// The text of a file that ParseSettings accepts without an error. A value that a file cannot express, such
/// as a number in place of a choice, becomes a comment.
std::string SettingsText(const DeviceSettings& settings);

/// A value with its unit: "21 C".
std::string TextWithUnit(const Field& field, const std::string& text);

/// The text of such a value, or what is wrong with it.
struct Value {
  std::string text;
  std::string problem;
};
Value ReadValue(const Field& field, const std::string& value);

/// A rule between two fields that their values break.
struct BrokenRule {
  const Field* field;
  const Field* against;
  model::CrossRule::Relation relation;
  friend bool operator==(const BrokenRule&, const BrokenRule&) = default;
};
/// "nciSetPts.occ_cool is less than DeadBand above nciSetPts.occ_heat"
std::string TextOf(const BrokenRule& rule);
/// For the texts that fields would show; nothing for a text that is not known. Leaves out rules of which a
/// value is not known.
std::vector<BrokenRule> BrokenRules(
    const std::function<std::optional<std::string>(const Field& field)>& shown);
/// As the window would find in Celsius and in Fahrenheit. A value that keeps the rule in one of them is
/// right: a room may be set in either.
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
