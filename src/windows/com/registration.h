#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace windows::com {

struct KeyCloser {
  using pointer = HKEY;
  void operator()(HKEY key) const noexcept { RegCloseKey(key); }
};

/// Owns an open key of the registry.
using Key = std::unique_ptr<HKEY, KeyCloser>;

/// What a key of the machine held with all below it when this was made, to be put back when a registration
/// fails half-way.
class FormerKey {
 public:
  /// The path below HKEY_LOCAL_MACHINE.
  explicit FormerKey(std::wstring path);

  bool existed() const { return former_.has_value(); }
  /// Puts back what can be; a key that was not there goes.
  void PutBack() const;

 private:
  struct Branch {
    struct Value {
      std::wstring name;
      DWORD type;
      std::vector<BYTE> data;
    };
    std::wstring name;
    std::vector<Value> values;
    std::vector<Branch> below;
  };
  static std::optional<Branch> Read(HKEY parent, const std::wstring& name);
  static void Write(HKEY parent, const Branch& branch);

  std::wstring path_;
  std::optional<Branch> former_;
};

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
