#include "registry/registry.h"

#include "platform/error.h"
#include "text/strings.h"

namespace registry {
namespace {

using platform::Registry;
using platform::RegistryKey;
using enum platform::Registry::Hive;

constexpr std::int32_t kWriteFailed = static_cast<std::int32_t>(0x80040201u);

std::string Read(Registry& registry, Registry::Hive hive, const std::string& path,
                 const std::string& value_name) {
  const auto key = registry.Open(hive, path, Registry::Access::Read);
  if (!key) return {};
  const std::string text = key->ReadText(value_name).value_or("");
  return text.substr(0, text.find('\0'));
}

void Write(Registry& registry, Registry::Hive hive, const std::string& path, const std::string& value_name,
           const std::string& value) {
  const auto key = registry.Create(hive, path);
  if (!key || !key->WriteText(value_name, value))
    throw platform::Error(kWriteFailed, "CRegistry",
                          "The registry value '" + path + "\\" + value_name + "' could not be written.");
}

std::string CutAtNul(const std::string& name) { return name.substr(0, name.find('\0')); }

/// Always deletes the subkey at index 0, as the others then move up; stops at one that cannot be deleted.
bool EmptyKey(Registry& registry, const std::string& path) {
  for (;;) {
    const auto key = registry.Open(LocalMachine, path, Registry::Access::Full);
    if (!key) return false;
    const auto name = key->Subkey(0);
    if (!name) return true;
    if (key->DeleteSubkey(CutAtNul(*name))) continue;
    const std::string below = path + "\\" + CutAtNul(*name);
    if (!EmptyKey(registry, below) || !registry.Delete(LocalMachine, below)) return false;
  }
}

}  // namespace

std::string CRegistry::FindFirstMachineKey(const std::string& path) {
  enumerated_ = registry_.Open(LocalMachine, path, Registry::Access::Full);
  next_subkey_ = 0;
  return GetNextMachineKey();
}

std::string CRegistry::GetNextMachineKey() {
  const std::uint32_t index = next_subkey_++;
  return enumerated_ ? CutAtNul(enumerated_->Subkey(index).value_or("")) : "";
}

std::string CRegistry::AppKeyPath(const std::string& section) const {
  return "SOFTWARE\\LonWorks\\LCA\\Applets\\" + plug_in_name_ + "\\" + section;
}

std::string CRegistry::AppSetting(const std::string& section, const std::string& value_name) const {
  return Read(registry_, CurrentUser, AppKeyPath(section), value_name);
}

void CRegistry::SetAppSetting(const std::string& section, const std::string& value_name,
                              const std::string& value) {
  Write(registry_, CurrentUser, AppKeyPath(section), value_name, value);
}

std::string CRegistry::MachineSetting(const std::string& path, const std::string& value_name) const {
  return Read(registry_, LocalMachine, path, value_name);
}

void CRegistry::SetMachineSetting(const std::string& path, const std::string& value_name,
                                  const std::string& value) {
  Write(registry_, LocalMachine, path, value_name, value);
}

bool CRegistry::MayWriteMachineKey(const std::string& path) const {
  for (std::string at = path;; at.resize(at.find('\\') == std::string::npos ? 0 : at.rfind('\\'))) {
    if (registry_.Open(LocalMachine, at, Registry::Access::Write)) return true;
    // If the key exists, it decides; otherwise its parent.
    if (at.empty() || registry_.Open(LocalMachine, at, Registry::Access::Read)) return false;
  }
}

std::string CRegistry::Remembered(const std::string& path, const std::string& section,
                                  const std::string& value_name) const {
  const std::string own = MayWriteMachineKey(path) ? "" : AppSetting(section, value_name);
  return own.empty() ? MachineSetting(path, value_name) : own;
}

void CRegistry::Remember(const std::string& path, const std::string& section, const std::string& value_name,
                         const std::string& value) {
  if (MayWriteMachineKey(path))
    SetMachineSetting(path, value_name, value);
  else
    SetAppSetting(section, value_name, value);
}

bool CRegistry::DeleteMachineKey(const std::string& path) {
  if (registry_.Delete(LocalMachine, path)) return true;
  return EmptyKey(registry_, path) && registry_.Delete(LocalMachine, path);
}

std::string LonWorksFolder(const CRegistry& registry) {
  return text::WithoutBackslash(registry.MachineSetting("SOFTWARE\\LonWorks", "LonWorks Path"));
}

}  // namespace registry
