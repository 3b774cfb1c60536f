#pragma once

#include <string>

#include "simulator/formats.h"
#include "simulator/object.h"

namespace simulator {

/// A device's network variable as one client sees it: the format belongs to this object, the value to the
/// device.
class NetworkVariable : public Simulated<NetworkVariable> {
 public:
  NetworkVariable(Origin origin, stored::DeviceKey key, std::string name);
  static std::span<const MemberRow<NetworkVariable>> Members();

 private:
  const stored::Variable& Type();
  std::int32_t Index();
  Value ReadValue();
  void WriteValue(const Value& value);
  void SetFormat(const Value& value);
  const std::string& FormatName();
  /// Throws 17091 while the data server is paused.
  Format CurrentFormat();
  TextStyle Style() const;
  void RequireAnswer();

  stored::DeviceKey key_;
  std::string name_;
  std::string format_name_;  // empty for the variable's own
  std::optional<Format> format_;
  std::int32_t source_options_ = 0;
  std::int32_t monitor_tag_ = 0;
};

}  // namespace simulator
