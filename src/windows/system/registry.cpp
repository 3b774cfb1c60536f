#include "windows/system/registry.h"

#include <windows.h>

#include <array>
#include <utility>
#include <vector>

#include "registry/registry.h"
#include "windows/com/dispatch_object.h"
#include "windows/com/wide_text.h"

namespace windows {
namespace {

/// The buffer for subkey names; longer names count as missing.
constexpr DWORD kNameBuffer = 260;

std::string ToAnsi(const std::string& utf8) {
  const std::wstring wide = ToWide(utf8);
  const int length = static_cast<int>(wide.size());
  std::string ansi(static_cast<std::size_t>(
                       WideCharToMultiByte(CP_ACP, 0, wide.data(), length, nullptr, 0, nullptr, nullptr)),
                   '\0');
  WideCharToMultiByte(CP_ACP, 0, wide.data(), length, ansi.data(), static_cast<int>(ansi.size()), nullptr,
                      nullptr);
  return ansi;
}

std::string FromAnsi(const std::string& ansi) {
  const int length = static_cast<int>(ansi.size());
  std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, ansi.data(), length, nullptr, 0)),
                    L'\0');
  MultiByteToWideChar(CP_ACP, 0, ansi.data(), length, wide.data(), static_cast<int>(wide.size()));
  return ToUtf8(wide);
}

HKEY RootOf(platform::Registry::Hive hive) {
  return hive == platform::Registry::Hive::LocalMachine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

REGSAM ViewOf(platform::Registry::Hive hive) {
  return hive == platform::Registry::Hive::LocalMachine ? KEY_WOW64_32KEY : 0;
}

class OpenKey : public platform::RegistryKey {
 public:
  OpenKey(HKEY key, REGSAM view) : key_(key), view_(view) {}
  ~OpenKey() override { RegCloseKey(key_); }
  OpenKey(const OpenKey&) = delete;
  OpenKey& operator=(const OpenKey&) = delete;

  std::optional<std::string> ReadText(const std::string& value_name) const override {
    const std::string name = ToAnsi(value_name);
    DWORD type = 0;
    DWORD size = 0;
    if (RegQueryValueExA(key_, name.c_str(), nullptr, &type, nullptr, &size) != ERROR_SUCCESS ||
        type != REG_SZ)
      return std::nullopt;
    std::string data(size, '\0');
    if (RegQueryValueExA(key_, name.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(data.data()), &size) !=
        ERROR_SUCCESS)
      return std::nullopt;
    data.resize(size);
    return FromAnsi(data);
  }

  bool WriteText(const std::string& value_name, const std::string& text) override {
    const std::string data = ToAnsi(text);
    // The ANSI call also stores a NUL that follows the data; another byte after the data prevents this.
    const std::string guarded = data + '.';
    return RegSetValueExA(key_, ToAnsi(value_name).c_str(), 0, REG_SZ,
                          reinterpret_cast<const BYTE*>(guarded.data()),
                          static_cast<DWORD>(data.size())) == ERROR_SUCCESS;
  }

  std::optional<std::string> Subkey(std::uint32_t index) const override {
    std::array<char, kNameBuffer> name{};
    DWORD length = kNameBuffer;
    if (RegEnumKeyExA(key_, index, name.data(), &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
      return std::nullopt;
    return FromAnsi(std::string(name.data(), length));
  }

  bool DeleteSubkey(const std::string& name) override {
    return RegDeleteKeyExA(key_, ToAnsi(name).c_str(), view_, 0) == ERROR_SUCCESS;
  }

 private:
  HKEY key_;
  REGSAM view_;
};

// Inferred from the name of the control's class; not in any manual.
constexpr const char* kPlatformProgId = "LcaObjectServer.LcaObjectServer";

}  // namespace

std::unique_ptr<platform::RegistryKey> WindowsRegistry::Open(Hive hive, const std::string& path,
                                                             Access access) {
  HKEY key = nullptr;
  const REGSAM rights = access == Access::Full    ? KEY_ALL_ACCESS
                        : access == Access::Write ? KEY_READ | KEY_WRITE
                                                  : KEY_READ;
  if (RegOpenKeyExA(RootOf(hive), ToAnsi(path).c_str(), 0, rights | ViewOf(hive), &key) != ERROR_SUCCESS)
    return nullptr;
  return std::make_unique<OpenKey>(key, ViewOf(hive));
}

std::unique_ptr<platform::RegistryKey> WindowsRegistry::Create(Hive hive, const std::string& path) {
  HKEY key = nullptr;
  if (RegCreateKeyExA(RootOf(hive), ToAnsi(path).c_str(), 0, nullptr, 0, KEY_READ | KEY_WRITE | ViewOf(hive),
                      nullptr, &key, nullptr) != ERROR_SUCCESS)
    return nullptr;
  return std::make_unique<OpenKey>(key, ViewOf(hive));
}

bool WindowsRegistry::Delete(Hive hive, const std::string& path) {
  return RegDeleteKeyExA(RootOf(hive), ToAnsi(path).c_str(), ViewOf(hive), 0) == ERROR_SUCCESS;
}

std::string ObjectServerProgId(platform::Registry& registry) {
  const std::string named =
      registry::CRegistry(registry, "").MachineSetting("SOFTWARE\\LonWorks\\LCA", "Object Server");
  return named.empty() ? kPlatformProgId : named;
}

platform::LateBoundPtr MakeObjectServer(platform::Registry& registry) {
  return com::CreateObject(ObjectServerProgId(registry));
}

}  // namespace windows
