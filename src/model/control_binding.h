#pragma once

#include <array>
#include <string>
#include <vector>

#include "model/configuration_screen.h"
#include "model/device_point.h"
#include "model/point_list.h"
#include "model/rules.h"
#include "ui/control.h"

namespace model {

/// Binds one field of a device point to the control that shows it, with the field's texts, display rounding
/// and limits. Holds no copy of the value, so bindings of one point see each other's changes.
///
/// Owned by the binding list; point and control are shared and outlive it.
class CNvCtrlTable {
 public:
  std::string Name;
  std::string Description;
  /// The kind of item: "CP", "NVI" or "NVO".
  std::string Typee;
  /// Null for a field that is not shown.
  ui::Control* TheControl = nullptr;
  std::int16_t ItemArrayIndex = 0;
  CNvCpTable* NvCpTable = nullptr;
  bool RoundValue = false;
  double Ceiling = 0;
  /// The tag under which the object server monitors the field: its row in the catalogue, from 1.
  std::int32_t MonitorTag = 0;
  /// A value exactly on a limit is stored a little inside it.
  bool OffsetValue = false;

  /// Limits as text, by unit index (0 SI, 1 US). Another index throws 9, text that is no number throws 13.
  std::string MaxLimit(int units) const;
  void SetMaxLimit(int units, const std::string& text);
  std::string MinLimit(int units) const;
  void SetMinLimit(int units, const std::string& text);
  model::Range Range(int units) const { return {MinLimit(units), MaxLimit(units), OffsetValue}; }

  /// The format of the point's network variable.
  std::string DsFormatType() const { return NvCpTable->MyNetworkVariable.FormatType(); }
  void SetDsFormatType(const std::string& text) { NvCpTable->MyNetworkVariable.SetFormatType(text); }

  std::string NvString() const { return NvCpTable->NvAsString(); }

  /// The field's text for display, rounded to the step, if any. Throws 9 if the point has no such field, for
  /// example before it was read.
  std::string Value() const;
  /// The same for the value last known from the device.
  std::string KnownValue() const;
  /// Stores the text in the field and marks the point as changed. Throws 9 if the point has no such field,
  /// and 13 for a text that contains the point's separator, which would shift all later fields.
  void SetValue(const std::string& text);
  /// Restores the value last known from the device.
  void DropChange() const { NvCpTable->DropChange(static_cast<std::size_t>(ItemArrayIndex)); }

  /// Clears the point's changed flag.
  void Initialize() { NvCpTable->ValueAsChanges = false; }

 private:
  using Limits = std::array<double, 2>;
  /// The position of the field in its point.
  std::size_t Place() const;
  std::string Rounded(const std::string& field) const;

  Limits lower_{};
  Limits upper_{};
};

/// The catalogue's fields, each bound to its point and control.
using BindingList = std::vector<CNvCtrlTable>;

/// One binding per row, in row order. Throws 5 for a point that is not in the list and 340 for a control that
/// is not on the screen.
BindingList MakeBindings(const PointList& points, const ConfigurationScreen& screen);

}  // namespace model
