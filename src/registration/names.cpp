#include "registration/names.h"

#include <algorithm>
#include <array>
#include <limits>

#include "platform/error.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace registration {
namespace {

// By code. Code 49 deliberately has no name.
constexpr std::array<const char*, 53> kObjectTypes = {"Object Server",
                                                      "Network",
                                                      "Networks",
                                                      "System",
                                                      "Systems",
                                                      "Subsystem",
                                                      "Subsystems",
                                                      "Application Device",
                                                      "Application Devices",
                                                      "Router",
                                                      "Routers",
                                                      "Router Side",
                                                      "Channel",
                                                      "Channels",
                                                      "Network Interface",
                                                      "Network Interfaces",
                                                      "Subnet",
                                                      "Subnets",
                                                      "Connections",
                                                      "Interface",
                                                      "Interfaces",
                                                      "Template Library",
                                                      "Network Variable",
                                                      "Network Variables",
                                                      "Message Tag",
                                                      "Message Tags",
                                                      "Configuration Property",
                                                      "Configuration Properties",
                                                      "LonMark Object",
                                                      "LonMark Objects",
                                                      "Component Application",
                                                      "Component Applications",
                                                      "Hardware Template",
                                                      "Hardware Templates",
                                                      "Build Template",
                                                      "Build Templates",
                                                      "Device Template",
                                                      "Device Templates",
                                                      "Program Template",
                                                      "Program Templates",
                                                      "Network Service Device",
                                                      "Network Service Devices",
                                                      "Connection Description Template",
                                                      "Connection Description Templates",
                                                      "Error",
                                                      "LonMark Alarm",
                                                      "Object Status",
                                                      "Network Variable Field",
                                                      "Detail Info",
                                                      nullptr,
                                                      "Extension",
                                                      "Extensions",
                                                      "Recovery Status"};

struct Command {
  std::int32_t id;
  const char* name;
};
constexpr Command kCommands[] = {
    {1, "New"},      {2, "Edit Source"},       {10, "Build Image"},    {11, "Commission"},
    {12, "Load"},    {13, "Configure"},        {14, "Calibrate"},      {15, "Connect"},
    {20, "Browse"},  {21, "Monitor"},          {22, "Control"},        {23, "Report"},
    {30, "Online"},  {31, "Offline"},          {32, "Reset"},          {33, "Test"},
    {34, "Wink"},    {40, "Uninstall"},        {41, "Replace"},        {50, "Register"},
    {60, "Recover"}, {61, "Monitor Recovery"}, {70, "Security Level"},
};

std::int16_t Number(const std::string& text) {
  using Limits = std::numeric_limits<std::int16_t>;
  return static_cast<std::int16_t>(
      std::clamp<double>(text::RoundHalfEven(text::LeadingNumber(text)), Limits::min(), Limits::max()));
}

}  // namespace

std::string ObjectTypeName(std::int16_t object_type) {
  const auto index = static_cast<std::size_t>(object_type);
  if (object_type >= 0 && index < kObjectTypes.size() && kObjectTypes[index]) return kObjectTypes[index];
  return "Custom ID = " + std::to_string(object_type);
}

std::string CommandName(std::int32_t command_id) {
  for (const Command& command : kCommands)
    if (command.id == command_id) return command.name;
  return "Custom command " + std::to_string(command_id);
}

Version SplitVersion(std::string_view version) {
  const auto [major, rest] = text::SplitAtFirst(version, ".");
  std::string minor = text::SplitAtFirst(rest, " ").head;
  minor = text::SplitAtFirst(minor, ".").head;
  // A single digit gets a leading zero; its value does not change.
  if (minor.size() == 1) minor.insert(0, "0");
  return {Number(major), Number(minor)};
}

const std::string& Place::Name() const {
  if (!name_) name_ = NameOf(object_);
  return *name_;
}

std::string Place::Text() const {
  std::string text = kind_;
  if (!Name().empty()) text += " " + Name();
  return owner_ ? text + " of " + owner_->Text() : text;
}

std::string NameOf(const lns::Object& object) {
  return platform::ValueOr(std::string("?"), [&] { return object.Name(); });
}

}  // namespace registration
