#include "windows/com/registration.h"

#include <oleauto.h>

#include <array>
#include <optional>
#include <string_view>

#include "platform/error.h"
#include "windows/com/com_ptr.h"
#include "windows/com/failure.h"
#include "windows/com/wide_text.h"

namespace windows::com {
namespace {

constexpr std::string_view kClasses = "Software\\Classes\\";
/// The marshaller of interfaces that are called through IDispatch alone.
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

void RegisterLibrary(const std::string& class_key, const std::string& program) {
  const auto library = LoadLibraryOf(program);
  std::wstring path = ToWide(program);
  Check(RegisterTypeLib(library.get(), path.data(), nullptr),
        "Cannot register the type library of " + program);
  WriteDefault(class_key + "\\TypeLib", GuidText(AttributesOf(*library.get()).guid));
}

void UnregisterLibrary(const std::string& program) {
  const TLIBATTR library = AttributesOf(*LoadLibraryOf(program).get());
  const HRESULT result = UnRegisterTypeLib(library.guid, library.wMajorVerNum, library.wMinorVerNum,
                                           library.lcid, library.syskind);
  if (result != TYPE_E_REGISTRYACCESS) Check(result, "Cannot unregister the type library of " + program);
}

void WriteAll(const ServerRegistration& server) {
  const std::string program = ProgramOf(server);
  const std::string id = GuidText(server.class_id);
  const std::string class_key = "CLSID\\" + id;
  const std::string command = "\"" + program + "\"" + (server.switches.empty() ? "" : " " + server.switches);
  WriteDefault(class_key, server.description);
  WriteDefault(class_key + "\\ProgID", server.prog_id);
  WriteDefault(class_key + "\\LocalServer32", command);
  WriteDefault(server.prog_id, server.description);
  WriteDefault(server.prog_id + "\\CLSID", id);
  for (const EventInterface& events : server.events) {
    WriteDefault("Interface\\" + GuidText(events.id), events.name);
    WriteDefault("Interface\\" + GuidText(events.id) + "\\ProxyStubClsid32", kDispatchMarshaller);
  }
  if (server.has_type_library) RegisterLibrary(class_key, program);
}

}  // namespace

void RegisterServer(const ServerRegistration& server) {
  try {
    WriteAll(server);
  } catch (const platform::Error&) {
    try {
      UnregisterServer(server);
    } catch (const platform::Error&) {
      // The refusal of the registration says more than that of its removal.
    }
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
  if (server.has_type_library) go_on([&] { UnregisterLibrary(ProgramOf(server)); });
  for (const EventInterface& events : server.events)
    go_on([&] { DeleteTree("Interface\\" + GuidText(events.id)); });
  go_on([&] { DeleteTree(server.prog_id); });
  go_on([&] { DeleteTree("CLSID\\" + GuidText(server.class_id)); });
  if (first) throw platform::Error(*first);
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
