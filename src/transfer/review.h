#pragma once

#include <optional>
#include <string>
#include <vector>

#include "settings/comparison.h"
#include "settings/file.h"

/// Settings between the device on the screen and files or other thermostats.
namespace transfer {

/// One line of a review: a field of the device on the screen beside its value elsewhere, or a remark about
/// the whole. Texts are in the units in force.
struct ReviewRow {
  /// Null for a remark about the whole.
  const settings::Field* field = nullptr;
  std::string page, name, held, other, unit, result, remark;
  /// Differs from the device, or something about it is not known.
  bool matters = true;
  /// Whether the text is entered in its field; nothing if there is none to enter.
  std::optional<bool> tick = std::nullopt;
  /// Of no use to this device: ticked only one by one.
  bool is_of_another = false;
};

/// Fields in screen order, with values in these units (0 SI, 1 US).
std::vector<ReviewRow> Compare(const settings::DeviceSettings& device, const settings::DeviceSettings& other,
                               int units);

/// The same for a file that is to be loaded. Begins with what is noteworthy about the file. Fields that
/// differ are ticked, but not the calibrations of another device. A warning says what Apply will store
/// instead, and which rule between fields the texts break.
std::vector<ReviewRow> ReviewOf(const settings::DeviceSettings& device, const settings::SettingsFile& file,
                                int units);

/// "12 of 53 fields differ, 10 are ticked"
std::string CountsOf(const std::vector<ReviewRow>& rows);

/// Comma-separated values with a header line and a byte-order mark.
std::string CsvOf(const std::vector<std::string>& headers, const std::vector<ReviewRow>& rows);

/// The row's texts in the order of the columns.
std::vector<std::string> CellsOf(const ReviewRow& row);

}  // namespace transfer
