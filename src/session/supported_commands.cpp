#include "session/supported_commands.h"

#include "startup/identity.h"

namespace session {

SupportedCommands MakeSupportedCommands(const platform::Program& program) {
  using namespace startup;
  SupportedCommands commands;
  for (std::size_t i = 0; i < commands.size(); ++i) {
    const bool is_device = i % 2 == 1, is_second = i >= 2;
    SupportedCommand& row = commands[i];
    row.CommandId = kConfigureCommand;
    row.ObjectType = is_device ? kAppDeviceType : kLonMarkObjectType;
    row.CommandName = program.StringResource(is_device ? kDeviceCommandNameText : kObjectCommandNameText);
    row.CommandDescription =
        program.StringResource(is_device ? kDeviceCommandDescriptionText : kObjectCommandDescriptionText);
    row.ProgramId = program.StringResource(is_second ? kSecondProgramIdText : kFirstProgramIdText);
    row.TemplateName = program.StringResource(is_second ? kSecondTemplateNameText : kFirstTemplateNameText);
  }
  return commands;
}

}  // namespace session
