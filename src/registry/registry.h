#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/registry.h"

namespace registry {

/// All registry work of the program: machine settings by full key path below HKEY_LOCAL_MACHINE, the user's
/// settings below the plug-in's own key, deletion of a machine key and all below it, and names of subkeys.
///
/// Key paths have no hive and no leading backslash. Reads never fail: a missing value, or one that is not a
/// string, is empty. Text ends at its first NUL.
class CRegistry {
 public:
  CRegistry(platform::Registry& registry, std::string plug_in_name)
      : registry_(registry), plug_in_name_(std::move(plug_in_name)) {}

  /// The first subkey of a machine key; empty if there is none or the key cannot be opened.
  std::string FindFirstMachineKey(const std::string& path);
  /// The next subkey of that key; empty after the last.
  std::string GetNextMachineKey();

  std::string AppSetting(const std::string& section, const std::string& value_name) const;
  /// Throws 0x80040201 if the key cannot be created or the value cannot be set.
  void SetAppSetting(const std::string& section, const std::string& value_name, const std::string& value);

  /// An empty value name means the key's default value.
  std::string MachineSetting(const std::string& path, const std::string& value_name) const;
  /// Throws 0x80040201 if the key cannot be created or the value cannot be set.
  void SetMachineSetting(const std::string& path, const std::string& value_name, const std::string& value);
  /// The user may write to the machine key or, if it is missing, create it.
  bool MayWriteMachineKey(const std::string& path) const;

  /// A value that the plug-in remembers: in the machine key for all users, or in the user's own settings if
  /// the user may not write there.
  std::string Remembered(const std::string& path, const std::string& section,
                         const std::string& value_name) const;
  /// Throws 0x80040201 like the other writes.
  void Remember(const std::string& path, const std::string& section, const std::string& value_name,
                const std::string& value);

  /// True if the key was deleted with all its subkeys; false also if it did not exist.
  bool DeleteMachineKey(const std::string& path);

 private:
  std::string AppKeyPath(const std::string& section) const;

  platform::Registry& registry_;
  std::string plug_in_name_;
  std::unique_ptr<platform::RegistryKey> enumerated_;
  std::uint32_t next_subkey_ = 0;
};

/// The folder of the LonWorks installation, without a backslash at the end; empty if the registry has none.
std::string LonWorksFolder(const CRegistry& registry);

}  // namespace registry
