#include "startup/identity.h"

namespace startup {

std::string_view BuiltInText(int number) {
  switch (number) {
#define STRING(resource, text) \
  case resource:               \
    return text;
#include "startup/string_table.inc"
#undef STRING
    default:
      return {};
  }
}

Identity LoadIdentity(const platform::Program& program) {
  Identity identity;
  identity.PlugInProgID = program.StringResource(kPlugInProgIdText);
  identity.PlugInName = program.StringResource(kPlugInNameText);
  const auto version = program.FileVersion();
  identity.PlugInVersion = std::to_string(version.major) + "." + std::to_string(version.minor) + "." +
                           std::to_string(version.revision);
  identity.PlugInDescription = program.StringResource(kPlugInDescriptionText);
  identity.PlugInManufacturerName = program.StringResource(kManufacturerNameText);
  identity.PlugInManufacturerID = program.StringResource(kManufacturerIdText);
  return identity;
}

std::string HelpFile(const platform::Program& program) {
  return program.Directory() + "\\" + program.StringResource(kHelpFileText);
}

}  // namespace startup
