#include "session/supported_commands.h"

#include "startup/identity.h"

namespace session {

SupportedCommands MakeSupportedCommands(const platform::Program& program) {
  using namespace startup;
  const auto row = [&program](std::int32_t type, int name, int description, int program_id,
                              int template_name) {
    SupportedCommand command;
    command.CommandId = kConfigureCommand;
    command.ObjectType = type;
    command.CommandName = program.StringResource(name);
    command.CommandDescription = program.StringResource(description);
    command.ProgramId = program.StringResource(program_id);
    command.TemplateName = program.StringResource(template_name);
    return command;
  };
  const auto object_row = [&row](int program_id, int template_name) {
    return row(kLonMarkObjectType, kObjectCommandNameText, kObjectCommandDescriptionText, program_id,
               template_name);
  };
  const auto device_row = [&row](int program_id, int template_name) {
    return row(kAppDeviceType, kDeviceCommandNameText, kDeviceCommandDescriptionText, program_id,
               template_name);
  };
  return {object_row(kFirstProgramIdText, kFirstTemplateNameText),
          device_row(kFirstProgramIdText, kFirstTemplateNameText),
          object_row(kSecondProgramIdText, kSecondTemplateNameText),
          device_row(kSecondProgramIdText, kSecondTemplateNameText)};
}

}  // namespace session
