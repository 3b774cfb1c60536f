#pragma once

#include "platform/registry.h"

namespace windows {

/// The real registry. Both builds use the machine keys of 32-bit programs, so that they share them with
/// directors. Texts go through the machine's ANSI code page.
class WindowsRegistry : public platform::Registry {
 public:
  std::unique_ptr<platform::RegistryKey> Open(Hive hive, const std::string& path, Access access) override;
  std::unique_ptr<platform::RegistryKey> Create(Hive hive, const std::string& path) override;
  bool Delete(Hive hive, const std::string& path) override;
};

}  // namespace windows
