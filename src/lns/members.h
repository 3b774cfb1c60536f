#pragma once

#include <cstdint>

#include "platform/late_bound.h"

/// The names and numbers of the platform's object model that the program uses. For another release of LNS,
/// edit this file. The texts for all class and command codes are in registration/names.cpp.
///
/// A member with a number is called by number and the name only explains it; the others are looked up by
/// name.
///
/// Remarks: "documented" is in the platform's manuals, with the release that added it if they name one;
/// "inferred" follows from neighbouring documentation; "chosen" is our choice among several that fit, and
/// nothing fails if an object server does not know it.
namespace lns::members {

using platform::Member;

// The object server control. Its numbers are those of its dispatch interface.
inline constexpr Member kNetworks{"Networks", 1};    // documented; its number inferred
inline constexpr Member kOpenOption{"(option)", 5};  // chosen; skipped if unknown
inline constexpr Member kRemoteNetworkInterfaces{"RemoteNetworkInterfaces", 6};  // inferred
inline constexpr Member kNetworkInterfaces{"NetworkInterfaces"};                 // documented
inline constexpr Member kServerIsOpen{"IsOpen", 8};                              // inferred
inline constexpr Member kRemoteFlag{"RemoteFlag", 9};                            // documented
inline constexpr Member kActiveRemoteNI{"ActiveRemoteNI", 10};                   // documented
inline constexpr Member kFlags{"Flags", 11};                                     // documented, before 3.0
inline constexpr Member kServerClose{"Close", 12};                               // documented
inline constexpr Member kServerOpen{"Open", 13};                                 // documented, before 3.0

// Bits of the flags word. They exclude each other.
inline constexpr std::int32_t kFlagUseTcp = 16;  // lightweight ("Internet") client
inline constexpr std::int32_t kFlagUseNsi = 32;  // full client through a network interface

// Numbers of the control's events, inferred from their arguments.
inline constexpr std::int32_t kPeriodicEvent = 9;
inline constexpr std::int32_t kMonitorUpdateEvent = 13;
inline constexpr std::int32_t kMonitorErrorEvent = 20;

// Collections, and members of every object.
inline constexpr Member kCount{"Count"};      // documented
inline constexpr Member kItem{"Item"};        // documented
inline constexpr Member kName{"Name"};        // documented
inline constexpr Member kParent{"Parent"};    // documented
inline constexpr Member kClassId{"ClassId"};  // documented
inline constexpr Member kRemove{"Remove"};    // documented; its argument inferred
inline constexpr std::int32_t kClassSystem = 3;
inline constexpr std::int32_t kClassAppDevice = 7;
inline constexpr std::int32_t kClassLonMarkObject = 28;

// Network and system.
// The subsystems of all devices, and of those that are not yet on the network.
inline constexpr const char* kAllDevices = "ALL";
inline constexpr const char* kDiscoveredDevices = "Discovered";
inline constexpr Member kOpen{"Open"};              // documented
inline constexpr Member kClose{"Close"};            // inferred
inline constexpr Member kIsOpen{"IsOpen"};          // documented; on the system inferred
inline constexpr Member kSystems{"Systems"};        // documented
inline constexpr Member kSubsystems{"Subsystems"};  // documented
// An Internet session pauses the data server, sets its mode to 0 and resumes it. Only the mode's name is
// documented: the meaning of 0 is chosen, and an object server that refuses it continues unchanged.
inline constexpr Member kDsPause{"DsPause"};  // documented; on the system inferred
inline constexpr Member kDsMode{"DsMode"};    // documented by name
// Requests the periodic event, in milliseconds: chosen as a setting of the system; skipped if unknown.
inline constexpr Member kBeginNssIdleEvent{"BeginNssIdleEvent"};  // documented
inline constexpr std::int32_t kIdleEventMilliseconds = 200;

// The interface that a local system uses.
inline constexpr Member kNetworkServiceDevice{"NetworkServiceDevice"};  // documented
inline constexpr Member kNetworkInterface{"NetworkInterface"};          // documented

// The resource catalogue: the only folder of the LonWorks installation in a system's properties.
inline constexpr Member kLdrfCatalogPath{"LdrfCatalogPath"};  // documented, 3.0

// Templates.
inline constexpr Member kTemplateLibrary{"TemplateLibrary"};  // documented
inline constexpr Member kDeviceTemplates{"DeviceTemplates"};  // documented
inline constexpr Member kAdd{"Add"};        // documented, before 3.0; of templates its arguments inferred
inline constexpr Member kImport{"Import"};  // documented

// Commands of plug-ins, and their codes.
inline constexpr Member kComponentApps{"ComponentApps"};        // documented
inline constexpr Member kCommandId{"CommandId"};                // documented; setting it inferred
inline constexpr Member kComponentClassId{"ComponentClassId"};  // documented
inline constexpr Member kDefaultAppFlag{"DefaultAppFlag"};      // documented
inline constexpr Member kDescription{"Description"};            // documented
inline constexpr Member kRegisteredServer{"RegisteredServer"};  // documented
inline constexpr Member kVersionNumber{"VersionNumber"};        // documented, read-only
inline constexpr std::int32_t kConfigureCommand = 13;
inline constexpr std::int32_t kRegisterCommand = 50;
inline constexpr std::int32_t kDeregisterCommand = 51;

// Devices and their parts.
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

// Upload copies the device's configuration to the network database, download the database's to the device.
// Only the director uses them. Their option is chosen.
inline constexpr Member kUploadConfigProperties{"UploadConfigProperties"};      // documented
inline constexpr Member kDownloadConfigProperties{"DownloadConfigProperties"};  // documented
inline constexpr std::int32_t kAllProperties = 0;

// Network variables.
inline constexpr Member kNetworkVariables{"NetworkVariables"};  // documented
inline constexpr Member kSourceOptions{"SourceOptions"};        // chosen: of data points; skipped if unknown
inline constexpr Member kDsFormatType{"DsFormatType"};          // documented, before 3.0
inline constexpr Member kValue{"Value"};                        // documented; deprecated from 3.20

// Codes of the object server's errors, which platform::ObjectServerError turns into error numbers.
inline constexpr std::uint16_t kFeatureNotAvailable = 17009;
inline constexpr std::uint16_t kWriteFailed = 18034;
inline constexpr std::uint16_t kFormatFailed = 18035;
inline constexpr std::uint16_t kNoCommunication = 18200;

}  // namespace lns::members
