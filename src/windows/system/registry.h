#pragma once

#include <string>

#include "platform/late_bound.h"
#include "platform/registry.h"

namespace windows {

/// The real registry. Both builds use the machine keys of 32-bit programs, so that they share them with
/// directors. Texts are converted with the machine's ANSI code page.
class WindowsRegistry : public platform::Registry {
 public:
  std::unique_ptr<platform::RegistryKey> Open(Hive hive, const std::string& path, Access access) override;
  std::unique_ptr<platform::RegistryKey> Create(Hive hive, const std::string& path) override;
  bool Delete(Hive hive, const std::string& path) override;
};

/// The ProgID of the object server: the machine value "Object Server" under "SOFTWARE\LonWorks\LCA", which
/// can name a simulated one, or else the platform's own.
std::string ObjectServerProgId(platform::Registry& registry);

/// Creates the object server of this process. Throws if it is not installed or does not start.
platform::LateBoundPtr MakeObjectServer(platform::Registry& registry);

}  // namespace windows
