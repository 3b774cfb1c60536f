#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace platform {

/// The system registry as the program needs it: text values, by full key path below a hive. Texts are UTF-8
/// here and ANSI in the registry. Nothing throws: the result shows a failure.
class RegistryKey {
 public:
  virtual ~RegistryKey() = default;

  /// The value if it is a string, with or without a terminating NUL; nothing otherwise.
  virtual std::optional<std::string> ReadText(const std::string& value_name) const = 0;
  /// Stores exactly the text's characters, without a terminating NUL.
  virtual bool WriteText(const std::string& value_name, const std::string& text) = 0;
  /// The name of the subkey at the index, of at most 259 characters; nothing past the end.
  virtual std::optional<std::string> Subkey(std::uint32_t index) const = 0;
  /// Deletes a subkey that has no subkeys.
  virtual bool DeleteSubkey(const std::string& name) = 0;
};

class Registry {
 public:
  virtual ~Registry() = default;

  enum class Hive { LocalMachine, CurrentUser };
  enum class Access { Read, Write, Full };
  /// Null if the key does not exist or this access is refused. An empty path is the hive itself.
  virtual std::unique_ptr<RegistryKey> Open(Hive hive, const std::string& path, Access access) = 0;
  /// Opens the key for writing; creates it and its missing parents. Null if refused.
  virtual std::unique_ptr<RegistryKey> Create(Hive hive, const std::string& path) = 0;
  /// Deletes a key that has no subkeys.
  virtual bool Delete(Hive hive, const std::string& path) = 0;
};

}  // namespace platform
