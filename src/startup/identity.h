#pragma once

#include <string>
#include <string_view>

#include "platform/program.h"

namespace startup {

/// Context numbers of help topics that are not about a field or page of the configuration screen. Shipped
/// numbers never change.
enum HelpTopic : int {
  kStartTopic = 0,  // where the help file opens
  kUnitsTopic = 1201,
  kApplyTopic = 1202,
  kCancelTopic = 1203,
  kRefreshTopic = 1204,
  kExitTopic = 1205,
  kLogTopic = 1206,
  kRegistrationTopic = 1207,
  kSettingsTopic = 1208,
};

/// Numbers of the string table.
enum StringResource : int {
  kPlugInNameText = 101,
  kPlugInProgIdText = 102,
  kPlugInDescriptionText = 103,
  kManufacturerNameText = 104,
  kManufacturerIdText = 105,
  kObjectCommandNameText = 110,
  kObjectCommandDescriptionText = 111,
  kDeviceCommandNameText = 120,
  kDeviceCommandDescriptionText = 121,
  kFirstProgramIdText = 130,
  kFirstTemplateNameText = 131,
  kSecondProgramIdText = 140,
  kSecondTemplateNameText = 141,
  kResourceFilePrefixText = 150,
  kResourceFileFolderText = 151,
  kHelpFileText = 160,
};

/// The default caption of message boxes.
inline constexpr const char* kProgramTitle = "QM5R-FC PIR LNS Device Plug-in";

/// The plug-in's names and version. Loaded first at start-up, then read-only.
struct Identity {
  std::string PlugInProgID;
  std::string PlugInName;
  /// Major, minor and revision number of the executable, joined by ".".
  std::string PlugInVersion;
  std::string PlugInDescription;
  std::string PlugInManufacturerName;
  std::string PlugInManufacturerID;

  /// The machine key that holds the plug-in's registration and settings.
  std::string PlugInKey() const { return "SOFTWARE\\LonWorks\\LCA\\Plug-Ins\\" + PlugInName; }
};

/// A text of the string table, for programs without resources; empty for an unknown number.
std::string_view BuiltInText(int number);

Identity LoadIdentity(const platform::Program& program);

/// The path of the help file, beside the program.
std::string HelpFile(const platform::Program& program);

}  // namespace startup
