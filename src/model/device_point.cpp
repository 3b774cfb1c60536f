#include "model/device_point.h"

#include <cstdint>
#include <limits>
#include <utility>

#include "lns/members.h"
#include "platform/error.h"
#include "text/strings.h"

namespace model {
namespace {

using platform::Error;

using lns::members::kFormatFailed;
using lns::members::kNoCommunication;
using lns::members::kWriteFailed;

const char* TextOf(std::int16_t code) {
  switch (code) {
    case kNoCommunication:
      return "Failed to communicate with target device.";
    case kWriteFailed:
      return "Failed to write data to the network variable object.";
    case kFormatFailed:
      return "An attempt to format the requested data has failed.";
    default:
      return "";
  }
}

/// The object server's code in an error number. Any other error overflows, as in automation's 16-bit
/// arithmetic: error 6 then replaces the composed error and keeps it as its cause.
std::int16_t CodeOf(const Error& error) {
  constexpr std::int32_t kOverflow = 6;
  const std::int64_t code = std::int64_t{error.number()} - platform::kObjectServerErrorBase;
  if (code < std::numeric_limits<std::int16_t>::min() || code > std::numeric_limits<std::int16_t>::max())
    throw Error(kOverflow, error.source(), "Overflow", error.description());
  return static_cast<std::int16_t>(code);
}

}  // namespace

std::string CNvCpTable::NvAsString() const { return text::Join(NvAsArray, Separator); }

std::string CNvCpTable::FormatFor(int display_units) const {
  if (!LocalizationSpecific) return Format;
  return (display_units != 0 ? "#US" : "#SI") + Format;
}

std::vector<std::string> CNvCpTable::SplitValue(const std::string& value) const {
  std::vector<std::string> fields = text::Split(value, Separator);
  if (MostFields != 0 && fields.size() > MostFields)
    throw Error(platform::ObjectServerError(kFormatFailed), "CNvCpTable",
                "The value '" + value + "' has " + std::to_string(fields.size()) + " fields; the most are " +
                    std::to_string(MostFields) + ".");
  return fields;
}

bool CNvCpTable::SendNetworkValue() {
  try {
    Dialect->SetAccessOption(MyNetworkVariable, 0);
    Dialect->SetValue(MyNetworkVariable, NvAsString(), Separator);
  } catch (const Error& error) {
    const std::int16_t code = CodeOf(error);
    const bool known = code == kWriteFailed || code == kFormatFailed;
    // Deliberately no blank after "updating" for an unknown code.
    throw Error(error.number(), "SendNetworkValue",
                known ? "Error updating " + Name + " \r\n" + TextOf(code)
                      : "Error updating" + Name + " \r\n" + error.description());
  }
  ValueAsChanges = false;
  known_fields_ = NvAsArray;
  return true;
}

/// If this fails too, the object may have another format than the fields: they count as not read.
void CNvCpTable::RestoreFormat(const std::string& present, const std::function<bool()>& still_ours) {
  if (format_read_.empty() || format_read_ == present || !still_ours()) return;
  const bool restored =
      platform::ValueOr(false, [this] { return Dialect->SetFormat(MyNetworkVariable, format_read_), true; });
  if (!restored) format_read_.clear();
}

std::vector<std::string> CNvCpTable::Read(const std::string& format,
                                          const std::function<bool()>& still_ours) {
  try {
    Dialect->SetAccessOption(MyNetworkVariable, 0);
    Dialect->SetFormat(MyNetworkVariable, format);
    return SplitValue(Dialect->Value(MyNetworkVariable, Separator));
  } catch (const Error& error) {
    RestoreFormat(format, still_ours);
    const std::int16_t code = CodeOf(error);
    throw Error(
        error.number(), "GetNetworkValue",
        "Error reading " + Name + " \r\n" + (code == kNoCommunication ? TextOf(code) : error.description()));
  }
}

void CNvCpTable::GetNetworkValue(int display_units, const std::function<bool()>& still_ours) {
  const std::string format = FormatFor(display_units);
  NvAsArray = Read(format, still_ours);
  format_read_ = format;
  known_fields_ = NvAsArray;
}

std::vector<std::string> CNvCpTable::ReadApart(int display_units, const std::function<bool()>& still_ours) {
  const std::string format = FormatFor(display_units);
  std::vector<std::string> fields = Read(format, still_ours);
  RestoreFormat(format, still_ours);
  return fields;
}

void CNvCpTable::PutBack(Reading held) {
  NvAsArray = std::move(held.fields);
  known_fields_ = std::move(held.known_fields);
  format_read_ = std::move(held.format);
}

void CNvCpTable::DropChange(std::size_t field) {
  if (field < known_fields_.size()) NvAsArray[field] = known_fields_[field];
  ValueAsChanges = NvAsArray != known_fields_;
}

}  // namespace model
