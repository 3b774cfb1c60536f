#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "platform/program.h"
#include "platform/registry.h"

namespace headless {

/// A registry in memory. Paths are compared as they stand.
class MemoryRegistry : public platform::Registry {
 public:
  struct Key {
    std::map<std::string, std::string> texts;
  };
  std::map<std::string, Key> machine;  // by full path; a key exists with all its parents
  std::map<std::string, Key> user;
  /// The user is no administrator: the machine's keys can be read only.
  bool standard_user = false;
  /// Asked before each operation; true makes it fail.
  std::function<bool()> fails;
  bool Fails() const { return fails && fails(); }
  /// A key that refuses to be deleted.
  std::string undeletable;

  std::unique_ptr<platform::RegistryKey> Open(Hive hive, const std::string& path, Access access) override;
  std::unique_ptr<platform::RegistryKey> Create(Hive hive, const std::string& path) override;
  bool Delete(Hive hive, const std::string& path) override;
  bool RefusesWrites(Hive hive) const { return standard_user && hive == Hive::LocalMachine; }

 private:
  std::map<std::string, Key>& Of(Hive hive) { return hive == Hive::LocalMachine ? machine : user; }
};

/// The executable with its real string table.
class BuiltInProgram : public platform::Program {
 public:
  explicit BuiltInProgram(Version version) : version_(version) {}

  /// What the clock shows.
  std::string time_of_day = "12:34:56";

  std::string StringResource(int number) const override;
  Version FileVersion() const override { return version_; }
  std::string Directory() const override { return "C:\\Plug-in"; }
  std::string ExecutableName() const override { return "QM5RFcPirConfigure"; }
  std::string TimeOfDay() const override { return time_of_day; }

 private:
  Version version_;
};

}  // namespace headless
