#pragma once

#include <cstdint>

#include "platform/late_bound.h"

/// Every name and number of the object server's object model that the program uses, and nothing else of it
/// anywhere else: for another release of LNS this is the file to edit.
///
/// A member with a number is called by it, the name only explains it; all others are looked up by name.
/// Members not remarked upon are documented by the platform. Remarks: "inferred" follows from neighbouring
/// documentation and has not been seen in it; "chosen" is our own choice among several that fit.
namespace lns::members {

using platform::Member;

// The object server control. Its numbers are those of its dispatch interface.
inline constexpr Member kNetworks{"Networks", 1};
inline constexpr Member kOpenOption{"(option)", 5};  // set False before opening; its name is in no manual
inline constexpr Member kRemoteNetworkInterfaces{"RemoteNetworkInterfaces", 6};  // name inferred
inline constexpr Member kNetworkInterfaces{"NetworkInterfaces"};
inline constexpr Member kServerIsOpen{"IsOpen", 8};
inline constexpr Member kRemoteFlag{"RemoteFlag", 9};
inline constexpr Member kActiveRemoteNI{"ActiveRemoteNI", 10};
inline constexpr Member kFlags{"Flags", 11};
inline constexpr Member kServerClose{"Close", 12};
inline constexpr Member kServerOpen{"Open", 13};

// Bits of the flags word, which exclude each other.
inline constexpr std::int32_t kFlagUseTcp = 16;  // lightweight ("Internet") client
inline constexpr std::int32_t kFlagUseNsi = 32;  // full client through a network interface

// Events of the control by number. Which numbers they are is inferred from what they bring.
inline constexpr std::int32_t kPeriodicEvent = 9;
inline constexpr std::int32_t kMonitorUpdateEvent = 13;
inline constexpr std::int32_t kMonitorErrorEvent = 20;

// Collections and what every object has.
inline constexpr Member kCount{"Count"};
inline constexpr Member kItem{"Item"};
inline constexpr Member kName{"Name"};
inline constexpr Member kParent{"Parent"};
inline constexpr Member kClassId{"ClassId"};
inline constexpr Member kRemove{"Remove"};
inline constexpr std::int32_t kClassSystem = 3;
inline constexpr std::int32_t kClassAppDevice = 7;

// Network and system.
inline constexpr const char* kAllDevices = "ALL";  // the subsystem of every device
inline constexpr Member kOpen{"Open"};
inline constexpr Member kClose{"Close"};    // inferred
inline constexpr Member kIsOpen{"IsOpen"};  // on the system inferred
inline constexpr Member kSystems{"Systems"};
inline constexpr Member kSubsystems{"Subsystems"};
// An Internet session pauses the data server, sets its mode to 0 and lets it run again. Of the mode only the
// name is documented: what 0 stands for is chosen, and an object server that refuses it goes on as it was.
inline constexpr Member kDsPause{"DsPause"};
inline constexpr Member kDsMode{"DsMode"};
// Asks for the periodic event, in milliseconds; chosen as the one setting of the system that the event needs.
inline constexpr Member kBeginNssIdleEvent{"BeginNssIdleEvent"};
inline constexpr std::int32_t kIdleEventMilliseconds = 200;

// The interface that a local system talks through.
inline constexpr Member kNetworkServiceDevice{"NetworkServiceDevice"};
inline constexpr Member kNetworkInterface{"NetworkInterface"};

// The resource catalogue: the one folder of the LonWorks installation that a system tells.
inline constexpr Member kLdrfCatalogPath{"LdrfCatalogPath"};

// Templates. The argument lists of Add and Remove are inferred.
inline constexpr Member kTemplateLibrary{"TemplateLibrary"};
inline constexpr Member kDeviceTemplates{"DeviceTemplates"};
inline constexpr Member kAdd{"Add"};
inline constexpr Member kImport{"Import"};

// Commands of plug-ins. That CommandId and VersionNumber can be set is inferred.
inline constexpr Member kComponentApps{"ComponentApps"};
inline constexpr Member kCommandId{"CommandId"};
inline constexpr Member kComponentClassId{"ComponentClassId"};
inline constexpr Member kDefaultAppFlag{"DefaultAppFlag"};
inline constexpr Member kDescription{"Description"};
inline constexpr Member kRegisteredServer{"RegisteredServer"};
inline constexpr Member kVersionNumber{"VersionNumber"};

// Devices and what they carry.
inline constexpr Member kAppDevices{"AppDevices"};
inline constexpr Member kDeviceTemplate{"DeviceTemplate"};
inline constexpr Member kInterface{"Interface"};
inline constexpr Member kAttachmentStatus{"AttachmentStatus"};
inline constexpr Member kHasBeenCommissioned{"HasBeenCommissioned"};
inline constexpr Member kTest{"Test"};
inline constexpr std::int32_t kTestGood = 0;
inline constexpr Member kState{"State"};
inline constexpr Member kProgramId{"ProgramId"};
inline constexpr Member kNeuronId{"NeuronId"};
inline constexpr Member kLonMarkObjects{"LonMarkObjects"};
inline constexpr Member kMode{"Mode"};  // documented for reading; that it can be set is inferred

// What the network database holds of a device's configuration, and what the device holds: each replaces the other
// on request. The director alone asks for it. Their option is chosen: nothing in particular.
inline constexpr Member kUploadConfigProperties{"UploadConfigProperties"};
inline constexpr Member kDownloadConfigProperties{"DownloadConfigProperties"};
inline constexpr std::int32_t kAllProperties = 0;

// Network variables.
inline constexpr Member kNetworkVariables{"NetworkVariables"};
inline constexpr Member kSourceOptions{"SourceOptions"};  // documented on data points; on the variable chosen
inline constexpr Member kDsFormatType{"DsFormatType"};
inline constexpr Member kValue{"Value"};

// Codes of the object server's errors that mean something to the program, each above
// platform::kObjectServerErrorBase.
inline constexpr std::uint16_t kFeatureNotAvailable = 17009;
inline constexpr std::uint16_t kWriteFailed = 18034;
inline constexpr std::uint16_t kFormatFailed = 18035;
inline constexpr std::uint16_t kNoCommunication = 18200;

}  // namespace lns::members
