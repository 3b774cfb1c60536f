#pragma once

#include "platform/registry.h"

namespace windows {

/// The real registry. Machine keys are those that a 32-bit program sees, whichever build asks, so that
/// directors and both builds of the plug-in share them. Texts go through the machine's ANSI code page.
class WindowsRegistry : public platform::Registry {
 public:
  std::unique_ptr<platform::RegistryKey> Open(Hive hive, const std::string& path, Access access) override;
  std::unique_ptr<platform::RegistryKey> Create(Hive hive, const std::string& path) override;
  bool Delete(Hive hive, const std::string& path) override;
};

}  // namespace windows
