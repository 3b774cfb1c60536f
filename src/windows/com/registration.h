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

/// The state of a machine key and all below it on construction, to restore it if a registration fails
/// halfway.
class FormerKey {
 public:
  /// The path below HKEY_LOCAL_MACHINE.
  explicit FormerKey(std::wstring path);

  bool existed() const { return former_.has_value(); }
  /// Restores what it can; removes a key that did not exist.
  void Restore() const;

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

/// An event interface that clients in other processes implement. It uses automation's own marshalling.
struct EventInterface {
  IID id;
  std::string name;
};

/// What the system needs to know about a server program, so that others can create its class by name.
struct ServerRegistration {
  CLSID class_id;
  std::string prog_id;
  /// Shown in lists of classes.
  std::string description;
  /// The program's full path without quotes; empty for the running one.
  std::string program = {};
  /// Follows the program on COM's command line.
  std::string switches = {};
  /// The program has its type library as a resource.
  bool has_type_library = false;
  std::vector<EventInterface> events = {};
};

/// Registers for all users of the machine. If the system refuses a step, restores the previous state and
/// throws an Error that names the step.
void RegisterServer(const ServerRegistration& server);

/// Removes what it can, then throws the first failure if there was one. Missing entries are no failure.
void UnregisterServer(const ServerRegistration& server);

/// The number means that one of these failed because of missing rights.
bool IsAccessDenied(std::int32_t number);

/// The full path of the running program.
std::string ThisProgram();

/// "{00000000-0000-0000-0000-000000000000}"
std::string GuidText(const GUID& id);

}  // namespace windows::com
