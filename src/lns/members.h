#pragma once

#include <cstdint>

#include "platform/late_bound.h"

/// Every name and number of the object server's object model that the program uses, and nothing else of it
/// anywhere else: for another release of LNS this is the file to edit.
///
/// A member with a number is called by it, the name only explains it; all others are looked up by name.
///
/// Remarks: "documented" stands in the platform's manuals, with the release where they tell which one has
/// added it; "inferred" follows from neighbouring documentation and has not been seen in it; "chosen" is our
/// own choice among several that fit, and nothing fails where an object server does not know it.
namespace lns::members {

using platform::Member;

// The object server control. Its numbers are those of its dispatch interface.
inline constexpr Member kNetworks{"Networks", 1};    // documented; its number inferred
inline constexpr Member kOpenOption{"(option)", 5};  // chosen; left out where it is unknown
inline constexpr Member kRemoteNetworkInterfaces{"RemoteNetworkInterfaces", 6};  // inferred
inline constexpr Member kNetworkInterfaces{"NetworkInterfaces"};                 // documented
inline constexpr Member kServerIsOpen{"IsOpen", 8};                              // inferred
inline constexpr Member kRemoteFlag{"RemoteFlag", 9};                            // documented
inline constexpr Member kActiveRemoteNI{"ActiveRemoteNI", 10};                   // documented
inline constexpr Member kFlags{"Flags", 11};                                     // documented, before 3.0
inline constexpr Member kServerClose{"Close", 12};                               // documented
inline constexpr Member kServerOpen{"Open", 13};                                 // documented, before 3.0

// Bits of the flags word, which exclude each other.
inline constexpr std::int32_t kFlagUseTcp = 16;  // lightweight ("Internet") client
inline constexpr std::int32_t kFlagUseNsi = 32;  // full client through a network interface

// Events of the control by number. Which numbers they are is inferred from what they bring.
inline constexpr std::int32_t kPeriodicEvent = 9;
inline constexpr std::int32_t kMonitorUpdateEvent = 13;
inline constexpr std::int32_t kMonitorErrorEvent = 20;

// Collections and what every object has.
inline constexpr Member kCount{"Count"};      // documented
inline constexpr Member kItem{"Item"};        // documented
inline constexpr Member kName{"Name"};        // documented
inline constexpr Member kParent{"Parent"};    // documented
inline constexpr Member kClassId{"ClassId"};  // documented
inline constexpr Member kRemove{"Remove"};    // documented; its argument inferred
inline constexpr std::int32_t kClassSystem = 3;
inline constexpr std::int32_t kClassAppDevice = 7;

// Network and system.
inline constexpr const char* kAllDevices = "ALL";   // the subsystem of every device
inline constexpr Member kOpen{"Open"};              // documented
inline constexpr Member kClose{"Close"};            // inferred
inline constexpr Member kIsOpen{"IsOpen"};          // documented; on the system inferred
inline constexpr Member kSystems{"Systems"};        // documented
inline constexpr Member kSubsystems{"Subsystems"};  // documented
// An Internet session pauses the data server, sets its mode to 0 and lets it run again. Of the mode only the
// name is documented: what 0 stands for is chosen, and an object server that refuses it goes on as it was.
inline constexpr Member kDsPause{"DsPause"};  // documented; on the system inferred
inline constexpr Member kDsMode{"DsMode"};    // documented by name
// Asks for the periodic event, in milliseconds: chosen as the setting of the system that the event needs, and
// left out where it is unknown.
inline constexpr Member kBeginNssIdleEvent{"BeginNssIdleEvent"};  // documented
inline constexpr std::int32_t kIdleEventMilliseconds = 200;

// The interface that a local system talks through.
inline constexpr Member kNetworkServiceDevice{"NetworkServiceDevice"};  // documented
inline constexpr Member kNetworkInterface{"NetworkInterface"};          // documented

// The resource catalogue: the one folder of the LonWorks installation that a system tells.
inline constexpr Member kLdrfCatalogPath{"LdrfCatalogPath"};  // documented, 3.0

// Templates.
inline constexpr Member kTemplateLibrary{"TemplateLibrary"};  // documented
inline constexpr Member kDeviceTemplates{"DeviceTemplates"};  // documented
inline constexpr Member kAdd{"Add"};        // documented, before 3.0; of templates its arguments inferred
inline constexpr Member kImport{"Import"};  // documented

// Commands of plug-ins.
inline constexpr Member kComponentApps{"ComponentApps"};        // documented
inline constexpr Member kCommandId{"CommandId"};                // documented; that it can be put inferred
inline constexpr Member kComponentClassId{"ComponentClassId"};  // documented
inline constexpr Member kDefaultAppFlag{"DefaultAppFlag"};      // documented
inline constexpr Member kDescription{"Description"};            // documented
inline constexpr Member kRegisteredServer{"RegisteredServer"};  // documented
inline constexpr Member kVersionNumber{"VersionNumber"};  // documented, read-only: the mark is added anew

// Devices and what they carry.
inline constexpr Member kAppDevices{"AppDevices"};                    // documented
inline constexpr Member kDeviceTemplate{"DeviceTemplate"};            // documented, before 3.0
inline constexpr Member kInterface{"Interface"};                      // documented
inline constexpr Member kAttachmentStatus{"AttachmentStatus"};        // documented, 3.0
inline constexpr Member kHasBeenCommissioned{"HasBeenCommissioned"};  // documented
inline constexpr Member kTest{"Test"};                                // documented
inline constexpr std::int32_t kTestGood = 0;
inline constexpr Member kState{"State"};                    // documented, before 3.0
inline constexpr Member kProgramId{"ProgramId"};            // documented
inline constexpr Member kNeuronId{"NeuronId"};              // documented
inline constexpr Member kLonMarkObjects{"LonMarkObjects"};  // documented
inline constexpr Member kMode{"Mode"};                      // documented, before 3.0

// What the network database holds of a device's configuration, and what the device holds: each replaces the
// other on request. The director alone asks for it. Their option is chosen: nothing in particular.
inline constexpr Member kUploadConfigProperties{"UploadConfigProperties"};      // documented
inline constexpr Member kDownloadConfigProperties{"DownloadConfigProperties"};  // documented
inline constexpr std::int32_t kAllProperties = 0;

// Network variables.
inline constexpr Member kNetworkVariables{"NetworkVariables"};  // documented
inline constexpr Member kSourceOptions{"SourceOptions"};  // chosen: of data points; left out where unknown
inline constexpr Member kDsFormatType{"DsFormatType"};    // documented, before 3.0
inline constexpr Member kValue{"Value"};                  // documented; deprecated from 3.20

// Codes of the object server's errors that mean something to the program, each above
// platform::kObjectServerErrorBase.
inline constexpr std::uint16_t kFeatureNotAvailable = 17009;
inline constexpr std::uint16_t kWriteFailed = 18034;
inline constexpr std::uint16_t kFormatFailed = 18035;
inline constexpr std::uint16_t kNoCommunication = 18200;

}  // namespace lns::members
