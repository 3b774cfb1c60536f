#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "lns/dialect.h"
#include "lns/object_model.h"

namespace model {

/// One network variable of the device: its value as an array of text fields.
///
/// Only the two network operations need the object server. Owned by the point list.
class CNvCpTable {
 public:
  std::string Name;
  std::string Description;
  /// The variable's position in the device interface; stored, never used.
  std::string Relative;
  /// The data format in which the object server renders the value.
  std::string Format;
  std::string Separator;
  /// The array has changes that have not been written to the device.
  bool ValueAsChanges = false;
  lns::NetworkVariable MyNetworkVariable;
  /// The value contains temperatures, so the format includes the unit system.
  bool LocalizationSpecific = false;
  /// The value's fields; empty until the first read.
  std::vector<std::string> NvAsArray;

  /// How this object server expects to be called; shared by all its points.
  std::shared_ptr<lns::Dialect> Dialect = std::make_shared<lns::Dialect>();

  /// The maximum number of fields; 0 for any. If an object server uses the separator as decimal sign, there
  /// are more fields, and they would shift into each other's places.
  std::size_t MostFields = 0;

  std::string NvAsString() const;

  /// Writes the joined text and clears the changed flag. Does not set the format again: the object server
  /// parses the text in the format and units of the last read.
  ///
  /// Throws the platform's error number with the source "SendNetworkValue" and a text that names the point;
  /// the flag then stays set.
  bool SendNetworkValue();

  /// Reads the value in the units in force (0 SI, 1 US). Throws the platform's error number with the source
  /// "GetNetworkValue" and a text that names the point. A failed read keeps the array and, unless another
  /// device now uses the variable, restores its format, so that a later write is parsed in the right units.
  void GetNetworkValue(
      int display_units, const std::function<bool()>& still_ours = [] { return true; });

  /// The device's fields, read again in the format of the last read, which no other point of the variable may
  /// have changed meanwhile. The array keeps its own. Throws the platform's error.
  std::vector<std::string> ReadBack() const {
    return SplitValue(Dialect->Value(MyNetworkVariable, Separator));
  }

  /// The format in which the array was read; empty before the first read.
  const std::string& FormatRead() const { return format_read_; }

  /// The device's fields in these units, read now. The array keeps its own, and its format is restored; if
  /// that fails, the point counts as not read. Throws as GetNetworkValue does.
  std::vector<std::string> ReadApart(
      int display_units, const std::function<bool()>& still_ours = [] { return true; });

  /// The fields, and the format in which the object server parses them, are in these units, so that they may
  /// be shown and written in them.
  bool IsReadIn(int display_units) const { return format_read_ == FormatFor(display_units); }

  /// The fields read, and their format.
  struct Reading {
    std::vector<std::string> fields, known_fields;
    std::string format;
  };
  Reading Held() const { return {NvAsArray, known_fields_, format_read_}; }
  /// Restores an earlier reading.
  void PutBack(Reading held);

  /// The fields last read from or written to the device.
  const std::vector<std::string>& KnownFields() const { return known_fields_; }
  /// Restores one field. Clears the changed flag if nothing else has changed.
  void DropChange(std::size_t field);

 private:
  std::string FormatFor(int display_units) const;
  std::vector<std::string> SplitValue(const std::string& value) const;
  std::vector<std::string> Read(const std::string& format, const std::function<bool()>& still_ours);
  void RestoreFormat(const std::string& present, const std::function<bool()>& still_ours);

  /// The format in which NvAsArray was read; empty before the first read, and if the object's format is
  /// unknown.
  std::string format_read_;
  std::vector<std::string> known_fields_;
};

}  // namespace model
