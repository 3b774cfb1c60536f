#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

namespace windows::com {

/// An event interface that clients of other processes answer for. Automation's own marshalling serves it.
struct EventInterface {
  IID id;
  std::string name;
};

/// What the system has to know of a server program so that others can create its class by name.
struct ServerRegistration {
  CLSID class_id;
  std::string prog_id;
  /// What lists of classes show.
  std::string description;
  /// The program's full path without quotes; empty for the running one.
  std::string program = {};
  /// Follows the program on the command line that COM starts.
  std::string switches = {};
  /// The program carries its type library as a resource.
  bool has_type_library = false;
  std::vector<EventInterface> events = {};
};

/// Writes all of it for all users of the machine, or leaves what was there before: an Error tells which step
/// the system refused.
void RegisterServer(const ServerRegistration& server);

/// Removes all that can be removed, then raises the first failure if there was one. What is not there is no
/// failure.
void UnregisterServer(const ServerRegistration& server);

/// The number of a failure of these for want of rights.
bool IsAccessDenied(std::int32_t number);

/// The full path of the running program.
std::string ThisProgram();

/// "{00000000-0000-0000-0000-000000000000}"
std::string GuidText(const GUID& id);

}  // namespace windows::com
