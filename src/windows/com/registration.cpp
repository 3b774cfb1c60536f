#include "windows/com/registration.h"

#include <oleauto.h>

#include <array>
#include <string_view>
#include <utility>

#include "platform/error.h"
#include "windows/com/failure.h"
#include "windows/com/owners.h"
#include "windows/com/wide_text.h"

namespace windows::com {

FormerKey::FormerKey(std::wstring path) : path_(std::move(path)), former_(Read(HKEY_LOCAL_MACHINE, path_)) {}

void FormerKey::Restore() const {
  RegDeleteTreeW(HKEY_LOCAL_MACHINE, path_.c_str());
  if (former_) Write(HKEY_LOCAL_MACHINE, *former_);
}

std::optional<FormerKey::Branch> FormerKey::Read(HKEY parent, const std::wstring& name) {
  HKEY opened = nullptr;
  if (RegOpenKeyExW(parent, name.c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS) return std::nullopt;
  const Key key(opened);
  DWORD longest_key = 0, longest_name = 0, longest_data = 0;
  RegQueryInfoKeyW(opened, nullptr, nullptr, nullptr, nullptr, &longest_key, nullptr, nullptr, &longest_name,
                   &longest_data, nullptr, nullptr);
  Branch branch{name, {}, {}};
  for (DWORD index = 0;; ++index) {
    Branch::Value value{std::wstring(longest_name + 1, L'\0'), REG_NONE, std::vector<BYTE>(longest_data)};
    DWORD length = longest_name + 1, size = longest_data;
    if (RegEnumValueW(opened, index, value.name.data(), &length, nullptr, &value.type, value.data.data(),
                      &size) != ERROR_SUCCESS)
      break;
    value.name.resize(length);
    value.data.resize(size);
    branch.values.push_back(std::move(value));
  }
  for (DWORD index = 0;; ++index) {
    std::wstring below(longest_key + 1, L'\0');
    DWORD length = longest_key + 1;
    if (RegEnumKeyExW(opened, index, below.data(), &length, nullptr, nullptr, nullptr, nullptr) !=
        ERROR_SUCCESS)
      break;
    below.resize(length);
    if (auto held = Read(opened, below)) branch.below.push_back(std::move(*held));
  }
  return branch;
}

void FormerKey::Write(HKEY parent, const Branch& branch) {
  HKEY made = nullptr;
  if (RegCreateKeyExW(parent, branch.name.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &made, nullptr) !=
      ERROR_SUCCESS)
    return;
  const Key key(made);
  for (const auto& [value_name, type, data] : branch.values)
    RegSetValueExW(made, value_name.c_str(), 0, type, data.data(), static_cast<DWORD>(data.size()));
  for (const Branch& below : branch.below) Write(made, below);
}

namespace {

constexpr std::string_view kClasses = "Software\\Classes\\";
/// The marshaller of interfaces that are called only through IDispatch.
constexpr std::string_view kDispatchMarshaller = "{00020420-0000-0000-C000-000000000046}";

void CheckRegistry(LSTATUS status, std::string_view attempt, const std::string& key) {
  if (status != ERROR_SUCCESS)
    Check(HRESULT_FROM_WIN32(static_cast<DWORD>(status)),
          std::string(attempt) + " HKEY_LOCAL_MACHINE\\" + key);
}

void WriteDefault(std::string_view class_key, std::string_view text) {
  const std::string key = std::string(kClasses) + std::string(class_key);
  const std::wstring wide = ToWide(text);
  const auto size = static_cast<DWORD>((wide.size() + 1) * sizeof(wchar_t));
  HKEY handle = nullptr;
  CheckRegistry(RegCreateKeyExW(HKEY_LOCAL_MACHINE, ToWide(key).c_str(), 0, nullptr, 0, KEY_SET_VALUE,
                                nullptr, &handle, nullptr),
                "Cannot create the key", key);
  const LSTATUS status =
      RegSetValueExW(handle, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(wide.c_str()), size);
  RegCloseKey(handle);
  CheckRegistry(status, "Cannot write to the key", key);
}

void DeleteTree(std::string_view class_key) {
  const std::string key = std::string(kClasses) + std::string(class_key);
  const LSTATUS status = RegDeleteTreeW(HKEY_LOCAL_MACHINE, ToWide(key).c_str());
  if (status != ERROR_FILE_NOT_FOUND) CheckRegistry(status, "Cannot remove the key", key);
}

std::string ProgramOf(const ServerRegistration& server) {
  return server.program.empty() ? ThisProgram() : server.program;
}

ComPtr<ITypeLib> LoadLibraryOf(const std::string& program) {
  ComPtr<ITypeLib> library;
  Check(LoadTypeLibEx(ToWide(program).c_str(), REGKIND_NONE, library.Receive()),
        "Cannot read the type library of " + program);
  return library;
}

TLIBATTR AttributesOf(ITypeLib& library) {
  TLIBATTR* attributes = nullptr;
  Check(library.GetLibAttr(&attributes), "Cannot read the type library");
  const TLIBATTR copy = *attributes;
  library.ReleaseTLibAttr(attributes);
  return copy;
}

bool IsRegistered(ITypeLib& library) {
  const TLIBATTR about = AttributesOf(library);
  BSTR path = nullptr;
  const HRESULT found =
      QueryPathOfRegTypeLib(about.guid, about.wMajorVerNum, about.wMinorVerNum, about.lcid, &path);
  SysFreeString(path);
  return SUCCEEDED(found);
}

HRESULT UnregisterLibrary(ITypeLib& library) {
  const TLIBATTR about = AttributesOf(library);
  return UnRegisterTypeLib(about.guid, about.wMajorVerNum, about.wMinorVerNum, about.lcid, about.syskind);
}

std::string ClassKeyOf(const ServerRegistration& server) { return "CLSID\\" + GuidText(server.class_id); }
std::string KeyOf(const EventInterface& events) { return "Interface\\" + GuidText(events.id); }

void WriteAll(const ServerRegistration& server, const std::string& program, ITypeLib* library) {
  const std::string class_key = ClassKeyOf(server);
  const std::string command = "\"" + program + "\"" + (server.switches.empty() ? "" : " " + server.switches);
  WriteDefault(class_key, server.description);
  WriteDefault(class_key + "\\ProgID", server.prog_id);
  WriteDefault(class_key + "\\LocalServer32", command);
  WriteDefault(server.prog_id, server.description);
  WriteDefault(server.prog_id + "\\CLSID", GuidText(server.class_id));
  for (const EventInterface& events : server.events) {
    WriteDefault(KeyOf(events), events.name);
    WriteDefault(KeyOf(events) + "\\ProxyStubClsid32", kDispatchMarshaller);
  }
  if (!library) return;
  WriteDefault(class_key + "\\TypeLib", GuidText(AttributesOf(*library).guid));
  std::wstring path = ToWide(program);
  Check(RegisterTypeLib(library, path.data(), nullptr), "Cannot register the type library of " + program);
}

/// The state of what the registration writes, without the library's interfaces, which are the same in all its
/// versions.
class Former {
 public:
  Former(const ServerRegistration& server, ITypeLib* library) : library_(library) {
    Take(ClassKeyOf(server));
    Take(server.prog_id);
    for (const EventInterface& events : server.events) Take(KeyOf(events));
    if (library) Take("TypeLib\\" + GuidText(AttributesOf(*library).guid));
  }
  void Restore() const {
    if (library_ && !keys_.back().existed()) UnregisterLibrary(*library_);
    for (const FormerKey& key : keys_) key.Restore();
  }

 private:
  void Take(const std::string& class_key) { keys_.emplace_back(ToWide(std::string(kClasses) + class_key)); }

  ITypeLib* library_;
  std::vector<FormerKey> keys_;  // the library's key is last
};

}  // namespace

void RegisterServer(const ServerRegistration& server) {
  const std::string program = ProgramOf(server);
  ComPtr<ITypeLib> library;
  if (server.has_type_library) library = LoadLibraryOf(program);
  const Former former(server, library.get());
  try {
    WriteAll(server, program, library.get());
  } catch (const platform::Error&) {
    former.Restore();
    throw;
  }
}

void UnregisterServer(const ServerRegistration& server) {
  std::optional<platform::Error> first;
  const auto go_on = [&first](auto&& step) {
    try {
      step();
    } catch (const platform::Error& error) {
      if (!first) first = error;
    }
  };
  const auto forget_library = [&] {
    const std::string program = ProgramOf(server);
    const ComPtr<ITypeLib> library = LoadLibraryOf(program);
    if (IsRegistered(*library.get()))
      Check(UnregisterLibrary(*library.get()), "Cannot unregister the type library of " + program);
  };
  if (server.has_type_library) go_on(forget_library);
  for (const EventInterface& events : server.events) go_on([&] { DeleteTree(KeyOf(events)); });
  go_on([&] { DeleteTree(server.prog_id); });
  go_on([&] { DeleteTree(ClassKeyOf(server)); });
  if (first) throw platform::Error(*first);
}

bool IsAccessDenied(std::int32_t number) {
  return number == E_ACCESSDENIED || number == TYPE_E_REGISTRYACCESS;
}

std::string ThisProgram() {
  std::vector<wchar_t> path(32768);
  const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  return ToUtf8(std::wstring_view(path.data(), length));
}

std::string GuidText(const GUID& id) {
  std::array<wchar_t, 39> text;
  StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
  return ToUtf8(std::wstring_view(text.data(), text.size() - 1));
}

}  // namespace windows::com
