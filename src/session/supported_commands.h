#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "platform/program.h"

namespace session {

/// Command and object-type codes as directors send them.
inline constexpr std::int32_t kConfigureCommand = 13;
inline constexpr std::int32_t kRegisterCommand = 50;
inline constexpr std::int32_t kDeregisterCommand = 51;
inline constexpr std::int32_t kAppDeviceType = 7;
inline constexpr std::int32_t kLonMarkObjectType = 28;

/// One command that the plug-in accepts, and what it is registered under.
struct SupportedCommand {
  std::int32_t CommandId = 0;
  std::int32_t ObjectType = 0;
  std::string CommandName;
  std::string CommandDescription;
  bool Enabled = true;
  std::int32_t TemplateKind = 3;
  std::string ProgramId;
  std::string TemplateName;
  std::string CommandText;
};

/// Rows 2 and 3 repeat rows 0 and 1 for the second program ID, also where the two program IDs are equal.
using SupportedCommands = std::array<SupportedCommand, 4>;

SupportedCommands MakeSupportedCommands(const platform::Program& program);

}  // namespace session
