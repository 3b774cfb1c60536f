#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lns/dialect.h"
#include "lns/object_model.h"
#include "model/point_list.h"
#include "settings/fields.h"

namespace settings {

/// Some of the fields.
class Selection {
 public:
  /// All fields.
  Selection() : has_(Fields().size(), true) {}

  /// Of comma-separated names, in which "*" stands for any characters ("nciSetPts.*"). An empty list of names
  /// to choose means all. Throws std::invalid_argument for a name that no field has, and if no
  /// field is left.
  Selection(std::string_view chosen, std::string_view excepted);

  bool Has(const Field& field) const { return has_[PositionOf(field)]; }
  /// A calibration that the user chose by name, not merely among all fields.
  bool MeansCalibrations() const { return chosen_; }

 private:
  void Set(std::string_view names, bool has);

  std::vector<bool> has_;
  bool chosen_ = false;
};

/// What a device is, beside its settings. Texts are empty if they are not known.
struct Origin {
  std::string path;
  std::string program_id;
  std::string neuron_id;
  std::string model;
  std::string software_version;
  std::string hvac_type;
  /// Major and minor version of the network module, joined by ".".
  std::string module_version;
  /// UTC: "2026-11-23T10:15:00Z".
  std::string saved;
  /// "user@computer"
  std::string saved_by;
};

/// A variable that could not be read, and why.
struct Unread {
  std::string variable;
  std::string reason;
};

/// A device's settings, as read from it or from a file.
struct DeviceSettings {
  Origin origin;
  /// By position in Fields(); nothing if not known.
  std::vector<std::optional<std::string>> texts{Fields().size()};
  std::vector<Unread> unread;

  std::optional<std::string>& TextOf(const Field& field) { return texts[PositionOf(field)]; }
  const std::optional<std::string>& TextOf(const Field& field) const { return texts[PositionOf(field)]; }
  bool HasNone() const;
  /// Null if the field's variable was not tried.
  const Unread* UnreadOf(const Field& field) const;
};

/// Returns the values of one point in SI. Throws the platform's error.
using ReadPoint = std::function<std::vector<std::string>(const model::PointRow&)>;

/// Whether model, type and versions are read as well, which are four more variables.
enum class Versions { Read, Skip };

/// Reads each variable of the selected fields of one device once. Those that cannot be read are listed with
/// the reason. After a failure to communicate no other is tried: it would take as long again.
DeviceSettings ReadSettings(const ReadPoint& read, Origin origin, const Selection& selection,
                            Versions versions);

/// Leaves the formats in SI, so not for the device on the screen, which reads its points apart.
ReadPoint VariablesOf(const lns::Interface& interface, const std::shared_ptr<lns::Dialect>& dialect);

/// The program ID of the thermostats, and whether another one, in any letter case and with or without blanks,
/// is the same.
std::string_view ThermostatProgramId();
bool IsThermostat(std::string_view program_id);

/// An error's text without the words that name the variable; the original one if it replaced another.
std::string ReasonOf(const platform::Error& error);

}  // namespace settings
