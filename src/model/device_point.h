#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "lns/dialect.h"
#include "lns/object_model.h"

namespace model {

/// One network variable of the device as the program reads and writes it: its value as an array of text
/// fields.
///
/// Everything but the two network operations works without the object server. Owned by the point list.
class CNvCpTable {
 public:
  std::string Name;
  std::string Description;
  /// The variable's place in the device interface; stored, never used.
  std::string Relative;
  /// The data format in which the object server renders the value.
  std::string Format;
  std::string Separator;
  /// The array holds edits that have not been written to the device.
  bool ValueAsChanges = false;
  lns::NetworkVariable MyNetworkVariable;
  /// The value contains temperatures, so the format names the unit system too.
  bool LocalizationSpecific = false;
  /// The value's fields; empty until the first read.
  std::vector<std::string> NvAsArray;

  /// How the variable's object server wants to be asked; shared by all its points.
  std::shared_ptr<lns::Dialect> Dialect = std::make_shared<lns::Dialect>();

  /// The most fields that the value can have; 0 for any number. An object server whose numbers carry the
  /// separator as their decimal sign gives more, and each would be taken for another field's value.
  std::size_t MostFields = 0;

  std::string NvAsString() const;

  /// Writes the joined text and clears the changed flag. The format is not set again: the device parses the
  /// text in the format and units of the last read.
  ///
  /// Throws the platform's error number with the source "SendNetworkValue" and a text that names the point;
  /// the flag then stays.
  bool SendNetworkValue();

  /// Reads the value in the units in force (0 SI, 1 US). Throws the platform's error number with the source
  /// "GetNetworkValue" and a text that names the point. A failed read changes nothing: the array stays, and
  /// the format that belongs to it is put back, so that a later write is parsed in the units its texts are
  /// in; unless the variable is somebody else's by then.
  void GetNetworkValue(
      int display_units, const std::function<bool()>& still_ours = [] { return true; });

  /// Whether the fields, and the format in which the device parses them, are in these units, so that they
  /// may be shown and written in them.
  bool IsReadIn(int display_units) const { return format_read_ == FormatFor(display_units); }

  /// What has been read, and in which format.
  struct Reading {
    std::vector<std::string> fields, known_fields;
    std::string format;
  };
  Reading Held() const { return {NvAsArray, known_fields_, format_read_}; }
  /// Puts back what was held, as if it had not been read since.
  void PutBack(Reading held);

  /// The fields that the device is known to hold, the last ones read or written.
  const std::vector<std::string>& KnownFields() const { return known_fields_; }
  /// Puts one of them back. If it was the only change, this clears the changed flag.
  void DropChange(std::size_t field);

 private:
  std::string FormatFor(int display_units) const;
  std::vector<std::string> SplitValue(const std::string& value) const;

  /// The format in which NvAsArray was read; empty before the first read, and if the object may have
  /// another one by now.
  std::string format_read_;
  std::vector<std::string> known_fields_;
};

}  // namespace model
